// SPDX-License-Identifier: Apache-2.0
#include "LetterCells.h"
#include "NumberText.h"
#include "TablePrinter.h"
#include "model/jobs/Jobs.h"
#include "model/text/ListOf.h"
#include "model/text/SafeText.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <mutex>

namespace {

using Column = Table::Column;
using Kind = Table::Kind;

QString number(double value, int decimals)
{
    QByteArray text;
    NumberText::appendFixed(text, value, decimals);
    return QString::fromLatin1(text);
}

/// Separated by spaces.
QString numbersText(const QVariant& list, int decimals)
{
    QStringList words;
    for (const QVariant& each : list.toList())
        words.append(number(each.toDouble(), decimals));
    return words.join(QLatin1Char(' '));
}

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
        count += cellsOf(letter);
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

QVariant valueIn(const Table& table, const Table::Row& row, qsizetype i)
{
    const QVariant& same = table.columns[i].same;
    return same.isValid() ? same : row.value(i);
}

/// The fields of a row that text shows.
QStringList fieldsOf(const Table& table, const Table::Row& row)
{
    QStringList fields;
    for (qsizetype i = 0; i < table.columns.size(); ++i)
        if (!table.columns[i].title.isEmpty())
            fields.append(words(table.columns[i], valueIn(table, row, i)));
    return fields;
}

void widen(QList<qsizetype>& widths, const QStringList& fields)
{
    for (qsizetype i = 0; i < fields.size(); ++i)
        widths[i] = std::max(widths[i], cells(fields[i]));
}

/// The last line, after an empty one.
QByteArray summaryOf(const Table& table)
{
    if (table.rowCount() == 0 || table.summary.isEmpty())
        return {};
    return (QLatin1Char('\n') + table.summary + QLatin1Char('\n')).toUtf8();
}

/// A line for each row, under a line of titles.
class RowsPrinter : public TablePrinter
{
public:
    explicit RowsPrinter(const Table& table) : TablePrinter(table)
    {
        for (const Column& column : table.columns) {
            if (column.title.isEmpty())
                continue;
            m_titles.append(SafeText::shown(column.title, SafeText::maxPathLength));
            m_toTheRight.append(isNumeric(column.kind));
        }
        m_widths.resize(m_titles.size());
        widen(m_widths, m_titles);
        measure();
    }

    QByteArray head() const override
    {
        return m_table.rowCount() > 0 ? line(m_titles, m_widths, m_toTheRight).toUtf8() : QByteArray();
    }
    QByteArray rows(qsizetype first, qsizetype end) const override
    {
        QString text;
        for (qsizetype i = first; i < end; ++i)
            text += line(fieldsOf(m_table, m_table.row(i)), m_widths, m_toTheRight);
        return text.toUtf8();
    }
    QByteArray tail() const override { return summaryOf(m_table); }

private:
    void measure()
    {
        constexpr qsizetype rowsInPart = 4096;
        std::mutex mutex;
        const auto measurePart = [&](qsizetype first, qsizetype end) {
            QList<qsizetype> widths(m_titles.size());
            for (qsizetype i = first; i < end; ++i)
                widen(widths, fieldsOf(m_table, m_table.row(i)));
            const std::lock_guard lock(mutex);
            for (qsizetype i = 0; i < widths.size(); ++i)
                m_widths[i] = std::max(m_widths[i], widths[i]);
        };
        if (m_table.rowCount() <= rowsInPart)
            measurePart(0, m_table.rowCount());
        else
            Jobs::runInParts(m_table.rowCount(), rowsInPart, measurePart);
    }

    QStringList m_titles;
    QList<qsizetype> m_widths;
    QList<bool> m_toTheRight;
};

/// A block for each row, with a line for each value.
class BlocksPrinter : public TablePrinter
{
public:
    explicit BlocksPrinter(const Table& table) : TablePrinter(table)
    {
        for (const Column& column : table.columns)
            m_width = std::max(m_width, column.title.size());
    }

    QByteArray rows(qsizetype first, qsizetype end) const override
    {
        QString text;
        for (qsizetype i = first; i < end; ++i)
            text += (i > 0 ? QStringLiteral("\n") : QString()) + block(m_table.row(i));
        return text.toUtf8();
    }
    QByteArray tail() const override { return summaryOf(m_table); }

private:
    QString block(const Table::Row& row) const
    {
        QString text = words(m_table.columns[0], valueIn(m_table, row, 0)) + QLatin1Char('\n');
        for (qsizetype i = 1; i < m_table.columns.size(); ++i)
            if (const QVariant value = valueIn(m_table, row, i);
                value.isValid() && !m_table.columns[i].title.isEmpty())
                text += QStringLiteral("  ") +
                        line(listOf(m_table.columns[i].title, words(m_table.columns[i], value)),
                             listOf<qsizetype>(m_width, 0), listOf(false, false));
        return text;
    }

    qsizetype m_width = 0;
};

} // namespace

std::unique_ptr<TablePrinter> TablePrinter::text(const Table& table)
{
    if (table.blocks)
        return std::make_unique<BlocksPrinter>(table);
    return std::make_unique<RowsPrinter>(table);
}
