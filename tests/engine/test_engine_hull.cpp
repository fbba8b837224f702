// SPDX-License-Identifier: Apache-2.0
// The convex hull, and the orientation predicates on which it is built.

#include "Problems.h"

#include <engine/base/LabGeometry.h>
#include <engine/mesh/ConvexHull.h>

#include <gtest/gtest.h>

extern "C" {
#include <libqhull_r/qhull_ra.h>
}

#include <cmath>
#include <map>
#include <random>

using namespace velmora;

namespace {

double sixfoldVolume(const std::vector<HullPoint>& points, const std::vector<std::array<int, 3>>& triangles)
{
    double sum = 0.0;
    for (const auto& t : triangles) {
        const auto& p = points[static_cast<std::size_t>(t[0])];
        const auto& q = points[static_cast<std::size_t>(t[1])];
        const auto& r = points[static_cast<std::size_t>(t[2])];
        sum += double(p.x) * (double(q.y) * r.z - double(q.z) * r.y) +
               double(p.y) * (double(q.z) * r.x - double(q.x) * r.z) +
               double(p.z) * (double(q.x) * r.y - double(q.y) * r.x);
    }
    return sum;
}

bool isClosedAndConvex(const std::vector<HullPoint>& points, const std::vector<std::array<int, 3>>& triangles)
{
    std::map<std::pair<int, int>, int> edges;
    for (const auto& t : triangles)
        for (std::size_t i = 0; i < 3; ++i)
            ++edges[{t[i], t[(i + 1) % 3]}];
    for (const auto& [edge, count] : edges)
        if (count != 1 || edges.count({edge.second, edge.first}) != 1)
            return false;
    for (const auto& t : triangles)
        for (const auto& p : points)
            if (orientation3d(points[static_cast<std::size_t>(t[0])], points[static_cast<std::size_t>(t[1])],
                              points[static_cast<std::size_t>(t[2])], p) > 0)
                return false;
    return !triangles.empty();
}

double qhullVolume(const std::vector<HullPoint>& points)
{
    std::vector<double> coordinates;
    for (const auto& p : points)
        coordinates.insert(coordinates.end(), {double(p.x), double(p.y), double(p.z)});
    qhT context;
    qhT* qh = &context;
    QHULL_LIB_CHECK
    qh_zero(qh, nullptr);
    char command[] = "qhull Qt FA";
    const int failed = qh_new_qhull(qh, 3, static_cast<int>(points.size()), coordinates.data(), False,
                                    command, nullptr, nullptr);
    EXPECT_EQ(failed, 0);
    qh_getarea(qh, qh->facet_list);
    const double volume = qh->totvol;
    qh_freeqhull(qh, !qh_ALL);
    int left = 0, blocks = 0;
    qh_memfreeshort(qh, &left, &blocks);
    return volume;
}

std::vector<HullPoint> randomBall(int count, unsigned seed, double low)
{
    std::mt19937 random(seed);
    std::normal_distribution<double> any;
    std::uniform_real_distribution<double> radius(low, 1.0);
    std::vector<HullPoint> points;
    for (int i = 0; i < count; ++i) {
        const double x = any(random), y = any(random), z = any(random);
        const double s = radius(random) * (maxHullCoordinate - 1) / std::sqrt(x * x + y * y + z * z);
        points.push_back({std::int32_t(s * x), std::int32_t(s * y), std::int32_t(s * z)});
    }
    return points;
}

} // namespace

TEST(ConvexHull, enclosesAllPointsAndIsClosed)
{
    for (double low : {1.0, 0.99, 0.5, 0.0}) {
        const auto points = randomBall(1500, 1, low);
        EXPECT_TRUE(isClosedAndConvex(points, convexHull(points, {}).value())) << low;
    }
}

TEST(ConvexHull, hasTheVolumeThatQhullFinds)
{
    for (double low : {1.0, 0.9, 0.0}) {
        const auto points = randomBall(5000, 2, low);
        const double volume = sixfoldVolume(points, convexHull(points, {}).value()) / 6.0;
        EXPECT_NEAR(volume / qhullVolume(points), 1.0, 1e-9) << low;
    }
}

