// SPDX-License-Identifier: Apache-2.0
#include "model/jobs/Jobs.h"
#include "model/reports/LetterCells.h"
#include "model/reports/Table.h"

#include <gtest/gtest.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QStringList>

#include <clocale>
#include <cmath>
#include <cstdint>
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

TEST(Table, countsTheCellsOfLettersOnATerminal)
{
    ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr); // as the program sets it
    for (const char32_t one : {U'a', U'é', U'ж', U'א', U'–', U'ﾊ', U'\x01', U'\uFFFD'})
        EXPECT_EQ(cellsOf(one), 1) << std::hex << std::uint32_t{one};
    for (const char32_t two : {U'日', U'か', U'한', U'Ａ', U'　', U'🎨', U'𠀀'})
        EXPECT_EQ(cellsOf(two), 2) << std::hex << std::uint32_t{two};
    for (const char32_t none : {U'\u0301', U'\u200D', U'\uFE0F', U'\U000E0100'})
        EXPECT_EQ(cellsOf(none), 0) << std::hex << std::uint32_t{none};
    Table table;
    table.add("name", "name", Kind::Word);
    table.add("count", "count", Kind::Whole);
    table.rows = {{QStringLiteral("日本"), 5}, {QStringLiteral("e\u0301"), 10}};
    EXPECT_EQ(table.printed(Format::Text).toStdString(), "name  count\n日本      5\ne\u0301        10\n");
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

/// A table with every kind of column, and @p count rows.
Table ofAllKinds(qsizetype count)
{
    Table table;
    table.add("word", "word", Kind::Word);
    table.add("list", "list", Kind::Words);
    table.add("flag", "flag", Kind::Flag);
    table.add("whole", "whole", Kind::Whole);
    table.add("a_number", "number", Kind::Number, 3, 1);
    table.add("share", "share", Kind::Share, 6, 2);
    table.add("lab", "lab", Kind::Colour, 4, 2);
    table.add("inks", "inks", Kind::Numbers, 2, 0);
    for (qsizetype i = 0; i < count; ++i) {
        const double x = double(i) / 7.0;
        const auto f = static_cast<float>(x);
        Table::Row row{QStringLiteral("n\u00e4me \"%1\" \\ \t,").arg(i),
                       i % 3 == 0 ? QStringList() : QStringList{QStringLiteral("a"), QStringLiteral("b")},
                       i % 2 == 0,
                       static_cast<int>(i - 2),
                       i % 5 == 0 ? 1e-3 * x : -1000.0 * x,
                       x / 1000.0,
                       Table::colour({f, -f, 0.25f}),
                       QVariantList{x, 0.0, 100.0}};
        if (i % 4 == 3)
            row.resize(2); // the others are unknown
        table.rows.append(row);
    }
    return table;
}

QJsonValue rounded(double value, double scale)
{
    return std::round(value * scale) / scale + 0.0;
}

/// The same as Qt's classes write it.
QJsonArray expectedJson(const Table& table)
{
    QJsonArray array;
    for (const Table::Row& row : table.rows) {
        QJsonObject object{{QStringLiteral("word"), row[0].toString()},
                           {QStringLiteral("list"), QJsonArray::fromStringList(row[1].toStringList())}};
        for (const char* key : {"flag", "whole", "a_number", "share", "lab", "inks"})
            object.insert(QLatin1String(key), QJsonValue());
        if (row.size() > 2) {
            const auto lab = row[6].value<KVGamut::LabPoint>();
            object.insert(QStringLiteral("flag"), row[2].toBool());
            object.insert(QStringLiteral("whole"), row[3].toInt());
            object.insert(QStringLiteral("a_number"), rounded(row[4].toDouble(), 1e3));
            object.insert(QStringLiteral("share"), rounded(row[5].toDouble(), 1e6));
            object.insert(QStringLiteral("lab"),
                          QJsonArray{rounded(double(lab.L), 1e4), rounded(double(lab.a), 1e4),
                                     rounded(double(lab.b), 1e4)});
            QJsonArray inks;
            for (const QVariant& ink : row[7].toList())
                inks.append(rounded(ink.toDouble(), 1e2));
            object.insert(QStringLiteral("inks"), inks);
        }
        array.append(object);
    }
    return array;
}

