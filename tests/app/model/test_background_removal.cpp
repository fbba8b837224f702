// SPDX-License-Identifier: Apache-2.0
#include "app/support/Picture.h"

#include "model/pictures/BackgroundRemoval.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace kvtest;

namespace {

/// A picture of one row of translucent colours, drawn on @p background: the colour changes along the
/// row, the opacity from 0 to 1.
QImage drawnOn(const QColor& background)
{
    QImage picture(1024, 1, QImage::Format_RGB32);
    for (int x = 0; x < picture.width(); ++x) {
        const double alpha = (x % 256) / 255.0;
        const double colour[3] = {x / 4.0, 255.0 - x / 4.0, std::abs(x - 512) / 2.1};
        const double behind[3] = {double(background.red()), double(background.green()),
                                  double(background.blue())};
        int mixed[3];
        for (int i = 0; i < 3; ++i)
            mixed[i] = static_cast<int>(std::lround(alpha * colour[i] + (1.0 - alpha) * behind[i]));
        picture.setPixel(x, 0, qRgb(mixed[0], mixed[1], mixed[2]));
    }
    return picture;
}

/// Composites @p picture over @p background in double precision.
QColor composed(QRgb pixel, const QColor& background)
{
    const double alpha = qAlpha(pixel) / 255.0;
    const auto mix = [alpha](int front, int back) {
        return static_cast<int>(std::lround(alpha * front + (1.0 - alpha) * back));
    };
    return QColor(mix(qRed(pixel), background.red()), mix(qGreen(pixel), background.green()),
                  mix(qBlue(pixel), background.blue()));
}

TEST(BackgroundRemoval, isCorrectOnAnyBackground)
{
    const QImage result = withoutBackground(drawnOn(Qt::black), drawnOn(Qt::white));
    ASSERT_EQ(result.size(), QSize(1024, 1));
    for (const QColor& background : {QColor(0xc0, 0x30, 0x80), QColor(Qt::black), QColor(Qt::white),
                                     QColor(Qt::gray), QColor(0, 255, 10)}) {
        const QImage expected = drawnOn(background);
        for (int x = 0; x < 1024; ++x)
            EXPECT_LE(difference(composed(result.pixel(x, 0), background), expected.pixelColor(x, 0)), 2)
                << x << " on " << background.name().toStdString();
    }
}

TEST(BackgroundRemoval, hasTheOpacityOfWhatWasDrawn)
{
    const QImage result = withoutBackground(drawnOn(Qt::black), drawnOn(Qt::white));
    for (int x = 0; x < 1024; ++x)
        EXPECT_NEAR(qAlpha(result.pixel(x, 0)), x % 256, 1) << x;
    EXPECT_EQ(result.pixel(0, 0), qRgba(0, 0, 0, 0));
    EXPECT_EQ(qAlpha(result.pixel(255, 0)), 255);
}

TEST(BackgroundRemoval, keepsOpaqueColoursAsTheyAre)
{
    QImage opaque(2, 1, QImage::Format_RGB32);
    opaque.setPixel(0, 0, qRgb(12, 200, 77));
    opaque.setPixel(1, 0, qRgb(0, 0, 0));
    const QImage result = withoutBackground(opaque, opaque);
    EXPECT_EQ(result.pixel(0, 0), qRgba(12, 200, 77, 255));
    EXPECT_EQ(result.pixel(1, 0), qRgba(0, 0, 0, 255));
}

TEST(BackgroundRemoval, requiresTwoPicturesOfTheSameSize)
{
    const QImage one(2, 2, QImage::Format_RGB32);
    EXPECT_TRUE(withoutBackground(one, QImage(2, 3, QImage::Format_RGB32)).isNull());
    EXPECT_TRUE(withoutBackground(one, QImage(2, 2, QImage::Format_RGB888)).isNull());
    EXPECT_TRUE(withoutBackground({}, {}).isNull());
}

} // namespace
