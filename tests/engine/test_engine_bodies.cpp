// SPDX-License-Identifier: Apache-2.0
#include "Problems.h"
#include "TestProfiles.h"

#include <engine/mesh/Compare.h>
#include <engine/mesh/MeshBody.h>
#include <engine/mesh/MeshChecks.h>
#include <engine/mesh/MeshVolume.h>
#include <engine/mesh/PolygonTriangles.h>
#include <engine/mesh/WindingIndex.h>

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>

using namespace velmora;
using namespace testprofiles;
using KVGamut::Body;

namespace {

// --- Solids ---------------------------------------------------------------------------------------

// A box whose faces are divided into squares of two triangles.
Mesh boxMesh(LabPoint low, LabPoint high, int squares = 1)
{
    Mesh mesh;
    std::map<std::array<int, 3>, int> numbers;
    const auto number = [&](std::array<int, 3> at) {
        const auto [found, isNew] = numbers.try_emplace(at, static_cast<int>(mesh.lab.size()));
        const auto mixed = [&](float p, float q, std::size_t i) {
            return p + (q - p) * float(at[i]) / float(squares);
        };
        if (isNew)
            mesh.lab.push_back(
                snapped({mixed(low.L, high.L, 0), mixed(low.a, high.a, 1), mixed(low.b, high.b, 2)}));
        return found->second;
    };
    for (std::size_t axis = 0; axis < 3; ++axis)
        for (const int side : {0, squares})
            for (int i = 0; i < squares; ++i)
                for (int j = 0; j < squares; ++j) {
                    const auto corner = [&](int u, int v) {
                        std::array<int, 3> at{};
                        at[axis] = side;
                        at[(axis + 1) % 3] = i + u;
                        at[(axis + 2) % 3] = j + v;
                        return number(at);
                    };
                    const int p = corner(0, 0), q = corner(1, 0), r = corner(1, 1), s = corner(0, 1);
                    if (side > 0)
                        mesh.triangles.insert(mesh.triangles.end(), {{p, q, r}, {p, r, s}});
                    else
                        mesh.triangles.insert(mesh.triangles.end(), {{p, r, q}, {p, s, r}});
                }
    return mesh;
}

// A sphere: a box mesh whose vertices are moved outwards.
Mesh sphereMesh(LabPoint centre, double radius, int squares)
{
    Mesh mesh = boxMesh({-1.0f, -1.0f, -1.0f}, {1.0f, 1.0f, 1.0f}, squares);
    for (LabPoint& p : mesh.lab)
        p = snapped(toVec3(centre) + radius / length(toVec3(p)) * toVec3(p));
    return mesh;
}

// Bumps like those of a gamut that no other one shares: radius varies with the direction.
Mesh bumpyMesh(LabPoint centre, double radius, int squares, unsigned seed)
{
    Mesh mesh = sphereMesh(centre, radius, squares);
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> factor(0.8, 1.2);
    for (LabPoint& p : mesh.lab)
        p = snapped(toVec3(centre) + factor(random) * (toVec3(p) - toVec3(centre)));
    return mesh;
}

Mesh moved(Mesh mesh, LabPoint by)
{
    for (LabPoint& p : mesh.lab)
        p = {p.L + by.L, p.a + by.a, p.b + by.b};
    return mesh;
}

Mesh bodyOrFail(const Mesh& first, const Mesh& second, Body body)
{
    const auto mesh = bodyOf(first, second, body);
    EXPECT_TRUE(mesh.has_value());
    return mesh.value_or(Mesh());
}

// --- Checks ---------------------------------------------------------------------------------------

// Whether each edge belongs to as many triangles in one direction as in the other.
bool isBalanced(const Mesh& mesh)
{
    std::map<std::pair<int, int>, int> balance;
    for (const Triangle& t : mesh.triangles)
        for (std::size_t i = 0; i < 3; ++i) {
            const int p = t[i], q = t[(i + 1) % 3];
            balance[{std::min(p, q), std::max(p, q)}] += p < q ? 1 : -1;
        }
    return std::all_of(balance.begin(), balance.end(), [](const auto& edge) { return edge.second == 0; });
}

// Both bodies are closed and have the volumes that the comparison states.
void expectBodies(const Mesh& first, const Mesh& second, double tolerance = 1e-6)
{
    const double volume = signedVolume(first), common = intersectionVolume(first, second);
    const Mesh outside = bodyOrFail(first, second, Body::Outside);
    const Mesh intersection = bodyOrFail(first, second, Body::Intersection);
    EXPECT_NEAR(signedVolume(outside), volume - common, tolerance * volume);
    EXPECT_NEAR(signedVolume(intersection), common, tolerance * volume);
    EXPECT_TRUE(isBalanced(outside));
    EXPECT_TRUE(isBalanced(intersection));
}

bool isClosed(const Mesh& mesh)
{
    const MeshTopology t = topology(mesh);
    return t.indicesValid && t.closed;
}

std::size_t coarserThan(const Mesh& mesh, const Mesh& first, const Mesh& second)
{
    return mesh.triangles.size() / (first.triangles.size() + second.triangles.size());
}

} // namespace

