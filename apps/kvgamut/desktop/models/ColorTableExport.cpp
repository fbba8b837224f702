// SPDX-License-Identifier: Apache-2.0
#include "ColorTable.h"

#include "model/text/SafeText.h"

#include <array>
#include <cmath>

// The table for other programs.

QString ColorTable::plainZone(Side side)
{
    constexpr std::array words{"in", "edge", "out"};
    return QLatin1String(words[static_cast<std::size_t>(side)]);
}

QString ColorTable::toTsv(const QList<int>& rows) const
{
    QStringList words;
    for (const Column& column : m_columns)
        words.append(SafeText::forCsv(titleOf(column)));
    QStringList lines{words.join(QLatin1Char('\t'))};
    for (const int row : rows) {
        words.clear();
        for (const Column& column : m_columns)
            words.append(SafeText::forCsv(textOf(column, colorOf(row), true)));
        lines.append(words.join(QLatin1Char('\t')));
    }
    return lines.join(QLatin1Char('\n'));
}

QVariant ColorTable::valueOf(const Column& column, qsizetype color) const
{
    const ColorChecks::Check* check = m_checks.check(column.revision, color);
    switch (column.kind) {
    case Kind::Name:
        return m_checks.point(color).name;
    case Kind::File:
        return m_checks.file(color);
    case Kind::Zone:
        return check ? QVariant(plainZone(sideOf(check->distance, m_tolerance))) : QVariant();
    case Kind::Nearest:
        return check ? Table::colour(check->nearest) : QVariant();
    case Kind::Device: {
        QVariantList values;
        for (const float value : m_checks.device(column.revision, color))
            values.append(static_cast<double>(value));
        return values.isEmpty() ? QVariant() : QVariant(values);
    }
    default: {
        const double value = numberOf(column, color);
        return std::isnan(value) ? QVariant() : QVariant(value);
    }
    }
}

Table ColorTable::table() const
{
    static constexpr std::array keys{"name",    "L",          "a",         "b",   "zone %1",
                                     "de00 %1", "nearest %1", "device %1", "file"};
    Table table;
    for (const Column& column : m_columns) {
        const QString key = QLatin1String(keys[static_cast<std::size_t>(column.kind)]);
        const bool isWord =
            column.kind == Kind::Name || column.kind == Kind::File || column.kind == Kind::Zone;
        const Table::Kind kind = isWord                         ? Table::Kind::Word
                                 : column.kind == Kind::Nearest ? Table::Kind::Colour
                                 : column.kind == Kind::Device  ? Table::Kind::Numbers
                                                                : Table::Kind::Number;
        table.columns.append({column.revision == 0 ? key : key.arg(column.gamut),
                              {},
                              kind,
                              column.kind == Kind::Device ? 2 : 4,
                              0});
    }
    for (const qsizetype color : m_order) {
        Table::Row row;
        for (const Column& column : m_columns)
            row.append(valueOf(column, color));
        table.rows.append(row);
    }
    return table;
}
