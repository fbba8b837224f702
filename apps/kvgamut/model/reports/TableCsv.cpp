// SPDX-License-Identifier: Apache-2.0
#include "NumberText.h"
#include "TablePrinter.h"
#include "model/text/SafeText.h"

#include <algorithm>
#include <vector>

namespace {

using Column = Table::Column;
using Kind = Table::Kind;

/// Most names: they need no quotes and no look for what is unsafe.
bool isPlain(const QString& field)
{
    const auto plain = [](QChar c) {
        return c == QLatin1Char(' ') || c == QLatin1Char('_') || c == QLatin1Char('.') ||
               (c >= QLatin1Char('0') && c <= QLatin1Char('9')) ||
               (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) ||
               (c >= QLatin1Char('a') && c <= QLatin1Char('z'));
    };
    return field.size() <= SafeText::maxLength && !field.startsWith(QLatin1Char(' ')) &&
           !field.endsWith(QLatin1Char(' ')) && !field.contains(QLatin1String("  ")) &&
           std::all_of(field.cbegin(), field.cend(), plain);
}

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

void appendWord(QByteArray& text, const QString& word)
{
    if (isPlain(word))
        text += word.toLatin1();
    else
        text += quoted(SafeText::forCsv(word)).toUtf8();
}

void appendNumbers(QByteArray& text, const QVariantList& numbers, int decimals)
{
    for (qsizetype i = 0; i < numbers.size(); ++i) {
        if (i > 0)
            text += ' ';
        NumberText::appendFixed(text, numbers[i].toDouble(), decimals);
    }
}

void appendField(QByteArray& text, const Column& column, const QVariant& value)
{
    switch (column.kind) {
    case Kind::Word:
        appendWord(text, value.toString());
        break;
    case Kind::Words:
        appendWord(text, value.toStringList().join(QLatin1Char(' ')));
        break;
    case Kind::Numbers:
        appendNumbers(text, value.toList(), column.decimals);
        break;
    case Kind::Flag:
        text += value.toBool() ? "true" : "false";
        break;
    case Kind::Whole:
        text += QByteArray::number(value.toInt());
        break;
    case Kind::Number:
    case Kind::Share:
        NumberText::appendFixed(text, value.toDouble(), column.decimals);
        break;
    case Kind::Colour: {
        const auto lab = value.value<KVGamut::LabPoint>();
        NumberText::appendFixed(text, double(lab.L), column.decimals);
        text += ',';
        NumberText::appendFixed(text, double(lab.a), column.decimals);
        text += ',';
        NumberText::appendFixed(text, double(lab.b), column.decimals);
    }
    }
}

class CsvPrinter : public TablePrinter
{
public:
    explicit CsvPrinter(const Table& table) : TablePrinter(table)
    {
        for (const Column& column : table.columns) {
            m_same.emplace_back();
            if (column.same.isValid())
                appendField(m_same.back(), column, column.same);
        }
    }

    QByteArray head() const override
    {
        QByteArray text;
        for (const Column& column : m_table.columns) {
            if (!column.inCsv)
                continue;
            if (column.kind == Kind::Colour)
                for (const char* part : {"_L", "_a", "_b"})
                    appendWord(text += ',', column.key + QLatin1String(part));
            else
                appendWord(text += ',', column.key);
        }
        return text.sliced(1) + '\n';
    }

    QByteArray rows(qsizetype first, qsizetype end) const override
    {
        QByteArray text;
        for (qsizetype i = first; i < end; ++i)
            appendRow(text, m_table.row(i));
        return text;
    }

private:
    void appendRow(QByteArray& text, const Table::Row& row) const
    {
        bool isFirst = true;
        for (qsizetype i = 0; i < m_table.columns.size(); ++i) {
            const Column& column = m_table.columns[i];
            if (!column.inCsv)
                continue;
            if (!isFirst)
                text += ',';
            isFirst = false;
            if (column.same.isValid())
                text += m_same[static_cast<std::size_t>(i)];
            else if (i < row.size() && row[i].isValid())
                appendField(text, column, row[i]);
            else if (column.kind == Kind::Colour)
                text += ",,";
        }
        text += '\n';
    }

    std::vector<QByteArray> m_same; ///< of each column: the text of its same value
};

} // namespace

std::unique_ptr<TablePrinter> TablePrinter::csv(const Table& table)
{
    return std::make_unique<CsvPrinter>(table);
}
