// SPDX-License-Identifier: Apache-2.0
#include "app/support/Solids.h"

#include "model/slices/GamutSlice.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

using namespace kvtest;

namespace {

constexpr double rounding = 1e-4; // of floats up to 100

bool isClose(const QPointF& p, const QPointF& q)
{
    return std::hypot(p.x() - q.x(), p.y() - q.y()) < rounding;
}

/// Whether every corner of @p expected is a point of @p ring, and every point of @p ring lies on an edge of
/// @p expected.
testing::AssertionResult runsAlong(const QPolygonF& ring, const QPolygonF& expected)
{
    for (const QPointF& corner : expected)
        if (std::none_of(ring.begin(), ring.end(), [&](const QPointF& p) { return isClose(p, corner); }))
            return testing::AssertionFailure() << "no corner at " << corner.x() << ", " << corner.y();
    for (const QPointF& p : ring) {
        double nearest = 1e9;
        for (qsizetype i = 0; i < expected.size(); ++i) {
            const QPointF a = expected[i];
            const QPointF d = expected[(i + 1) % expected.size()] - a;
            const double t = std::clamp(QPointF::dotProduct(p - a, d) / QPointF::dotProduct(d, d), 0.0, 1.0);
            const QPointF off = p - (a + t * d);
            nearest = std::min(nearest, std::hypot(off.x(), off.y()));
        }
        if (nearest > rounding)
            return testing::AssertionFailure() << p.x() << ", " << p.y() << " is " << nearest << " off";
    }
    return testing::AssertionSuccess();
}

GamutSlice atLightness(const Solid& solid, double L)
{
    return gamutSlice(solid, {SlicePlane::Lightness, L});
}

GamutSlice atHue(const Solid& solid, double degrees)
{
    return gamutSlice(solid, {SlicePlane::Hue, degrees});
}

TEST(GamutSlice, ofABoxAtALightnessIsItsRectangle)
{
    const GamutSlice slice = atLightness(box({10, -20, -30}, {90, 40, 50}), 35);
    ASSERT_EQ(slice.rings.size(), 1);
    EXPECT_TRUE(runsAlong(slice.rings[0], QPolygonF({{-20, -30}, {40, -30}, {40, 50}, {-20, 50}})));
    EXPECT_NEAR(slice.area(), 60.0 * 80.0, 0.01);
}

TEST(GamutSlice, shrinksLinearlyTowardsTheTipOfAPyramid)
{
    Solid solid;
    const Corner tip{100, 0, 0};
    const Corner base[] = {{0, -40, -40}, {0, 40, -40}, {0, 40, 40}, {0, -40, 40}};
    for (int i = 0; i < 4; ++i)
        addFace(solid, base[i], base[(i + 1) % 4], tip);
    addQuad(solid, base[0], base[3], base[2], base[1]);
    solid = KVGamut::weldedMesh(solid);
    for (const double L : {5.0, 25.0, 50.0, 99.0}) {
        const double side = 80.0 * (1.0 - L / 100.0);
        EXPECT_NEAR(atLightness(solid, L).area(), side * side, 0.01) << L;
    }
}

TEST(GamutSlice, isEmptyOutsideTheSolid)
{
    const Solid solid = box({10, 20, 20}, {90, 40, 50});
    EXPECT_TRUE(atLightness(solid, 5).rings.isEmpty());
    EXPECT_TRUE(atLightness(solid, 95).rings.isEmpty());
    EXPECT_TRUE(atHue(solid, 180).rings.isEmpty());
    EXPECT_TRUE(atHue(solid, 225).rings.isEmpty()); // only the opposite half of this plane cuts the solid
    EXPECT_FALSE(atHue(solid, 45).rings.isEmpty());
    EXPECT_TRUE(atLightness({}, 50).rings.isEmpty());
    EXPECT_EQ(atLightness({}, 50).area(), 0.0);
}

TEST(GamutSlice, keepsHolesWithOppositeOrientation)
{
    const Solid solid = box({0, -50, -50}, {100, 50, 50}) + box({20, -10, -10}, {80, 10, 10}, true);
    const GamutSlice slice = atLightness(solid, 50);
    ASSERT_EQ(slice.rings.size(), 2);
    EXPECT_LT(ringArea(slice.rings[0]) * ringArea(slice.rings[1]), 0.0);
    EXPECT_NEAR(slice.area(), 100.0 * 100.0 - 20.0 * 20.0, 0.01);
    EXPECT_EQ(atLightness(solid, 10).rings.size(), 1);
}

TEST(GamutSlice, keepsSeparateParts)
{
    const GamutSlice slice =
        atLightness(box({0, 10, 10}, {50, 20, 20}) + box({0, -20, -20}, {50, -10, -10}), 25);
    EXPECT_EQ(slice.rings.size(), 2);
    EXPECT_NEAR(slice.area(), 200.0, 0.01);
    for (const QPolygonF& ring : slice.rings)
        EXPECT_GT(ringArea(ring), 0.0);
}

TEST(GamutSlice, atAHueEndsOnTheAxis)
{
    const Solid solid = box({10, -30, -30}, {90, 30, 30});
    for (const double h : {0.0, 30.0, 45.0, 90.0, 200.0, 315.0, -60.0, 720.0}) {
        const double radians = h * std::numbers::pi / 180.0;
        const double reach = 30.0 / std::max(std::abs(std::cos(radians)), std::abs(std::sin(radians)));
        const GamutSlice slice = atHue(solid, h);
        ASSERT_EQ(slice.rings.size(), 1) << h;
        EXPECT_TRUE(runsAlong(slice.rings[0], QPolygonF({{0, 10}, {reach, 10}, {reach, 90}, {0, 90}}))) << h;
        EXPECT_NEAR(slice.area(), 80.0 * reach, 0.01) << h;
        for (const QPointF& p : slice.rings[0])
            EXPECT_GE(p.x(), 0.0);
    }
}

TEST(GamutSlice, atAHueHandlesACavityOnTheAxis)
{
    // the cavity contains part of the axis: the cut is one ring, with an indentation at the axis
    const Solid solid = box({0, -50, -50}, {100, 50, 50}) + box({20, -10, -10}, {80, 10, 10}, true);
    const GamutSlice slice = atHue(solid, 0);
    ASSERT_EQ(slice.rings.size(), 1);
    EXPECT_TRUE(
        runsAlong(slice.rings[0],
                  QPolygonF({{0, 0}, {50, 0}, {50, 100}, {0, 100}, {0, 80}, {10, 80}, {10, 20}, {0, 20}})));
    EXPECT_NEAR(slice.area(), 50.0 * 100.0 - 10.0 * 60.0, 0.01);
}

TEST(GamutSlice, atAHueKeepsWhatLiesOffTheAxisWhole)
{
    const GamutSlice slice = atHue(box({10, 20, -5}, {90, 40, 5}), 0);
    ASSERT_EQ(slice.rings.size(), 1);
    EXPECT_TRUE(runsAlong(slice.rings[0], QPolygonF({{20, 10}, {40, 10}, {40, 90}, {20, 90}})));
}

TEST(GamutSlice, throughCornersIsClosedAndHasNoPointTwice)
{
    const Solid solid = prism(0, 100, {{40, 0}, {0, 40}, {-40, 0}, {0, -40}});
    for (const double h : {0.0, 90.0, 180.0, 270.0}) {
        const GamutSlice slice = atHue(solid, h);
        ASSERT_EQ(slice.rings.size(), 1) << h;
        EXPECT_NEAR(slice.area(), 4000.0, 0.05) << h;
        const QPolygonF& ring = slice.rings[0];
        for (qsizetype i = 0; i < ring.size(); ++i)
            EXPECT_NE(ring[i], ring[(i + 1) % ring.size()]);
    }
}

} // namespace
