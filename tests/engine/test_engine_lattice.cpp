// SPDX-License-Identifier: Apache-2.0
#include "MappedDevice.h"
#include "Problems.h"
#include "SlowGeometry.h"
#include "TestProfiles.h"

#include <engine/mesh/MeshChecks.h>
#include <engine/mesh/MeshComponents.h>
#include <engine/mesh/MeshVolume.h>
#include <engine/mesh/NearestIndex.h>
#include <engine/mesh/SelfIntersection.h>
#include <engine/mesh/WindingIndex.h>
#include <engine/surface/DeviceCubeMesh.h>
#include <engine/surface/LatticeSurface.h>
#include <engine/surface/RadialHull.h>
#include <engine/surface/ReachedVolume.h>

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <ostream>
#include <random>
#include <string>

using namespace velmora;
using testprofiles::Lab;

namespace {

// A solid that is known exactly, and a device whose gamut is this solid.
struct Case
{
    const char* name;
    int channels;
    MappedDevice::Map map;
    double volume;
    int euler; // of the surface
    std::function<bool(Vec3)> contains;
    double tolerance = 0.005; // relative error of the volume
};

double angleOf(Vec3 p)
{
    const double angle = std::atan2(p.b, p.a);
    return angle < 0.0 ? angle + 2.0 * M_PI : angle;
}

// Part of a ring around the L* axis.
struct Sector
{
    double low, high, inner, outer, angle;

    Vec3 at(double height, double turn, double radius) const
    {
        const double r = inner + (outer - inner) * radius;
        return {low + (high - low) * height, r * std::cos(angle * turn), r * std::sin(angle * turn)};
    }
    double volume() const
    {
        return (high - low) * 0.5 * std::min(angle, 2.0 * M_PI) * (outer * outer - inner * inner);
    }
    bool contains(Vec3 p) const
    {
        const double r = std::hypot(p.a, p.b);
        return p.L > low && p.L < high && r > inner && r < outer && angleOf(p) < angle;
    }
};

double folded(double x)
{
    return 1.0 - 4.0 * (x - 0.5) * (x - 0.5);
}

std::vector<Case> cases()
{
    std::vector<Case> all;
    const auto add = [&all](const char* name, int channels, const Sector& s, int euler, const auto& map,
                            double tolerance = 0.005) {
        all.push_back({name, channels, [s, map](const float* d) { return map(s, d); }, s.volume(), euler,
                       [s](Vec3 p) { return s.contains(p); }, tolerance});
    };
    const auto plain = [](const Sector& s, const float* d) { return s.at(d[0], d[1], d[2]); };
    // One and a half turns, which overlap: a ring with a hole.
    add("wound", 3, {45, 55, 40, 50, 3.0 * M_PI}, 0, plain);
    add("thickWound", 3, {20, 80, 20, 60, 3.0 * M_PI}, 0, plain);
    // Folded, and not star-shaped.
    add("foldedCrescent", 3, {20, 80, 20, 50, 1.5 * M_PI}, 2,
        [](const Sector& s, const float* d) { return s.at(folded(d[0]), d[1], d[2]); });
    add("foldedAround", 3, {20, 80, 25, 50, 1.6 * M_PI}, 2,
        [](const Sector& s, const float* d) { return s.at(d[0], folded(d[1]), d[2]); });
    // Four and more channels, some with the same effect.
    add("crescentOfFour", 4, {20, 80, 20, 50, 1.5 * M_PI}, 2,
        [](const Sector& s, const float* d) { return s.at(0.5 * (d[0] + d[3]), d[1], d[2]); });
    add("ringOfFour", 4, {30, 60, 25, 50, 2.5 * M_PI}, 0,
        [](const Sector& s, const float* d) { return s.at(d[0], 0.5 * (d[1] + d[3]), d[2]); });
    add("crescentOfFive", 5, {20, 80, 20, 50, 1.5 * M_PI}, 2, [](const Sector& s, const float* d) {
        return s.at(0.5 * (d[0] + d[3]), d[1], 0.7 * d[2] + 0.3 * d[4]);
    });
    add("crescentOfSix", 6, {20, 80, 20, 50, 1.5 * M_PI}, 2, [](const Sector& s, const float* d) {
        return s.at(0.5 * (d[0] + d[3]), d[1], 0.6 * d[2] + 0.3 * d[4] + 0.1 * d[5]);
    });
    return all;
}

void PrintTo(const Case& c, std::ostream* out)
{
    *out << c.name;
}

// Computed once for all tests.
const GamutRecord& recordOf(const Case& c)
{
    static std::map<std::string, GamutRecord> known;
    const auto [place, isNew] = known.try_emplace(c.name);
    if (isNew)
        place->second = buildGamut(MappedDevice(c.channels, c.map), {}, {}).value();
    return place->second;
}

class HardSolid : public testing::TestWithParam<Case>
{
protected:
    void SetUp() override { ASSERT_EQ(record.method, KVGamut::Method::LatticeSurface); }

