// SPDX-License-Identifier: Apache-2.0
#include "GeometryProbe.h"

#include <scene/Generators.h>

#include <limits>
#include <random>

using namespace kvtest;

namespace {

ColoredTriangle triangle(const QVector3D& a, const QVector3D& b, const QVector3D& c,
                         const QColor& color = Qt::black)
{
    return {ColoredPoint{color, a}, ColoredPoint{color, b}, ColoredPoint{color, c}};
}

Vec3d normalOf(const ColoredTriangle& t)
{
    return unit(cross(Vec3d(t[1].second) - Vec3d(t[0].second), Vec3d(t[2].second) - Vec3d(t[0].second)));
}

void expectVector(const Vec3d& actual, const Vec3d& expected, double tolerance)
{
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.z, expected.z, tolerance);
}

} // namespace

TEST(TrianglesGenerator, convertsPositionsToSceneCoordinates)
{
    const auto vertices = decode(kvTriangles({triangle({1, 2, 3}, {4, 5, 7}, {-6, 0.5f, 9})}).vertices);
    ASSERT_EQ(vertices.size(), 3u);
    expectVector(vertices[0].position, {-2, 1, 3}, 0.0);
    expectVector(vertices[1].position, {-5, 4, 7}, 0.0);
    expectVector(vertices[2].position, {-0.5, -6, 9}, 0.0);
}

TEST(TrianglesGenerator, cornersKeepTheirColourAndOpacity)
{
    const QColor colors[3] = {QColor(10, 20, 30, 40), QColor(255, 0, 128),
                              QColor::fromRgbF(0.1f, 0.7f, 1.0f, 0.0f)};
    const ColoredTriangle t = {ColoredPoint{colors[0], {0, 0, 0}}, ColoredPoint{colors[1], {1, 0, 0}},
                               ColoredPoint{colors[2], {0, 1, 0}}};
    const auto vertices = decode(kvTriangles({t}).vertices);
    ASSERT_EQ(vertices.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(vertices[i].color, rgba(colors[i])) << "corner " << i;
}

TEST(TrianglesGenerator, allCornersShareOneUnitNormalInHostCoordinates)
{
    // In the (L*, a*) plane the host normal points along b*.
    auto vertices = decode(kvTriangles({triangle({0, 0, 0}, {5, 0, 0}, {0, 5, 0})}).vertices);
    ASSERT_EQ(vertices.size(), 3u);
    for (const GeneratedVertex& v : vertices)
        expectVector(v.normal, {0, 0, 1}, 0.0);

    // In the (a*, b*) plane it points along L*. In scene coordinates it would be (0, 1, 0).
    vertices = decode(kvTriangles({triangle({0, 0, 0}, {0, 5, 0}, {0, 0, 5})}).vertices);
    for (const GeneratedVertex& v : vertices)
        expectVector(v.normal, {1, 0, 0}, 0.0);
}

TEST(TrianglesGenerator, normalIsTheNormalisedCrossProduct)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<float> lab(-120.0f, 120.0f);
    QList<ColoredTriangle> triangles;
    for (int i = 0; i < 200; ++i) {
        triangles.append(triangle({lab(random), lab(random), lab(random)},
                                  {lab(random), lab(random), lab(random)},
                                  {lab(random), lab(random), lab(random)}));
    }
    const auto vertices = decode(kvTriangles(triangles).vertices);
    ASSERT_EQ(vertices.size(), 600u);
    for (std::size_t i = 0; i < vertices.size(); ++i)
        expectVector(vertices[i].normal, normalOf(triangles[qsizetype(i / 3)]), 2e-4);
}

TEST(TrianglesGenerator, veryLargeTrianglesHaveUnitNormals)
{
    // The length of the cross product is 1e30: its square overflows float.
    const auto t = triangle({0, 0, 0}, {1e15f, 1e15f, 0}, {0, 1e15f, 1e15f});
    for (const GeneratedVertex& v : decode(kvTriangles({t}).vertices))
        expectVector(v.normal, normalOf(t), 1e-5);
}

