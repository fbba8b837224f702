// SPDX-License-Identifier: Apache-2.0
#include "PictureComparison.h"

#include <gtest/gtest.h>

namespace {

QImage filled(const QColor& color, QSize size = {40, 30})
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

} // namespace

TEST(PictureComparison, findsNoDifferenceInTheSamePicture)
{
    const auto difference = comparePictures(filled(Qt::red), filled(Qt::red));
    EXPECT_TRUE(difference.comparable);
    EXPECT_EQ(difference.mean, 0.0);
    EXPECT_EQ(difference.fraction, 0.0);
}

TEST(PictureComparison, countsThePixelsThatDifferVisibly)
{
    QImage one = filled(Qt::gray), other = one;
    for (int x = 0; x < 12; ++x)
        other.setPixelColor(x, 0, Qt::red);
    other.setPixelColor(20, 20, QColor(170, 160, 164)); // a difference of 10 is not counted
    const auto difference = comparePictures(one, other);
    EXPECT_DOUBLE_EQ(difference.fraction, 12 / 1200.0);
    EXPECT_NEAR(difference.mean, (12.0 * (95 + 160 + 164) + 10) / 3600.0, 1e-9);
}

TEST(PictureComparison, detectsASmallShiftOfOneChannel)
{
    const auto difference = comparePictures(filled(QColor(100, 100, 100)), filled(QColor(100, 106, 100)));
    EXPECT_EQ(difference.fraction, 0.0);
    EXPECT_DOUBLE_EQ(difference.mean, 2.0);
    EXPECT_FALSE(withinThreshold(difference, {0.5, 0.02}));
}

TEST(PictureComparison, nullAndDifferentlySizedPicturesAreNotComparable)
{
    EXPECT_FALSE(comparePictures(QImage(), filled(Qt::red)).comparable);
    EXPECT_FALSE(withinThreshold(comparePictures(filled(Qt::red, {40, 31}), filled(Qt::red)), {255, 1}));
}