    const GamutRecord& record = recordOf(GetParam());
};

} // namespace

TEST_P(HardSolid, hasItsVolumeWithinTheUncertainty)
{
    EXPECT_NEAR(signedVolume(record.mesh), GetParam().volume, GetParam().tolerance * GetParam().volume);
    EXPECT_LE(std::abs(record.volume - GetParam().volume), record.volumeUncertainty);
    EXPECT_LE(record.volumeUncertainty, 0.03 * record.volume);
}

TEST_P(HardSolid, hasAClosedSurfaceOfItsGenus)
{
    const MeshTopology shape = topology(record.mesh);
    EXPECT_TRUE(shape.closed && shape.manifold);
    EXPECT_EQ(shape.components, 1);
    EXPECT_EQ(shape.eulerCharacteristic, GetParam().euler);
    EXPECT_EQ(countIntersections(record.mesh, 1000, {}).value(), 0u);
}

TEST_P(HardSolid, containsWhatTheSolidContains)
{
    const WindingIndex index(record.mesh);
    const NearestIndex surface(record.mesh);
    std::mt19937 random(23);
    std::uniform_real_distribution<double> L(0.0, 100.0), ab(-70.0, 70.0);
    int inside = 0, wrong = 0;
    for (int i = 0; i < 4000; ++i) {
        const Vec3 x{L(random), ab(random), ab(random)};
        const bool expected = GetParam().contains(x);
        inside += expected;
        if (index.isInside(x) != expected) {
            ++wrong;
            EXPECT_LT(length(surface.nearest(x) - x), 1.5);
        }
    }
    EXPECT_GT(inside, 20);
    EXPECT_LT(wrong, 40);
}

TEST_P(HardSolid, reachesTheColoursOfTheDevice)
{
    const WindingIndex index(record.mesh);
    const NearestIndex surface(record.mesh);
    std::mt19937 random(29);
    std::uniform_real_distribution<float> any(0.0f, 1.0f);
    const auto missed = [&](const std::array<float, 6>& colour) {
        const Vec3 x = GetParam().map(colour.data());
        return index.isInside(x) ? 0.0 : length(surface.nearest(x) - x);
    };
    constexpr int trials = 3000;
    int far = 0;
    for (int i = 0; i < trials; ++i) {
        std::array<float, 6> colour;
        for (float& v : colour)
            v = any(random);
        far += missed(colour) > 0.5;
        // Also at the ends of the channels, where the surface with its edges and corners is.
        for (float& v : colour)
            v = std::clamp(1.5f * v - 0.25f, 0.0f, 1.0f);
        EXPECT_LT(missed(colour), 1.5);
    }
    EXPECT_LE(far, trials / 1000);
}

TEST_P(HardSolid, verticesHaveTheLabOfTheirDeviceColours)
{
    const auto vertices = static_cast<int>(record.mesh.lab.size());
    double sum = 0.0;
    int count = 0;
    for (int v = 0; v < vertices; v += 13) {
        const double distance = length(GetParam().map(record.mesh.deviceOf(v)) -
                                       toVec3(record.mesh.lab[static_cast<std::size_t>(v)]));
        EXPECT_LT(distance, 3.0) << v;
        sum += distance;
        ++count;
    }
    EXPECT_LT(sum / count, 0.3);
}

INSTANTIATE_TEST_SUITE_P(Shapes, HardSolid, testing::ValuesIn(cases()),
                         [](const auto& testCase) { return testCase.param.name; });

// --- Through a profile ----------------------------------------------------------------------------

