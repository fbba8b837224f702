// SPDX-License-Identifier: Apache-2.0
#include "PointFile.h"

#include "PointReaders.h"
#include "PointText.h"
#include "model/inputs/InputGate.h"

namespace {

/// Whether a line of @p text begins with @p keyword.
bool hasLine(const QByteArray& text, const QByteArray& keyword)
{
    return text.startsWith(keyword) || text.contains('\n' + keyword) || text.contains('\r' + keyword);
}

/// XML in UTF-16, with or without a byte order mark.
bool isXmlInUtf16(const QByteArray& content)
{
    for (const QByteArrayView mark : {QByteArrayView("\xFF\xFE<\0", 4), QByteArrayView("\xFE\xFF\0<", 4),
                                      QByteArrayView("<\0", 2), QByteArrayView("\0<", 2)})
        if (content.startsWith(mark))
            return true;
    return false;
}

Result<PointSet> readKnown(const QByteArray& content, const PointOptions& options,
                           const KVCompletionProtocolPtr& task)
{
    if (!InputGate::isText(content))
        return failure(ProblemCode::NotText);
    static const QByteArray byteOrderMark = QByteArrayLiteral("\xEF\xBB\xBF");
    const QByteArray start = content.startsWith(byteOrderMark) ? content.mid(3, 100) : content.left(100);
    if (start.trimmed().startsWith('<') || isXmlInUtf16(content))
        return PointReaders::readCxf(content, options, task);
    const PointText text = PointText::of(content);
    const bool isCgats = hasLine(text.utf8, QByteArrayLiteral("BEGIN_DATA"));
    Result<PointSet> set = isCgats ? PointReaders::readCgats(text.utf8, options, task)
                                   : PointReaders::readCsv(text.utf8, options, task);
    if (set && text.note)
        set->notes.prepend(*text.note);
    return set;
}

} // namespace

Result<PointSet> pointsOfText(const QByteArray& content, const KVCompletionProtocolPtr& task,
                              const PointOptions& options)
{
    Result<PointSet> set = readKnown(content, options, task);
    if (set && set->points.isEmpty())
        return failure(ProblemCode::NoPositions);
    return set;
}

Result<PointSet> readPointFile(const QString& name, const KVCompletionProtocolPtr& task,
                               const PointOptions& options)
{
    const Result<QByteArray> content = InputGate::read(name, InputKind::Points, task);
    if (!content)
        return failure(content.error());
    return pointsOfText(*content, task, options)
        .map([&name](PointSet set) { return ofFile(std::move(set), name); })
        .map_error([&name](const Problem& problem) { return problem.about(name); });
}
