// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringList>

/// The files that were opened last, the newest first, kept between runs of the program.
namespace RecentFiles {

QStringList list(); ///< those that are still there
void add(const QString& file);
void clear();

} // namespace RecentFiles