TEST(LatticeGamut, ofAProfileThatOverlapsItselfIsARing)
{
    const Sector s{45, 55, 40, 50, 3.0 * M_PI};
    const auto profile =
        testprofiles::opened(testprofiles::tableProfile(cmsSigRgbData, 65, [&](const std::vector<double>& d) {
            const Vec3 p = s.at(d[0], d[1], d[2]);
            return Lab{p.L, p.a, p.b};
        }));
    const auto gamut = testprofiles::gamutOf(profile);
    EXPECT_EQ(gamut.problem(), std::nullopt);
    EXPECT_EQ(gamut.method(), KVGamut::Method::LatticeSurface);
    EXPECT_EQ(gamut.report().gridPoints, 33);
    EXPECT_NEAR(gamut.volume(), s.volume(), 0.005 * s.volume());
    const slow::Shape shape = slow::shapeOf(slow::facesOf(gamut));
    EXPECT_TRUE(shape.everyEdgeOnceEachWay);
    EXPECT_EQ(shape.euler, 0);
    const float ring[] = {50.0f, 0.0f, -45.0f}, hole[] = {50.0f, 0.0f, 0.0f};
    EXPECT_TRUE(gamut.isInside(ring));
    EXPECT_FALSE(gamut.isInside(hole));

    EXPECT_TRUE(testprofiles::gamutOf(profile).faces() == gamut.faces());
    KVGamut::GamutObject copy;
    copy.deserialize(gamut.serialize());
    EXPECT_EQ(copy.problem(), std::nullopt);
    EXPECT_EQ(copy.method(), KVGamut::Method::LatticeSurface);
    EXPECT_TRUE(copy.faces() == gamut.faces());
}

// --- More channels than a lattice surface supports ------------------------------------------------

namespace {

// The means of the channels 0, 3, 6..., of 1, 4, 7... and of 2, 5, 8... are height, angle and radius.
MappedDevice sectorOfManyChannels(int channels, const Sector& s)
{
    return MappedDevice(channels, [channels, s](const float* d) {
        std::array<double, 3> sum{}, count{};
        for (int c = 0; c < channels; ++c) {
            sum[std::size_t(c % 3)] += double(d[c]);
            count[std::size_t(c % 3)] += 1.0;
        }
        return s.at(sum[0] / count[0], sum[1] / count[1], sum[2] / count[2]);
    });
}

// Inks that absorb light in three bands, each mainly in one of them.
MappedDevice absorbingInks(int channels)
{
    return MappedDevice(channels, [channels](const float* d) {
        std::array<double, 3> light{1.0, 1.0, 1.0};
        for (int c = 0; c < channels; ++c)
            for (std::size_t band = 0; band < 3; ++band)
                light[band] *=
                    std::exp(-double(d[c]) * (0.1 + 2.0 * ((c + int(band)) % 3 == 0) / (1 + c / 3)));
        const auto cubeRoot = [](double t) { return t > 0.008856 ? std::cbrt(t) : 7.787 * t + 16.0 / 116.0; };
        const double x = cubeRoot(0.45 * light[0] + 0.38 * light[1] + 0.17 * light[2]);
        const double y = cubeRoot(0.25 * light[0] + 0.68 * light[1] + 0.07 * light[2]);
        const double z = cubeRoot(0.02 * light[0] + 0.12 * light[1] + 0.86 * light[2]);
        return Vec3{116.0 * y - 16.0, 500.0 * (x - y), 200.0 * (y - z)};
    });
}

} // namespace

TEST(ManyChannels, withAConcavityAreRefused)
{
    for (const auto& [channels, turns] : {std::pair{7, 1.5}, {8, 1.2}, {10, 1.5}}) {
        const Sector s{20, 80, 20, 50, turns * M_PI};
        EXPECT_EQ(codeOf(buildGamut(sectorOfManyChannels(channels, s), {}, {})),
                  KVProblemCode::UnresolvedConcavity)
            << channels << " channels";
    }
}

