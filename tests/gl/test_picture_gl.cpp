// SPDX-License-Identifier: Apache-2.0
#include "support/FaultyDriver.h"
#include "support/ShownViewer.h"

#include <gtest/gtest.h>

using kvtest::ShownViewer;
using kvtest::spinUntil;

namespace {

/// Fills the viewer with objects of all kinds: opaque and translucent surfaces, lines, ribbons, text, solids.
void fill(ShownViewer& shown)
{
    KVGamut3DViewer& v = shown.viewer;
    int loaded = 0;
    for (const char* name : {"sRGB", "AdobeRGB1998"})
        v.load(QLatin1String(name),
               {{QStringLiteral("ProfilePath"),
                 QStringLiteral("/usr/share/color/icc/colord/%1.icc").arg(QLatin1String(name))}},
               [&](QString, bool ok) { loaded += ok ? 1 : 0; });
    ASSERT_TRUE(spinUntil([&] { return loaded == 2; }));
    v.changeGamutAlpha(QStringLiteral("AdobeRGB1998"), 0.4f, 0);
    v.setGamutAmbientStrength(QStringLiteral("sRGB"), 0.5f);
    v.setDisplayMode(QStringLiteral("AdobeRGB1998"), KVGamut3DViewer::Smooth);
    v.addSegmentSet(QStringLiteral("line"),
                    {{{Qt::red, QVector3D(20, -100, -100)}, {Qt::blue, QVector3D(90, 100, 100)}}});
    v.addMarkerSet(QStringLiteral("ball"), KVGamut3DViewer::Sphere, {{Qt::magenta, QVector3D(80, -90, 90)}},
                   12, 0.5f);
    v.setabPlane(true);
    v.setCamera(QVector3D(220, -260, -330), 0, QVector3D(50, 0, 0));
    ASSERT_TRUE(shown.settle());
}

int maxDifference(QRgb one, QRgb other)
{
    return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                     std::abs(qBlue(one) - qBlue(other))});
}

/// Number of pixels of two equally large pictures that differ by more than @p tolerance.
int differing(const QImage& one, const QImage& other, int tolerance)
{
    int count = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x)
            count += maxDifference(one.pixel(x, y), other.pixel(x, y)) > tolerance ? 1 : 0;
    return count;
}

/// Mean colour of a square of @p side pixels with the top left corner @p corner.
QColor mean(const QImage& picture, QPoint corner, int side)
{
    int sum[3] = {};
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            const QRgb pixel = picture.pixel(corner + QPoint(x, y));
            sum[0] += qRed(pixel);
            sum[1] += qGreen(pixel);
            sum[2] += qBlue(pixel);
        }
    return QColor(sum[0] / side / side, sum[1] / side / side, sum[2] / side / side);
}

} // namespace

TEST(Picture, inTheSizeOfTheWindowEqualsTheWindow)
{
    ShownViewer shown;
    fill(shown);
    const QImage window = shown.viewer.picture();
    EXPECT_EQ(shown.viewer.picture(window.size()), window);
}

TEST(Picture, hasTheRequestedSize)
{
    ShownViewer shown;
    fill(shown);
    for (const QSize& size : {QSize(1, 1), QSize(17, 300), QSize(2048, 16), QSize(2500, 40)})
        EXPECT_EQ(shown.viewer.picture(size).size(), size);
    EXPECT_TRUE(shown.viewer.picture(QSize(0, 10)).isNull());
    EXPECT_TRUE(shown.viewer.picture(QSize()).isNull());
}

TEST(Picture, equalsTheWindowOfThatSize)
{
    ShownViewer small(200, 150);
    fill(small);
    ShownViewer large(640, 400);
    fill(large);
    EXPECT_EQ(small.viewer.picture(QSize(640, 400)), large.viewer.picture());
}

TEST(Picture, tiledPictureMatchesTheUntiledOne)
{
    // Both pictures have the same aspect ratio and thus the same view. The large one is rendered in four
    // tiles, the small one without tiles; 3 x 3 pixels of the large one correspond to one pixel of the small
    // one.
    ShownViewer shown;
    fill(shown);
    const QImage tiled = shown.viewer.picture(QSize(2100, 1500));
    const QImage atOnce = shown.viewer.picture(QSize(700, 500));
    ASSERT_EQ(tiled.size(), QSize(2100, 1500));
    int wrong = 0;
    for (int y = 0; y < 500; ++y)
        for (int x = 0; x < 700; ++x)
            wrong += maxDifference(mean(tiled, {3 * x, 3 * y}, 3).rgb(), atOnce.pixel(x, y)) > 40 ? 1 : 0;
    // Edges differ, because they have 9 times as many samples. Lines of one pixel are thinner.
    EXPECT_LT(wrong, 700 * 500 / 100);
}

