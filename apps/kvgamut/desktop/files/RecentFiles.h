// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringList>

/// The files opened last, newest first, at most nine, stored in `kvgamut/recent-files` in the user's folder
/// for settings. A list that cannot be read, or is larger than a MiB, counts as empty.
namespace RecentFiles {

QStringList list(); ///< without those that no longer exist
void add(const QString& file);
void clear();

} // namespace RecentFiles
