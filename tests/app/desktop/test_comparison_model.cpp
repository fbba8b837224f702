// SPDX-License-Identifier: Apache-2.0
#include "desktop/models/ComparisonModel.h"

#include "desktop/models/GamutQueue.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QtCore/QLocale>
#include <QtTest/QAbstractItemModelTester>

namespace {

using kvtest::spinUntil;

class Comparing : public testing::Test
{
protected:
    void open(const QStringList& inputs)
    {
        for (const QString& input : inputs)
            gamuts.add(input, {}, {});
        ASSERT_TRUE(spinUntil([this] { return !loader.isBusy(); }));
    }

    bool finish()
    {
        return spinUntil([this] { return comparison.isComplete(); });
    }

    QString plain(int row, int column) const
    {
        return comparison.data(comparison.index(row, column), ComparisonModel::PlainRole).toString();
    }

    double number(int row, int column) const
    {
        bool ok = false;
        const double value = plain(row, column).toDouble(&ok);
        EXPECT_TRUE(ok) << row << ' ' << column;
        return value;
    }

    GamutListModel gamuts;
    GamutQueue loader{gamuts};
    ComparisonModel comparison{gamuts};
    QAbstractItemModelTester tester{&comparison, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(Comparing, hasARowForEveryComputedGamut)
{
    gamuts.add(QStringLiteral("sRGB"), {}, {});
    EXPECT_EQ(comparison.rowCount(), 0);
    open({QStringLiteral("DisplayP3")});
    EXPECT_EQ(comparison.rowCount(), 2);
    gamuts.remove(0);
    EXPECT_EQ(comparison.rowCount(), 1);
    EXPECT_EQ(plain(0, ComparisonModel::Name), QStringLiteral("DisplayP3"));
}

TEST_F(Comparing, namesProfileIntentAndWhite)
{
    open({QStringLiteral("sRGB")});
    EXPECT_EQ(plain(0, ComparisonModel::Name), QStringLiteral("sRGB"));
    EXPECT_EQ(plain(0, ComparisonModel::Intent), QStringLiteral("Absolute colorimetric"));
    EXPECT_EQ(plain(0, ComparisonModel::White), QStringLiteral("100.0\t0.0\t0.0"));
    // the limit of finer and finer surfaces of these primaries, see docs/COLOUR.md
    EXPECT_NEAR(number(0, ComparisonModel::Volume), 833'124.0, 20.0);
    EXPECT_LE(number(0, ComparisonModel::Uncertainty), 400.0);
}

TEST_F(Comparing, computesMutualCoverage)
{
    // sRGB is inside Display P3 except for rounding: each primary of P3 is equal or more saturated
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    ASSERT_TRUE(finish());
    const double small = number(0, ComparisonModel::Volume);
    const double large = number(1, ComparisonModel::Volume);
    EXPECT_NEAR(number(1, ComparisonModel::Intersection), small, small * 0.001);
    EXPECT_NEAR(number(1, ComparisonModel::Union), large, large * 0.001);
    EXPECT_NEAR(number(1, ComparisonModel::CoversActive), 1.0, 0.001);
    EXPECT_NEAR(number(1, ComparisonModel::CoveredByActive), small / large, 0.001);
    EXPECT_TRUE(plain(0, ComparisonModel::Intersection).isEmpty()); // empty for the active gamut itself

    gamuts.setActiveRow(1);
    ASSERT_TRUE(finish());
    EXPECT_NEAR(number(0, ComparisonModel::CoversActive), small / large, 0.001);
    EXPECT_NEAR(number(0, ComparisonModel::CoveredByActive), 1.0, 0.001);
    EXPECT_TRUE(plain(1, ComparisonModel::Intersection).isEmpty());
}

TEST_F(Comparing, statesTheUncertaintyOfComparedValues)
{
    open({QStringLiteral("sRGB"), QStringLiteral("AdobeRGB")});
    ASSERT_TRUE(finish());
    const auto toolTip = [this](int row, int column) {
        return comparison.index(row, column).data(Qt::ToolTipRole).toString();
    };
    const auto exact = gamuts.at(0).gamut.compareWithUncertainty(gamuts.at(1).gamut).uncertainty;
    EXPECT_EQ(toolTip(1, ComparisonModel::Intersection),
              QStringLiteral("± ") + QLocale().toString(exact.intersection, 'f', 0));
    EXPECT_EQ(toolTip(1, ComparisonModel::CoversActive),
              QStringLiteral("± %1 %").arg(QLocale().toString(100.0 * exact.firstCovered, 'f', 3)));
    EXPECT_EQ(toolTip(0, ComparisonModel::Intersection), QStringLiteral("sRGB")); // nothing is compared there
}

TEST_F(Comparing, namesTheActiveGamutInItsTitles)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    const auto title = [this](int column) {
        return comparison.headerData(column, Qt::Horizontal, ComparisonModel::PlainRole).toString();
    };
    EXPECT_TRUE(title(ComparisonModel::CoversActive).contains(QStringLiteral("sRGB")));
    gamuts.setActiveRow(1);
    EXPECT_TRUE(title(ComparisonModel::CoversActive).contains(QStringLiteral("DisplayP3")));
}

TEST_F(Comparing, ignoresResultsForReplacedGamuts)
{
    open({QStringLiteral("sRGB"), QStringLiteral("/usr/share/color/icc/ghostscript/default_cmyk.icc")});
    gamuts.setSettings(1, {KVVMRenderRelativeColorimetric, false, -1}); // during the first comparison
    ASSERT_TRUE(spinUntil([this] { return !loader.isBusy(); }));
    ASSERT_TRUE(finish());
    const auto exact = gamuts.at(0).gamut.compare(gamuts.at(1).gamut);
    EXPECT_NEAR(number(1, ComparisonModel::Intersection), static_cast<double>(exact.intersection), 1.0);
    EXPECT_EQ(plain(1, ComparisonModel::Intent), QStringLiteral("Relative colorimetric"));
}

TEST_F(Comparing, ignoresResultsForRemovedGamuts)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3"), QStringLiteral("Rec2020")});
    gamuts.remove(1);
    gamuts.remove(0);
    EXPECT_TRUE(kvtest::spinUntil([this] { return comparison.isComplete(); }));
    EXPECT_EQ(comparison.rowCount(), 1);
}

TEST_F(Comparing, copiesTabSeparatedText)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    ASSERT_TRUE(finish());
    const QStringList lines = comparison.toTsv().split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), 3); // titles and two gamuts
    for (const QString& line : lines)
        EXPECT_EQ(line.count(QLatin1Char('\t')), ComparisonModel::ColumnCount - 1 + 2)
            << "white is L*, a*, b*";
    EXPECT_TRUE(lines[0].contains(QStringLiteral("\tWhite L*\tWhite a*\tWhite b*\t")));
    EXPECT_TRUE(lines[1].contains(QStringLiteral("\t100.0\t0.0\t0.0\t")));
    const QModelIndexList cells{comparison.index(1, ComparisonModel::CoversActive),
                                comparison.index(0, ComparisonModel::Name),
                                comparison.index(1, ComparisonModel::Name)};
    EXPECT_EQ(comparison.toTsv(cells, false),
              QStringLiteral("sRGB\t\nDisplayP3\t%1").arg(plain(1, ComparisonModel::CoversActive)));
}

} // namespace
