// SPDX-License-Identifier: Apache-2.0
// The search for the nearest triangle, with estimates in single precision.
#include <engine/mesh/NearestIndex.h>
#include <engine/mesh/TriangleGroup.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

using namespace velmora;

namespace {

using TrianglePoints = std::array<Vec3, 3>;

double distanceToSegment(Vec3 x, Vec3 p, Vec3 q)
{
    const double size = squaredLength(q - p);
    if (!(size > 0.0))
        return length(x - p);
    const double t = std::min(1.0, std::max(0.0, dot(x - p, q - p) / size));
    return length(x - (p + t * (q - p)));
}

// By the barycentric coordinates of the foot of the perpendicular.
double distanceToTriangle(Vec3 x, const TrianglePoints& t)
{
    const Vec3 u = t[1] - t[0], v = t[2] - t[0], w = x - t[0];
    const Vec3 normal = cross(u, v);
    const double size = squaredLength(normal);
    if (size > 0.0) {
        const double gamma = dot(cross(u, w), normal) / size;
        const double beta = dot(cross(w, v), normal) / size;
        if (gamma >= 0.0 && beta >= 0.0 && beta + gamma <= 1.0)
            return std::abs(dot(w, normal)) / std::sqrt(size);
    }
    return std::min({distanceToSegment(x, t[0], t[1]), distanceToSegment(x, t[1], t[2]),
                     distanceToSegment(x, t[2], t[0])});
}

class Dice
{
public:
    double between(double low, double high) { return std::uniform_real_distribution(low, high)(m_engine); }
    Vec3 pointNear(Vec3 middle, double reach)
    {
        const double L = between(-reach, reach), a = between(-reach, reach), b = between(-reach, reach);
        return middle + Vec3{L, a, b};
    }
    // Of any size, often a sliver.
    TrianglePoints triangle(Vec3 middle)
    {
        const Vec3 p = pointNear(middle, 20.0);
        const Vec3 q = pointNear(p, std::pow(10.0, between(-4.0, 1.5)));
        const Vec3 onEdge = p + between(-0.5, 1.5) * (q - p);
        return {p, q, pointNear(onEdge, std::pow(10.0, between(-6.0, 1.5)))};
    }

private:
    std::mt19937 m_engine{20261122};
};

TEST(TriangleGroup, neverTakesANearTriangleForAFarOne)
{
    Dice dice;
    for (int i = 0; i < 200'000; ++i) {
        const Vec3 middle = dice.pointNear({}, 150.0);
        const std::array<TrianglePoints, 4> triangles{dice.triangle(middle), dice.triangle(middle),
                                                      dice.triangle(middle), dice.triangle(middle)};
        const Vec3 x = dice.pointNear({}, i % 100 == 0 ? TriangleGroup::maxDistance / 2.0 : 150.0);
        const auto estimates = TriangleGroup(triangles).squaredDistances(x);
        for (int lane = 0; lane < laneCount; ++lane) {
            const double exact = distanceToTriangle(x, triangles[static_cast<std::size_t>(lane)]);
            ASSERT_LE(estimates[lane], TriangleGroup::farthest(exact * exact)) << exact;
        }
    }
}

TEST(TriangleGroup, knowsFarTrianglesOfOrdinaryShape)
{
    Dice dice;
    for (int i = 0; i < 20'000; ++i) {
        const Vec3 p = dice.pointNear({}, 100.0);
        const TrianglePoints t{p, p + Vec3{2, 0, dice.between(-1, 1)}, p + Vec3{dice.between(-1, 1), 2, 0}};
        const Vec3 x = dice.pointNear({}, 100.0);
        const double exact = distanceToTriangle(x, t);
        const auto estimates = TriangleGroup(std::span(&t, 1)).squaredDistances(x);
        for (int lane = 0; lane < laneCount; ++lane) // the only triangle fills all places
            ASSERT_NEAR(std::sqrt(double(estimates[lane])), exact, 0.001);
    }
}

TEST(TriangleGroup, looksAtDegenerateTriangles)
{
    const Vec3 p{10, 20, 30}, q{11, 22, 33};
    for (const TrianglePoints& t : {TrianglePoints{p, p, p}, {p, q, p}, {p, q, p + 2.0 * (q - p)}}) {
        const auto estimates = TriangleGroup(std::span(&t, 1)).squaredDistances({0, 0, 0});
        EXPECT_LE(estimates[0], TriangleGroup::farthest(squaredLength(p)));
    }
}

TEST(NearestIndex, matchesATestOfAllTriangles)
{
    Dice dice;
    Mesh mesh;
    std::vector<TrianglePoints> all;
    for (int i = 0; i < 500; ++i) {
        const TrianglePoints t = dice.triangle(dice.pointNear({}, 80.0));
        TrianglePoints kept; // in the precision of the mesh
        const int first = static_cast<int>(mesh.lab.size());
        for (std::size_t k = 0; k < 3; ++k) {
            mesh.lab.push_back({float(t[k].L), float(t[k].a), float(t[k].b)});
            kept[k] = toVec3(mesh.lab.back());
        }
        mesh.triangles.push_back({first, first + 1, first + 2});
        all.push_back(kept);
    }
    const NearestIndex index(mesh);
    for (int i = 0; i < 5'000; ++i) {
        const Vec3 x = dice.pointNear({}, i % 100 == 0 ? 1e5 : 120.0);
        double smallest = std::numeric_limits<double>::infinity();
        for (const TrianglePoints& t : all)
            smallest = std::min(smallest, distanceToTriangle(x, t));
        ASSERT_NEAR(length(index.nearest(x) - x), smallest, 1e-6 + 1e-12 * smallest);
    }
}

TEST(NearestIndex, findsAnyPointOfATriangleForHugeValues)
{
    Mesh mesh;
    mesh.lab = {{0, 0, 0}, {10, 0, 0}, {0, 10, 0}};
    mesh.triangles = {{0, 1, 2}};
    const NearestIndex index(mesh);
    for (const double far : {1e6, 1e20, 1e200})
        for (const Vec3& x : {Vec3{far, 0, 0}, {0, -far, 0}, {-far, far, far}}) {
            const Vec3 found = index.nearest(x);
            EXPECT_TRUE(found.L >= 0.0 && found.L <= 10.0 && found.a >= 0.0 && found.a <= 10.0);
        }
}

} // namespace
