// SPDX-License-Identifier: Apache-2.0
#include <annotation/Contrast.h>

#include <gtest/gtest.h>

// The ratios are those of published contrast tables for the WCAG.
TEST(Contrast, isThatOfTheGuidelines)
{
    EXPECT_NEAR(kvContrast(Qt::black, Qt::white), 21.0, 1e-6);
    EXPECT_NEAR(kvContrast(QColor("#777777"), Qt::white), 4.48, 0.005);
    EXPECT_NEAR(kvContrast(QColor("#767676"), Qt::white), 4.54, 0.005);
    EXPECT_NEAR(kvContrast(Qt::red, Qt::white), 4.0, 0.005);
    EXPECT_NEAR(kvContrast(Qt::blue, Qt::white), 8.59, 0.005);
    EXPECT_DOUBLE_EQ(kvContrast(Qt::red, Qt::red), 1.0);
}

TEST(Contrast, isSymmetric)
{
    EXPECT_DOUBLE_EQ(kvContrast(Qt::green, Qt::magenta), kvContrast(Qt::magenta, Qt::green));
}

TEST(Contrast, ofTheInkIsEnoughOnEveryGround)
{
    for (int r = 0; r < 256; r += 15)
        for (int g = 0; g < 256; g += 15)
            for (int b = 0; b < 256; b += 15)
                EXPECT_GE(kvContrast(kvInkOn(QColor(r, g, b)), QColor(r, g, b)), 4.5)
                    << r << ' ' << g << ' ' << b;
}