TEST(ConvexHull, acceptsCoplanarAndRepeatedPoints)
{
    std::vector<HullPoint> points;
    for (int round = 0; round < 2; ++round)
        for (int x = -3; x <= 3; ++x)
            for (int y = -3; y <= 3; ++y)
                for (int z = -3; z <= 3; ++z)
                    points.push_back({x * 1000, y * 1000, z * 1000});
    const auto triangles = convexHull(points, {}).value();
    EXPECT_TRUE(isClosedAndConvex(points, triangles));
    EXPECT_DOUBLE_EQ(sixfoldVolume(points, triangles), 6.0 * 6000.0 * 6000.0 * 6000.0);
}

TEST(ConvexHull, ofAThinSliceOfTheLatticeIsExact)
{
    // A disc one lattice unit thick, parts of which would be coplanar in floating point.
    std::mt19937 random(3);
    std::uniform_int_distribution<std::int32_t> wide(-maxHullCoordinate, maxHullCoordinate), thin(0, 1);
    std::vector<HullPoint> points;
    for (int i = 0; i < 800; ++i)
        points.push_back({wide(random), wide(random), thin(random)});
    EXPECT_TRUE(isClosedAndConvex(points, convexHull(points, {}).value()));
}

TEST(ConvexHull, ofDegenerateInputIsEmpty)
{
    EXPECT_TRUE(convexHull({}, {}).value().empty());
    EXPECT_TRUE(convexHull({{1, 2, 3}}, {}).value().empty());
    EXPECT_TRUE(convexHull(std::vector<HullPoint>(50, {7, 7, 7}), {}).value().empty());
    std::vector<HullPoint> line, plane;
    for (int i = 0; i < 50; ++i) {
        line.push_back({i * 100, i * 200, -i * 300});
        plane.push_back({i % 7 * 100, i / 7 * 100, i % 7 * 300 - i / 7 * 500});
    }
    EXPECT_TRUE(convexHull(line, {}).value().empty());
    EXPECT_TRUE(convexHull(plane, {}).value().empty());
}

TEST(ConvexHull, ofFourPointsIsTheirTetrahedron)
{
    const std::vector<HullPoint> points{{0, 0, 0}, {10, 0, 0}, {0, 10, 0}, {0, 0, 10}};
    const auto triangles = convexHull(points, {}).value();
    EXPECT_EQ(triangles.size(), 4u);
    EXPECT_TRUE(isClosedAndConvex(points, triangles));
    EXPECT_DOUBLE_EQ(sixfoldVolume(points, triangles), 1000.0);
}

TEST(ConvexHull, failsIfCancelled)
{
    auto protocol = KVCompletionProtocol::createTask({});
    protocol->cancel();
    EXPECT_EQ(codeOf(convexHull(randomBall(2000, 1, 1.0), Task(protocol))), KVProblemCode::Cancelled);
}

// --- Orientation ----------------------------------------------------------------------------------

TEST(Orientation, isExactWhereFloatingPointIsNot)
{
    // Nearly flat, with coordinates of 28 bits: the determinant is +1, its terms are near 2^84.
    const std::int32_t m = (1 << 27) - 1;
    const HullPoint p{0, 0, 0}, q{m, m - 1, 0}, r{m + 1, m, 0};
    // q x r = m*m - (m-1)(m+1) = 1 along z
    EXPECT_EQ(orientation3d(p, q, r, HullPoint{5, 9, 1}), 1);
    EXPECT_EQ(orientation3d(p, q, r, HullPoint{5, 9, -1}), -1);
    EXPECT_EQ(orientation3d(p, q, r, HullPoint{m, 3, 0}), 0);
    EXPECT_EQ(orientation3d(p, r, q, HullPoint{5, 9, 1}), -1);
}

TEST(Orientation, everyColumnIsOnOneSideOfEveryEdge)
{
    const LatticePoint p{0, 10, 10}, q{0, 30, 10}, r{0, 30, 40};
    for (const auto& [u, v] : {std::pair{p, q}, {q, r}, {r, p}})
        for (const LatticePoint& x :
             {p, q, r, LatticePoint{0, 20, 10}, LatticePoint{0, 30, 20}, LatticePoint{0, 20, 25}}) {
            EXPECT_NE(sideAb(u, v, x), 0);
            EXPECT_EQ(sideAb(u, v, x), -sideAb(v, u, x));
        }
}
