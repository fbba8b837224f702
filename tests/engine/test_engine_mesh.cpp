// SPDX-License-Identifier: Apache-2.0
#include "Looks.h"
#include "MappedDevice.h"

#include <engine/mesh/Columns.h>
#include <engine/mesh/MeshChecks.h>
#include <engine/mesh/MeshVolume.h>
#include <engine/mesh/NearestIndex.h>
#include <engine/mesh/Outline.h>
#include <engine/mesh/SelfIntersection.h>
#include <engine/mesh/WindingIndex.h>
#include <engine/surface/DeviceCubeMesh.h>
#include <engine/surface/GamutRecord.h>
#include <engine/surface/Refinement.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>

using namespace velmora;

namespace {

// --- Solids ---------------------------------------------------------------------------------------

Mesh boxMesh(LabPoint low, LabPoint high)
{
    Mesh mesh;
    mesh.channels = 3;
    for (int i = 0; i < 8; ++i)
        mesh.lab.push_back({i & 1 ? high.L : low.L, i & 2 ? high.a : low.a, i & 4 ? high.b : low.b});
    mesh.triangles = {{1, 3, 7}, {1, 7, 5}, {0, 4, 6}, {0, 6, 2}, {2, 6, 7}, {2, 7, 3},
                      {0, 1, 5}, {0, 5, 4}, {4, 5, 7}, {4, 7, 6}, {0, 2, 3}, {0, 3, 1}};
    return mesh;
}

Mesh joined(const Mesh& p, const Mesh& q)
{
    Mesh mesh = p;
    const int shift = static_cast<int>(p.lab.size());
    mesh.lab.insert(mesh.lab.end(), q.lab.begin(), q.lab.end());
    for (const Triangle& t : q.triangles)
        mesh.triangles.push_back({t[0] + shift, t[1] + shift, t[2] + shift});
    return mesh;
}

// A ring of `segments` square prisms around the L* axis.
Mesh torusMesh(int segments)
{
    Mesh mesh;
    mesh.channels = 3;
    for (int i = 0; i < segments; ++i) {
        const double angle = 2.0 * M_PI * i / segments;
        for (const auto& [radius, L] : {std::pair{20.0, 0.0}, {40.0, 0.0}, {40.0, 20.0}, {20.0, 20.0}})
            mesh.lab.push_back(snapped({L, radius * std::cos(angle), radius * std::sin(angle)}));
    }
    const auto at = [segments](int i, int k) { return (i % segments) * 4 + k % 4; };
    for (int i = 0; i < segments; ++i)
        for (int k = 0; k < 4; ++k) {
            mesh.triangles.push_back({at(i, k), at(i + 1, k), at(i + 1, k + 1)});
            mesh.triangles.push_back({at(i, k), at(i + 1, k + 1), at(i, k + 1)});
        }
    if (signedVolume(mesh) < 0.0)
        flip(mesh);
    return mesh;
}

} // namespace

// --- Checks ---------------------------------------------------------------------------------------

TEST(MeshChecks, acceptValidSurfaces)
{
    const Mesh box = boxMesh({0, 0, 0}, {10, 20, 30});
    MeshTopology t = topology(box);
    EXPECT_TRUE(t.indicesValid && t.closed && t.manifold);
    EXPECT_EQ(t.components, 1);
    EXPECT_EQ(t.eulerCharacteristic, 2);
    EXPECT_DOUBLE_EQ(signedVolume(box), 6000.0);

    t = topology(torusMesh(12));
    EXPECT_TRUE(t.closed && t.manifold);
    EXPECT_EQ(t.eulerCharacteristic, 0);

    t = topology(joined(box, boxMesh({50, 50, 50}, {60, 60, 60})));
    EXPECT_TRUE(t.closed && t.manifold);
    EXPECT_EQ(t.components, 2);
    EXPECT_EQ(t.eulerCharacteristic, 4);
}

