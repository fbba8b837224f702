// SPDX-License-Identifier: Apache-2.0
#include "PointColumns.h"
#include "PointReaders.h"
#include "model/inputs/InputGate.h"

#include <utility>

// Reads CGATS.17, IT8.7, .ti3 and related formats: words between white space, quoted where they contain any,
// and comments from # to the end of the line. Sections between BEGIN_DATA_FORMAT and END_DATA_FORMAT name the
// columns of the values between BEGIN_DATA and END_DATA. Of the other words only the counts are used.
//
// Other readers follow directives that name a further file. Here they are refused: a measurement must not
// read any file but its own.

namespace {

struct Word
{
    QByteArray text;
    int line = 0;
    bool quoted = false;

    /// Whether this is the keyword @p keyword, in any case. Quoted words are values.
    bool is(const char* keyword) const { return !quoted && text.compare(keyword, Qt::CaseInsensitive) == 0; }
    bool isDirective() const { return is(".INCLUDE") || is("$INCLUDE"); }
};

/// Splits a text into words. A line break ends a quoted word, too.
class Words
{
public:
    explicit Words(const QByteArray& text) : m_text(text) {}

    /// nullopt at the end of the text
    std::optional<Word> next()
    {
        skipSpace();
        if (m_at >= m_text.size())
            return {};
        const char first = m_text[m_at];
        const bool quoted = first == '"' || first == '\'';
        const int line = m_line;
        if (!quoted)
            return Word{taken([](char c) { return isSpace(c) || c == '#' || c == '"' || c == '\''; }), line};
        ++m_at;
        const Word word{taken([first](char c) { return c == first || isLineBreak(c); }), line, true};
        if (isAt(m_at, first))
            ++m_at;
        return word;
    }

    /// Number of the line that is read.
    int line() const { return m_line; }

private:
    static bool isLineBreak(char c) { return c == '\n' || c == '\r'; }
    static bool isSpace(char c) { return c == ' ' || c == '\t' || isLineBreak(c); }

    bool isAt(qsizetype place, char c) const { return place < m_text.size() && m_text[place] == c; }

    void skipSpace()
    {
        bool comment = false;
        for (; m_at < m_text.size(); ++m_at) {
            const char c = m_text[m_at];
            comment = !isLineBreak(c) && (comment || c == '#');
            if (!comment && !isSpace(c))
                return;
            if (c == '\n' || (c == '\r' && !isAt(m_at + 1, '\n')))
                ++m_line;
        }
    }

    template <typename Ends>
    QByteArray taken(const Ends& ends)
    {
        const qsizetype start = m_at;
        while (m_at < m_text.size() && !ends(m_text[m_at]))
            ++m_at;
        return m_text.mid(start, m_at - start);
    }

    const QByteArray& m_text;
    qsizetype m_at = 0;
    int m_line = 1;
};

tl::unexpected<Problem> invalid(ProblemCode reason, const QStringList& arguments)
{
    return failure(Problem(ProblemCode::CgatsInvalid).because(Problem(reason, arguments)));
}

class CgatsReader
{
public:
    CgatsReader(const QByteArray& text, const KVCompletionProtocolPtr& task) : m_words(text), m_task(task) {}

    Result<PointSet> read()
    {
        Result<void> done;
        while (const auto word = m_words.next())
            if (done = readHeader(*word); !done)
                return failure(done.error());
        if (!m_points)
            return failure(ProblemCode::CgatsWithoutColor);
        return *std::move(m_points);
    }

private:
    Result<void> readHeader(const Word& word)
    {
        if (word.isDirective())
            return directive(word);
        if (word.is("BEGIN_DATA_FORMAT"))
            return readFormat();
        if (word.is("BEGIN_DATA"))
            return readData(word.line);
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

    static tl::unexpected<Problem> directive(const Word& word)
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
        const auto columns = m_points ? std::nullopt : PointColumns::named(m_names);
        PointSet set;
        QStringList row;
        qsizetype rows = 0;
        const Result<void> done = readUntil("END_DATA", [&](const QString& field) -> Result<void> {
            row.append(field);
            if (row.size() < m_names.size())
                return {};
            ++rows;
            const QStringList fields = std::exchange(row, {});
            return columns ? addPoint(set, columns->pointOf(fields), rows) : Result<void>();
        });
        if (!done)
            return done;
        if (!row.isEmpty())
            return invalid(ProblemCode::CgatsCountDiffers,
                           {QString::number(m_words.line()), QStringLiteral("NUMBER_OF_FIELDS"),
                            QString::number(m_names.size()), QString::number(row.size())});
        if (columns)
            m_points = std::move(set);
        m_names.clear(); // the next table has its own columns and counts
        m_fieldCount.reset();
        return checkCount("NUMBER_OF_SETS", std::exchange(m_setCount, {}), rows);
    }

    Result<void> addPoint(PointSet& set, const std::optional<MeasuredPoint>& point, qsizetype row) const
    {
        if (!point)
            return failure(ProblemCode::NotAColorDataSet, {QString::number(row)});
        return PointReaders::add(set, *point, m_task);
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

    Words m_words;
    KVCompletionProtocolPtr m_task;
    QStringList m_names; ///< of the columns of the current table
    std::optional<qsizetype> m_fieldCount;
    std::optional<qsizetype> m_setCount;
    std::optional<PointSet> m_points; ///< of the first table with colours
};

} // namespace

Result<PointSet> PointReaders::readCgats(const QByteArray& text, const KVCompletionProtocolPtr& task)
{
    return CgatsReader(text, task).read();
}
