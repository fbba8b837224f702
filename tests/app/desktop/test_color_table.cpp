// SPDX-License-Identifier: Apache-2.0
#include "desktop/models/ColorTable.h"

#include "desktop/models/ColorSymbols.h"
#include "desktop/models/GamutQueue.h"
#include "model/checks/ColorCheck.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>

#include <set>

namespace {

using Kind = ColorTable::Kind;
using kvtest::spinUntil;

// Inside sRGB, beyond its white by less than 1 dE, and far outside.
constexpr const char* threeColors = "name,L,a,b\nlaser,60,-120,90\ngrey,50,0,0\npaper,100.5,0,0\n";

class ColorsOfFiles : public testing::Test
{
protected:
    QString write(const QString& name, const QByteArray& bytes)
    {
        const QString path = folder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }

    bool finish()
    {
        return spinUntil([this] { return !loader.isBusy() && points.isComplete() && checks.isComplete(); });
    }

    void openThree()
    {
        gamuts.add(QStringLiteral("sRGB"), {}, {});
        points.open(write(QStringLiteral("three.csv"), threeColors));
        ASSERT_TRUE(finish());
    }

    QString cell(int row, Kind kind, int role = ColorTable::PlainRole)
    {
        return table.index(row, table.columnOf(kind)).data(role).toString();
    }

    QStringList names()
    {
        QStringList names;
        for (int row = 0; row < table.rowCount(); ++row)
            names.append(cell(row, Kind::Name));
        return names;
    }

    KVProfilePtr profileOf(const QString& id)
    {
        const auto source = loader.source(id);
        return source ? source->profile() : KVProfilePtr();
    }

