// SPDX-License-Identifier: Apache-2.0
#include "PointFile.h"

#include "PointReaders.h"
#include "model/inputs/InputGate.h"

namespace {

/// Whether a line of @p text begins with @p keyword.
bool hasLine(const QByteArray& text, const QByteArray& keyword)
{
    return text.startsWith(keyword) || text.contains('\n' + keyword) || text.contains('\r' + keyword);
}

Result<PointSet> readKnown(const QByteArray& text, const KVCompletionProtocolPtr& task)
{
    static const QByteArray byteOrderMark = QByteArrayLiteral("\xEF\xBB\xBF");
    const QByteArray start = text.startsWith(byteOrderMark) ? text.mid(3, 100) : text.left(100);
    if (start.trimmed().startsWith('<'))
        return PointReaders::readCxf(text, task);
    if (hasLine(text, QByteArrayLiteral("BEGIN_DATA")))
        return PointReaders::readCgats(text, task);
    return PointReaders::readCsv(text, task);
}

} // namespace

Result<PointSet> pointsOfText(const QByteArray& content, const KVCompletionProtocolPtr& task)
{
    if (!InputGate::isText(content))
        return failure(ProblemCode::NotText);
    Result<PointSet> set = readKnown(content, task);
    if (set && set->points.isEmpty())
        return failure(ProblemCode::NoPositions);
    return set;
}

Result<PointSet> readPointFile(const QString& name, const KVCompletionProtocolPtr& task)
{
    const Result<QByteArray> content = InputGate::read(name, InputKind::Points, task);
    if (!content)
        return failure(content.error());
    return pointsOfText(*content, task)
        .map([&name](PointSet set) { return ofFile(std::move(set), name); })
        .map_error([&name](const Problem& problem) { return problem.about(name); });
}