TEST(MeshChecks, detectEveryKindOfDamage)
{
    const Mesh box = boxMesh({0, 0, 0}, {10, 20, 30});
    Mesh hole = box;
    hole.triangles.pop_back();
    EXPECT_FALSE(topology(hole).closed);

    Mesh turned = box;
    std::swap(turned.triangles[3][0], turned.triangles[3][1]);
    EXPECT_FALSE(topology(turned).closed);

    Mesh twice = box;
    twice.triangles.push_back(twice.triangles[0]);
    EXPECT_FALSE(topology(twice).closed);

    for (int bad : {-1, 8, 1 << 30}) {
        Mesh wrong = box;
        wrong.triangles[5][1] = bad;
        EXPECT_FALSE(topology(wrong).indicesValid);
    }
    Mesh flat = box;
    flat.triangles[0][1] = flat.triangles[0][0];
    EXPECT_FALSE(topology(flat).indicesValid);

    // Two boxes that share one vertex: closed, but not manifold there.
    Mesh touching = joined(box, boxMesh({10, 20, 30}, {20, 40, 60}));
    for (Triangle& t : touching.triangles)
        for (int& v : t)
            if (v == 8)
                v = 7;
    const MeshTopology t = topology(touching);
    EXPECT_TRUE(t.closed);
    EXPECT_FALSE(t.manifold);

    EXPECT_FALSE(topology({}).closed);
}

// --- Columns --------------------------------------------------------------------------------------

namespace {

WindingCheck windingOf(const Mesh& mesh, double pitch)
{
    const ColumnGrid grid = columnsOver(boundsOf(latticePoints(mesh)), pitch);
    return checkWinding(castColumns(mesh, grid, {}).value(), grid);
}

} // namespace

TEST(Columns, measureTheVolumeOfASolid)
{
    const Mesh box = boxMesh({10, -20, 30}, {50, 30, 70});
    const WindingCheck check = windingOf(box, 1.0);
    EXPECT_NEAR(check.insideVolume, 40.0 * 50.0 * 40.0, 1e-3);
    EXPECT_EQ(check.invalidVolume, 0.0);
    const Mesh torus = torusMesh(60);
    EXPECT_NEAR(windingOf(torus, 0.1).insideVolume, signedVolume(torus), 1e-3 * signedVolume(torus));
}

TEST(Columns, detectSelfIntersection)
{
    // Two boxes in one mesh overlap in 10 x 20 x 30, where the winding number is 2.
    const Mesh both = joined(boxMesh({0, 0, 0}, {40, 40, 40}), boxMesh({30, 20, 10}, {70, 60, 80}));
    EXPECT_NEAR(windingOf(both, 0.5).invalidVolume, 10.0 * 20.0 * 30.0, 1.0);
    Mesh inverted = boxMesh({0, 0, 0}, {40, 40, 40});
    flip(inverted);
    EXPECT_NEAR(windingOf(inverted, 0.5).invalidVolume, 64000.0, 1.0);
}

TEST(Columns, detectCoincidentSheets)
{
    // The upper box stands on a quarter of the lower one.
    const Mesh stacked = joined(boxMesh({0, 0, 0}, {40, 40, 40}), boxMesh({40, 0, 0}, {60, 20, 20}));
    const WindingCheck check = windingOf(stacked, 0.5);
    EXPECT_EQ(check.invalidVolume, 0.0);
    EXPECT_NEAR(check.coveredArea, 1600.0, 40.0);
    EXPECT_NEAR(check.coincidentArea, 400.0, 20.0);
    EXPECT_EQ(windingOf(torusMesh(60), 0.1).coincidentArea, 0.0);
}

namespace {

// A box; along b* the device goes forwards, backwards and forwards again, which nodes at the ends and in the
// middle do not show.
MappedDevice boxWithADetour()
{
    return MappedDevice(3, [](const float* d) {
        const double t = double(d[2]);
        return Vec3{10 + 80 * double(d[0]), 80 * double(d[1]), 80 * t + 40 * std::sin(2 * M_PI * t)};
    });
}

} // namespace

TEST(Refinement, isRejectedIfSheetsWouldCoincide)
{
    const MappedDevice device = boxWithADetour();
    Mesh finer = deviceCubeMesh(device, {{0, 0.5f, 1}, {0, 0.5f, 1}, {0, 0.5f, 1}}, {}).value();
    ASSERT_TRUE(refine(finer, device, 1.0, 1, {}));
    EXPECT_EQ(countIntersections(finer, 1, {}).value(), 0u); // and the winding number is nowhere above 1
    EXPECT_GT(windingOf(finer, 1.0).coincidentArea, 1000.0);

    GamutRequest request;
    request.gridPoints = 3;
    request.maxEdge = 1.0;
    for (int refinements : {0, 1, 3}) {
        request.refinements = refinements;
        const GamutRecord record = buildGamut(device, request, {}).value();
        EXPECT_EQ(record.method, KVGamut::Method::DeviceMesh);
        EXPECT_EQ(windingOf(record.mesh, 1.0).coincidentArea, 0.0) << refinements;
        EXPECT_NEAR(std::abs(signedVolume(record.mesh)), 80.0 * 80.0 * 80.0, 1.0);
    }
}

