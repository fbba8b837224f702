// SPDX-License-Identifier: Apache-2.0
#include "Problems.h"

#include <engine/base/LabGeometry.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

using KVGamut::GamutObject;
using KVGamut::LabPoint;
using KVGamut::Mesh;
using KVGamut::Method;

namespace {

constexpr float nan = std::numeric_limits<float>::quiet_NaN();

/// A box of 40 x 20 x 30 dE, 24,000 dE cubed, facing outwards.
Mesh box()
{
    Mesh mesh;
    for (const float L : {30.0f, 70.0f})
        for (const float a : {-10.0f, 10.0f})
            for (const float b : {-5.0f, 25.0f})
                mesh.lab.push_back({L, a, b});
    mesh.triangles = {{0, 1, 3}, {0, 3, 2}, {4, 6, 7}, {4, 7, 5}, {0, 4, 5}, {0, 5, 1},
                      {2, 3, 7}, {2, 7, 6}, {0, 2, 6}, {0, 6, 4}, {1, 5, 7}, {1, 7, 3}};
    return mesh;
}

Mesh flipped(Mesh mesh)
{
    for (Mesh::Triangle& t : mesh.triangles)
        std::swap(t[0], t[1]);
    return mesh;
}

/// A tetrahedron of size @p size at @p corner.
void addTetrahedron(Mesh& mesh, LabPoint corner, float size)
{
    const int first = static_cast<int>(mesh.lab.size());
    mesh.lab.push_back(corner);
    mesh.lab.push_back({corner.L + size, corner.a, corner.b});
    mesh.lab.push_back({corner.L, corner.a + size, corner.b});
    mesh.lab.push_back({corner.L, corner.a, corner.b + size});
    for (const Mesh::Triangle& t : {Mesh::Triangle{0, 2, 1}, {0, 3, 2}, {0, 1, 3}, {1, 2, 3}})
        mesh.triangles.push_back({first + t[0], first + t[1], first + t[2]});
}

GamutObject gamutOf(const Mesh& surface, double uncertainty = 0.0)
{
    GamutObject gamut;
    EXPECT_TRUE(gamut.initWithSurface(surface, uncertainty));
    EXPECT_EQ(gamut.problem(), std::nullopt);
    return gamut;
}

GamutObject hullOf(const std::vector<LabPoint>& colors)
{
    GamutObject gamut;
    EXPECT_TRUE(gamut.initWithColors(colors));
    EXPECT_EQ(gamut.problem(), std::nullopt);
    return gamut;
}

std::optional<KVProblemCode> refusalOf(const Mesh& surface)
{
    GamutObject gamut = gamutOf(box());
    EXPECT_FALSE(gamut.initWithSurface(surface));
    EXPECT_EQ(gamut.faceCount(), 0);
    EXPECT_EQ(gamut.method(), Method::None);
    return codeOf(gamut);
}

std::optional<KVProblemCode> refusalOfColors(const std::vector<LabPoint>& colors)
{
    GamutObject gamut = gamutOf(box());
    EXPECT_FALSE(gamut.initWithColors(colors));
    EXPECT_EQ(gamut.faceCount(), 0);
    return codeOf(gamut);
}

bool isInside(const GamutObject& gamut, LabPoint p)
{
    return gamut.isInside(&p.L);
}

// --- Surfaces -------------------------------------------------------------------------------------

TEST(GivenSurface, hasTheReportOfItsMesh)
{
    const GamutObject gamut = gamutOf(box(), 120.0);
    const KVGamut::Report report = gamut.report();
    EXPECT_EQ(gamut.method(), Method::GivenSurface);
    EXPECT_EQ(report.method, Method::GivenSurface);
    EXPECT_DOUBLE_EQ(report.volume, 24000.0);
    EXPECT_DOUBLE_EQ(report.surfaceVolume, 24000.0);
    EXPECT_EQ(report.volumeUncertainty, 120.0);
    EXPECT_EQ(report.faceCount, 12);
    EXPECT_EQ(report.channels, 0);
    EXPECT_EQ(report.gridPoints, 0);
    EXPECT_EQ(report.white.L, 70.0f);
    EXPECT_EQ(report.black.L, 30.0f);
    EXPECT_EQ(report.intent, KVVMRenderAbsoluteColorimetric);
    EXPECT_TRUE(gamut.primaries().isEmpty());
    EXPECT_EQ(gamut.outline().size(), 4); // the rectangle of a* and b*
}

TEST(GivenSurface, answersQueries)
{
    const GamutObject gamut = gamutOf(box());
    EXPECT_TRUE(isInside(gamut, {50, 0, 10}));
    EXPECT_FALSE(isInside(gamut, {50, 0, 26}));
    const LabPoint above{80, 0, 10};
    EXPECT_FLOAT_EQ(gamut.nearest(&above.L).distance, 10.0f);
}

TEST(GivenSurface, mayFaceEitherWay)
{
    const GamutObject gamut = gamutOf(flipped(box()));
    EXPECT_DOUBLE_EQ(gamut.report().volume, 24000.0);
    EXPECT_TRUE(isInside(gamut, {50, 0, 10}));
}

TEST(GivenSurface, isComparedAndCutLikeOthers)
{
    Mesh moved = box();
    for (LabPoint& p : moved.lab)
        p.L += 10.0f;
    const GamutObject first = gamutOf(box()), second = gamutOf(moved);
    EXPECT_NEAR(first.compare(second).intersection, 18000.0f, 1.0f);
    const GamutObject outside = first.body(second, KVGamut::Body::Outside);
    EXPECT_NEAR(outside.report().surfaceVolume, 6000.0, 1.0);
}

TEST(GivenSurface, mergesVerticesAtTheSamePlace)
{
    Mesh soup;
    const Mesh shared = box();
    for (const Mesh::Triangle& t : shared.triangles) {
        const int first = static_cast<int>(soup.lab.size());
        for (const int v : t)
            soup.lab.push_back(shared.lab[static_cast<std::size_t>(v)]);
        soup.triangles.push_back({first, first + 1, first + 2});
    }
    EXPECT_EQ(gamutOf(soup).mesh().lab.size(), 8U);
}

TEST(GivenSurface, ignoresDeviceCoordinates)
{
    Mesh mesh = box();
    mesh.channels = 3;
    mesh.device.assign(mesh.lab.size() * 3, nan);
    EXPECT_TRUE(gamutOf(mesh).mesh().device.empty());
}

TEST(GivenSurface, limitsTheUncertaintyToTheVolume)
{
    EXPECT_EQ(gamutOf(box(), 1e9).report().volumeUncertainty, 24000.0);
    EXPECT_EQ(gamutOf(box(), -1.0).report().volumeUncertainty, 0.0);
    EXPECT_EQ(gamutOf(box(), double(nan)).report().volumeUncertainty, 0.0);
}

TEST(GivenSurface, isSavedAndRestored)
{
    const GamutObject gamut = gamutOf(box(), 7.0);
    GamutObject again;
    again.deserialize(gamut.serialize());
    ASSERT_EQ(again.problem(), std::nullopt);
    EXPECT_EQ(again.method(), Method::GivenSurface);
    EXPECT_EQ(again.mesh().lab, gamut.mesh().lab);
    EXPECT_EQ(again.report().volumeUncertainty, 7.0);
    EXPECT_EQ(again.serialize(), gamut.serialize());
}

TEST(GivenSurface, refusesWhatIsNoClosedSurface)
{
    EXPECT_EQ(refusalOf({}), KVProblemCode::NoFaces);
    Mesh open = box();
    open.triangles.pop_back();
    EXPECT_EQ(refusalOf(open), KVProblemCode::SurfaceNotClosed);
    Mesh twice = box();
    twice.triangles.insert(twice.triangles.end(), twice.triangles.begin(), twice.triangles.end());
    EXPECT_EQ(refusalOf(twice), KVProblemCode::SurfaceNotClosed);
    Mesh touching;
    addTetrahedron(touching, {10, 0, 0}, 10);
    addTetrahedron(touching, {20, 0, 0}, 10); // one vertex in common
    EXPECT_EQ(refusalOf(touching), KVProblemCode::SurfaceNotManifold);
}

TEST(GivenSurface, refusesVerticesOutOfRange)
{
    for (const float value : {nan, 2001.0f, -std::numeric_limits<float>::infinity()}) {
        Mesh mesh = box();
        mesh.lab[3].a = value;
        EXPECT_EQ(refusalOf(mesh), KVProblemCode::VertexOutOfRange) << value;
    }
}

TEST(GivenSurface, refusesVerticesThatDoNotExist)
{
    for (const int v : {-1, 8, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        Mesh mesh = box();
        mesh.triangles[5][1] = v;
        EXPECT_EQ(refusalOf(mesh), KVProblemCode::VertexIndexOutOfRange) << v;
    }
}

TEST(GivenSurface, refusesSolidsOfLessThanOneCubicDe)
{
    Mesh tiny;
    addTetrahedron(tiny, {50, 0, 0}, 1);
    EXPECT_EQ(refusalOf(tiny), KVProblemCode::TooSmall);
    Mesh point = box();
    std::fill(point.lab.begin(), point.lab.end(), LabPoint{50, 0, 0});
    EXPECT_EQ(refusalOf(point), KVProblemCode::TooSmall);
}

TEST(GivenSurface, refusesSelfIntersections)
{
    Mesh crossing = box();
    addTetrahedron(crossing, {60, 0, 0}, 30);
    EXPECT_EQ(refusalOf(crossing), KVProblemCode::GivenSurfaceSelfIntersects);
}

TEST(GivenSurface, isAbandonedWhenCancelled)
{
    KVCompletionProtocolPtr protocol = KVCompletionProtocol::createTask(QStringLiteral("surface"));
    protocol->cancel();
    GamutObject gamut;
    EXPECT_FALSE(gamut.initWithSurface(box(), 0.0, &protocol));
    EXPECT_EQ(codeOf(gamut), KVProblemCode::Cancelled);
    EXPECT_FALSE(gamut.initWithColors(box().lab, 0.0, &protocol));
    EXPECT_EQ(codeOf(gamut), KVProblemCode::Cancelled);
}

// --- Hulls ----------------------------------------------------------------------------------------

TEST(GivenColors, haveTheirConvexHull)
{
    std::vector<LabPoint> colors = box().lab;
    std::mt19937 random(7);
    std::uniform_real_distribution<float> L(30, 70), a(-10, 10), b(-5, 25);
    for (int i = 0; i < 2000; ++i)
        colors.push_back({L(random), a(random), b(random)});
    colors.insert(colors.end(), colors.begin(), colors.begin() + 8); // repeated
    const GamutObject gamut = hullOf(colors);
    EXPECT_EQ(gamut.method(), Method::ConvexHull);
    EXPECT_DOUBLE_EQ(gamut.report().volume, 24000.0);
    EXPECT_EQ(gamut.report().volumeUncertainty, 0.0);
    EXPECT_EQ(gamut.mesh().lab.size(), 8U);
    EXPECT_EQ(gamut.report().white.L, 70.0f);
}

TEST(GivenColors, encloseEachColour)
{
    std::mt19937 random(11);
    std::normal_distribution<float> value(0, 30);
    std::vector<LabPoint> colors;
    for (int i = 0; i < 3000; ++i)
        colors.push_back({50 + value(random) / 3, value(random), value(random)});
    const GamutObject gamut = hullOf(colors);
    for (const LabPoint& color : colors)
        EXPECT_LE(gamut.nearest(&color.L).distance, 1e-4f);
}

TEST(GivenColors, areAsUncertainAsTheirHullIsLarge)
{
    GamutObject gamut;
    ASSERT_TRUE(gamut.initWithColors(box().lab, 0.25));
    EXPECT_DOUBLE_EQ(gamut.report().volumeUncertainty, 0.25 * 2.0 * (40 * 20 + 40 * 30 + 20 * 30));
    ASSERT_TRUE(gamut.initWithColors(box().lab, double(nan)));
    EXPECT_EQ(gamut.report().volumeUncertainty, 0.0);
}

TEST(GivenColors, mayBeFarOutsideOfLab)
{
    std::vector<LabPoint> colors = box().lab;
    for (LabPoint& color : colors)
        color = {color.L * 20, color.a * 20, color.b * 20};
    EXPECT_NEAR(hullOf(colors).report().volume, 24000.0 * 8000.0, 1.0);
}

TEST(GivenColors, areSavedAndRestored)
{
    const GamutObject gamut = hullOf(box().lab);
    GamutObject again;
    again.deserialize(gamut.serialize());
    EXPECT_EQ(again.method(), Method::ConvexHull);
    EXPECT_EQ(again.serialize(), gamut.serialize());
}

TEST(GivenColors, areRefusedWithoutVolume)
{
    EXPECT_EQ(refusalOfColors({}), KVProblemCode::TooSmall);
    EXPECT_EQ(refusalOfColors({{50, 0, 0}}), KVProblemCode::TooSmall);
    std::vector<LabPoint> plane = box().lab;
    for (LabPoint& color : plane)
        color.L = 50;
    EXPECT_EQ(refusalOfColors(plane), KVProblemCode::TooSmall);
}

TEST(GivenColors, areRefusedOutOfRange)
{
    std::vector<LabPoint> colors = box().lab;
    for (const float value : {nan, 2001.0f, std::numeric_limits<float>::infinity()}) {
        colors[2].b = value;
        EXPECT_EQ(refusalOfColors(colors), KVProblemCode::VertexOutOfRange) << value;
    }
}

} // namespace
