// SPDX-License-Identifier: Apache-2.0
#include "GeometryProbe.h"

#include <scene/CoarseTriangles.h>
#include <scene/Generators.h>
#include <scene/VertexRecords.h>

#include <cmath>
#include <limits>
#include <map>
#include <numbers>
#include <set>
#include <tuple>
#include <utility>

using namespace kvtest;

namespace {

constexpr float radius = 50.0f;
using Place = std::tuple<float, float, float>;

Place placeOf(const Vec3d& p)
{
    return {float(p.x), float(p.y), float(p.z)};
}

/// Vertex records of @p triangles, as a scene object has them.
QList<float> recordsOf(const QList<ColoredTriangle>& triangles)
{
    VertexRecords records;
    records.assign(kvTriangles(triangles).vertices);
    return records.list();
}

/// A point of a sphere around (50, 0, 0), with a colour of its own.
ColoredPoint onSphere(int row, int column, int rows)
{
    const int columns = 2 * rows;
    const double polar = std::numbers::pi * row / rows;
    const double around = 2.0 * std::numbers::pi * (column % columns) / columns;
    const double s = row == 0 || row == rows ? 0.0 : std::sin(polar); // the poles are one point each
    const QVector3D p(float(radius * std::cos(polar)), float(radius * s * std::cos(around)),
                      float(radius * s * std::sin(around)));
    return {QColor(row * 2, s == 0.0 ? 0 : column % columns, 128), p + QVector3D(50, 0, 0)};
}

/// A sphere; its triangles are counter-clockwise seen from outside.
QList<ColoredTriangle> sphere(int rows)
{
    QList<ColoredTriangle> triangles;
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < 2 * rows; ++column) {
            const auto at = [&](int r, int c) { return onSphere(row + r, column + c, rows); };
            if (row > 0)
                triangles.append(ColoredTriangle{at(0, 0), at(1, 1), at(0, 1)});
            if (row < rows - 1)
                triangles.append(ColoredTriangle{at(0, 0), at(1, 0), at(1, 1)});
        }
    return triangles;
}

/// A flat square of n x n cells at L* 50, blue for a* below 0 and red above.
QList<ColoredTriangle> twoColours(int n)
{
    QList<ColoredTriangle> triangles;
    const auto at = [n](int x, int y) { return QVector3D(50.0f, float(x - n / 2), float(y)); };
    for (int x = 0; x < n; ++x)
        for (int y = 0; y < n; ++y) {
            const QColor color = x < n / 2 ? Qt::blue : Qt::red;
            const auto corner = [&](int i, int j) { return ColoredPoint{color, at(x + i, y + j)}; };
            triangles.append(ColoredTriangle{corner(0, 0), corner(1, 0), corner(1, 1)});
            triangles.append(ColoredTriangle{corner(0, 0), corner(1, 1), corner(0, 1)});
        }
    return triangles;
}

} // namespace

TEST(CoarseTriangles, areNoMoreThanAskedForAndNotFarFewer)
{
    const QList<float> records = recordsOf(sphere(60)); // 14,160 triangles
    for (const qsizetype max : {800, 5000}) {
        const auto count = qsizetype(decode(kvCoarseTriangles(records, max)).size()) / 3;
        EXPECT_LE(count, max);
        EXPECT_GT(count, max * 9 / 10);
    }
}

TEST(CoarseTriangles, haveCornersOfTheSurfaceInTheirColours)
{
    const QList<ColoredTriangle> exact = sphere(60);
    std::map<Place, std::array<float, 4>> colors;
    for (const GeneratedVertex& v : decode(kvTriangles(exact).vertices))
        colors[placeOf(v.position)] = v.color;
    for (const GeneratedVertex& v : decode(kvCoarseTriangles(recordsOf(exact), 800))) {
        const auto found = colors.find(placeOf(v.position));
        ASSERT_NE(found, colors.end());
        EXPECT_EQ(found->second, v.color);
    }
}

TEST(CoarseTriangles, stayNearTheSurfaceAndFaceOutwards)
{
    const auto vertices = decode(kvCoarseTriangles(recordsOf(sphere(60)), 800));
    ASSERT_FALSE(vertices.empty());
    const Vec3d centre(0, 50, 0); // scene
    for (std::size_t i = 0; i + 3 <= vertices.size(); i += 3) {
        const Vec3d middle =
            1.0 / 3.0 * (vertices[i].position + vertices[i + 1].position + vertices[i + 2].position) - centre;
        EXPECT_NEAR(length(middle), radius, 2.0);
        const Vec3d out = unit(middle);
        const Vec3d outInHost(out.y, -out.x, out.z);
        for (std::size_t k = 0; k < 3; ++k)
            EXPECT_GT(dot(vertices[i + k].normal, outInHost), 0.7);
    }
}

TEST(CoarseTriangles, closeASolidThatWasClosed)
{
    const auto vertices = decode(kvCoarseTriangles(recordsOf(sphere(60)), 800));
    std::map<std::pair<Place, Place>, int> edges;
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        const std::size_t next = i % 3 == 2 ? i - 2 : i + 1;
        ++edges[{placeOf(vertices[i].position), placeOf(vertices[next].position)}];
    }
    for (const auto& [edge, count] : edges) {
        EXPECT_EQ(count, 1);
        EXPECT_EQ(edges.count({edge.second, edge.first}), 1u) << "an edge without a neighbour";
    }
}

TEST(CoarseTriangles, keepTheBorderBetweenTwoColours)
{
    const auto vertices = decode(kvCoarseTriangles(recordsOf(twoColours(40)), 100)); // of 3,200
    ASSERT_FALSE(vertices.empty());
    EXPECT_LE(vertices.size(), 300u);
    double blue = 0.0, red = 0.0;
    for (std::size_t i = 0; i + 3 <= vertices.size(); i += 3) {
        EXPECT_EQ(vertices[i].color, vertices[i + 1].color);
        EXPECT_EQ(vertices[i].color, vertices[i + 2].color);
        const double area = length(cross(vertices[i + 1].position - vertices[i].position,
                                         vertices[i + 2].position - vertices[i].position)) /
                            2.0;
        (vertices[i].color[0] > 0.5f ? red : blue) += area;
    }
    EXPECT_NEAR(blue, 800.0, 1e-3);
    EXPECT_NEAR(red, 800.0, 1e-3);
}

TEST(CoarseTriangles, leaveFewTrianglesAsTheyAre)
{
    const QList<ColoredTriangle> few = sphere(4);
    EXPECT_EQ(kvCoarseTriangles(recordsOf(few), 800).size(), kvTriangles(few).vertices.size());
}

TEST(CoarseTriangles, areNoneOfNothingAndOfPositionsThatAreNotFinite)
{
    EXPECT_TRUE(kvCoarseTriangles({}, 800).isEmpty());
    EXPECT_TRUE(kvCoarseTriangles(QList<float>(40, 1.0f), 800).isEmpty()) << "less than a triangle";
    for (const float odd :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        QList<float> records = recordsOf(sphere(20));
        records[15 * 7 + 1] = odd;
        EXPECT_TRUE(kvCoarseTriangles(records, 100).isEmpty());
    }
}