// A folded, wavy solid, in which samples of different depth are next to each other seen from the centre.
TEST(ManyChannels, withASelfIntersectingHullAreRefused)
{
    for (int channels : {7, 8}) {
        const MappedDevice waves(channels, [channels](const float* d) {
            std::array<double, 3> sum{}, count{};
            for (int c = 0; c < channels; ++c) {
                sum[std::size_t(c % 3)] += double(d[c]);
                count[std::size_t(c % 3)] += 1.0;
            }
            const double x = M_PI * sum[0] / count[0], y = sum[1] / count[1], z = sum[2] / count[2];
            return Vec3{50 + 30 * std::sin(x), 60 * (y - 0.5) + 20 * std::cos(2 * x),
                        60 * (z - 0.5) + 20 * std::sin(2 * M_PI * y)};
        });
        EXPECT_EQ(codeOf(buildGamut(waves, {}, {})), KVProblemCode::SurfaceSelfIntersects) << channels;
    }
}

TEST(ManyChannels, withoutAConcavityAreNotRefused)
{
    for (int channels : {7, 9, 12})
        EXPECT_EQ(codeOf(buildGamut(absorbingInks(channels), {}, {})), std::nullopt) << channels;
}

// The image of a face on the solid is the face itself; that of a face over a concavity follows the solid.
TEST(ReachedVolume, isTheVolumeOfASolidWithoutConcavities)
{
    const MappedDevice inks = absorbingInks(4);
    const DeviceNodes nodes = equalisedNodes(inks, 17, minEvenShare, {}).value();
    const Mesh hull = radialHull(inks, nodes, {}).value();
    EXPECT_NEAR(reachedVolume(hull, inks, {}).value(), signedVolume(hull), 0.002 * signedVolume(hull));

    const Sector s{20, 80, 20, 50, 1.5 * M_PI};
    const MappedDevice crescent = sectorOfManyChannels(7, s);
    const DeviceNodes axes = equalisedNodes(crescent, 9, minEvenShare, {}).value();
    const Mesh filled = radialHull(crescent, axes, {}).value();
    EXPECT_GT(signedVolume(filled), 1.3 * s.volume());
    EXPECT_LT(reachedVolume(filled, crescent, {}).value(), 1.01 * s.volume());
}

// --- Steps of the computation ---------------------------------------------------------------------

namespace {

CastBudget& freshBudget()
{
    static CastBudget budget;
    budget = {};
    return budget;
}

// A box as the solid of a device with 3^3 nodes.
DeviceSolid boxSolid(Vec3 low, Vec3 high)
{
    const MappedDevice device(3, [=](const float* d) {
        return Vec3{low.L + (high.L - low.L) * double(d[0]), low.a + (high.a - low.a) * double(d[1]),
                    low.b + (high.b - low.b) * double(d[2])};
    });
    const std::vector<float> axis{0.0f, 0.25f, 1.0f};
    return deviceSolid(device, {axis, axis, axis}, {}).value();
}

} // namespace

TEST(DeviceCubeMesh, thinnedEqualsTheMeshOfFewerNodes)
{
    const MappedDevice device(3, [](const float* d) {
        return Vec3{100.0 * double(d[0]), 50.0 * double(d[1] * d[1]),
                    60.0 * double(d[2]) - 10.0 * double(d[0])};
    });
    for (const auto& [nodes, count] : {std::pair{9, 5}, {8, 4}, {3, 2}, {17, 17}}) {
        const DeviceNodes all = equalisedNodes(device, nodes, minEvenShare, {}).value();
        DeviceNodes kept;
        for (const auto& axis : all)
            kept.push_back(thinnedAxis(axis, std::size_t(count)));
        const Mesh expected = deviceCubeMesh(device, kept, {}).value();
        const Mesh thin =
            thinnedCubeMesh(deviceCubeMesh(device, all, {}).value(), std::size_t(nodes), std::size_t(count));
        EXPECT_EQ(thin.device, expected.device);
        EXPECT_EQ(thin.triangles, expected.triangles);
        ASSERT_EQ(thin.lab.size(), expected.lab.size());
        for (std::size_t v = 0; v < thin.lab.size(); ++v)
            EXPECT_EQ(toLattice(thin.lab[v]), toLattice(expected.lab[v]));
    }
}