TEST(Columns, passThroughVerticesAndEdgesOnce)
{
    // The columns of an integer grid pass through all vertices and edges of this box.
    const Mesh box = boxMesh({0, 0, 0}, {4, 4, 4});
    ColumnGrid grid;
    grid.a0 = grid.b0 = -65536;
    grid.step = 65536;
    grid.na = grid.nb = 7;
    const ColumnCrossings columns = castColumns(box, grid, {}).value();
    for (std::size_t c = 0; c + 1 < columns.first.size(); ++c) {
        int sum = 0;
        for (auto i = columns.first[c]; i < columns.first[c + 1]; ++i)
            sum += columns.crossings[i].sign;
        EXPECT_EQ(sum, 0);
        EXPECT_TRUE(columns.first[c + 1] - columns.first[c] == 0 ||
                    columns.first[c + 1] - columns.first[c] == 2);
    }
    EXPECT_NEAR(checkWinding(columns, grid).insideVolume, 64.0, 1e-6);
}

// --- Crossings ------------------------------------------------------------------------------------

namespace {

constexpr std::size_t all = 1'000'000;

// Whether the edge from p to q crosses a triangle, in floating point (Möller and Trumbore 1997).
bool edgePierces(Vec3 p, Vec3 q, const std::array<Vec3, 3>& t)
{
    const Vec3 along = q - p, u = t[1] - t[0], v = t[2] - t[0], h = cross(along, v);
    const double size = dot(u, h);
    if (size == 0.0)
        return false;
    const Vec3 s = p - t[0], k = cross(s, u);
    const double x = dot(s, h) / size, y = dot(along, k) / size, z = dot(v, k) / size;
    return x > 0.0 && y > 0.0 && x + y < 1.0 && z > 0.0 && z < 1.0;
}

std::size_t slowCrossings(const Mesh& mesh)
{
    std::vector<std::array<Vec3, 3>> triangles;
    for (const Triangle& t : mesh.triangles)
        triangles.push_back({toVec3(mesh.lab[static_cast<std::size_t>(t[0])]),
                             toVec3(mesh.lab[static_cast<std::size_t>(t[1])]),
                             toVec3(mesh.lab[static_cast<std::size_t>(t[2])])});
    std::size_t count = 0;
    for (std::size_t f = 0; f < triangles.size(); ++f)
        for (std::size_t g = f + 1; g < triangles.size(); ++g) {
            bool found = false;
            for (std::size_t e = 0; e < 3; ++e)
                found = found || edgePierces(triangles[f][e], triangles[f][(e + 1) % 3], triangles[g]) ||
                        edgePierces(triangles[g][e], triangles[g][(e + 1) % 3], triangles[f]);
            count += found;
        }
    return count;
}

} // namespace

TEST(SelfIntersection, matchesATestOfAllPairs)
{
    std::mt19937 random(31);
    std::uniform_real_distribution<double> any(-100.0, 100.0), near(-15.0, 15.0);
    for (int round = 0; round < 5; ++round) {
        Mesh soup;
        for (int i = 0; i < 600; ++i) {
            const Vec3 middle{any(random), any(random), any(random)};
            for (int c = 0; c < 3; ++c)
                soup.lab.push_back(snapped(middle + Vec3{near(random), near(random), near(random)}));
            soup.triangles.push_back({3 * i, 3 * i + 1, 3 * i + 2});
        }
        const std::size_t expected = slowCrossings(soup);
        EXPECT_GT(expected, 20u);
        EXPECT_EQ(countIntersections(soup, all, {}).value(), expected);
        EXPECT_EQ(countIntersections(soup, 7, {}).value(), 7u);
    }
}

TEST(SelfIntersection, isFoundOnlyIfSolidsOverlap)
{
    const Mesh box = boxMesh({0, 0, 0}, {40, 40, 40});
    EXPECT_EQ(countIntersections(box, all, {}).value(), 0u);
    EXPECT_EQ(countIntersections(torusMesh(60), all, {}).value(), 0u);
    EXPECT_GT(countIntersections(joined(box, boxMesh({30, 20, 10}, {70, 60, 80})), all, {}).value(), 0u);
    EXPECT_EQ(countIntersections(joined(box, boxMesh({10, 10, 10}, {20, 20, 20})), all, {}).value(),
              0u); // within
    EXPECT_EQ(countIntersections(joined(box, boxMesh({40, 0, 0}, {80, 40, 40})), all, {}).value(),
              0u); // beside
    EXPECT_EQ(countIntersections({}, all, {}).value(), 0u);
}

