#include "support/ShownViewer.h"

#include <gtest/gtest.h>

#include <cmath>

// Axes, grid, outline and floor lie within less than one Lab unit of each other. Where two of them
// fight in depth, a creeping camera makes pixels jump from one to the other; where they do not, an edge
// that moves by a small part of a pixel changes it by a small part of its contrast.

namespace {

constexpr int width = 240, height = 180;
constexpr int steps = 40;
constexpr double turn = 0.02 * 3.14159265358979 / 180; // a fifth of a pixel at the rim

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

TEST_P(DepthOrder, aCreepingCameraMakesNoPixelJump)
{
    kvtest::ShownViewer shown(width, height);
    ASSERT_TRUE(shown.shown);
    shown.viewer.setabPlane(true);
    shown.viewer.load(
        QStringLiteral("g"),
        {{QStringLiteral("ProfilePath"), QStringLiteral("/usr/share/color/icc/colord/sRGB.icc")}}, nullptr);
    ASSERT_GT(shown.viewer.volume(QStringLiteral("g")), 0.0f);
    shown.viewer.setDisplayGamut(QStringLiteral("g"), false); // its outline stays

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
                jumps += step > 150; // of 255: more than two of four samples at once, at full contrast
            }
        }
        before = now;
    }
    EXPECT_GT(changes, 1000); // it did move
    // A single pixel may lose three samples at once where two edges cross in it; surfaces that fight
    // make hundreds of jumps.
    EXPECT_LE(jumps, 3);
}

INSTANTIATE_TEST_SUITE_P(Views, DepthOrder,
                         testing::Values(Direction{"oblique", -130, 30}, Direction{"steep", 40, 70},
                                         Direction{"low", 10, 6}, Direction{"grazing", -80, 2},
                                         Direction{"fromBelow", 120, -35}, Direction{"nearlyTop", -90, 89}),
                         [](const auto& row) { return row.param.name; });
