// SPDX-License-Identifier: Apache-2.0
// The colours of one hue as a value: no OpenGL.

#include "support/MessageCheck.h"

#include <gamut/HueLeaf.h>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

using KVGamut::LabPoint;
using KVGamut::Mesh;

/// A box around the L* axis: L* 0 to 80, a* -30 to 60, b* -20 to 50.
Mesh box()
{
    Mesh mesh;
    const LabPoint low{0, -30, -20}, high{80, 60, 50};
    for (int i = 0; i < 8; ++i)
        mesh.lab.push_back({i & 1 ? high.L : low.L, i & 2 ? high.a : low.a, i & 4 ? high.b : low.b});
    mesh.triangles = {{1, 3, 7}, {1, 7, 5}, {0, 4, 6}, {0, 6, 2}, {2, 6, 7}, {2, 7, 3},
                      {0, 1, 5}, {0, 5, 4}, {4, 5, 7}, {4, 7, 6}, {0, 2, 3}, {0, 3, 1}};
    return mesh;
}

double areaOf(const Mesh& mesh)
{
    double area = 0.0;
    for (const auto& t : mesh.triangles) {
        const auto at = [&](std::size_t i) {
            const LabPoint& p = mesh.lab[static_cast<std::size_t>(t[i])];
            return QVector3D(p.L, p.a, p.b);
        };
        area += 0.5 * double(QVector3D::crossProduct(at(1) - at(0), at(2) - at(0)).length());
    }
    return area;
}

double lengthOf(const QList<ColoredSegment>& segments)
{
    double length = 0.0;
    for (const auto& [from, to] : segments)
        length += double((to.second - from.second).length());
    return length;
}

} // namespace

TEST(HueLeaf, reachesFromTheAxisToTheSurface)
{
    EXPECT_NEAR(areaOf(kvHueTriangles(box(), {0.0f, 100.0f})), 80.0 * 60.0, 0.1);
    EXPECT_NEAR(areaOf(kvHueTriangles(box(), {90.0f, 100.0f})), 80.0 * 50.0, 0.1);
    EXPECT_NEAR(areaOf(kvHueTriangles(box(), {180.0f, 100.0f})), 80.0 * 30.0, 0.1);
    EXPECT_NEAR(areaOf(kvHueTriangles(box(), {-90.0f, 100.0f})), 80.0 * 20.0, 0.1);
    EXPECT_NEAR(areaOf(kvHueTriangles(box(), {45.0f, 100.0f})), 80.0 * 50.0 * std::numbers::sqrt2, 0.1);
}

TEST(HueLeaf, containsOnlyColoursOfItsHue)
{
    const double hue = 0.3;
    const Mesh leaf = kvHueTriangles(box(), {float(hue * 180.0 / std::numbers::pi), 100.0f});
    ASSERT_FALSE(leaf.isEmpty());
    for (const LabPoint& p : leaf.lab) {
        EXPECT_NEAR(-std::sin(hue) * double(p.a) + std::cos(hue) * double(p.b), 0.0, 1e-4);
        EXPECT_GE(std::cos(hue) * double(p.a) + std::sin(hue) * double(p.b), -1e-4);
    }
}

TEST(HueLeaf, endsAtTheMaximumLightness)
{
    const Mesh leaf = kvHueTriangles(box(), {0.0f, 33.3f});
    EXPECT_NEAR(areaOf(leaf), 33.3 * 60.0, 0.1);
    for (const LabPoint& p : leaf.lab)
        EXPECT_LE(p.L, 33.301f);
}

TEST(HueLeaf, isOutlinedOnTheSurfaceOnly)
{
    // bottom, side and top, not the axis
    EXPECT_NEAR(lengthOf(kvHueOutline(box(), {0.0f, 100.0f}, Qt::black)), 60.0 + 80.0 + 60.0, 0.01);
    EXPECT_NEAR(lengthOf(kvHueOutline(box(), {180.0f, 50.0f}, Qt::black)), 30.0 + 50.0, 0.01);
}

TEST(HueLeaf, isEmptyWithoutASurface)
{
    EXPECT_TRUE(kvHueTriangles({}, {0.0f, 100.0f}).isEmpty());
    EXPECT_TRUE(kvHueOutline({}, {0.0f, 100.0f}, Qt::black).isEmpty());
    EXPECT_TRUE(kvHueTriangles(box(), {0.0f, -10.0f}).isEmpty());
}
