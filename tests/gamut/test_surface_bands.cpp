// SPDX-License-Identifier: Apache-2.0
#include <gamut/SurfaceBands.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <tuple>

namespace {

using KVGamut::LabPoint;
using KVGamut::Mesh;
using Point = std::array<double, 3>;

constexpr QRgb grey = qRgb(200, 200, 200), yellow = qRgb(255, 200, 0), black = qRgb(0, 0, 0);
const QList<std::pair<float, QRgb>> stops{{30.0f, grey}, {30.0f, yellow}, {70.0f, black}};

Point pointOf(const LabPoint& lab)
{
    return {double(lab.L), double(lab.a), double(lab.b)};
}

/// An octahedron around L* 50, whose edges do not lie along the lines of equal lightness.
Mesh octahedron()
{
    Mesh mesh;
    mesh.lab = {{100, 3, 0}, {0, 0, 5}, {55, 50, 4}, {42, 0, 50}, {61, -50, 0}, {47, 1, -50}};
    for (int i = 0; i < 4; ++i) {
        const int here = 2 + i, next = 2 + (i + 1) % 4;
        mesh.triangles.push_back({0, here, next});
        mesh.triangles.push_back({1, next, here});
    }
    return mesh;
}

SurfaceValues lightnessOf(const Mesh& mesh)
{
    SurfaceValues values{{}, stops};
    for (const LabPoint& lab : mesh.lab)
        values.values.push_back(lab.L);
    return values;
}

Point crossOf(const Mesh& mesh, const Mesh::Triangle& triangle)
{
    const auto at = [&](std::size_t i) { return pointOf(mesh.lab[std::size_t(triangle[i])]); };
    const Point p = at(0), q = at(1), r = at(2);
    const Point u{q[0] - p[0], q[1] - p[1], q[2] - p[2]}, v{r[0] - p[0], r[1] - p[1], r[2] - p[2]};
    return {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
}

/// Of the triangles, each with its direction.
double areaOf(const Mesh& mesh)
{
    double area = 0.0;
    for (const Mesh::Triangle& triangle : mesh.triangles) {
        const Point c = crossOf(mesh, triangle);
        area += 0.5 * std::sqrt(c[0] * c[0] + c[1] * c[1] + c[2] * c[2]);
    }
    return area;
}

TEST(ColoredBands, endAtTheLinesOfTheStops)
{
    const Mesh mesh = octahedron();
    const ColoredSurface surface = kvColoredBands(mesh, lightnessOf(mesh));
    ASSERT_EQ(std::size_t(surface.colors.size()), surface.mesh.lab.size());
    for (const Mesh::Triangle& triangle : surface.mesh.triangles) {
        int below = 0, above = 0; // the value of a point is its lightness
        for (const int vertex : triangle) {
            below += surface.mesh.lab[std::size_t(vertex)].L <= 30.0001f;
            above += surface.mesh.lab[std::size_t(vertex)].L >= 29.9999f;
        }
        EXPECT_TRUE(below == 3 || above == 3);
        for (const int vertex : triangle) {
            const QRgb color = surface.colors[vertex];
            const double share =
                std::clamp((double(surface.mesh.lab[std::size_t(vertex)].L) - 30.0) / 40.0, 0.0, 1.0);
            EXPECT_NEAR(qRed(color), below == 3 ? 200.0 : 255.0 * (1.0 - share), 0.51);
            EXPECT_NEAR(qGreen(color), 200.0 * (below == 3 ? 1.0 : 1.0 - share), 0.51);
        }
    }
}

/// The line of one value, computed from the edges of the whole triangles: pairs of points.
std::vector<std::pair<Point, Point>> isoLine(const Mesh& mesh, double L)
{
    std::vector<std::pair<Point, Point>> line;
    for (const Mesh::Triangle& triangle : mesh.triangles) {
        std::vector<Point> ends;
        for (std::size_t i = 0; i < 3; ++i) {
            const Point p = pointOf(mesh.lab[std::size_t(triangle[i])]);
            const Point q = pointOf(mesh.lab[std::size_t(triangle[(i + 1) % 3])]);
            if ((p[0] - L) * (q[0] - L) >= 0.0)
                continue;
            const double t = (L - p[0]) / (q[0] - p[0]);
            ends.push_back({L, p[1] + t * (q[1] - p[1]), p[2] + t * (q[2] - p[2])});
        }
        if (ends.size() == 2)
            line.emplace_back(ends[0], ends[1]);
    }
    return line;
}

bool isNear(const Point& p, const Point& q)
{
    return std::hypot(p[0] - q[0], p[1] - q[1], p[2] - q[2]) < 1e-4;
}

TEST(ColoredBands, haveTheThresholdLineOfAnIndependentComputation)
{
    const Mesh mesh = octahedron();
    const ColoredSurface surface = kvColoredBands(mesh, lightnessOf(mesh));
    const auto line = isoLine(mesh, 30.0);
    ASSERT_EQ(line.size(), 4u); // around the lower half
    for (const auto& [from, to] : line) {
        int greyEdges = 0, yellowEdges = 0;
        for (const Mesh::Triangle& triangle : surface.mesh.triangles)
            for (std::size_t i = 0; i < 3; ++i) {
                const auto p = std::size_t(triangle[i]), q = std::size_t(triangle[(i + 1) % 3]);
                const Point one = pointOf(surface.mesh.lab[p]), other = pointOf(surface.mesh.lab[q]);
                if (!(isNear(one, from) && isNear(other, to)) && !(isNear(one, to) && isNear(other, from)))
                    continue;
                greyEdges += surface.colors[triangle[i]] == grey;
                yellowEdges += surface.colors[triangle[i]] == yellow;
            }
        EXPECT_EQ(greyEdges, 1);
        EXPECT_EQ(yellowEdges, 1);
    }
}

TEST(ColoredBands, coverTheSameSurfaceWithoutGaps)
{
    const Mesh mesh = octahedron();
    const ColoredSurface surface = kvColoredBands(mesh, lightnessOf(mesh));
    EXPECT_GT(surface.mesh.triangles.size(), mesh.triangles.size());
    EXPECT_NEAR(areaOf(surface.mesh), areaOf(mesh), 1e-2);
    using Place = std::tuple<float, float, float>;
    std::map<std::pair<Place, Place>, int> edges; // by their exact places: a gap would be seen
    const auto placeOf = [&](int vertex) {
        const LabPoint& lab = surface.mesh.lab[std::size_t(vertex)];
        return Place(lab.L, lab.a, lab.b);
    };
    for (const Mesh::Triangle& triangle : surface.mesh.triangles)
        for (std::size_t i = 0; i < 3; ++i)
            ++edges[{placeOf(triangle[i]), placeOf(triangle[(i + 1) % 3])}];
    for (const auto& [edge, count] : edges) {
        const auto back = edges.find({edge.second, edge.first});
        EXPECT_TRUE(back != edges.end() && back->second == count);
    }
}

TEST(ColoredBands, keepWholeTrianglesOfOneBand)
{
    const Mesh mesh = octahedron();
    const ColoredSurface surface = kvColoredBands(mesh, {std::vector<float>(6, 30.0f), stops});
    EXPECT_EQ(surface.mesh.triangles.size(), mesh.triangles.size());
    EXPECT_EQ(surface.colors, QList<QRgb>(surface.colors.size(), grey)); // the threshold itself
    const ColoredSurface most = kvColoredBands(mesh, {std::vector<float>(6, 1000.0f), stops});
    EXPECT_EQ(most.mesh.triangles.size(), mesh.triangles.size());
    EXPECT_EQ(most.colors, QList<QRgb>(most.colors.size(), black));
}

TEST(ColoredBands, areFiniteForAnyValues)
{
    const Mesh mesh = octahedron();
    constexpr float nan = std::numeric_limits<float>::quiet_NaN(),
                    inf = std::numeric_limits<float>::infinity();
    const ColoredSurface surface = kvColoredBands(mesh, {{nan, inf, -inf, 40.0f, 3e38f, -3e38f}, stops});
    EXPECT_FALSE(surface.mesh.isEmpty());
    for (const LabPoint& lab : surface.mesh.lab)
        EXPECT_TRUE(std::isfinite(lab.L) && std::isfinite(lab.a) && std::isfinite(lab.b));
}

TEST(ColoredBands, needAValueForEachVertexAndAStop)
{
    const Mesh mesh = octahedron();
    EXPECT_TRUE(kvColoredBands(mesh, {std::vector<float>(5, 1.0f), stops}).mesh.isEmpty());
    EXPECT_TRUE(kvColoredBands(mesh, {std::vector<float>(6, 1.0f), {}}).mesh.isEmpty());
}

} // namespace
