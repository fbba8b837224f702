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

struct Signature
{
    qsizetype at;
    QByteArrayView bytes;
    const char* format;
};

/// The format of a file that people take for one of colours; empty if it is none of them.
QString otherFormat(const QByteArray& content)
{
    static constexpr Signature signatures[] = {
        {8, "WEBP", "WebP"},
        {0, "GIF8", "GIF"},
        {0, "%PDF", "PDF"},
        {0, "PK\x03\x04", "ZIP (as in .xlsx, .ods)"},
        {0, "\xD0\xCF\x11\xE0", "OLE (as in .xls)"},
        {0, "8BPS", "PSD"},
        {0, "\x1F\x8B", "gzip"},
        {36, "acsp", "ICC"},
        {4, "ftyp", "HEIF, AVIF or MP4"},
        {0, "\xFF\x0A", "JPEG XL"},
        {4, "JXL ", "JPEG XL"},
        {4, "jP  ", "JPEG 2000"},
        {0,
         "\x7F"
         "ELF",
         "ELF"},
        {0, "SQLite format 3", "SQLite"},
    };
    for (const Signature& signature : signatures)
        if (content.size() >= signature.at + signature.bytes.size() &&
            QByteArrayView(content).sliced(signature.at, signature.bytes.size()) == signature.bytes)
            return QLatin1String(signature.format);
    return {};
}

Result<PointSet> readKnown(const QByteArray& content, const PointOptions& options,
                           const KVCompletionProtocolPtr& task)
{
    if (content.startsWith("ASEF"))
        return PointReaders::readAse(content, options, task);
    if (content.startsWith("8BCB"))
        return PointReaders::readAcb(content, options, task);
    if (const QString format = otherFormat(content); !format.isEmpty())
        return failure(ProblemCode::NotColors, {format});
    if (!InputGate::isText(content))
        return failure(ProblemCode::NotText);
    static const QByteArray byteOrderMark = QByteArrayLiteral("\xEF\xBB\xBF");
    const QByteArray start = content.startsWith(byteOrderMark) ? content.mid(3, 100) : content.left(100);
    if (start.trimmed().startsWith('<') || isXmlInUtf16(content))
        return PointReaders::readCxf(content, options, task);
    const PointText text = PointText::of(content);
    const auto read = text.utf8.startsWith("GIMP Palette")                  ? PointReaders::readGpl
                      : hasLine(text.utf8, QByteArrayLiteral("BEGIN_DATA")) ? PointReaders::readCgats
                                                                            : PointReaders::readCsv;
    Result<PointSet> set = read(text.utf8, options, task);
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
