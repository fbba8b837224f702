// SPDX-License-Identifier: Apache-2.0
#include "Table.h"

#include "model/text/ListOf.h"
#include "model/text/SafeText.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QStringList>

#include <algorithm>
#include <cmath>
#include <cwchar>

namespace {

using Column = Table::Column;
using Kind = Table::Kind;

double rounded(double value, int decimals)
{
    const double scale = std::pow(10.0, decimals);
    return std::round(value * scale) / scale + 0.0; // -0 becomes 0
}

QString number(double value, int decimals)
{
    return QString::number(rounded(value, decimals), 'f', decimals);
}

/// Separated by spaces.
QString numbersText(const QVariant& list, int decimals)
{
    QStringList words;
    for (const QVariant& each : list.toList())
        words.append(number(each.toDouble(), decimals));
    return words.join(QLatin1Char(' '));
}

// --- JSON -----------------------------------------------------------------------------------------

QJsonValue jsonNumber(double value, int decimals)
{
    return std::isfinite(value) ? QJsonValue(rounded(value, decimals)) : QJsonValue();
}

QJsonValue jsonValue(const Column& column, const QVariant& value)
{
    if (!value.isValid())
        return {};
    switch (column.kind) {
    case Kind::Word:
        return SafeText::forJson(value.toString());
    case Kind::Words:
        return QJsonArray::fromStringList(value.toStringList());
    case Kind::Numbers: {
        QJsonArray numbers;
        for (const QVariant& each : value.toList())
            numbers.append(jsonNumber(each.toDouble(), column.decimals));
        return numbers;
    }
    case Kind::Flag:
        return value.toBool();
    case Kind::Whole:
        return value.toInt();
    case Kind::Number:
    case Kind::Share:
        return jsonNumber(value.toDouble(), column.decimals);
    case Kind::Colour: {
        const auto lab = value.value<KVGamut::LabPoint>();
        return QJsonArray{jsonNumber(double(lab.L), column.decimals),
                          jsonNumber(double(lab.a), column.decimals),
                          jsonNumber(double(lab.b), column.decimals)};
    }
    }
    return {};
}

QByteArray asJson(const Table& table)
{
    QJsonArray rows;
    for (const Table::Row& row : table.rows) {
        QJsonObject object;
        for (qsizetype i = 0; i < table.columns.size(); ++i)
            object.insert(table.columns[i].key, jsonValue(table.columns[i], row.value(i)));
        rows.append(object);
    }
    return SafeText::escapedJson(QJsonDocument(rows).toJson());
}

// --- CSV ------------------------------------------------------------------------------------------

QString quoted(const QString& field)
{
    const auto special = [](QChar c) {
        return c == QLatin1Char(',') || c == QLatin1Char('"') || c == QLatin1Char('\n') ||
               c == QLatin1Char('\r');
    };
    if (std::none_of(field.cbegin(), field.cend(), special))
        return field;
    return QLatin1Char('"') + QString(field).replace(QLatin1Char('"'), QStringLiteral("\"\"")) +
           QLatin1Char('"');
}

QStringList csvKeys(const Column& column)
{
    if (column.kind != Kind::Colour)
        return listOf(column.key);
    return listOf(column.key + QStringLiteral("_L"), column.key + QStringLiteral("_a"),
                  column.key + QStringLiteral("_b"));
}

QStringList csvFields(const Column& column, const QVariant& value)
{
    if (!value.isValid())
        return QStringList(csvKeys(column).size());
    switch (column.kind) {
    case Kind::Word:
        return listOf(quoted(SafeText::forCsv(value.toString())));
    case Kind::Words:
        return listOf(quoted(SafeText::forCsv(value.toStringList().join(QLatin1Char(' ')))));
    case Kind::Numbers:
        return listOf(numbersText(value, column.decimals));
    case Kind::Flag:
        return listOf(value.toBool() ? QStringLiteral("true") : QStringLiteral("false"));
    case Kind::Whole:
        return listOf(QString::number(value.toInt()));
    case Kind::Number:
    case Kind::Share:
        return listOf(number(value.toDouble(), column.decimals));
    case Kind::Colour: {
        const auto lab = value.value<KVGamut::LabPoint>();
        return listOf(number(double(lab.L), column.decimals), number(double(lab.a), column.decimals),
                      number(double(lab.b), column.decimals));
    }
    }
    return {};
}

QByteArray asCsv(const Table& table)
{
    QStringList header;
    for (const Column& column : table.columns)
        for (const QString& key : csvKeys(column))
            header.append(quoted(SafeText::forCsv(key))); // may contain the name of a file
    QStringList lines = listOf(header.join(QLatin1Char(',')));
    for (const Table::Row& row : table.rows) {
        QStringList fields;
        for (qsizetype i = 0; i < table.columns.size(); ++i)
            fields += csvFields(table.columns[i], row.value(i));
        lines.append(fields.join(QLatin1Char(',')));
    }
    return (lines.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8();
}

// --- Text -----------------------------------------------------------------------------------------

QString words(const Column& column, const QVariant& value)
{
    if (!value.isValid())
        return QStringLiteral("-");
    switch (column.kind) {
    case Kind::Word:
        return SafeText::shown(value.toString().simplified(), SafeText::maxPathLength);
    case Kind::Words:
        return SafeText::shown(value.toStringList().join(QStringLiteral(", ")));
    case Kind::Numbers:
        return numbersText(value, column.textDecimals);
    case Kind::Flag:
        return value.toBool() ? QStringLiteral("yes") : QStringLiteral("no");
    case Kind::Whole:
        return QString::number(value.toInt());
    case Kind::Number:
        return number(value.toDouble(), column.textDecimals);
    case Kind::Share:
        return number(value.toDouble() * 100.0, column.textDecimals) + QStringLiteral(" %");
    case Kind::Colour: {
        const auto lab = value.value<KVGamut::LabPoint>();
        return QStringLiteral("%1 %2 %3")
            .arg(number(double(lab.L), column.textDecimals), number(double(lab.a), column.textDecimals),
                 number(double(lab.b), column.textDecimals));
    }
    }
    return {};
}

bool isNumeric(Kind kind)
{
    return kind == Kind::Whole || kind == Kind::Number || kind == Kind::Share || kind == Kind::Colour;
}

/// Width of @p text on a terminal, where some characters take two cells and some none.
qsizetype cells(const QString& text)
{
    qsizetype count = 0;
    for (qsizetype i = 0; i < text.size(); ++i) { // QString::toUcs4() crashes if there is not enough memory
        char32_t letter = text[i].unicode();
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            letter = QChar::surrogateToUcs4(text[i], text[i + 1]);
            ++i;
        }
        const int width = wcwidth(static_cast<wchar_t>(letter));
        count += width < 0 ? 1 : width;
    }
    return count;
}

QString padded(const QString& text, qsizetype width, bool toTheRight)
{
    const QString space(std::max<qsizetype>(0, width - cells(text)), QLatin1Char(' '));
    return toTheRight ? space + text : text + space;
}

/// One line of fields, without trailing spaces.
QString line(const QStringList& fields, const QList<qsizetype>& widths, const QList<bool>& toTheRight)
{
    QString text;
    for (qsizetype i = 0; i < fields.size(); ++i) {
        if (i > 0)
            text += QStringLiteral("  ");
        text += padded(fields[i], widths[i], toTheRight[i]);
    }
    while (text.endsWith(QLatin1Char(' ')))
        text.chop(1);
    return text + QLatin1Char('\n');
}

QString asRows(const Table& table)
{
    QList<QStringList> lines(table.rows.size() + 1); // first line: titles
    QList<qsizetype> widths;
    QList<bool> toTheRight;
    for (qsizetype i = 0; i < table.columns.size(); ++i) {
        const Column& column = table.columns[i];
        if (column.title.isEmpty())
            continue;
        lines[0].append(column.title);
        for (qsizetype r = 0; r < table.rows.size(); ++r)
            lines[r + 1].append(words(column, table.rows[r].value(i)));
        qsizetype width = 0;
        for (const QStringList& fields : lines)
            width = std::max(width, cells(fields.last()));
        widths.append(width);
        toTheRight.append(isNumeric(column.kind));
    }
    QString text;
    for (const QStringList& fields : lines)
        text += line(fields, widths, toTheRight);
    return text;
}

QString asBlocks(const Table& table)
{
    qsizetype width = 0;
    for (const Column& column : table.columns)
        width = std::max(width, column.title.size());
    QStringList blocks;
    for (const Table::Row& row : table.rows) {
        QString block = words(table.columns[0], row.value(0)) + QLatin1Char('\n');
        for (qsizetype i = 1; i < table.columns.size(); ++i)
            if (row.value(i).isValid() && !table.columns[i].title.isEmpty())
                block += QStringLiteral("  ") +
                         line(listOf(table.columns[i].title, words(table.columns[i], row[i])),
                              listOf<qsizetype>(width, 0), listOf(false, false));
        blocks.append(block);
    }
    return blocks.join(QLatin1Char('\n'));
}

QByteArray asText(const Table& table)
{
    if (table.rows.isEmpty())
        return {};
    QString text = table.blocks ? asBlocks(table) : asRows(table);
    if (!table.summary.isEmpty())
        text += QLatin1Char('\n') + table.summary + QLatin1Char('\n');
    return text.toUtf8();
}

} // namespace

void Table::add(const char* key, const char* title, Kind kind, int decimals, int textDecimals)
{
    columns.append({QString::fromUtf8(key), QString::fromUtf8(title), kind, decimals, textDecimals});
}

QByteArray Table::printed(Format format) const
{
    switch (format) {
    case Format::Text:
        return asText(*this);
    case Format::Csv:
        return asCsv(*this);
    case Format::Json:
        return asJson(*this);
    }
    return {};
}
