// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringList>

/// The files opened last, newest first, stored in the settings of the program.
namespace RecentFiles {

QStringList list(); ///< without those that no longer exist
void add(const QString& file);
void clear();

} // namespace RecentFiles