TEST(Picture, hasNoSeamsBetweenTiles)
{
    // Tiles meet at x = 2016. In a wider picture with the same height and scale the seam is at another
    // position of the scene. The common part of both pictures must be equal.
    ShownViewer shown;
    fill(shown);
    shown.viewer.setViewingAngle(8.0f, 0); // the gamut fills the picture
    ASSERT_TRUE(shown.settle());
    constexpr int height = 600;
    constexpr int shift = 100;
    const QImage one = shown.viewer.picture(QSize(2400, height));
    const QImage wider =
        shown.viewer.picture(QSize(2400 + 2 * shift, height)); // the scale depends on the height only
    const QImage same = wider.copy(shift, 0, 2400, height);
    // the seams of the two pictures are at different positions
    EXPECT_GT(differing(one.copy(1900, 0, 300, height), one.copy(1700, 0, 300, height), 24), 30000);
    EXPECT_EQ(differing(one.copy(1900, 0, 300, height), same.copy(1900, 0, 300, height), 24), 0);
    // vertices are rounded to a fraction of a pixel, so that samples at edges may change
    EXPECT_LE(differing(one, same, 2), 2400 * height / 200);
}

TEST(Picture, largePictureHasSharpEdges)
{
    ShownViewer shown;
    shown.viewer.setDisplayAxes(false);
    shown.viewer.setDisplayGrid(false);
    shown.viewer.setBackground(Qt::black);
    shown.viewer.addMarkerSet(QStringLiteral("cube"), KVGamut3DViewer::Sphere,
                              {{Qt::white, QVector3D(50, 0, 0)}}, 150, 1.0f);
    ASSERT_TRUE(shown.settle());
    const QImage large = shown.viewer.picture(QSize(3000, 3000));
    // the middle row is black, white and black, with transitions of at most two pixels
    int between = 0;
    for (int x = 0; x < 3000; ++x) {
        const int value = qRed(large.pixel(x, 1500));
        between += value > 0 && value < 255 ? 1 : 0;
    }
    EXPECT_LE(between, 4);
    EXPECT_EQ(qRed(large.pixel(1500, 1500)), 255);
    EXPECT_EQ(qRed(large.pixel(10, 1500)), 0);
}

TEST(Picture, doesNotChangeTheWindow)
{
    ShownViewer shown;
    fill(shown);
    const QImage before = shown.viewer.picture();
    shown.viewer.picture(QSize(2100, 300));
    EXPECT_EQ(shown.viewer.picture(), before);
    EXPECT_TRUE(shown.viewer.isSettled());
    shown.viewer.setBackground(Qt::blue);
    ASSERT_TRUE(spinUntil([&] { return shown.viewer.picture().pixelColor(0, 0) == QColor(Qt::blue); }));
    EXPECT_EQ(shown.viewer.picture().size(), before.size());
}

TEST(Picture, includesChangesNotYetDrawnInTheWindow)
{
    ShownViewer shown;
    fill(shown);
    shown.viewer.setDisplayGamut(QStringLiteral("sRGB"), false);
    const QImage picture = shown.viewer.picture(shown.viewer.size());
    ASSERT_TRUE(spinUntil([&] { return shown.viewer.isSettled() && shown.viewer.picture() == picture; }));
}

TEST(Picture, isNullBeforeTheFirstFrame)
{
    KVGamut3DViewer viewer;
    viewer.resize(200, 150);
    EXPECT_TRUE(viewer.picture(QSize(20, 20)).isNull());
}

TEST(Picture, isNullWithoutAFramebuffer)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    const QImage before = shown.viewer.picture();
    kvtest::driverFaults().refusesFramebuffers = true;
    EXPECT_TRUE(shown.viewer.picture().isNull());
    EXPECT_TRUE(shown.viewer.picture(QSize(300, 200)).isNull());
    kvtest::driverFaults() = {};
    EXPECT_EQ(shown.viewer.picture(), before);
    EXPECT_EQ(shown.viewer.picture(QSize(200, 150)), before);
}

TEST(Picture, isTheSameWithSmallFramebuffers)
{
    const QSize size(700, 500);
    ShownViewer large;
    fill(large);
    const QImage expected = large.viewer.picture(size);
    kvtest::driverFaults().maxFramebufferSide = 256;
    ShownViewer small;
    fill(small);
    // lines are smoothed differently where tiles meet
    EXPECT_LE(differing(small.viewer.picture(size), expected, 2), 700 * 500 / 200);
    kvtest::driverFaults() = {};
}
