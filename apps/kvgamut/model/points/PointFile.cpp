// SPDX-License-Identifier: Apache-2.0
#include "PointFile.h"

#include "PointReaders.h"
#include "model/inputs/InputFile.h"

namespace {

/// Whether a line of @p text begins with @p keyword.
bool hasLine(const QByteArray& text, const QByteArray& keyword)
{
    return text.startsWith(keyword) || text.contains('\n' + keyword) || text.contains('\r' + keyword);
}

Result<PointSet> readKnown(const QByteArray& text)
{
    static const QByteArray byteOrderMark = QByteArrayLiteral("\xEF\xBB\xBF");
    const QByteArray start = text.startsWith(byteOrderMark) ? text.mid(3, 100) : text.left(100);
    if (start.trimmed().startsWith('<'))
        return PointReaders::readCxf(text);
    if (hasLine(text, QByteArrayLiteral("BEGIN_DATA")))
        return PointReaders::readCgats(text);
    return PointReaders::readCsv(text);
}

} // namespace

Result<PointSet> readPointFile(const QString& name)
{
    Result<PointSet> set = readInput(name).and_then(readKnown);
    if (set && set->points.isEmpty())
        set = failure(ProblemCode::NoPositions);
    if (!set)
        return failure(set.error().about(name));
    set->file = name;
    if (set->note)
        set->note->subject = name;
    return set;
}