/// The rows of @p table, made when they are printed.
Table made(const Table& table)
{
    Table lazy = table;
    lazy.rows.clear();
    lazy.made = {table.rows.size(), [rows = table.rows](qsizetype i) { return rows.at(i); }};
    return lazy;
}

TEST(Table, printsTheSameJsonAsQt)
{
    for (const qsizetype count : {0, 1, 50}) {
        const Table table = ofAllKinds(count);
        EXPECT_EQ(table.printed(Format::Json).toStdString(),
                  QJsonDocument(expectedJson(table)).toJson().toStdString());
    }
}

TEST(Table, printsAnObjectOnEachLineOfJsonLines)
{
    const Table table = ofAllKinds(50);
    const QList<QByteArray> lines = table.printed(Format::JsonLines).split('\n');
    const QJsonArray expected = expectedJson(table);
    ASSERT_EQ(lines.size(), expected.size() + 1);
    EXPECT_EQ(lines.last(), "");
    for (qsizetype i = 0; i < expected.size(); ++i)
        EXPECT_EQ(QJsonDocument::fromJson(lines[i]).object(), expected[i].toObject()) << lines[i].constData();
    EXPECT_EQ(Table().printed(Format::JsonLines), "");
}

TEST(Table, printsRowsThatAreMadeLikeThoseThatAreStored)
{
    const int threads = Jobs::maxThreads();
    Jobs::setMaxThreads(3);
    Table table = ofAllKinds(30'000); // in several parts
    for (const bool blocks : {false, true}) {
        table.blocks = blocks;
        for (const Format format : {Format::Text, Format::Csv, Format::Json, Format::JsonLines}) {
            const QByteArray all = table.printed(format);
            EXPECT_EQ(made(table).printed(format), all);
            EXPECT_GE(all.count('\n'), 30'000);
        }
    }
    Jobs::setMaxThreads(threads);
}

TEST(Table, endsWhenNothingMoreCanBeWritten)
{
    int parts = 0;
    EXPECT_FALSE(ofAllKinds(100'000).print(Format::Csv, [&parts](const QByteArray&) { return ++parts < 3; }));
    EXPECT_EQ(parts, 3);
}

TEST(Table, writesAValueOfAllRowsInEach)
{
    Table table;
    table.add("a", "a", Kind::Word);
    table.add("b", "b", Kind::Colour, 0, 0);
    table.add("c", "c", Kind::Whole);
    table.setSame("a", QStringLiteral("x, y"));
    table.setSame("b", Table::colour({1, 2, 3}));
    table.rows = {{{}, {}, 1}, {QStringLiteral("not this"), {}, 2}};
    EXPECT_EQ(table.printed(Format::Csv).toStdString(),
              "a,b_L,b_a,b_b,c\n\"x, y\",1,2,3,1\n\"x, y\",1,2,3,2\n");
    EXPECT_EQ(
        table.printed(Format::JsonLines).toStdString(),
        "{\"a\": \"x, y\", \"b\": [1, 2, 3], \"c\": 1}\n{\"a\": \"x, y\", \"b\": [1, 2, 3], \"c\": 2}\n");
    EXPECT_EQ(table.printed(Format::Text).toStdString(), "a         b  c\nx, y  1 2 3  1\nx, y  1 2 3  2\n");
    table.blocks = true;
    EXPECT_TRUE(table.printed(Format::Text).startsWith("x, y\n  b  1 2 3\n  c  1\n"));
}

TEST(Table, hasColumnsForJsonOrForTheOtherFormatsOnly)
{
    Table table;
    table.add("a", "a", Kind::Whole);
    table.columns.last().inJson = false;
    table.addToJson("b", Kind::Whole);
    table.rows = {{1, 2}};
    EXPECT_EQ(table.printed(Format::Csv), "a\n1\n");
    EXPECT_EQ(table.printed(Format::Text), "a\n1\n");
    EXPECT_EQ(table.printed(Format::JsonLines), "{\"b\": 2}\n");
}

TEST(Table, quotesTitlesThatAreNames)
{
    Table table;
    table.columns.append({QStringLiteral("=a,b"), QStringLiteral("a\x1b"), Kind::Whole});
    table.rows = {{1}};
    EXPECT_EQ(table.printed(Format::Csv), "\"'=a,b\"\n1\n");
    EXPECT_EQ(table.printed(Format::Text), "a\\x1b\n    1\n");
}

} // namespace
