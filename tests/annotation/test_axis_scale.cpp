// SPDX-License-Identifier: Apache-2.0
#include <annotation/AxisScale.h>

#include <gtest/gtest.h>

TEST(ScaleBox, endsAtRoundNumbersAroundTheGamuts)
{
    const LabBox box = kvScaleBox({3.0f, -86.2f, -107.9f}, {100.0f, 98.2f, 94.5f});
    EXPECT_EQ(box.low, QVector3D(0.0f, -100.0f, -120.0f));
    EXPECT_EQ(box.high, QVector3D(100.0f, 100.0f, 100.0f));
}

TEST(ScaleBox, isNotFlatWithoutGamuts)
{
    const LabBox box = kvScaleBox({0.0f, 0.0f, 0.0f}, {0.0f, 0.0f, 0.0f});
    EXPECT_EQ(box.low, QVector3D(0.0f, -20.0f, -20.0f));
    EXPECT_EQ(box.high, QVector3D(100.0f, 20.0f, 20.0f));
}

TEST(ScaleBox, growsWithColoursBeyondBlackAndWhite)
{
    const LabBox box = kvScaleBox({-3.0f, -10.0f, -10.0f}, {104.0f, 10.0f, 10.0f});
    EXPECT_EQ(box.low.x(), -20.0f);
    EXPECT_EQ(box.high.x(), 120.0f);
}

TEST(ScaleBox, doesNotGrowByRoundingErrors)
{
    const LabBox box = kvScaleBox({-0.01f, -80.2f, -10.0f}, {100.003f, 40.4f, 10.0f});
    EXPECT_EQ(box.low, QVector3D(0.0f, -80.0f, -20.0f));
    EXPECT_EQ(box.high, QVector3D(100.0f, 40.0f, 20.0f));
}

TEST(ScaleNumbers, areTheMultiplesInTheRange)
{
    EXPECT_EQ(kvScaleNumbers(-60.0f, 40.0f, 25), (std::vector<int>{-50, -25, 0, 25}));
    EXPECT_EQ(kvScaleNumbers(0.0f, 100.0f, 50), (std::vector<int>{0, 50, 100}));
    EXPECT_TRUE(kvScaleNumbers(1.0f, 9.0f, 10).empty());
}

TEST(ScaleNumbers, havePrintedMinusSigns)
{
    EXPECT_EQ(kvScaleText(-40), QString::fromUtf8("\xE2\x88\x92"
                                                  "40"));
    EXPECT_EQ(kvScaleText(0), QStringLiteral("0"));
    EXPECT_EQ(kvScaleText(100), QStringLiteral("100"));
}
