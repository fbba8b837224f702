// SPDX-License-Identifier: Apache-2.0
#include "NumberText.h"
#include "TablePrinter.h"
#include "model/text/SafeText.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace {

using Column = Table::Column;
using Kind = Table::Kind;

void appendString(QByteArray& text, const QString& value)
{
    const auto plain = [](QChar c) {
        return c >= QLatin1Char(' ') && c <= QLatin1Char('~') && c != QLatin1Char('"') &&
               c != QLatin1Char('\\');
    };
    if (std::all_of(value.cbegin(), value.cend(), plain)) {
        text += '"' + value.toLatin1() + '"';
        return;
    }
    const QJsonArray array{SafeText::forJson(value)};
    const QByteArray inBrackets = SafeText::escapedJson(QJsonDocument(array).toJson(QJsonDocument::Compact));
    text += inBrackets.sliced(1, inBrackets.size() - 2);
}

/// How objects and arrays are set: each on its own line, or on many.
struct Layout
{
    QByteArray beforeMember, betweenMembers, afterMembers;
    QByteArray beforeElement, betweenElements, afterElements;
};

const Layout& indented()
{
    static const Layout layout{"        ",       ",\n        ",     "\n",
                               "\n            ", ",\n            ", "\n        "};
    return layout;
}

const Layout& compact()
{
    static const Layout layout{"", ", ", "", "", ", ", ""};
    return layout;
}

class JsonPrinter : public TablePrinter
{
public:
    JsonPrinter(const Table& table, const Layout& layout) : TablePrinter(table), m_layout(layout)
    {
        for (qsizetype i = 0; i < table.columns.size(); ++i)
            if (table.columns[i].inJson)
                m_order.push_back(i);
        std::stable_sort(m_order.begin(), m_order.end(), [&table](qsizetype i, qsizetype j) {
            return table.columns[i].key < table.columns[j].key;
        });
        for (const qsizetype i : m_order) {
            QByteArray key;
            appendString(key, table.columns[i].key);
            QByteArray value;
            if (table.columns[i].same.isValid())
                appendValue(value, table.columns[i], table.columns[i].same);
            m_members.push_back(key + ": " + value);
        }
    }

protected:
    void appendMembers(QByteArray& text, const Table::Row& row) const
    {
        text += m_layout.beforeMember;
        for (std::size_t k = 0; k < m_order.size(); ++k) {
            if (k > 0)
                text += m_layout.betweenMembers;
            text += m_members[k];
            if (!m_table.columns[m_order[k]].same.isValid())
                appendValue(text, m_table.columns[m_order[k]], row.value(m_order[k]));
        }
        text += m_layout.afterMembers;
    }

private:
    template <typename List, typename Append>
    void appendArray(QByteArray& text, const List& list, const Append& append) const
    {
        text += '[';
        bool isFirst = true;
        for (const auto& each : list) {
            text += std::exchange(isFirst, false) ? m_layout.beforeElement : m_layout.betweenElements;
            append(each);
        }
        text += m_layout.afterElements + QByteArrayLiteral("]");
    }

    void appendValue(QByteArray& text, const Column& column, const QVariant& value) const
    {
        if (!value.isValid()) {
            text += "null";
            return;
        }
        const auto appendNumber = [&](double number) {
            NumberText::appendJson(text, number, column.decimals);
        };
        switch (column.kind) {
        case Kind::Word:
            appendString(text, value.toString());
            break;
        case Kind::Words:
            appendArray(text, value.toStringList(), [&](const QString& word) { appendString(text, word); });
            break;
        case Kind::Numbers:
            appendArray(text, value.toList(), [&](const QVariant& each) { appendNumber(each.toDouble()); });
            break;
        case Kind::Flag:
            text += value.toBool() ? "true" : "false";
            break;
        case Kind::Whole:
            text += QByteArray::number(value.toInt());
            break;
        case Kind::Number:
        case Kind::Share:
            appendNumber(value.toDouble());
            break;
        case Kind::Colour: {
            const auto lab = value.value<KVGamut::LabPoint>();
            appendArray(text, std::array{lab.L, lab.a, lab.b},
                        [&](float each) { appendNumber(double(each)); });
        }
        }
    }

    const Layout& m_layout;
    std::vector<qsizetype> m_order;    ///< of the columns: alphabetical
    std::vector<QByteArray> m_members; ///< in this order: key and colon, and the same value if there is one
};

class JsonArrayPrinter : public JsonPrinter
{
public:
    explicit JsonArrayPrinter(const Table& table) : JsonPrinter(table, indented()) {}

    QByteArray head() const override { return "[\n"; }
    QByteArray rows(qsizetype first, qsizetype end) const override
    {
        QByteArray text;
        for (qsizetype i = first; i < end; ++i) {
            text += i > 0 ? ",\n    {\n" : "    {\n";
            appendMembers(text, m_table.row(i));
            text += "    }";
        }
        return text;
    }
    QByteArray tail() const override { return m_table.rowCount() > 0 ? "\n]\n" : "]\n"; }
};

class JsonLinesPrinter : public JsonPrinter
{
public:
    explicit JsonLinesPrinter(const Table& table) : JsonPrinter(table, compact()) {}

    QByteArray rows(qsizetype first, qsizetype end) const override
    {
        QByteArray text;
        for (qsizetype i = first; i < end; ++i) {
            text += '{';
            appendMembers(text, m_table.row(i));
            text += "}\n";
        }
        return text;
    }
};

} // namespace

std::unique_ptr<TablePrinter> TablePrinter::json(const Table& table)
{
    return std::make_unique<JsonArrayPrinter>(table);
}

std::unique_ptr<TablePrinter> TablePrinter::jsonLines(const Table& table)
{
    return std::make_unique<JsonLinesPrinter>(table);
}
