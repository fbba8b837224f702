// SPDX-License-Identifier: Apache-2.0
#include "CgatsWords.h"
#include "PointBuilder.h"
#include "PointColumns.h"
#include "PointReaders.h"
#include "PointWhite.h"
#include "model/inputs/InputGate.h"

#include <QtCore/QRegularExpression>

#include <utility>

// Reads CGATS.17, IT8.7, .ti3 and related formats: words between white space, quoted where they contain any,
// and comments from # to the end of the line. Sections between BEGIN_DATA_FORMAT and END_DATA_FORMAT name the
// columns of the values between BEGIN_DATA and END_DATA. Of the other words only the counts are used.
//
// Other readers follow directives that name a further file. Here they are refused: a measurement must not
// read any file but its own.

namespace {

tl::unexpected<Problem> invalid(ProblemCode reason, const QStringList& arguments)
{
    return failure(Problem(ProblemCode::CgatsInvalid).because(Problem(reason, arguments)));
}

constexpr qsizetype maxKeywordLength = 1000;

class CgatsReader
{
public:
    CgatsReader(const QByteArray& text, const PointOptions& options, const KVCompletionProtocolPtr& task)
        : m_words(text), m_options(options), m_task(task)
    {
        constexpr double percent = 100.0;
        m_declared.whiteY = percent;
        m_declared.maxCmyk = percent;
        if (text.startsWith("CTI")) // .ti1, .ti2, .ti3
            m_declared.maxRgb = percent;
    }

    Result<PointSet> read()
    {
        Result<void> done;
        while (const auto word = m_words.next())
            if (done = readHeader(*word); !done)
                return failure(done.error());
        if (!m_points)
            return failure(ProblemCode::CgatsWithoutColor, {m_seen.join(QStringLiteral(", "))});
        return *std::move(m_points);
    }

private:
    Result<void> readHeader(const CgatsWord& word)
    {
        if (word.isDirective())
            return directive(word);
        if (word.is("BEGIN_DATA_FORMAT"))
            return readFormat();
        if (word.is("BEGIN_DATA"))
            return readData(word.line);
        if (word.is("WEIGHTING_FUNCTION") || word.is("MEASUREMENT_SOURCE") || word.is("SPECTRAL_NORM") ||
            word.is("DEVICE_CLASS"))
            return readKeyword(word);
        for (const auto& [keyword, count] :
             {std::pair{"NUMBER_OF_FIELDS", &m_fieldCount}, std::pair{"NUMBER_OF_SETS", &m_setCount}})
            if (word.is(keyword))
                return readCount(*count);
        return {};
    }

    Result<void> readCount(std::optional<qsizetype>& count)
    {
        const auto value = m_words.next();
        if (value && value->isDirective())
            return directive(*value);
        bool ok = false;
        const int number = value ? value->text.toInt(&ok) : 0;
        if (ok)
            count = number;
        return {};
    }

    /// What a keyword says about the values, as in WEIGHTING_FUNCTION "ILLUMINANT, D65".
    Result<void> readKeyword(const CgatsWord& keyword)
    {
        static const QRegularExpression illuminant(QStringLiteral("illumina\\w+[\\s,=:]+(\\w+)"),
                                                   QRegularExpression::CaseInsensitiveOption);
        static const QRegularExpression observer(QStringLiteral("observer\\w*[\\s,=:]+(10|2)\\b"),
                                                 QRegularExpression::CaseInsensitiveOption);
        const auto value = m_words.next();
        if (value && value->isDirective())
            return directive(*value);
        const QString text = value ? QString::fromUtf8(value->text.left(maxKeywordLength)) : QString();
        if (keyword.is("DEVICE_CLASS"))
            m_declared.deviceClass = text.toUpper();
        if (keyword.is("SPECTRAL_NORM"))
            m_declared.maxReflectance = text.toDouble();
        if (const auto match = observer.match(text); match.hasMatch())
            m_declared.observer = match.captured(1);
        const auto match = illuminant.match(text);
        if (!match.hasMatch())
            return {};
        m_declared.white = PointWhite::known(match.captured(1));
        if (!m_declared.white.isEmpty())
            return {};
        return failure(ProblemCode::PointWordUnknown, {QString::number(keyword.line), match.captured(1),
                                                       PointWhite::names().join(QStringLiteral(", "))});
    }

    static tl::unexpected<Problem> directive(const CgatsWord& word)
    {
        return failure(ProblemCode::CgatsIncludesFile,
                       {QString::number(word.line), QString::fromLatin1(word.text)});
    }

