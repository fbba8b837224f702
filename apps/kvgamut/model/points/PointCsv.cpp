// SPDX-License-Identifier: Apache-2.0
#include "PointColumns.h"
#include "PointReaders.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QTextStream>

#include <utility>

namespace {

/// What stands between the fields of @p line: the first of these that is there at all, else space.
QChar separatorOf(const QString& line)
{
    static const QRegularExpression quoted(QStringLiteral("\"[^\"]*\""));
    const QString bare = QString(line).remove(quoted);
    for (const char separator : {';', '\t', ','})
        if (bare.contains(QLatin1Char(separator)))
            return QLatin1Char(separator);
    return QLatin1Char(' ');
}

/// @p field without its quotes, in which a quote stands for itself when doubled.
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
        fields.removeAll(QString()); // many spaces are one
    return fields;
}

/// A table whose columns may be named.
class Table
{
public:
    /// Takes the names of the columns, which may be none that say anything.
    void takeHeader(const QStringList& names)
    {
        if (const auto named = PointColumns::named(names)) {
            m_columns = *named;
            m_most = names.size();
            m_named = true;
        }
    }

    std::optional<ColouredPoint> pointOf(QStringList fields, bool decimalComma) const
    {
        if (fields.size() > m_most)
            return {}; // nothing says what the rest is
        if (decimalComma)
            for (const qsizetype column : m_columns.values)
                if (column < fields.size())
                    fields[column].replace(QLatin1Char(','), QLatin1Char('.'));
        return m_columns.pointOf(fields);
    }

    QString expectation() const
    {
        return m_named ? QStringLiteral("expected numbers in the columns of the colour")
                       : QStringLiteral("expected L*, a*, b* and perhaps a colour");
    }

private:
    PointColumns m_columns;
    qsizetype m_most = 4; ///< fields of a row
    bool m_named = false;
};

bool isNumber(const QString& field)
{
    bool ok = false;
    QString(field).replace(QLatin1Char(','), QLatin1Char('.')).toFloat(&ok);
    return ok;
}

} // namespace

PointFile PointReaders::readCsv(const QByteArray& text)
{
    PointFile result;
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
            result.points.append(*point);
        } else if (first && !isNumber(fields.value(0))) {
            table.takeHeader(fields);
        } else {
            result.problem = QStringLiteral(", line %1: %2").arg(number).arg(table.expectation());
            return result;
        }
        first = false;
    }
    return result;
}