// --- Known answers --------------------------------------------------------------------------------

TEST(EngineBodies, overlappingBoxesHaveTheirKnownVolumes)
{
    const Mesh first = boxMesh({0, 0, 0}, {20, 20, 20}), second = boxMesh({5, -7, 12}, {31, 11, 40});
    const Mesh outside = bodyOrFail(first, second, Body::Outside);
    const Mesh common = bodyOrFail(first, second, Body::Intersection);
    EXPECT_NEAR(signedVolume(common), 15.0 * 11.0 * 8.0, 1e-3);
    EXPECT_NEAR(signedVolume(outside), 8000.0 - 15.0 * 11.0 * 8.0, 1e-3);
    EXPECT_TRUE(isClosed(outside));
    EXPECT_TRUE(isClosed(common));
    EXPECT_EQ(topology(outside).eulerCharacteristic, 2);
    EXPECT_EQ(topology(common).eulerCharacteristic, 2);
}

TEST(EngineBodies, aBoxThroughABoxLeavesAHole)
{
    const Mesh first = boxMesh({0, 0, 0}, {20, 20, 20}), second = boxMesh({-5, 5, 6}, {25, 12, 13});
    const Mesh outside = bodyOrFail(first, second, Body::Outside);
    EXPECT_NEAR(signedVolume(outside), 8000.0 - 20.0 * 7.0 * 7.0, 1e-3);
    EXPECT_TRUE(isClosed(outside));
    EXPECT_EQ(topology(outside).eulerCharacteristic, 0); // of a ring
    const Mesh common = bodyOrFail(first, second, Body::Intersection);
    EXPECT_NEAR(signedVolume(common), 20.0 * 7.0 * 7.0, 1e-3);
    EXPECT_TRUE(isClosed(common));
}

TEST(EngineBodies, spheresOverlapInALens)
{
    const double r = 30.0, distance = 25.0;
    const Mesh first = sphereMesh({50, 0, 0}, r, 40), second = sphereMesh({50, 25, 0}, r, 37);
    const double lens = M_PI / 12.0 * (4.0 * r + distance) * std::pow(2.0 * r - distance, 2.0);
    const Mesh common = bodyOrFail(first, second, Body::Intersection);
    EXPECT_NEAR(signedVolume(common), lens, 5e-3 * lens); // the spheres are polyhedra
    EXPECT_TRUE(isClosed(common));
    expectBodies(first, second);
}

TEST(EngineBodies, aSolidInsideAnotherLeavesAHollow)
{
    const Mesh outer = sphereMesh({50, 0, 0}, 40.0, 12), inner = sphereMesh({50, 3, 4}, 20.0, 10);
    const Mesh hollow = bodyOrFail(outer, inner, Body::Outside);
    EXPECT_EQ(topology(hollow).components, 2);
    EXPECT_NEAR(signedVolume(hollow), signedVolume(outer) - signedVolume(inner), 1e-6);
    EXPECT_TRUE(bodyOrFail(inner, outer, Body::Outside).isEmpty());
    EXPECT_DOUBLE_EQ(signedVolume(bodyOrFail(inner, outer, Body::Intersection)), signedVolume(inner));
}

TEST(EngineBodies, disjointSolidsAreKeptWhole)
{
    const Mesh first = sphereMesh({50, 0, 0}, 10.0, 6), second = sphereMesh({50, 40, 0}, 10.0, 6);
    EXPECT_TRUE(bodyOrFail(first, second, Body::Intersection).isEmpty());
    EXPECT_EQ(bodyOrFail(first, second, Body::Outside).triangles.size(), first.triangles.size());
}

