// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// The files in the folder `kvgamut` of the user's folder for settings. The work of the user does not depend
/// on them: a file that cannot be read, or is larger than a MiB, counts as empty, and one that cannot be
/// written is not written.
///
/// They are not QSettings files: a value of those can ask for any type of Qt and any amount of memory.
namespace SettingsFile {

QByteArray read(const QString& name);
void write(const QString& name, const QByteArray& content);
/// From now on nothing is read and nothing is written, as with `--no-settings`.
void ignoreAll();

} // namespace SettingsFile
