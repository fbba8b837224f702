// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PointFile.h"

#include <QtCore/QByteArray>

/// The kinds of files that PointFile::read() tells apart. Problems and notes begin with the place, if
/// there is one (", line 3: ..."), and do not name the file.
namespace PointReaders {

PointFile readCsv(const QByteArray& text);
PointFile readCgats(const QByteArray& text);
PointFile readCxf(const QByteArray& text);

} // namespace PointReaders
