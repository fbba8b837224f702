// SPDX-License-Identifier: Apache-2.0
#include "support/ShownViewer.h"

#include <gtest/gtest.h>

using kvtest::ShownViewer;
using kvtest::spinUntil;

namespace {

/// Everything there is to draw: opaque and translucent surfaces, lines of both kinds, text, solids.
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

int steps(QRgb one, QRgb other)
{
    return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                     std::abs(qBlue(one) - qBlue(other))});
}

/// How many pixels of two pictures of one size differ by more than @p tolerance.
int differing(const QImage& one, const QImage& other, int tolerance)
{
    int count = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x)
            count += steps(one.pixel(x, y), other.pixel(x, y)) > tolerance ? 1 : 0;
    return count;
}

/// Mean of the pixels of the square of @p side whose top left corner is @p corner.
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
    // One piece more to the right and below does not change the view of a picture of the same shape:
    // 2100 is drawn in four pieces, 2100 / 3 at once; three by three of its pixels are one of the other.
    ShownViewer shown;
    fill(shown);
    const QImage pieces = shown.viewer.picture(QSize(2100, 1500));
    const QImage atOnce = shown.viewer.picture(QSize(700, 500));
    ASSERT_EQ(pieces.size(), QSize(2100, 1500));
    int wrong = 0;
    for (int y = 0; y < 500; ++y)
        for (int x = 0; x < 700; ++x)
            wrong += steps(mean(pieces, {3 * x, 3 * y}, 3).rgb(), atOnce.pixel(x, y)) > 40 ? 1 : 0;
    // edges: one of 4 or 8 samples against 9 times as many; lines a pixel thin are thinner
    EXPECT_LT(wrong, 700 * 500 / 100);
}

TEST(Picture, hasNoSeamsBetweenTiles)
{
    // Pieces 2016 pixels wide and high meet at x = 2016. A picture moved by some pixels has them
    // elsewhere in the scene: compare it with one whose field of view is so much larger that the same
    // pixels stand for the same directions.
    ShownViewer shown;
    fill(shown);
    shown.viewer.setViewingAngle(8.0f, 0); // the gamut's middle fills it all
    ASSERT_TRUE(shown.settle());
    constexpr int height = 600;
    constexpr int shift = 100;
    const QImage one = shown.viewer.picture(QSize(2400, height));
    const QImage wider =
        shown.viewer.picture(QSize(2400 + 2 * shift, height)); // the scale is that of the height
    const QImage same = wider.copy(shift, 0, 2400, height);
    // where the one has its seam the other has none, and the other way round
    EXPECT_GT(differing(one.copy(1900, 0, 300, height), one.copy(1700, 0, 300, height), 24), 30000);
    EXPECT_EQ(differing(one.copy(1900, 0, 300, height), same.copy(1900, 0, 300, height), 24), 0);
    // corners are rounded to a fraction of a pixel: a sample at an edge may fall to the other side
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
    // along the middle row: black, then within two pixels white, then black again
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