TEST(DeviceSolid, fillsTheImageOfTheDeviceOnce)
{
    const DeviceSolid solid = boxSolid({10, -20, 30}, {60, 30, 50});
    EXPECT_EQ(solid.tetrahedra.size(), 8u * 6u);
    double sum = 0.0;
    for (const auto& t : solid.tetrahedra) {
        const auto at = [&](std::size_t i) { return solid.points[static_cast<std::size_t>(t[i])]; };
        sum += std::abs(dot(at(1) - at(0), cross(at(2) - at(0), at(3) - at(0)))) / 6.0;
    }
    EXPECT_NEAR(sum, 50.0 * 50.0 * 20.0, 1e-6 * sum);
}

TEST(DeviceSolid, crossesALineInOneIntervalWithoutGaps)
{
    const DeviceSolid solid = boxSolid({10, -20, 30}, {60, 30, 50});
    LineGrid grid;
    grid.a0 = -30.0;
    grid.b0 = 30.0; // also along facets and edges of tetrahedra
    grid.step = 2.5;
    grid.na = 30;
    grid.nb = 8;
    const LineIntervals lines = castThrough(solid.points, solid.tetrahedra, grid, freshBudget(), {}).value();
    for (int j = 0; j < grid.nb; ++j)
        for (int i = 0; i < grid.na; ++i) {
            const double a = grid.a0 + i * grid.step;
            const auto line = static_cast<std::size_t>(j * grid.na + i);
            const auto count = lines.first[line + 1] - lines.first[line];
            ASSERT_EQ(count, a < -20.0 || a > 30.0 ? 0u : 1u) << a;
            if (count == 1) {
                EXPECT_NEAR(lines.intervals[lines.first[line]].low, 10.0f, 1e-3f);
                EXPECT_NEAR(lines.intervals[lines.first[line]].high, 60.0f, 1e-3f);
            }
        }
}

// The ends of a line are those without the known part, and tetrahedra inside it need not be intersected.
TEST(CastThrough, findsTheEndsAroundAKnownPart)
{
    const DeviceSolid solid = boxSolid({10, -20, 30}, {60, 30, 50});
    LineGrid grid;
    grid.a0 = -19.3;
    grid.b0 = 31.1;
    grid.step = 2.5;
    grid.na = 20;
    grid.nb = 8;
    CastBudget all, fewer;
    const auto plain = castThrough(solid.points, solid.tetrahedra, grid, all, {}).value();
    const std::vector<LinePart> known(grid.size(), LinePart{12.0f, 58.0f});
    const auto ends = castThrough(solid.points, solid.tetrahedra, grid, known, fewer, {}).value();
    EXPECT_LE(all.left, fewer.left);
    for (std::size_t line = 0; line < grid.size(); ++line) {
        ASSERT_EQ(plain.first[line + 1] - plain.first[line], 1u);
        ASSERT_GE(ends.first[line + 1] - ends.first[line], 1u);
        EXPECT_EQ(ends.intervals[ends.first[line]].low, plain.intervals[plain.first[line]].low);
        EXPECT_EQ(ends.intervals[ends.first[line + 1] - 1].high, plain.intervals[plain.first[line]].high);
    }
    const std::vector<LinePart> inside(grid.size(), LinePart::whole());
    CastBudget unused;
    const auto nothing = castThrough(solid.points, solid.tetrahedra, grid, inside, unused, {}).value();
    EXPECT_TRUE(nothing.intervals.empty());
    EXPECT_EQ(unused.left, CastBudget().left);
}

TEST(RowRanges, leaveOutNoLineThatCrossesATetrahedron)
{
    LineGrid grid;
    grid.na = grid.nb = 40;
    std::mt19937 random(1);
    const auto place = [&random] { return double(random() % 4000) / 100.0; };
    std::size_t crossed = 0, visited = 0, inBox = 0;
    for (int round = 0; round < 200; ++round) {
        std::array<Vec3, 4> t;
        for (Vec3& corner : t)
            corner = {place(), place(), place()};
        const TetrahedronOnLines tetrahedron(t[0], t[1], t[2], t[3]);
        const RowRanges rows(grid, t[0], t[1], t[2], t[3]);
        const LineRange box(grid, t[0], t[1], t[2], t[3]);
        inBox += static_cast<std::size_t>((box.i1 - box.i0 + 1) * (box.j1 - box.j0 + 1));
        for (int j = 0; j < grid.nb; ++j) {
            const auto [i0, i1] = rows.of(j);
            visited += static_cast<std::size_t>(std::max(0, i1 - i0 + 1));
            for (int i = 0; i < grid.na; ++i) {
                double low = 0.0, high = 0.0;
                const bool crosses = tetrahedron.interval(i, j, low, high);
                crossed += crosses;
                EXPECT_TRUE(!crosses || (i0 <= i && i <= i1)) << i << ' ' << j;
            }
        }
    }
    EXPECT_GE(visited, crossed);
    EXPECT_LE(double(visited), 1.02 * double(crossed));
    EXPECT_GT(double(inBox), 1.5 * double(crossed));
}

