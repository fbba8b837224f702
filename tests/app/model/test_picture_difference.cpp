// SPDX-License-Identifier: Apache-2.0
#include "model/pictures/PictureDifference.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

QImage filled(const QColor& color, QSize size = {8, 4}, QImage::Format format = QImage::Format_RGB32)
{
    QImage picture(size, format);
    picture.fill(color);
    return picture;
}

TEST(PictureDifference, goesFromNoneToAHundredPercent)
{
    EXPECT_EQ(pictureDifference(filled(Qt::red), filled(Qt::red)), 0.0);
    EXPECT_DOUBLE_EQ(*pictureDifference(filled(Qt::black), filled(Qt::white)), 100.0);
    EXPECT_DOUBLE_EQ(*pictureDifference(filled(Qt::white), filled(Qt::black)), 100.0);
}

TEST(PictureDifference, isTheRootMeanSquareOverPixelsAndChannels)
{
    // one of 32 pixels differs in one of 3 channels by 51 steps (a fifth)
    QImage other = filled(QColor(100, 100, 100));
    other.setPixel(3, 2, qRgb(100, 151, 100));
    EXPECT_NEAR(*pictureDifference(filled(QColor(100, 100, 100)), other), 20.0 / std::sqrt(96.0), 1e-9);
    // all pixels differ in all channels
    EXPECT_NEAR(*pictureDifference(filled(QColor(100, 100, 100)), filled(QColor(151, 49, 151))), 20.0, 1e-9);
}

TEST(PictureDifference, doesNotDependOnPixelFormats)
{
    const QColor color(12, 200, 77);
    for (const QImage::Format format :
         {QImage::Format_RGB888, QImage::Format_RGBA8888, QImage::Format_ARGB32})
        EXPECT_EQ(pictureDifference(filled(color), filled(color, {8, 4}, format)), 0.0) << format;
}

TEST(PictureDifference, ignoresColoursOfTransparentPixels)
{
    const QImage none = filled(QColor(0, 0, 0, 0), {8, 4}, QImage::Format_ARGB32);
    const QImage noneOfRed = filled(QColor(255, 0, 0, 0), {8, 4}, QImage::Format_ARGB32);
    EXPECT_EQ(pictureDifference(none, noneOfRed), 0.0);
    EXPECT_NEAR(*pictureDifference(none, filled(Qt::black)), 100.0 / std::sqrt(3.0), 1e-9);
    EXPECT_DOUBLE_EQ(*pictureDifference(none, filled(Qt::white)), 100.0);
}

TEST(PictureDifference, isNulloptForDifferentSizes)
{
    EXPECT_FALSE(pictureDifference(filled(Qt::red), filled(Qt::red, {4, 8})));
    EXPECT_FALSE(pictureDifference(filled(Qt::red), {}));
    EXPECT_FALSE(pictureDifference({}, {}));
}

} // namespace