TEST(EngineBodies, theSameSolidTwiceLeavesNothingOutside)
{
    for (const Mesh& solid : {boxMesh({0, 0, 0}, {20, 20, 20}, 3), bumpyMesh({50, 0, 0}, 40.0, 12, 1)}) {
        EXPECT_TRUE(bodyOrFail(solid, solid, Body::Outside).isEmpty());
        const Mesh common = bodyOrFail(solid, solid, Body::Intersection);
        EXPECT_DOUBLE_EQ(signedVolume(common), signedVolume(solid));
        EXPECT_EQ(common.triangles.size(), solid.triangles.size());
        EXPECT_TRUE(isClosed(common));
    }
}

TEST(EngineBodies, anEmptyMeshTakesNothingAway)
{
    const Mesh solid = boxMesh({0, 0, 0}, {20, 20, 20});
    EXPECT_EQ(bodyOrFail(solid, {}, Body::Outside).triangles.size(), solid.triangles.size());
    EXPECT_TRUE(bodyOrFail(solid, {}, Body::Intersection).isEmpty());
    EXPECT_TRUE(bodyOrFail({}, solid, Body::Outside).isEmpty());
}

// --- Contacts -------------------------------------------------------------------------------------

TEST(EngineBodies, boxesOnACommonLatticeStayClosed)
{
    const Mesh first = boxMesh({0, 0, 0}, {4, 4, 4}, 2);
    for (int L = -4; L <= 4; ++L)
        for (int a = -4; a <= 4; ++a)
            for (int b = -4; b <= 4; b += 2) {
                SCOPED_TRACE(testing::Message() << L << ' ' << a << ' ' << b);
                expectBodies(first, moved(first, {float(L), float(a), float(b)}), 1e-12);
            }
}

TEST(EngineBodies, boxesWithOtherTrianglesInCommonFacesStayClosed)
{
    const Mesh first = boxMesh({0, 0, 0}, {6, 6, 6}, 2);
    expectBodies(first, boxMesh({0, 0, 0}, {6, 6, 6}, 3), 1e-6);
    expectBodies(first, boxMesh({0, 2, 2}, {6, 4, 4}, 1), 1e-6);
    expectBodies(first, boxMesh({-6, 0, 0}, {0, 6, 6}, 3), 1e-6);
    EXPECT_TRUE(bodyOrFail(first, boxMesh({-6, 0, 0}, {0, 6, 6}, 3), Body::Intersection).isEmpty());
    EXPECT_TRUE(bodyOrFail(first, boxMesh({0, 0, 0}, {6, 6, 6}, 3), Body::Outside).isEmpty());
}

TEST(EngineBodies, randomSolidsAgreeWithTheComparison)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<float> shift(-30.0f, 30.0f);
    for (unsigned i = 0; i < 40; ++i) {
        SCOPED_TRACE(i);
        const Mesh first = bumpyMesh({50, 0, 0}, 40.0, 4 + int(i % 9), i);
        const Mesh second =
            bumpyMesh({50 + shift(random), shift(random), shift(random)}, 35.0, 3 + int(i % 7), 100 + i);
        expectBodies(first, second, 1e-5);
        EXPECT_LE(coarserThan(bodyOrFail(first, second, Body::Outside), first, second), 4u);
    }
}

// The body of the outside contains exactly the points inside the first solid and outside the second one.
TEST(EngineBodies, bodiesContainThePointsThatTheyShould)
{
    const Mesh first = bumpyMesh({50, 0, 0}, 40.0, 8, 5), second = bumpyMesh({55, 20, 0}, 40.0, 7, 6);
    const WindingIndex inFirst(first), inSecond(second);
    const WindingIndex inOutside(bodyOrFail(first, second, Body::Outside));
    const WindingIndex inCommon(bodyOrFail(first, second, Body::Intersection));
    std::mt19937 random(8);
    std::uniform_real_distribution<double> place(-60.0, 60.0);
    for (int i = 0; i < 20000; ++i) {
        const Vec3 x{50.0 + place(random), place(random), place(random)};
        EXPECT_EQ(inOutside.isInside(x), inFirst.isInside(x) && !inSecond.isInside(x));
        EXPECT_EQ(inCommon.isInside(x), inFirst.isInside(x) && inSecond.isInside(x));
    }
}

// --- Polygons -------------------------------------------------------------------------------------

namespace {

double planeArea(const std::vector<std::array<int, 3>>& triangles, const std::vector<PlanePoint>& points)
{
    double area = 0.0;
    for (const auto& t : triangles) {
        const auto at = [&](std::size_t i) { return points[static_cast<std::size_t>(t[i])]; };
        const double twice =
            (at(1).x - at(0).x) * (at(2).y - at(0).y) - (at(1).y - at(0).y) * (at(2).x - at(0).x);
        EXPECT_GE(twice, -1e-12);
        area += twice / 2.0;
    }
    return area;
}

} // namespace