TEST(LatticeSurface, ofABoxCutsOnlyItsEdgesOff)
{
    const DeviceSolid solid = boxSolid({10, -20, 30}, {60, 30, 50});
    const double edges = 4.0 * (50.0 + 50.0 + 20.0);
    for (double pitch : {4.0, 2.0, 1.0}) {
        Mesh mesh = latticeSurface(solid, pitch, freshBudget(), {}).value();
        const double missing = 50.0 * 50.0 * 20.0 - signedVolume(mesh);
        // At most half of a cell is cut off along each edge, and nothing is added.
        EXPECT_GE(missing, -1e-3);
        EXPECT_LE(missing, 0.5 * pitch * pitch * edges);
        const auto faces = mesh.triangles.size();
        removeTinyComponents(mesh);
        EXPECT_EQ(mesh.triangles.size(), faces);
        EXPECT_EQ(topology(mesh).eulerCharacteristic, 2);
    }
}

TEST(LatticeSurface, hasTheRequestedNumberOfFaces)
{
    const DeviceSolid solid = boxSolid({10, -20, 30}, {60, 30, 50});
    const double pitch = pitchForFaces(solid, 20'000.0, freshBudget(), {}).value();
    EXPECT_NEAR(double(latticeSurface(solid, pitch, freshBudget(), {})->triangles.size()), 20'000.0, 3000.0);
}

TEST(LatticeSurface, losesItsTinyComponents)
{
    const DeviceSolid large = boxSolid({10, -20, 30}, {60, 30, 50});
    Mesh mesh = latticeSurface(large, 2.0, freshBudget(), {}).value();
    const auto faces = mesh.triangles.size();
    const Mesh crumb = latticeSurface(boxSolid({80, 0, 0}, {81, 1, 1}), 0.5, freshBudget(), {}).value();
    const int shift = static_cast<int>(mesh.lab.size());
    mesh.lab.insert(mesh.lab.end(), crumb.lab.begin(), crumb.lab.end());
    mesh.device.insert(mesh.device.end(), crumb.device.begin(), crumb.device.end());
    for (const Triangle& t : crumb.triangles)
        mesh.triangles.push_back({t[0] + shift, t[1] + shift, t[2] + shift});
    removeTinyComponents(mesh);
    EXPECT_EQ(mesh.triangles.size(), faces);
    EXPECT_EQ(mesh.lab.size(), static_cast<std::size_t>(shift));
    EXPECT_EQ(mesh.device.size(), static_cast<std::size_t>(shift) * 3);
}

TEST(LatticeSurface, failsIfCancelled)
{
    auto protocol = KVCompletionProtocol::createTask({});
    protocol->cancel();
    const DeviceSolid solid = boxSolid({10, -20, 30}, {60, 30, 50});
    EXPECT_EQ(codeOf(latticeSurface(solid, 1.0, freshBudget(), Task(protocol))), KVProblemCode::Cancelled);
    EXPECT_EQ(codeOf(pitchForFaces(solid, 1000.0, freshBudget(), Task(protocol))), KVProblemCode::Cancelled);
}

TEST(LatticeSurface, failsIfItsBudgetIsExceeded)
{
    const DeviceSolid solid = boxSolid({10, -20, 30}, {60, 30, 50});
    CastBudget budget;
    const double pitch = pitchForFaces(solid, 1000.0, budget, {}).value();
    EXPECT_GT(pitch, 0.0);
    EXPECT_LT(budget.left, CastBudget().left);
    budget.left = 100;
    EXPECT_EQ(codeOf(latticeSurface(solid, pitch, budget, {})), KVProblemCode::TooManyOverlaps);
}