TEST(SelfIntersection, ofOneLatticeUnitIsFound)
{
    // A vertex one lattice unit beyond a face.
    Mesh mesh = boxMesh({0, 0, 0}, {40, 40, 40});
    const float unit = 1.0f / 65536.0f;
    mesh.lab.insert(mesh.lab.end(), {{40.0f - unit, 13.0f, 21.0f}, {60, 10, 20}, {60, 16, 20}});
    mesh.triangles.push_back({8, 9, 10});
    EXPECT_EQ(countIntersections(mesh, all, {}).value(), 1u);
    mesh.lab[8].L = 40.0f;
    EXPECT_EQ(countIntersections(mesh, all, {}).value(), 0u); // touches
}

// Real meshes have flat and sharp vertices, and thin sheets between them.
TEST(SelfIntersection, isFoundBetweenTwoRealMeshes)
{
    const Mesh ring = torusMesh(24);
    std::mt19937 random(5);
    std::uniform_real_distribution<double> any(-25.0, 25.0);
    int crossing = 0;
    for (int round = 0; round < 40; ++round) {
        Mesh moved = torusMesh(17);
        const Vec3 shift{any(random), 2.0 * any(random), any(random)};
        for (LabPoint& v : moved.lab)
            v = snapped(toVec3(v) + shift);
        const Mesh both = joined(ring, moved);
        const std::size_t expected = slowCrossings(both);
        crossing += expected > 0;
        EXPECT_EQ(countIntersections(both, all, {}).value(), expected) << round;
    }
    EXPECT_GT(crossing, 20);
}

// A vertex is moved beyond the opposite side of its solid. Its own triangles do not intersect each other.
TEST(SelfIntersection, isFoundIfADentReachesTheOtherSide)
{
    Mesh mesh = torusMesh(24);
    EXPECT_EQ(slowCrossings(mesh), 0u);
    mesh.lab[2] = {-5.0f, 30.0f, 0.0f};
    const std::size_t expected = slowCrossings(mesh);
    EXPECT_GT(expected, 0u);
    EXPECT_EQ(countIntersections(mesh, all, {}).value(), expected);
}

// Coincident sheets do not intersect. Where two solids coincide, the winding number is 2 or 0 instead.
// Solids that only touch are valid.
TEST(SelfIntersection, doesNotIncludeCoincidentSheets)
{
    const Mesh box = boxMesh({0, 0, 0}, {40, 40, 40});
    const Mesh twice = joined(box, box);
    EXPECT_EQ(countIntersections(twice, all, {}).value(), 0u);
    EXPECT_NEAR(windingOf(twice, 2.0).invalidVolume, 64000.0, 1.0);

    // One inside the other, with common facets.
    const Mesh nested = joined(box, boxMesh({0, 0, 0}, {20, 40, 40}));
    EXPECT_EQ(countIntersections(nested, all, {}).value(), 0u);
    EXPECT_NEAR(windingOf(nested, 2.0).invalidVolume, 32000.0, 1.0);

    Mesh inside = box;
    flip(inside);
    EXPECT_EQ(windingOf(joined(box, inside), 2.0).insideVolume, 0.0);
}

// --- Inside and outline of solids with holes ------------------------------------------------------

TEST(WindingIndex, excludesTheHoleOfATorus)
{
    const WindingIndex index(torusMesh(60));
    EXPECT_FALSE(index.isInside({10, 0, 0}));
    EXPECT_TRUE(index.isInside({10, 30, 0}));
    EXPECT_TRUE(index.isInside({10, 0, -30}));
    EXPECT_FALSE(index.isInside({21, 30, 0}));
    EXPECT_FALSE(index.isInside({-1, 30, 0}));
    EXPECT_FALSE(index.isInside({10, 41, 0}));
}

TEST(WindingIndex, countsPointsOnAFaceAsInside)
{
    const WindingIndex index(boxMesh({0, 0, 0}, {10, 20, 30}));
    EXPECT_TRUE(index.isInside({0, 7, 9}));
    EXPECT_TRUE(index.isInside({10, 7, 9}));
    EXPECT_FALSE(index.isInside({10.001, 7, 9}));
    EXPECT_FALSE(index.isInside({-0.001, 7, 9}));
}