TEST(EngineBodies, polygonsWithHolesBecomeTriangles)
{
    const std::vector<PlanePoint> p{{0, 0, 0}, {10, 0, 1}, {10, 10, 2}, {0, 10, 3}, {2, 2, 4},  {2, 4, 5},
                                    {4, 4, 6}, {4, 2, 7},  {6, 6, 8},   {6, 8, 9},  {8, 8, 10}, {8, 6, 11}};
    const auto triangles =
        trianglesOf({{p[0], p[1], p[2], p[3]}, {p[4], p[5], p[6], p[7]}, {p[8], p[9], p[10], p[11]}});
    EXPECT_EQ(triangles.size(), 14u); // corners - 2 + 2 for each hole
    EXPECT_NEAR(planeArea(triangles, p), 92.0, 1e-9);
}

TEST(EngineBodies, cornersOnALineGiveNoThinTriangles)
{
    const std::vector<PlanePoint> p{{0, 0, 0}, {1, 0, 1}, {2, 0, 2}, {3, 0, 3}, {1.5, 3, 4}};
    const auto triangles = trianglesOf({{p[0], p[1], p[2], p[3], p[4]}});
    ASSERT_EQ(triangles.size(), 3u);
    for (const auto& t : triangles)
        EXPECT_NEAR(planeArea({t}, p), 1.5, 1e-12);
}

// --- Gamuts ---------------------------------------------------------------------------------------

TEST(EngineBodies, bodiesOfGamutsAgreeWithTheComparison)
{
    const QStringList files{srgb(), adobeRgb(), prophotoRgb(), printerCmyk()};
    QList<KVGamut::GamutObject> gamuts;
    for (const QString& file : files)
        gamuts.append(gamutOf(openedFile(file)));
    for (const auto& first : gamuts)
        for (const auto& second : gamuts) {
            const auto compared = first.compareWithUncertainty(second);
            const double volume = first.report().volume;
            const auto outside = first.body(second, Body::Outside);
            const auto common = first.body(second, Body::Intersection);
            EXPECT_FALSE(outside.problem());
            EXPECT_NEAR(common.report().volume, double(compared.values.intersection), 1e-6 * volume);
            if (!outside.mesh().isEmpty()) {
                EXPECT_NEAR(outside.report().volume, volume - double(compared.values.intersection),
                            1e-6 * volume);
            }
            const double enclosed = first.report().surfaceVolume;
            EXPECT_NEAR(common.report().surfaceVolume + outside.report().surfaceVolume, enclosed,
                        1e-6 * enclosed);
            EXPECT_NEAR(common.report().surfaceVolume, intersectionVolume(first.mesh(), second.mesh()),
                        1e-6 * enclosed);
            EXPECT_TRUE(isBalanced(outside.mesh()));
            EXPECT_TRUE(isBalanced(common.mesh()));
            EXPECT_TRUE(isClosed(common.mesh()));
            EXPECT_TRUE(outside.mesh().isEmpty() || isClosed(outside.mesh()));
        }
}

TEST(EngineBodies, aCancelledBodyIsEmpty)
{
    const auto first = gamutOf(openedFile(srgb())), second = gamutOf(openedFile(printerCmyk()));
    KVCompletionProtocolPtr protocol = KVCompletionProtocol::createTask(QStringLiteral("body"));
    protocol->cancel();
    const auto body = first.body(second, Body::Outside, &protocol);
    EXPECT_TRUE(body.mesh().isEmpty());
    EXPECT_EQ(codeOf(body), KVProblemCode::Cancelled);
}

TEST(EngineBodies, eachLookForCancellationEndsTheComputation)
{
    const Mesh first = sphereMesh({50, 0, 0}, 30.0, 12), second = sphereMesh({50, 25, 0}, 30.0, 11);
    int looks = 0;
    EXPECT_TRUE(bodyOf(first, second, Body::Outside, Task([&looks] { return ++looks < 0; })));
    const int all = looks;
    for (int allowed = 0; allowed < all; allowed += 1 + all / 100) {
        looks = 0;
        const auto body = bodyOf(first, second, Body::Outside, Task([&] { return ++looks > allowed; }));
        EXPECT_EQ(codeOf(body), KVProblemCode::Cancelled) << allowed << " of " << all;
        EXPECT_LT(looks, allowed + 200); // each loop looks once more
    }
}
