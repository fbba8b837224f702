// SPDX-License-Identifier: Apache-2.0
#include "PointColumns.h"
#include "PointReaders.h"
#include "model/inputs/InputLimits.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QStringDecoder>

#include <utility>

namespace {

/// The separator of the fields of @p line: semicolon, tab or comma, in order of preference, else space.
QChar separatorOf(const QString& line)
{
    static const QRegularExpression quoted(QStringLiteral("\"[^\"]*\""));
    const QString bare = QString(line).remove(quoted);
    for (const char separator : {';', '\t', ','})
        if (bare.contains(QLatin1Char(separator)))
            return QLatin1Char(separator);
    return QLatin1Char(' ');
}

/// @p field without its quotes; a doubled quote inside them is one quote.
QString unquoted(const QString& field)
{
    static const QLatin1Char quote('"');
    QString word = field.trimmed();
    if (word.size() < 2 || !word.startsWith(quote) || !word.endsWith(quote))
        return word;
    return word.mid(1, word.size() - 2).replace(QStringLiteral("\"\""), QString(quote));
}

QStringList fieldsOf(const QString& line, QChar separator)
{
    QStringList fields;
    QString field;
    bool inQuotes = false;
    for (const QChar c : line) {
        inQuotes = inQuotes != (c == QLatin1Char('"'));
        if (c == separator && !inQuotes)
            fields.append(unquoted(std::exchange(field, QString())));
        else
            field.append(c);
    }
    fields.append(unquoted(field));
    if (separator == QLatin1Char(' '))
        fields.removeAll(QString()); // consecutive spaces are one separator
    return fields;
}

/// A table with or without named columns.
class Table
{
public:
    /// Sets the names of the columns; ignores them if they do not contain a colour space.
    void takeHeader(const QStringList& names)
    {
        if (const auto named = PointColumns::named(names)) {
            m_columns = *named;
            m_maxFields = names.size();
            m_named = true;
        }
    }

    std::optional<MeasuredPoint> pointOf(QStringList fields, bool decimalComma) const
    {
        if (fields.size() > m_maxFields)
            return {}; // the meaning of the other numbers is unknown
        if (decimalComma)
            for (const qsizetype column : m_columns.values)
                if (column < fields.size())
                    fields[column].replace(QLatin1Char(','), QLatin1Char('.'));
        return m_columns.pointOf(fields);
    }

    /// The problem of a row for which pointOf() returns nullopt.
    ProblemCode rowProblem() const { return m_named ? ProblemCode::NotColorColumns : ProblemCode::NotAPoint; }

private:
    PointColumns m_columns;
    qsizetype m_maxFields = 4;
    bool m_named = false;
};

bool isNumber(const QString& field)
{
    bool ok = false;
    QString(field).replace(QLatin1Char(','), QLatin1Char('.')).toFloat(&ok);
    return ok;
}

/// The lines of a text, without the line breaks.
class Lines
{
public:
    explicit Lines(const QByteArray& text)
    {
        const auto encoding = QStringConverter::encodingForData(text).value_or(QStringConverter::Utf8);
        m_text = QStringDecoder(encoding)(text);
    }

    bool atEnd() const { return m_at >= m_text.size(); }
    /// Number of the line that next() has returned, from 1 on.
    int number() const { return m_number; }

    QStringView next()
    {
        const qsizetype end = m_text.indexOf(QLatin1Char('\n'), m_at);
        const QStringView line = QStringView(m_text).sliced(m_at, (end < 0 ? m_text.size() : end) - m_at);
        m_at += line.size() + 1;
        ++m_number;
        return line;
    }

private:
    QString m_text;
    qsizetype m_at = 0;
    int m_number = 0;
};

class CsvReader
{
public:
    CsvReader(const QByteArray& text, const KVCompletionProtocolPtr& task) : m_lines(text), m_task(task) {}

    Result<PointSet> read()
    {
        while (!m_lines.atEnd()) {
            const QStringView line = m_lines.next();
            if (line.size() > InputLimits::maxLineLength)
                return refused(ProblemCode::LineTooLong, InputLimits::maxLineLength);
            const QString content = line.trimmed().toString();
            if (content.isEmpty() || content.startsWith(QLatin1Char('#')))
                continue;
            if (const Result<void> taken = take(content); !taken)
                return failure(taken.error());
            m_first = false;
        }
        return std::move(m_set);
    }

private:
    Result<void> take(const QString& line)
    {
        const QChar separator = separatorOf(line);
        const QStringList fields = fieldsOf(line, separator);
        if (fields.size() > InputLimits::maxColumns)
            return refused(ProblemCode::TooManyColumns, InputLimits::maxColumns);
        if (auto point = m_table.pointOf(fields, separator != QLatin1Char(',')))
            return PointReaders::add(m_set, *std::move(point), m_task);
        if (!m_first || isNumber(fields.value(0)))
            return failure(m_table.rowProblem(), {QString::number(m_lines.number())});
        m_table.takeHeader(fields);
        return {};
    }

    tl::unexpected<Problem> refused(ProblemCode code, qsizetype limit) const
    {
        return failure(code, {QString::number(m_lines.number()), QString::number(limit)});
    }

    Lines m_lines;
    KVCompletionProtocolPtr m_task;
    Table m_table;
    PointSet m_set;
    bool m_first = true; ///< no line with fields has been read yet
};

} // namespace

Result<PointSet> PointReaders::readCsv(const QByteArray& text, const KVCompletionProtocolPtr& task)
{
    return CsvReader(text, task).read();
}
