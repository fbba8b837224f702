// SPDX-License-Identifier: Apache-2.0
// Functions of the interface that take a mesh: sections, and merging coincident vertices.

#include "SlowGeometry.h"
#include "TestProfiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <tuple>
#include <vector>

using namespace testprofiles;
using KVGamut::LabPoint;
using KVGamut::Mesh;

namespace {

using Place = std::tuple<float, float, float>;
using PlacedTriangle = std::array<Place, 3>;

Place placeOf(const LabPoint& p)
{
    return {p.L, p.a, p.b};
}

std::vector<PlacedTriangle> trianglesOf(const Mesh& mesh)
{
    std::vector<PlacedTriangle> triangles;
    for (const auto& t : mesh.triangles)
        triangles.push_back({placeOf(mesh.lab[std::size_t(t[0])]), placeOf(mesh.lab[std::size_t(t[1])]),
                             placeOf(mesh.lab[std::size_t(t[2])])});
    return triangles;
}

bool isDegenerate(const PlacedTriangle& t)
{
    return t[0] == t[1] || t[1] == t[2] || t[2] == t[0];
}

std::vector<slow::Face> facesOf(const Mesh& mesh)
{
    std::vector<slow::Face> faces;
    for (const auto& t : mesh.triangles) {
        slow::Face face;
        for (std::size_t i = 0; i < 3; ++i) {
            const LabPoint& p = mesh.lab[std::size_t(t[i])];
            face[i] = {p.L, p.a, p.b};
        }
        faces.push_back(face);
    }
    return faces;
}

// A cone: all colours with d[0] = 0 are the same black, so that one face of the device cube collapses.
KVGamut::GamutObject coneGamut()
{
    return gamutOf(opened(tableProfile(
                       cmsSigRgbData, 9,
                       [](const std::vector<double>& d) {
                           return Lab{10 + 80 * d[0], 60 * d[0] * (d[1] - 0.5), 60 * d[0] * (d[2] - 0.5)};
                       })),
                   9);
}

// The mesh with separate vertices for each triangle.
Mesh separated(const Mesh& mesh)
{
    Mesh result;
    result.channels = mesh.channels;
    for (const auto& t : mesh.triangles) {
        const int first = static_cast<int>(result.lab.size());
        for (int v : t) {
            result.lab.push_back(mesh.lab[std::size_t(v)]);
            result.device.insert(result.device.end(), mesh.deviceOf(v), mesh.deviceOf(v) + mesh.channels);
        }
        result.triangles.push_back({first, first + 1, first + 2});
    }
    return result;
}

void expectWelded(const Mesh& mesh)
{
    const Mesh welded = KVGamut::weldedMesh(mesh);
    std::set<Place> places;
    for (const LabPoint& p : welded.lab)
        EXPECT_TRUE(places.insert(placeOf(p)).second) << "two vertices at one place";

    auto expected = trianglesOf(mesh);
    std::erase_if(expected, isDegenerate);
    EXPECT_EQ(trianglesOf(welded), expected); // in the same order

    std::map<Place, std::vector<float>> firstDevice;
    for (std::size_t v = 0; v < mesh.lab.size(); ++v) {
        const float* device = mesh.deviceOf(static_cast<int>(v));
        firstDevice.try_emplace(placeOf(mesh.lab[v]), device, device + mesh.channels);
    }
    ASSERT_EQ(welded.channels, mesh.channels);
    ASSERT_EQ(welded.device.size(), welded.lab.size() * std::size_t(welded.channels));
    for (std::size_t v = 0; v < welded.lab.size(); ++v) {
        const float* device = welded.deviceOf(static_cast<int>(v));
        EXPECT_EQ(std::vector<float>(device, device + welded.channels), firstDevice[placeOf(welded.lab[v])]);
    }
}

} // namespace

// --- Sections -------------------------------------------------------------------------------------

TEST(MeshRing, hasThePiecesOfTheFaces)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<float> any(-1.0f, 1.0f);
    for (const auto& gamut : {gamutOf(openedFile(srgb()), 9), gamutOf(openedFile(printerCmyk()), 9)}) {
        const auto faces = gamut.faces();
        std::vector<std::array<float, 4>> planes{{1, 0, 0, -gamut.mesh().lab[5].L}}; // through a vertex
        for (int i = 0; i < 30; ++i)
            planes.push_back({any(random), any(random), any(random), 50.0f * any(random)});
        std::size_t pieces = 0;
        for (const auto& plane : planes) {
            const auto expected = KVGamut::computeRing(plane.data(), faces);
            const auto ring = KVGamut::computeRing(plane.data(), gamut.mesh());
            ASSERT_EQ(ring.size(), std::size_t(expected.size()));
            for (std::size_t i = 0; i < ring.size(); ++i)
                for (std::size_t end = 0; end < 2; ++end) {
                    const LabPoint& p = ring[i][end];
                    EXPECT_EQ((QList<float>{p.L, p.a, p.b}), expected[qsizetype(i)][qsizetype(end)]);
                }
            pieces += ring.size();
        }
        EXPECT_GT(pieces, 500u);
    }
}

TEST(MeshRing, isEmptyForInvalidPlanesAndEmptyMeshes)
{
    const Mesh mesh = gamutOf(openedFile(srgb()), 5).mesh();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const std::array<float, 4>& plane :
         {std::array{nan, 0.0f, 0.0f, 0.0f}, {1.0f, 0.0f, 0.0f, nan}, {0.0f, 0.0f, 0.0f, 0.0f}})
        EXPECT_TRUE(KVGamut::computeRing(plane.data(), mesh).empty());
    EXPECT_TRUE(KVGamut::computeRing(nullptr, mesh).empty());
    const float plane[] = {1, 0, 0, -50};
    EXPECT_TRUE(KVGamut::computeRing(plane, Mesh()).empty());
}

