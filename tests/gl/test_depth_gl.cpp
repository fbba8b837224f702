// SPDX-License-Identifier: Apache-2.0
#include "support/ShownViewer.h"

#include <gtest/gtest.h>

#include <cmath>

// Axes, grid, outlines, sections and plane lie within one Lab unit of each other. If two of them have almost
// equal depth, pixels flicker during a slow camera move (z-fighting). Without z-fighting, an edge that moves
// by a fraction of a pixel changes its pixels by a fraction of the contrast only.

namespace {

constexpr int width = 240, height = 180;
constexpr int steps = 40;
constexpr double degree = 3.14159265358979 / 180;
constexpr double turn = 0.02 * degree; // a fifth of a pixel at the border of the picture

const QVector3D interest(20, 0, 0);

struct Direction
{
    const char* name;
    double azimuth, elevation; ///< degrees
    double distance = 450;
    bool orthogonal = false;

    /// The eye after @p count steps.
    QVector3D eye(int count) const
    {
        const double up = elevation * degree, around = azimuth * degree + count * turn;
        const double r = distance * std::cos(up);
        return interest + QVector3D(float(distance * std::sin(up)), float(r * std::cos(around)),
                                    float(r * std::sin(around)));
    }
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
    // Two equal gamuts, one of them white: their outlines, and the sections near the ab plane, coincide.
    for (const QString& id : {QStringLiteral("g"), QStringLiteral("h")}) {
        shown.viewer.load(
            id, {{QStringLiteral("ProfilePath"), QStringLiteral("/usr/share/color/icc/colord/sRGB.icc")}},
            nullptr);
        ASSERT_GT(shown.viewer.volume(id), 0.0f);
        shown.viewer.setDisplayGamut(id, false);
    }
    shown.viewer.changeGamutColor(QStringLiteral("h"), Qt::white);
    shown.viewer.setClipping(0.2f);
    shown.viewer.setOrthogonalProjection(GetParam().orthogonal, 0);

    QImage before;
    int jumps = 0, changes = 0;
    for (int i = 0; i < steps; ++i) {
        shown.viewer.setCamera(GetParam().eye(i), 0, interest);
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

// --- The order of the layers ---------------------------------------------------------------

namespace {

/// What a picture shows of the frame of reference.
struct Layers
{
    bool axes = false, outline = false, grid = false, plane = false;
};

/// Four times as large as the window, so that bars cover whole pixels.
QImage pictureOf(kvtest::ShownViewer& shown, const Layers& layers, const QColor& background = Qt::gray)
{
    KVGamut3DViewer& viewer = shown.viewer;
    viewer.setDisplayAxes(layers.axes);
    viewer.setDisplayProjection(QStringLiteral("g"), layers.outline);
    viewer.setDisplayGrid(layers.grid);
    viewer.setabPlane(layers.plane);
    viewer.setBackground(background);
    shown.settle();
    return viewer.picture(QSize(4 * width, 4 * height));
}

/// Number of pixels that @p front covers completely when it is shown alone, and how many of them differ when
/// it is shown with other layers.
std::pair<int, int> coveredAndLost(kvtest::ShownViewer& shown, const Layers& front, const Layers& together)
{
    const QImage onGray = pictureOf(shown, front), onGreen = pictureOf(shown, front, Qt::green);
    const QImage all = pictureOf(shown, together);
    int covered = 0, lost = 0;
    for (int y = 0; y < onGray.height(); ++y) {
        for (int x = 0; x < onGray.width(); ++x) {
            const QRgb pixel = onGray.pixel(x, y);
            if (pixel == onGreen.pixel(x, y)) {
                ++covered;
                lost += pixel != all.pixel(x, y);
            }
        }
    }
    return {covered, lost};
}

} // namespace

TEST_P(DepthOrder, gridAndPlaneAreBehindAxesAndOutlines)
{
    kvtest::ShownViewer shown(width, height);
    ASSERT_TRUE(shown.shown);
    shown.viewer.load(
        QStringLiteral("g"),
        {{QStringLiteral("ProfilePath"), QStringLiteral("/usr/share/color/icc/colord/sRGB.icc")}}, nullptr);
    shown.viewer.setDisplayGamut(QStringLiteral("g"), false);
    const auto axes = shown.root().child(QStringLiteral("Axes"));
    for (const auto& label : axes->children())
        label->setVisible(false);
    shown.viewer.setOrthogonalProjection(GetParam().orthogonal, 0);
    shown.viewer.setCamera(GetParam().eye(0), 0, interest);

    if (GetParam().elevation > 0) { // from below, the L* axis is behind the grid
        const auto [covered, lost] =
            coveredAndLost(shown, {.axes = true}, {.axes = true, .grid = true, .plane = true});
        EXPECT_GT(covered, 20);
        EXPECT_EQ(lost, 0) << "axes";
    }
    const auto [covered, lost] =
        coveredAndLost(shown, {.outline = true}, {.outline = true, .grid = true, .plane = true});
    if (GetParam().distance > 100) { // the outline is outside the close views
        EXPECT_GT(covered, 20);
    }
    EXPECT_EQ(lost, 0) << "outline";
    const auto [gridCovered, gridLost] = coveredAndLost(shown, {.grid = true}, {.grid = true, .plane = true});
    EXPECT_EQ(gridLost, 0) << "grid, of " << gridCovered;
}

INSTANTIATE_TEST_SUITE_P(
    Views, DepthOrder,
    testing::Values(Direction{"oblique", -130, 30}, Direction{"steep", 40, 70}, Direction{"low", 10, 6},
                    Direction{"grazing", -80, 2}, Direction{"fromBelow", 120, -35},
                    Direction{"nearlyTop", -90, 89}, Direction{"nearlyBottom", 30, -88},
                    Direction{"fromPlusA", 0, 15}, Direction{"fromMinusA", 180, 15},
                    Direction{"fromPlusB", 90, 15}, Direction{"fromMinusB", -90, 15},
                    Direction{"grazingFromBelow", 50, -4}, Direction{"close", 160, 40, 60},
                    Direction{"closeFromBelow", -40, -35, 90}, Direction{"far", -130, 30, 1000},
                    Direction{"farFromTheTop", -90, 89, 1250}, Direction{"orthogonal", -130, 30, 450, true},
                    Direction{"orthogonalFromTheTop", -90, 89, 450, true},
                    Direction{"orthogonalFromBelow", 120, -20, 450, true}),
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