TEST(TrianglesGenerator, crossProductsThatOverflowFloatGiveUnitNormals)
{
    // The products in the cross product overflow float.
    const auto t = triangle({0, 0, 0}, {1e30f, 1e30f, 0}, {0, 1e30f, 1e30f});
    for (const GeneratedVertex& v : decode(kvTriangles({t}).vertices))
        expectVector(v.normal, normalOf(t), 1e-5);
}

TEST(TrianglesGenerator, nonFiniteCornersGiveTheNormalZero)
{
    for (const float bad : {infinite, -infinite, quietNaN}) {
        for (const GeneratedVertex& v :
             decode(kvTriangles({triangle({bad, 0, 0}, {0, 1, 0}, {0, 0, 1})}).vertices))
            expectVector(v.normal, {0, 0, 0}, 0.0);
    }
}

TEST(TrianglesGenerator, smallTrianglesHaveUnitNormalsDownToTheDocumentedLimit)
{
    const auto small = triangle({0, 0, 0}, {0.01f, 0, 0}, {0, 0.01f, 0}); // cross product 1e-4
    for (const GeneratedVertex& v : decode(kvTriangles({small}).vertices))
        expectVector(v.normal, {0, 0, 1}, 1e-6);
    const auto tiny = triangle({0, 0, 0}, {0.001f, 0, 0}, {0, 0.001f, 0}); // 1e-6
    for (const GeneratedVertex& v : decode(kvTriangles({tiny}).vertices))
        expectVector(v.normal, {0, 0, 0}, 0.0);
}

TEST(TrianglesGenerator, degenerateTrianglesGetTheNormalZero)
{
    const QList<ColoredTriangle> degenerate = {
        triangle({0, 0, 0}, {1, 2, 3}, {2, 4, 6}),    // collinear
        triangle({5, 5, 5}, {5, 5, 5}, {5, 5, 5}),    // one point
        triangle({5, 5, 5}, {9, -4, 2}, {5, 5, 5}),   // two points
        triangle({50, 0, 0}, {60, 0, 0}, {55, 0, 0}), // on the L* axis
    };
    const auto vertices = decode(kvTriangles(degenerate).vertices);
    ASSERT_EQ(vertices.size(), 12u);
    for (const GeneratedVertex& v : vertices)
        expectVector(v.normal, {0, 0, 0}, 0.0);
}

TEST(TrianglesGenerator, reversedOrientationReversesTheNormal)
{
    const QVector3D a(1, 2, 3), b(40, -3, 8), c(-7, 20, 1);
    const auto one = decode(kvTriangles({triangle(a, b, c)}).vertices);
    const auto other = decode(kvTriangles({triangle(a, c, b)}).vertices);
    expectVector(one[0].normal + other[0].normal, {0, 0, 0}, 1e-6);
}

TEST(TrianglesGenerator, resultHasTheDocumentedDefaults)
{
    for (const QList<ColoredTriangle>& input :
         {QList<ColoredTriangle>(), QList<ColoredTriangle>{triangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0})}}) {
        const GeometryData g = kvTriangles(input);
        EXPECT_EQ(g.vertices.size(), input.size() * 30);
        EXPECT_EQ(g.primitiveMode, 4);
        EXPECT_EQ(g.lineWidth, 1.0f);
        EXPECT_EQ(g.markerType, 1);
        EXPECT_TRUE(g.markers.isEmpty());
        EXPECT_EQ(g.markerSize, -1.0f);
        EXPECT_EQ(g.markerParam, 0.0f);
    }
}

TEST(TrianglesGenerator, keepsTheInputOrder)
{
    QList<ColoredTriangle> triangles;
    for (int i = 0; i < 20; ++i)
        triangles.append(triangle({float(i), 0, 0}, {float(i), 1, 0}, {float(i), 0, 1}));
    const auto vertices = decode(kvTriangles(triangles).vertices);
    ASSERT_EQ(vertices.size(), 60u);
    for (std::size_t i = 0; i < vertices.size(); ++i)
        EXPECT_EQ(vertices[i].position.y, double(i / 3));
}