    QTemporaryDir folder;
    GamutListModel gamuts;
    GamutQueue loader{gamuts};
    KVGamut3DViewer viewer; // never shown
    PointLayer points{gamuts, viewer};
    ColorChecks checks{gamuts, points, [this](const QString& id) { return profileOf(id); }};
    ColorTable table{checks, gamuts, points};
    QAbstractItemModelTester tester{&table, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(ColorsOfFiles, haveARowBeforeTheyAreChecked)
{
    points.open(write(QStringLiteral("three.csv"), threeColors));
    ASSERT_TRUE(finish());
    EXPECT_EQ(names(),
              (QStringList{QStringLiteral("laser"), QStringLiteral("grey"), QStringLiteral("paper")}));
    EXPECT_EQ(cell(0, Kind::A), QStringLiteral("-120.0000"));
    EXPECT_EQ(table.columnOf(Kind::Zone), -1); // no gamut
}

TEST_F(ColorsOfFiles, haveTheResultsOfTheCheckCommand)
{
    openThree();
    const GamutEntry& srgb = gamuts.at(0);
    const ColorChecker checker(srgb.gamut, profileOf(srgb.id));
    for (int row = 0; row < 3; ++row) {
        const qsizetype color = table.colorOf(row);
        const ColorCheck expected = checker.check(checks.point(color).lab, 1.0);
        EXPECT_NEAR(cell(row, Kind::De00).toDouble(), expected.de00, 1e-3) << row;
        const auto device = checks.device(srgb.revision, color);
        ASSERT_EQ(device.size(), expected.device.size());
        for (std::size_t i = 0; i < device.size(); ++i)
            EXPECT_NEAR(device[i], expected.device[i], 1e-3) << row;
    }
}

TEST_F(ColorsOfFiles, haveTheirOwnResultsIfThereAreMany)
{
    // more than several workers take at a time, neighbours far apart
    constexpr int count = 1500;
    QByteArray rows = "L,a,b\n";
    for (int i = 0; i < count; ++i)
        rows += QByteArray::number(i * 37 % 101) + ',' + QByteArray::number(i * 71 % 241 - 120) + ',' +
                QByteArray::number(i * 53 % 239 - 119) + '\n';
    gamuts.add(QStringLiteral("sRGB"), {}, {});
    points.open(write(QStringLiteral("many.csv"), rows));
    ASSERT_TRUE(finish());
    const GamutEntry& srgb = gamuts.at(0);
    const ColorChecker checker(srgb.gamut, profileOf(srgb.id));
    ASSERT_EQ(checks.count(), count);
    for (qsizetype color = 0; color < count; ++color) {
        const ColorCheck expected = checker.check(checks.point(color).lab, 1.0);
        const ColorChecks::Check* const found = checks.check(srgb.revision, color);
        ASSERT_NE(found, nullptr) << color;
        ASSERT_NEAR(found->de00, expected.de00, 1e-3) << color;
        const auto device = checks.device(srgb.revision, color);
        ASSERT_EQ(device.size(), expected.device.size()) << color;
        for (std::size_t i = 0; i < device.size(); ++i)
            ASSERT_NEAR(device[i], expected.device[i], 1e-3) << color;
    }
}

TEST_F(ColorsOfFiles, areInTheZonesOfTheView)
{
    openThree();
    EXPECT_EQ(cell(0, Kind::Zone), QStringLiteral("out"));
    EXPECT_EQ(cell(1, Kind::Zone), QStringLiteral("in"));
    EXPECT_EQ(cell(2, Kind::Zone), QStringLiteral("edge"));
    points.setTolerance(60.0f); // larger than the distance of the grey from the surface
    EXPECT_EQ(cell(1, Kind::Zone), QStringLiteral("edge"));
}

TEST_F(ColorsOfFiles, haveZoneAndDifferenceForEachGamut)
{
    gamuts.add(QStringLiteral("ProPhoto"), {}, {});
    openThree();
    QStringList titles;
    for (int column = 0; column < table.columnCount(); ++column)
        titles.append(table.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
    for (const char* title : {"ProPhoto", "ΔE00 ProPhoto", "sRGB", "ΔE00 sRGB"})
        EXPECT_EQ(titles.count(QString::fromUtf8(title)), 1) << title;
    EXPECT_EQ(titles[1], QStringLiteral("ProPhoto"));
    gamuts.setActiveRow(1);
    EXPECT_EQ(table.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("sRGB"));
    gamuts.setActiveRow(0);
    gamuts.remove(0);
    EXPECT_FALSE(titles.isEmpty());
    EXPECT_EQ(table.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("sRGB"));
}

TEST_F(ColorsOfFiles, areSortedByEachColumn)
{
    openThree();
    for (int column = 0; column < table.columnCount(); ++column) {
        table.sort(column, Qt::AscendingOrder);
        const QStringList up = names();
        table.sort(column, Qt::DescendingOrder);
        const QStringList down = names();
        EXPECT_EQ(up.size(), 3);
        const bool hasEqualValues = column == table.columnOf(Kind::File) ||
                                    column == table.columnOf(Kind::A) || column == table.columnOf(Kind::B) ||
                                    column == table.columnOf(Kind::De00);
        if (!hasEqualValues) {
            EXPECT_EQ(QStringList(down.crbegin(), down.crend()), up) << column;
        }
    }
    table.sort(table.columnOf(Kind::Lightness), Qt::AscendingOrder);
    EXPECT_EQ(names(),
              (QStringList{QStringLiteral("grey"), QStringLiteral("laser"), QStringLiteral("paper")}));
    table.sort(table.columnOf(Kind::De00), Qt::DescendingOrder);
    EXPECT_EQ(names().constFirst(), QStringLiteral("laser"));
    table.sort(-1);
    EXPECT_EQ(names().constFirst(), QStringLiteral("laser")); // as in the file
    EXPECT_EQ(names().constLast(), QStringLiteral("paper"));
}

TEST_F(ColorsOfFiles, areFilteredByZoneAndName)
{
    openThree();
    table.setZone(Side::Outside);
    EXPECT_EQ(names(), QStringList{QStringLiteral("laser")});
    table.setZone(Side::Edge);
    EXPECT_EQ(names(), QStringList{QStringLiteral("paper")});
    table.setZone({});
    table.setSearch(QStringLiteral("GR"));
    EXPECT_EQ(names(), QStringList{QStringLiteral("grey")});
    EXPECT_EQ(table.rowOf(0), -1);
}

TEST_F(ColorsOfFiles, areTextThatIsNoFormula)
{
    gamuts.add(QStringLiteral("sRGB"), {}, {});
    points.open(write(QStringLiteral("evil.csv"), "name;L;a;b\n=1+1;50;-10;0\n@x;50;0;0\n"));
    ASSERT_TRUE(finish());
    const QStringList lines = table.toTsv({0, 1}).split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(lines[1].startsWith(QStringLiteral("'=1+1\t")));
    EXPECT_TRUE(lines[2].startsWith(QStringLiteral("'@x\t")));
    EXPECT_TRUE(lines[1].contains(QStringLiteral("\t-10.0000\t"))); // a number stays a number
    EXPECT_EQ(lines[1].count(QLatin1Char('\t')), table.columnCount() - 1);
    const QByteArray csv = table.table().printed(Table::Format::Csv);
    EXPECT_TRUE(csv.contains("\n'=1+1,")) << csv.constData();
    EXPECT_TRUE(csv.startsWith("name,zone sRGB,de00 sRGB,nearest sRGB_L,")) << csv.constData();
}

TEST_F(ColorsOfFiles, doNotContainThePixelsOfPictures)
{
    QImage picture(4, 4, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(folder.filePath(QStringLiteral("red.png"))));
    points.open(folder.filePath(QStringLiteral("red.png")));
    points.open(write(QStringLiteral("three.csv"), threeColors));
    ASSERT_TRUE(finish());
    EXPECT_EQ(table.rowCount(), 3);
    EXPECT_EQ(checks.place(0).row, 1);
    EXPECT_EQ(checks.colorAt({1, 2}), 2);
    EXPECT_EQ(checks.colorAt({0, 0}), -1);
}

TEST_F(ColorsOfFiles, areCheckedInTheBackgroundAndCancelled)
{
    gamuts.add(QStringLiteral("sRGB"), {}, {});
    ASSERT_TRUE(finish());
    QByteArray many("L,a,b\n");
    for (int i = 0; i < 20000; ++i)
        many += QByteArray::number(20 + i % 60) + ',' + QByteArray::number(100 + i % 97) + ",90\n";
    points.open(write(QStringLiteral("many.csv"), many));
    ASSERT_TRUE(spinUntil([this] { return table.rowCount() == 20000; })); // rows come before numbers
    EXPECT_FALSE(checks.isComplete());
    EXPECT_LT(checks.progress(), 1.0f);
    const auto work = KVCompletionProtocol::runningTasks();
    const auto ofGamut = std::find_if(work.begin(), work.end(), [](const KVCompletionProtocolPtr& task) {
        return task->name() == QStringLiteral("sRGB");
    });
    ASSERT_NE(ofGamut, work.end());
    points.remove(0);
    EXPECT_TRUE((*ofGamut)->isCancelled());
    EXPECT_TRUE(checks.isComplete());
    EXPECT_EQ(table.rowCount(), 0);
}

TEST_F(ColorsOfFiles, keepTheirResultsWhenAnotherGamutIsActive)
{
    gamuts.add(QStringLiteral("ProPhoto"), {}, {});
    openThree();
    const QString before = cell(0, Kind::Nearest);
    gamuts.setActiveRow(1);
    EXPECT_TRUE(checks.isComplete());
    EXPECT_NE(cell(0, Kind::Nearest), before); // of sRGB now
}

/// The shapes as masks: which pixels are painted.
std::vector<bool> maskOf(const QPixmap& pixmap)
{
    const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    std::vector<bool> mask;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            mask.push_back(qAlpha(image.pixel(x, y)) > 127);
    return mask;
}

TEST(SymbolsOfColours, differInShape)
{
    std::set<std::vector<bool>> masks;
    for (const Side side : {Side::Inside, Side::Edge, Side::Outside})
        masks.insert(maskOf(ColorSymbols::zone(side, 15)));
    EXPECT_EQ(masks.size(), 3U);
    EXPECT_NE(maskOf(ColorSymbols::swatch({50, 0, 0}, 15)), maskOf(ColorSymbols::swatch({60, -120, 90}, 15)));
}

TEST(ScreenColours, areThoseOfSrgb)
{
    EXPECT_TRUE(isScreenColor({0, 0, 0}));
    EXPECT_TRUE(isScreenColor({100, 0, 0}));
    EXPECT_TRUE(isScreenColor({54.29f, 80.81f, 69.89f}));   // its red
    EXPECT_TRUE(isScreenColor({29.57f, 68.30f, -112.03f})); // its blue
    EXPECT_FALSE(isScreenColor({101, 0, 0}));
    EXPECT_FALSE(isScreenColor({54.29f, 84.0f, 72.0f}));
    EXPECT_FALSE(isScreenColor({60, -120, 90}));
}

} // namespace
