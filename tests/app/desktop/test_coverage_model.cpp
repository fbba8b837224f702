// SPDX-License-Identifier: Apache-2.0
#include "desktop/models/CoverageModel.h"
#include "desktop/models/GamutQueue.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

namespace {

class Coverage : public testing::Test
{
protected:
    void open(const QStringList& inputs)
    {
        for (const QString& input : inputs)
            gamuts.add(input, KVGamut::Settings(), KVGamutLook());
        ASSERT_TRUE(settle());
    }
    bool settle()
    {
        return kvtest::spinUntil([this] {
            return !queue.isBusy() && coverage.rowCount() == gamuts.rowCount() && coverage.isComplete();
        });
    }
    QString shown(int row, int column)
    {
        return coverage.data(coverage.index(row, column), Qt::DisplayRole).toString();
    }

    GamutListModel gamuts;
    GamutQueue queue{gamuts};
    CoverageModel coverage{gamuts};
};

TEST_F(Coverage, hasTheShareOfEachRowThatEachColumnCovers)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3"), QStringLiteral("AdobeRGB")});
    const QStringList lines = coverage.toTsv().split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), 4);
    EXPECT_EQ(lines[0], QStringLiteral("\tsRGB\tDisplayP3\tAdobeRGB"));
    const auto number = [&lines](int row, int column) {
        return lines[row + 1].split(QLatin1Char('\t'))[column + 1].toDouble();
    };
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const KVGamut::Comparison pair = gamuts.at(row).gamut.compare(gamuts.at(column).gamut);
            EXPECT_NEAR(number(row, column), row == column ? 1.0 : pair.firstCovered, 1e-6)
                << row << ' ' << column;
        }
        EXPECT_EQ(shown(row, row), QStringLiteral("–"));
    }
    EXPECT_NEAR(number(0, 1), 1.0, 1e-4); // Display P3 contains sRGB
    EXPECT_LT(number(1, 0), 0.7);
    EXPECT_TRUE(
        coverage.data(coverage.index(1, 0), Qt::ToolTipRole).toString().startsWith(QStringLiteral("± ")));
}

TEST_F(Coverage, followsTheList)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    open({QStringLiteral("Rec2020")});
    EXPECT_EQ(coverage.rowCount(), 3);
    gamuts.remove(0);
    ASSERT_TRUE(settle());
    EXPECT_EQ(coverage.headerData(0, Qt::Horizontal, Qt::DisplayRole), QStringLiteral("DisplayP3"));
    const double covered = gamuts.at(0).gamut.compare(gamuts.at(1).gamut).firstCovered; // not quite all
    EXPECT_EQ(shown(0, 1), QStringLiteral("%1 %").arg(covered * 100.0, 0, 'f', 2));
}

} // namespace
