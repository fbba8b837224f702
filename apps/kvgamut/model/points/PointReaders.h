// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PointSet.h"
#include "model/problems/Result.h"

#include <QtCore/QByteArray>

/// The readers that readPointFile() selects by content. Problems and notes do not name the file; without
/// points the set is empty.
namespace PointReaders {

Result<PointSet> readCsv(const QByteArray& text);
Result<PointSet> readCgats(const QByteArray& text);
Result<PointSet> readCxf(const QByteArray& text);

} // namespace PointReaders