TEST(MeshRing, ignoresTrianglesWithNanVertices)
{
    Mesh mesh;
    mesh.lab = {{60, 0, 0}, {40, 10, 0}, {40, 0, 10}, {40, std::nanf(""), 0}};
    mesh.triangles = {{0, 1, 2}, {0, 3, 1}};
    const float plane[] = {1, 0, 0, -50};
    EXPECT_EQ(KVGamut::computeRing(plane, mesh).size(), 1u);
}

TEST(SectionLoops, areThePiecesJoinedIntoClosedPolygons)
{
    std::mt19937 random(11);
    std::uniform_real_distribution<float> any(-1.0f, 1.0f);
    const Mesh mesh = gamutOf(openedFile(printerCmyk()), 9).mesh();
    for (int i = 0; i < 30; ++i) {
        const float plane[] = {any(random), any(random), any(random), 30.0f * any(random)};
        std::map<std::array<float, 6>, int> open; // pieces that no loop has used
        for (const auto& [from, to] : KVGamut::computeRing(plane, mesh))
            ++open[{from.L, from.a, from.b, to.L, to.a, to.b}];
        for (const KVGamut::SectionLoop& loop : KVGamut::sectionLoops(plane, mesh))
            for (std::size_t j = 0; j < loop.size(); ++j) {
                const LabPoint& from = loop[j];
                const LabPoint& to = loop[(j + 1) % loop.size()];
                --open[{from.L, from.a, from.b, to.L, to.a, to.b}];
            }
        for (const auto& [piece, count] : open)
            EXPECT_EQ(count, 0);
    }
}

TEST(SectionLoops, keepLoopsApartThatTouchInAVertex)
{
    // two tetrahedra that touch in one point, where each has its own vertex
    Mesh mesh;
    mesh.lab = {{50, 0, 0}, {60, 20, 0},  {40, 20, 10},   {40, 20, -10},
                {50, 0, 0}, {60, -20, 0}, {40, -20, -10}, {40, -20, 10}};
    mesh.triangles = {{0, 1, 2}, {0, 2, 3}, {0, 3, 1}, {1, 3, 2}, {4, 5, 6}, {4, 6, 7}, {4, 7, 5}, {5, 7, 6}};
    const float plane[] = {1, 0, 0, -50};
    const auto loops = KVGamut::sectionLoops(plane, mesh);
    ASSERT_EQ(loops.size(), 2u);
    for (const KVGamut::SectionLoop& loop : loops) {
        const auto isPositive = [](const LabPoint& p) { return p.a >= 0.0f; };
        const auto isNegative = [](const LabPoint& p) { return p.a <= 0.0f; };
        EXPECT_NE(std::all_of(loop.begin(), loop.end(), isPositive),
                  std::all_of(loop.begin(), loop.end(), isNegative));
    }
}

TEST(SectionLoops, leaveOutChainsThatEndAtABoundary)
{
    Mesh mesh;
    mesh.lab = {{60, 0, 0}, {40, 10, 0}, {40, 0, 10}};
    mesh.triangles = {{0, 1, 2}};
    const float plane[] = {1, 0, 0, -50};
    EXPECT_TRUE(KVGamut::sectionLoops(plane, mesh).empty());
    EXPECT_TRUE(KVGamut::sectionLoops(nullptr, mesh).empty());
}

// --- Coincident vertices --------------------------------------------------------------------------

TEST(WeldedMesh, mergesVerticesAndKeepsTheOrder)
{
    expectWelded(gamutOf(openedFile(srgb()), 9).mesh());
    expectWelded(coneGamut().mesh());
    expectWelded(separated(gamutOf(openedFile(srgb()), 5).mesh()));
    expectWelded(separated(coneGamut().mesh()));
}

TEST(WeldedMesh, isClosedWithTheSameVolume)
{
    const auto gamut = coneGamut();
    const auto before = slow::facesOf(gamut);
    EXPECT_TRUE(std::any_of(gamut.mesh().triangles.begin(), gamut.mesh().triangles.end(), [&](const auto& t) {
        return gamut.mesh().lab[std::size_t(t[0])] == gamut.mesh().lab[std::size_t(t[1])];
    })) << "nothing to merge";
    for (const Mesh& mesh : {gamut.mesh(), separated(gamut.mesh())}) {
        const slow::Shape shape = slow::shapeOf(facesOf(KVGamut::weldedMesh(mesh)));
        EXPECT_TRUE(shape.everyEdgeOnceEachWay);
        EXPECT_EQ(shape.euler, 2);
        EXPECT_NEAR(shape.volume, slow::volume(before), 1e-6 * shape.volume);
    }
}

TEST(WeldedMesh, ofSeparateTrianglesHasSharedVertices)
{
    Mesh tetrahedron;
    tetrahedron.channels = 1;
    tetrahedron.lab = {{50, 0, 0}, {60, 0, 0}, {50, 10, 0}, {50, 0, 10}};
    tetrahedron.device = {0.0f, 0.25f, 0.5f, 1.0f};
    tetrahedron.triangles = {{0, 2, 1}, {0, 1, 3}, {0, 3, 2}, {1, 2, 3}};
    const Mesh welded = KVGamut::weldedMesh(separated(tetrahedron));
    EXPECT_EQ(welded.lab.size(), 4u);
    EXPECT_EQ(trianglesOf(welded), trianglesOf(tetrahedron));
}

TEST(WeldedMesh, ofAnEmptyMeshIsEmpty)
{
    const Mesh welded = KVGamut::weldedMesh(Mesh());
    EXPECT_TRUE(welded.isEmpty());
    EXPECT_TRUE(welded.lab.empty());
}
