// SPDX-License-Identifier: Apache-2.0
#include "model/reports/Table.h"

#include <gtest/gtest.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QStringList>

#include <limits>

namespace {

using Kind = Table::Kind;
using Format = Table::Format;

Table ofOneColumn(Kind kind, const QVariantList& values, int decimals = 0, int textDecimals = 0)
{
    Table table;
    table.add("key", "title", kind, decimals, textDecimals);
    for (const QVariant& value : values)
        table.rows.append({value});
    return table;
}

QJsonValue jsonOf(Kind kind, const QVariant& value, int decimals = 0)
{
    const QByteArray text = ofOneColumn(kind, {value}, decimals).printed(Format::Json);
    return QJsonDocument::fromJson(text).array().at(0).toObject().value(QStringLiteral("key"));
}

QByteArray csvOf(Kind kind, const QVariant& value, int decimals = 0)
{
    const QByteArray text = ofOneColumn(kind, {value}, decimals).printed(Format::Csv);
    return text.mid(text.indexOf('\n') + 1).chopped(1);
}

TEST(Table, roundsNumbersToTheDecimalsOfTheirColumn)
{
    EXPECT_EQ(csvOf(Kind::Number, 1.25, 1), "1.3");
    EXPECT_EQ(csvOf(Kind::Number, 832916.52, 1), "832916.5");
    EXPECT_EQ(csvOf(Kind::Number, 2.0, 3), "2.000");
    EXPECT_EQ(jsonOf(Kind::Number, 832916.52, 1).toDouble(), 832916.5);
    EXPECT_EQ(ofOneColumn(Kind::Number, {1.256}, 2, 1).printed(Format::Text), "title\n  1.3\n");
}

TEST(Table, roundsToZeroWithoutASign)
{
    EXPECT_EQ(csvOf(Kind::Number, -0.0001, 2), "0.00");
    EXPECT_EQ(ofOneColumn(Kind::Number, {-0.0001}, 2).printed(Format::Json).indexOf('-'), -1);
    EXPECT_EQ(csvOf(Kind::Number, -0.006, 2), "-0.01");
}

TEST(Table, printsUnknownValuesAsNullOrEmpty)
{
    for (const Kind kind : {Kind::Word, Kind::Words, Kind::Flag, Kind::Whole, Kind::Number, Kind::Share}) {
        EXPECT_TRUE(jsonOf(kind, {}).isNull());
        EXPECT_EQ(csvOf(kind, {}), "");
    }
    EXPECT_TRUE(jsonOf(Kind::Colour, {}).isNull());
    EXPECT_EQ(csvOf(Kind::Colour, {}), ",,"); // three columns
    EXPECT_EQ(ofOneColumn(Kind::Whole, {QVariant()}).printed(Format::Text), "title\n    -\n");
}

TEST(Table, printsNanAsNullInJson)
{
    EXPECT_TRUE(jsonOf(Kind::Number, std::numeric_limits<double>::infinity()).isNull());
    EXPECT_TRUE(jsonOf(Kind::Number, std::numeric_limits<double>::quiet_NaN()).isNull());
}

TEST(Table, quotesSpecialCharactersInTheKeysOfCsv)
{
    Table table;
    table.add("zone a,b", "", Kind::Word);
    table.add("=1", "", Kind::Number);
    EXPECT_EQ(table.printed(Format::Csv), "\"zone a,b\",'=1\n");
}

TEST(Table, quotesSpecialCharactersInCsv)
{
    EXPECT_EQ(csvOf(Kind::Word, QStringLiteral("plain words")), "plain words");
    EXPECT_EQ(csvOf(Kind::Word, QStringLiteral("a,b")), "\"a,b\"");
    EXPECT_EQ(csvOf(Kind::Word, QStringLiteral("a \"b\"")), "\"a \"\"b\"\"\"");
    EXPECT_EQ(csvOf(Kind::Word, QStringLiteral("a\nb")), "\"a\nb\"");
}

TEST(Table, printsSharesAsPercentagesOnlyInText)
{
    const Table table = ofOneColumn(Kind::Share, {0.68907}, 4, 1);
    EXPECT_EQ(table.printed(Format::Text), " title\n68.9 %\n");
    EXPECT_EQ(table.printed(Format::Csv), "key\n0.6891\n");
}

TEST(Table, aColourIsAnArrayOrThreeColumns)
{
    const Table table = ofOneColumn(Kind::Colour, {Table::colour({50.0f, -20.5f, 0.25f})}, 2, 1);
    EXPECT_EQ(jsonOf(Kind::Colour, Table::colour({50.0f, -20.5f, 0.25f}), 2), (QJsonArray{50, -20.5, 0.25}));
    EXPECT_EQ(table.printed(Format::Csv), "key_L,key_a,key_b\n50.00,-20.50,0.25\n");
}

TEST(Table, alignsColumnsWithWideLetters)
{
    Table table;
    table.add("name", "name", Kind::Word);
    table.add("hidden", "", Kind::Word);
    table.add("count", "count", Kind::Whole);
    table.rows = {{QStringLiteral("Zoë"), QStringLiteral("x"), 5},
                  {QStringLiteral("a"), QStringLiteral("x"), 123456}};
    table.summary = QStringLiteral("that is all");
    EXPECT_EQ(table.printed(Format::Text).toStdString(),
              "name   count\nZoë        5\na     123456\n\nthat is all\n");
}

TEST(Table, omitsUnknownValuesInBlocks)
{
    Table table;
    table.blocks = true;
    table.add("name", "name", Kind::Word);
    table.add("one", "one", Kind::Words);
    table.add("three", "three", Kind::Flag);
    table.rows = {{QStringLiteral("a"), QStringList{QStringLiteral("x"), QStringLiteral("y")}, QVariant()},
                  {QStringLiteral("b"), QVariant(), true}};
    EXPECT_EQ(table.printed(Format::Text).toStdString(), "a\n  one    x, y\n\nb\n  three  yes\n");
}

TEST(Table, ofNothingIsAHeaderAnEmptyArrayOrNothing)
{
    const Table table = ofOneColumn(Kind::Word, {});
    EXPECT_EQ(table.printed(Format::Csv), "key\n");
    EXPECT_EQ(QJsonDocument::fromJson(table.printed(Format::Json)).array(), QJsonArray());
    EXPECT_TRUE(QJsonDocument::fromJson(table.printed(Format::Json)).isArray());
    EXPECT_EQ(table.printed(Format::Text), QByteArray());
}

} // namespace
