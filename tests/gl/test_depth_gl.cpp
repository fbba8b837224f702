// SPDX-License-Identifier: Apache-2.0
#include "support/ShownViewer.h"

#include <gtest/gtest.h>

#include <cmath>

// Axes, grid, outline and plane lie within one Lab unit of each other. If two of them have almost equal
// depth, pixels flicker during a slow camera move (z-fighting). Without z-fighting, an edge that moves by a
// fraction of a pixel changes its pixels by a fraction of the contrast only.

namespace {

constexpr int width = 240, height = 180;
constexpr int steps = 40;
constexpr double turn = 0.02 * 3.14159265358979 / 180; // a fifth of a pixel at the border of the picture

struct Direction
{
    const char* name;
    double azimuth, elevation; ///< degrees
};

void PrintTo(const Direction& d, std::ostream* out)
{
    *out << d.name;
}

class DepthOrder : public testing::TestWithParam<Direction>
{
};

} // namespace

TEST_P(DepthOrder, slowCameraMoveCausesNoFlicker)
{
    kvtest::ShownViewer shown(width, height);
    ASSERT_TRUE(shown.shown);
    shown.viewer.setabPlane(true);
    shown.viewer.load(
        QStringLiteral("g"),
        {{QStringLiteral("ProfilePath"), QStringLiteral("/usr/share/color/icc/colord/sRGB.icc")}}, nullptr);
    ASSERT_GT(shown.viewer.volume(QStringLiteral("g")), 0.0f);
    shown.viewer.setDisplayGamut(QStringLiteral("g"), false); // the outline remains visible

    QImage before;
    int jumps = 0, changes = 0;
    for (int i = 0; i < steps; ++i) {
        const double azimuth = GetParam().azimuth * 3.14159265358979 / 180 + i * turn;
        const double elevation = GetParam().elevation * 3.14159265358979 / 180;
        const double r = 450 * std::cos(elevation);
        shown.viewer.setCamera(QVector3D(float(20 + 450 * std::sin(elevation)), float(r * std::cos(azimuth)),
                                         float(r * std::sin(azimuth))),
                               0, QVector3D(20, 0, 0));
        const QImage now = shown.settledPicture();
        ASSERT_EQ(now.size(), QSize(width, height));
        for (int y = 0; !before.isNull() && y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const QRgb a = before.pixel(x, y), b = now.pixel(x, y);
                const int step = std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                                           std::abs(qBlue(a) - qBlue(b))});
                changes += step > 0;
                jumps += step > 150; // of 255: more than half of the samples at full contrast
            }
        }
        before = now;
    }
    EXPECT_GT(changes, 1000); // the camera did move
    // Where two edges cross in a pixel, several samples may change at once. Z-fighting gives hundreds of
    // jumps.
    EXPECT_LE(jumps, 3);
}

INSTANTIATE_TEST_SUITE_P(Views, DepthOrder,
                         testing::Values(Direction{"oblique", -130, 30}, Direction{"steep", 40, 70},
                                         Direction{"low", 10, 6}, Direction{"grazing", -80, 2},
                                         Direction{"fromBelow", 120, -35}, Direction{"nearlyTop", -90, 89}),
                         [](const auto& row) { return row.param.name; });

// --- Grid and axes ------------------------------------------------------------------------

namespace {

bool isDark(QRgb pixel)
{
    return qGray(pixel) < 40; // axes are black, grid lines 180, the background 160
}

/// Number of axis pixels without the grid, and how many of them the grid hides.
struct AxisPixels
{
    int all = 0, lost = 0;
};

/// @p counts selects the pixels to compare.
AxisPixels axisPixels(kvtest::ShownViewer& shown, const std::function<bool(int, int)>& counts)
{
    shown.viewer.setDisplayGrid(false);
    const QImage bare = shown.settledPicture();
    shown.viewer.setDisplayGrid(true);
    const QImage withGrid = shown.settledPicture();
    AxisPixels pixels;
    for (int y = 0; y < bare.height(); ++y) {
        for (int x = 0; x < bare.width(); ++x) {
            if (!isDark(bare.pixel(x, y)) || !counts(x, y))
                continue;
            ++pixels.all;
            pixels.lost += !isDark(withGrid.pixel(x, y));
        }
    }
    return pixels;
}

} // namespace

TEST(AxesOnTheGrid, areNotInterruptedByTheGridFromAbove)
{
    for (const QVector3D& eye : {QVector3D(265, 160, -450), QVector3D(120, -300, -300),
                                 QVector3D(60, 300, -350), QVector3D(400, 60, 40)}) {
        kvtest::ShownViewer shown(400, 300);
        ASSERT_TRUE(shown.shown);
        shown.viewer.setCamera(eye, 0, QVector3D(40, 0, 0));
        const AxisPixels pixels = axisPixels(shown, [](int, int) { return true; });
        EXPECT_GT(pixels.all, 100);
        EXPECT_EQ(pixels.lost, 0) << "from L* " << eye.x() << ", a* " << eye.y() << ", b* " << eye.z();
    }
}

TEST(AxesOnTheGrid, areNotInterruptedByTheGridFromBelow)
{
    kvtest::ShownViewer shown(400, 300);
    ASSERT_TRUE(shown.shown);
    shown.viewer.setCamera(QVector3D(-220, -20, -20), 0, QVector3D(0, 0, 0));
    // The L* axis lies behind the grid, which may hide it and the labels. Only the a* and b* axes are
    // compared, up to their labels.
    const auto onAxis = [](int x, int y) {
        const double fromCentre = std::hypot(x - 200, y - 150);
        return fromCentre > 30 && fromCentre < 110;
    };
    const AxisPixels pixels = axisPixels(shown, onAxis);
    EXPECT_GT(pixels.all, 60);
    EXPECT_EQ(pixels.lost, 0);
}

TEST(AxesOnTheGrid, lightnessAxisEndsAtLightness100)
{
    // Seen from the side the axis is vertical. The topmost dark pixel of its column is the end of the axis:
    // L* 100 plus half its width.
    kvtest::ShownViewer shown(200, 400);
    ASSERT_TRUE(shown.shown);
    shown.viewer.setDisplayGrid(false);
    shown.viewer.findChild<KVGLWidget*>()
        ->root()
        .child(QStringLiteral("Axes"))
        ->child(QStringLiteral("Axis_Y"))
        ->setVisible(false);
    shown.viewer.setOrthogonalProjection(true, 0);
    for (const float eyeLightness : {51.0f, -1.0f}) {
        shown.viewer.setCamera(QVector3D(eyeLightness, 0, -400), 0, QVector3D(eyeLightness, 0, 0));
        const QImage picture = shown.settledPicture();
        int top = 0;
        while (top < picture.height() && !isDark(picture.pixel(100, top)))
            ++top;
        const double unitsPerPixel = 2 * 400 * std::tan(15 * 3.14159265358979 / 180) / picture.height();
        const double lightness = eyeLightness + (picture.height() / 2.0 - top) * unitsPerPixel;
        EXPECT_NEAR(lightness, 100.5, unitsPerPixel) << "from L* " << eyeLightness;
    }
}