TEST(NearestIndex, findsTheInnerSideOfATorus)
{
    const NearestIndex index(torusMesh(4)); // square: flat sides at a distance of 20 / sqrt(2)
    const Vec3 p = index.nearest({10, 0, 0});
    EXPECT_NEAR(length(p - Vec3{10, 0, 0}), 20.0 / std::sqrt(2.0), 1e-4);
}

TEST(NearestIndex, acceptsDegenerateTriangles)
{
    const Vec3 p{0, 0, 0}, q{10, 0, 0}, r{4, 0, 0}, x{6, 3, 4};
    for (const auto& t : {std::array{p, q, r}, {q, r, p}, {p, p, q}, {p, q, q}, {q, p, q}})
        EXPECT_NEAR(length(nearestOnTriangle(x, t[0], t[1], t[2]) - Vec3{6, 0, 0}), 0.0, 1e-12);
    EXPECT_EQ(nearestOnTriangle(x, p, p, p), p);
}

TEST(Outline, ofATorusIsTwoLoops)
{
    const auto loops = outlineOf(torusMesh(48));
    ASSERT_EQ(loops.size(), 2u);
    std::vector<double> areas;
    for (const auto& loop : loops) {
        double sum = 0.0;
        for (std::size_t i = 0; i < loop.size(); ++i) {
            const LabPoint& p = loop[i].lab;
            const LabPoint& q = loop[(i + 1) % loop.size()].lab;
            sum += 0.5 * (double(p.a) * q.b - double(q.a) * p.b);
        }
        areas.push_back(sum);
    }
    std::sort(areas.begin(), areas.end());
    const double sector = 0.5 * 48 * std::sin(2.0 * M_PI / 48); // of a regular polygon of radius 1
    EXPECT_NEAR(areas[0], -sector * 400.0, 0.1);
    EXPECT_NEAR(areas[1], sector * 1600.0, 0.1);
}

TEST(Outline, unitesOverlappingProjections)
{
    // Disjoint in L*, overlapping in projection: twice 40 x 40 minus the common 20 x 20.
    const Mesh both = joined(boxMesh({0, 0, 0}, {10, 40, 40}), boxMesh({30, 20, 20}, {40, 60, 60}));
    const auto loops = outlineOf(both);
    ASSERT_EQ(loops.size(), 1u);
    double area = 0.0;
    int crossings = 0;
    for (std::size_t i = 0; i < loops[0].size(); ++i) {
        const auto& p = loops[0][i];
        const auto& q = loops[0][(i + 1) % loops[0].size()];
        area += 0.5 * (double(p.lab.a) * q.lab.b - double(q.lab.a) * p.lab.b);
        crossings += p.vertex < 0;
    }
    EXPECT_NEAR(area, 2800.0, 1e-3);
    EXPECT_EQ(crossings, 2);
}

// --- Cancellation --------------------------------------------------------------------------------

TEST(MeshCancellation, everyStepLooksOncePerTriangle)
{
    const Mesh mesh = torusMesh(48);
    const std::function<void(const Task&)> steps[] = {
        [&](const Task& task) { (void)topology(mesh, task); },
        [&](const Task& task) { (void)triangleNeighbours(mesh, task); },
        [&](const Task& task) { (void)outlineOf(mesh, task); },
        [&](const Task& task) { (void)countIntersections(mesh, 1, task); },
        [&](const Task& task) { (void)selfIntersects(mesh, task); },
    };
    const int triangles = static_cast<int>(mesh.triangles.size());
    for (std::size_t i = 0; i < std::size(steps); ++i) {
        const int all = looksOf(steps[i]);
        EXPECT_GE(all, triangles) << "step " << i;
        for (int last = 0; last < all; last += 1 + all / 50)
            EXPECT_LE(looksOf(steps[i], last), last + 12) << "step " << i << " goes on after look " << last;
    }
}

TEST(MeshCancellation, aCancelledCheckFails)
{
    const auto checked = checkSurface(torusMesh(12), Task([] { return true; }));
    ASSERT_FALSE(checked);
    EXPECT_EQ(checked.error().code, KVProblemCode::Cancelled);
    EXPECT_FALSE(countIntersections(torusMesh(12), 1, Task([] { return true; })));
    EXPECT_EQ(selfIntersects(torusMesh(12), Task([] { return true; })), std::nullopt);
}