    /// Calls use(text) for each word up to the keyword @p end. Fails with Cancelled, too.
    template <typename Use>
    Result<void> readUntil(const char* end, const Use& use)
    {
        while (const auto word = m_words.next()) {
            if (word->isDirective())
                return directive(*word);
            if (word->is(end))
                return {};
            if (word->text.size() > InputLimits::maxLineLength)
                return refused(ProblemCode::LineTooLong, InputLimits::maxLineLength);
            if (InputGate::isCancelled(m_task))
                return failure(KVProblemCode::Cancelled);
            if (Result<void> used = use(QString::fromUtf8(word->text)); !used)
                return used;
        }
        return invalid(ProblemCode::CgatsUnfinished,
                       {QString::number(m_words.line()), QString::fromLatin1(end)});
    }

    Result<void> readFormat()
    {
        m_names.clear();
        return readUntil("END_DATA_FORMAT", [this](const QString& name) -> Result<void> {
            if (m_names.size() >= InputLimits::maxColumns)
                return refused(ProblemCode::TooManyColumns, InputLimits::maxColumns);
            m_names.append(name);
            return {};
        });
    }

    Result<void> readData(int line)
    {
        if (m_names.isEmpty())
            return failure(ProblemCode::CgatsWithoutFormat, {QString::number(line)});
        const Result<void> counted = checkCount("NUMBER_OF_FIELDS", m_fieldCount, m_names.size());
        if (!counted)
            return counted;
        auto columns = m_points ? std::nullopt : PointColumns::named(m_names);
        if (!columns && m_seen.isEmpty())
            m_seen = m_names;
        PointBuilder builder(m_options, m_task);
        builder.declared = m_declared;
        if (columns && columns->problem)
            return failure(*columns->problem);
        if (columns) {
            builder.declared.wavelengths = columns->wavelengths;
            builder.declared.inks = columns->inks;
        }
        const Result<qsizetype> rows = readRows([&](const QStringList& fields) {
            return columns ? addRow(builder, *columns, fields) : Result<void>();
        });
        if (!rows)
            return failure(rows.error());
        m_names.clear(); // the next table has its own columns and counts
        m_fieldCount.reset();
        const Result<void> same = checkCount("NUMBER_OF_SETS", std::exchange(m_setCount, {}), *rows);
        return same && columns ? finish(builder) : same;
    }

    /// Calls use(fields) for each row of the table. @return the number of rows
    template <typename Use>
    Result<qsizetype> readRows(const Use& use)
    {
        QStringList row;
        qsizetype rows = 0;
        const Result<void> done = readUntil("END_DATA", [&](const QString& field) -> Result<void> {
            row.append(field);
            if (row.size() < m_names.size())
                return {};
            ++rows;
            return use(std::exchange(row, {}));
        });
        if (!done)
            return failure(done.error());
        if (!row.isEmpty())
            return invalid(ProblemCode::CgatsCountDiffers,
                           {QString::number(m_words.line()), QStringLiteral("NUMBER_OF_FIELDS"),
                            QString::number(m_names.size()), QString::number(row.size())});
        return rows;
    }

    Result<void> addRow(PointBuilder& builder, PointColumns& columns, const QStringList& fields)
    {
        if (builder.count() == 0)
            columns.findName(fields);
        const int line = m_words.line();
        const Result<MeasuredPoint> point = columns.pointOf(fields, line);
        if (point)
            return builder.add(*point, columns.space, line);
        builder.leaveOut(point.error(), line);
        return {};
    }

    Result<void> finish(PointBuilder& builder)
    {
        Result<PointSet> set = builder.finish();
        if (!set)
            return failure(set.error());
        m_points = *std::move(set);
        return {};
    }

    tl::unexpected<Problem> refused(ProblemCode code, qsizetype limit) const
    {
        return failure(code, {QString::number(m_words.line()), QString::number(limit)});
    }

    /// Fails if the file declares another number than it has.
    Result<void> checkCount(const char* keyword, std::optional<qsizetype> declared, qsizetype found) const
    {
        if (!declared || *declared == found)
            return {};
        return invalid(ProblemCode::CgatsCountDiffers,
                       {QString::number(m_words.line()), QString::fromLatin1(keyword),
                        QString::number(*declared), QString::number(found)});
    }

    CgatsWords m_words;
    const PointOptions m_options;
    KVCompletionProtocolPtr m_task;
    PointBuilder::Declared m_declared; ///< by the format and keywords
    QStringList m_seen;                ///< columns of the first table without colours
    QStringList m_names;               ///< of the columns of the current table
    std::optional<qsizetype> m_fieldCount;
    std::optional<qsizetype> m_setCount;
    std::optional<PointSet> m_points; ///< of the first table with colours
};

} // namespace

Result<PointSet> PointReaders::readCgats(const QByteArray& text, const PointOptions& options,
                                         const KVCompletionProtocolPtr& task)
{
    return CgatsReader(text, options, task).read();
}
