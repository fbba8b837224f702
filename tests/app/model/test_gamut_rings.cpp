// SPDX-License-Identifier: Apache-2.0
#include "app/support/Solids.h"

#include "model/slices/GamutRings.h"
#include "model/slices/GamutSlice.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

using namespace kvtest;

namespace {

/// A prism over a regular polygon with many corners, as an approximation of a cylinder.
Solid cylinder(float bottom, float top, float radius, bool hollow = false)
{
    QList<QPair<float, float>> base;
    constexpr int corners = 720;
    for (int i = 0; i < corners; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / corners;
        base.append(
            {radius * static_cast<float>(std::cos(angle)), radius * static_cast<float>(std::sin(angle))});
    }
    return prism(bottom, top, base, hollow);
}

TEST(GamutRings, haveStepsOfTenUpToWhite)
{
    const GamutRings rings = gamutRings(cylinder(0, 100, 50));
    EXPECT_EQ(rings.lightness, (QList<double>{10, 20, 30, 40, 50, 60, 70, 80, 90, 100}));
    EXPECT_EQ(rings.rings.size(), 10);
    // a white above 100 by a rounding error adds no ring, a lighter white does
    EXPECT_EQ(gamutRings(cylinder(0, 100.001f, 50)).rings.size(), 10);
    EXPECT_EQ(gamutRings(cylinder(0, 105, 50)).lightness.last(), 110.0);
}

TEST(GamutRings, ofACylinderAreCirclesWhoseAreaIsTheVolumeBelow)
{
    // C is 50 at each lightness: C*RSS = 50 * sqrt(L)
    const GamutRings rings = gamutRings(cylinder(0, 100, 50));
    for (qsizetype i = 0; i < rings.rings.size(); ++i) {
        const double L = rings.lightness[i];
        ASSERT_EQ(rings.rings[i].size(), 360);
        for (const QPointF& p : rings.rings[i])
            EXPECT_NEAR(std::hypot(p.x(), p.y()), 50.0 * std::sqrt(L), 0.01);
        // the corners are on the circle, the edges between them inside it
        EXPECT_NEAR(ringArea(rings.rings[i]) / (std::numbers::pi * 2500.0 * L), 1.0, 1e-4);
    }
}

TEST(GamutRings, ofABoxOffTheAxisEncloseItsVolume)
{
    // the gamut does not contain the axis, so that most hues have no colours
    const GamutRings rings = gamutRings(box({25, 20, -10}, {75, 60, 30}), 10.0, 7200);
    EXPECT_NEAR(ringArea(rings.rings.last()), 50.0 * 40.0 * 40.0, 50.0);
    EXPECT_NEAR(ringArea(rings.rings[4]), 25.0 * 40.0 * 40.0, 25.0); // up to L* 50
    EXPECT_EQ(ringArea(rings.rings[1]), 0.0);                        // up to L* 20
    EXPECT_NEAR(rings.rings.last()[3600].x(), 0.0, 1e-9);            // hue 180
}

TEST(GamutRings, excludeCavities)
{
    const Solid solid = cylinder(0, 100, 50) + cylinder(20, 80, 30, true);
    const double volume = std::numbers::pi * (2500.0 * 100.0 - 900.0 * 60.0);
    EXPECT_NEAR(ringArea(gamutRings(solid).rings.last()) / volume, 1.0, 2e-4);
}

TEST(GamutRings, countWhatIsDarkerThanBlackToTheFirst)
{
    const GamutRings rings = gamutRings(cylinder(-10, 50, 20));
    EXPECT_NEAR(ringArea(rings.rings.first()) / (std::numbers::pi * 400.0 * 20.0), 1.0, 1e-4);
}

TEST(GamutRings, startAtTheHueOfA)
{
    const GamutRings rings = gamutRings(box({0, -10, -10}, {100, 40, 10}));
    const QPolygonF& outer = rings.rings.last();
    EXPECT_NEAR(outer[0].x(), 40.0 * 10.0, 0.01); // C 40 over 100 steps of L*
    EXPECT_NEAR(outer[0].y(), 0.0, 0.01);
    EXPECT_NEAR(outer[90].y(), 10.0 * 10.0, 0.01);
    EXPECT_NEAR(outer[180].x(), -10.0 * 10.0, 0.01);
}

TEST(GamutRings, areEmptyForAnEmptySurface)
{
    EXPECT_TRUE(gamutRings({}).rings.isEmpty());
}

} // namespace
