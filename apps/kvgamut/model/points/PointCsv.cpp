// SPDX-License-Identifier: Apache-2.0
#include "PointColumns.h"
#include "PointReaders.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QTextStream>

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

} // namespace

Result<PointSet> PointReaders::readCsv(const QByteArray& text)
{
    PointSet set;
    Table table;
    QTextStream lines(text);
    bool first = true;
    for (int number = 1; !lines.atEnd(); ++number) {
        const QString line = lines.readLine().trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        const QChar separator = separatorOf(line);
        const QStringList fields = fieldsOf(line, separator);
        const auto point = table.pointOf(fields, separator != QLatin1Char(','));
        if (point) {
            set.points.append(*point);
        } else if (first && !isNumber(fields.value(0))) {
            table.takeHeader(fields);
        } else {
            return failure(table.rowProblem(), {QString::number(number)});
        }
        first = false;
    }
    return set;
}
