// SPDX-License-Identifier: Apache-2.0
// How often the steps of a computation look for cancellation, and that they end at once then. The work
// between two looks is counted in vertices, triangles, samples and bytes, so that the tests do not depend on
// the machine.

#include "Looks.h"
#include "MappedDevice.h"
#include "Problems.h"
#include "TestProfiles.h"
#include "WorkCount.h"

#include <engine/base/Parts.h>
#include <engine/gamut/Serialize.h>
#include <engine/mesh/Compare.h>
#include <engine/mesh/ConvexHull.h>
#include <engine/mesh/MeshChecks.h>
#include <engine/mesh/MeshComponents.h>
#include <engine/mesh/MeshVolume.h>
#include <engine/mesh/SelfIntersection.h>
#include <engine/surface/CoveredVolume.h>
#include <engine/surface/DeviceCubeMesh.h>
#include <engine/surface/GamutBuilder.h>
#include <engine/surface/LatticeSurface.h>
#include <engine/surface/MissedColours.h>
#include <engine/surface/RadialHull.h>
#include <engine/surface/Refinement.h>

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <random>

using namespace testprofiles;
using namespace velmora;

namespace {

using Step = std::function<void(const Task&)>;

MappedDevice box(int channels)
{
    return {
        channels, [](const float* d) {
            return Vec3{10.0 + 80.0 * double(d[0]), 80.0 * double(d[1]) - 40.0, 80.0 * double(d[2]) - 40.0};
        }};
}

/// One and a half turns around the L* axis.
MappedDevice woundRing()
{
    return {3, [](const float* d) {
                const double angle = 3.0 * M_PI * double(d[1]), radius = 20.0 + 40.0 * double(d[2]);
                return Vec3{20.0 + 60.0 * double(d[0]), radius * std::cos(angle), radius * std::sin(angle)};
            }};
}

/// Four inks that are darkest at 85 %: what they reach beyond lies within the device hypercube.
MappedDevice inksThatPeakEarly()
{
    return {4, [](const float* d) {
                const auto ink = [d](int i) {
                    const double peak = 0.85, x = double(d[i]) / peak;
                    return x < 1.0 ? x : 1.0 - 0.5 * (x - 1.0);
                };
                const double light = 1.0 - ink(3);
                return Vec3{5.0 + light * (90.0 - 15.0 * (ink(0) + ink(1) + ink(2))),
                            light * 50.0 * (ink(1) - ink(0)), light * 50.0 * (ink(2) - 0.5 * ink(0))};
            }};
}

/// Four channels of which two reach farthest together at one half.
MappedDevice jointPeak()
{
    return {4, [](const float* d) {
                const double bump =
                    16.0 * double(d[2]) * (1.0 - double(d[2])) * double(d[3]) * (1.0 - double(d[3]));
                return Vec3{20.0 + 40.0 * double(d[0]) + 30.0 * bump, 60.0 * double(d[1]) - 30.0,
                            40.0 * (double(d[2]) - double(d[3]))};
            }};
}

/// Each cell is about as large as the whole solid.
MappedDevice scattered(int channels)
{
    return {channels, [channels](const float* d) {
                double sum = 0.0;
                for (int c = 0; c < channels; ++c)
                    sum += (c + 1) * 1234.5 * double(d[c]);
                const auto part = [sum](double factor) { return factor * sum - std::floor(factor * sum); };
                return Vec3{100.0 * part(1.0), 100.0 * part(1.7) - 50.0, 100.0 * part(2.3) - 50.0};
            }};
}

DeviceNodes evenNodes(int channels, std::size_t count)
{
    std::vector<float> axis(count);
    for (std::size_t i = 0; i < count; ++i)
        axis[i] = float(i) / float(count - 1);
    return DeviceNodes(std::size_t(channels), axis);
}

Mesh cubeOf(std::size_t nodes)
{
    return deviceCubeMesh(box(3), evenNodes(3, nodes), {}).value();
}

/// After any look that says so, @p step does hardly anything.
void expectEndsSoon(const char* name, const Step& step, int minLooks, int places = 40)
{
    const int all = looksOf(step);
    EXPECT_GE(all, minLooks) << name;
    for (int last = 0; last < all; last += 1 + all / places)
        EXPECT_LE(looksOf(step, last), last + 40) << name << " goes on after look " << last;
}

int partsOf(std::size_t count)
{
    return static_cast<int>(count / stepsBetweenLooks);
}

} // namespace

// --- Loops in parts -------------------------------------------------------------------------------

TEST(Parts, visitAllIndicesInOrder)
{
    for (std::size_t count : {std::size_t(0), std::size_t(1), stepsBetweenLooks, 3 * stepsBetweenLooks + 5}) {
        std::vector<std::size_t> visited;
        EXPECT_TRUE(forEachIndex(count, {}, [&](std::size_t i) { visited.push_back(i); }));
        std::vector<std::size_t> expected(count);
        std::iota(expected.begin(), expected.end(), std::size_t(0));
        EXPECT_EQ(visited, expected);
    }
}

TEST(Parts, endAfterThePartInWhichTheyAreCancelled)
{
    std::size_t visited = 0;
    bool all = true;
    const auto loop = [&](const Task& task) {
        all = forEachIndex(10 * stepsBetweenLooks, task, [&](std::size_t) { ++visited; });
    };
    EXPECT_EQ(looksOf(loop, 3), 4);
    EXPECT_EQ(visited, 3 * stepsBetweenLooks);
    EXPECT_FALSE(all);
}

TEST(Parts, growOnlyUntilTheyAreCancelled)
{
    constexpr std::size_t count = 1'000'000;
    std::vector<int> values{1, 2};
    growInParts(values, count, 7, {});
    ASSERT_EQ(values.size(), count);
    EXPECT_EQ((std::vector{values[0], values[1], values[2], values.back()}), (std::vector{1, 2, 7, 7}));

    std::vector<int> few;
    EXPECT_LE(looksOf([&](const Task& task) { growInParts(few, count, 7, task); }, 2), 3);
    EXPECT_LE(few.size() * sizeof(int), std::size_t(1) << 19);
}

TEST(Parts, sortAsTheStandardLibrary)
{
    std::mt19937 random(5);
    for (std::size_t count :
         {std::size_t(0), std::size_t(1), stepsBetweenLooks, 5 * stepsBetweenLooks + 77}) {
        std::vector<unsigned> values(count);
        for (unsigned& v : values)
            v = static_cast<unsigned>(random()) % 1000u;
        std::vector<unsigned> expected = values;
        std::sort(expected.begin(), expected.end(), std::greater<>());
        sortInParts(values, std::greater<>(), {});
        EXPECT_EQ(values, expected);
    }
}

TEST(Parts, sortFewValuesBetweenTwoLooks)
{
    constexpr std::size_t count = 16 * stepsBetweenLooks;
    std::vector<std::size_t> values(count);
    for (std::size_t i = 0; i < count; ++i)
        values[i] = i * 7919 % count;
    std::size_t comparisons = 0, before = 0, max = 0;
    const Task task([&] {
        max = std::max(max, comparisons - before);
        before = comparisons;
        return false;
    });
    sortInParts(
        values,
        [&comparisons](std::size_t a, std::size_t b) {
            ++comparisons;
            return a < b;
        },
        task);
    EXPECT_LE(std::max(max, comparisons - before),
              2 * count); // all together: more than sixteen times as many
}

// --- Single steps ---------------------------------------------------------------------------------

TEST(Looks, ofLoopsOverAMesh)
{
    const Mesh mesh = cubeOf(49);
    const int triangles = partsOf(mesh.triangles.size()), vertices = partsOf(mesh.lab.size());
    ASSERT_GE(vertices, 3);
    const std::vector<Vec3> points(mesh.lab.size());
    expectEndsSoon(
        "signedVolume", [&](const Task& t) { (void)signedVolume(mesh, t); }, triangles);
    expectEndsSoon(
        "latticePoints", [&](const Task& t) { (void)latticePoints(mesh, t); }, vertices);
    expectEndsSoon(
        "snappedAll", [&](const Task& t) { (void)snappedAll(points, t); }, vertices);
    expectEndsSoon(
        "flip",
        [&](const Task& t) {
            Mesh copy = mesh;
            flip(copy, t);
        },
        triangles);
    expectEndsSoon(
        "dropUnusedVertices",
        [&](const Task& t) {
            Mesh copy = mesh;
            dropUnusedVertices(copy, t);
        },
        2 * triangles + vertices);
    expectEndsSoon(
        "removeTinyComponents",
        [&](const Task& t) {
            Mesh copy = mesh;
            removeTinyComponents(copy, t);
        },
        static_cast<int>(3 * mesh.triangles.size()));
    expectEndsSoon(
        "thinnedCubeMesh", [&](const Task& t) { (void)thinnedCubeMesh(mesh, 49, 25, t); }, 6 * 24);
    expectEndsSoon(
        "deviceCubeMesh", [&](const Task& t) { (void)deviceCubeMesh(box(3), evenNodes(3, 49), t); }, 6 * 48);
}

// Edges, their neighbours, closed, manifold at each vertex, components.
TEST(Looks, ofTheCheckOfASurface)
{
    const Mesh mesh = cubeOf(49);
    const auto triangles = static_cast<int>(mesh.triangles.size()),
               vertices = static_cast<int>(mesh.lab.size());
    constexpr int bytesOfNeighbours = 12, bytesBetweenLooks = 1 << 18;
    expectEndsSoon(
        "checkSurface", [&](const Task& t) { (void)checkSurface(mesh, t); },
        4 * triangles + 2 * vertices + 4 * partsOf(mesh.triangles.size()) + partsOf(mesh.lab.size()) +
            4 * triangles * bytesOfNeighbours / bytesBetweenLooks);
}

// Bounds, two passes over the lists, fans, and once for each entry of a list.
TEST(Looks, ofTheSearchForIntersections)
{
    const Mesh mesh = cubeOf(49);
    const auto triangles = static_cast<int>(mesh.triangles.size());
    expectEndsSoon(
        "countIntersections", [&](const Task& t) { (void)countIntersections(mesh, 1, t); }, 5 * triangles);
}

// Many triangles in one place are one list.
TEST(Looks, ofAComparison)
{
    const Mesh first = cubeOf(33);
    Mesh second = first;
    for (LabPoint& p : second.lab)
        p.a += 7.0f;
    constexpr int minCells = 96 * 88;
    expectEndsSoon(
        "comparison", [&](const Task& task) { static_cast<void>(intersectionVolume(first, second, task)); },
        minCells);
}

TEST(Looks, inADenseListOfTriangles)
{
    Mesh mesh = cubeOf(33);
    const auto many = static_cast<int>(mesh.triangles.size());
    for (KVGamut::LabPoint& p : mesh.lab)
        p = snapped(Vec3{50.0 + 0.01 * double(p.L), 0.01 * double(p.a), 0.01 * double(p.b)});
    mesh.lab.push_back({0.0f, -100.0f, -100.0f});
    mesh.lab.push_back({100.0f, 100.0f, -100.0f});
    mesh.lab.push_back({100.0f, 100.0f, 100.0f});
    const auto last = static_cast<int>(mesh.lab.size());
    mesh.triangles.push_back({last - 3, last - 2, last - 1});
    const int all = looksOf([&](const Task& task) { (void)countIntersections(mesh, 1, task); });
    EXPECT_GE(all, 5 * many);
}

TEST(Looks, ofAConvexHullWhileItsPointsAreSorted)
{
    std::vector<HullPoint> coplanar;
    std::mt19937 random(3);
    for (std::size_t i = 0; i < 16 * stepsBetweenLooks; ++i)
        coplanar.push_back({int(random() % 100'000), int(random() % 100'000), 0});
    // Points, keys, parts to sort, merges of them, order.
    expectEndsSoon(
        "coplanar points", [&](const Task& t) { (void)convexHull(coplanar, t); }, 16 + 16 + 16 + 15 + 16);
}

TEST(Looks, ofAConvexHullAtEachPoint)
{
    std::vector<HullPoint> points;
    std::mt19937 random(4);
    for (int i = 0; i < 3000; ++i)
        points.push_back({int(random() % 100'000), int(random() % 100'000), int(random() % 100'000)});
    expectEndsSoon(
        "points", [&](const Task& t) { (void)convexHull(points, t); }, 3000);
}

TEST(Looks, ofSamplesOfADevice)
{
    const DeviceNodes cube = evenNodes(3, 33), hypercube = evenNodes(5, 17);
    expectEndsSoon(
        "cubeSamples", [&](const Task& t) { (void)cubeSamples(cube, t); }, 33 * 33);
    const std::size_t samples = hypercubeFaceSamples(hypercube).size() / 5;
    expectEndsSoon(
        "hypercubeFaceSamples", [&](const Task& t) { (void)hypercubeFaceSamples(hypercube, t); },
        static_cast<int>(samples / 17));
}

TEST(Looks, ofASolid)
{
    const auto device = woundRing();
    const DeviceNodes nodes = evenNodes(3, 17);
    expectEndsSoon(
        "deviceSolid", [&](const Task& t) { (void)deviceSolid(device, nodes, t); }, 2 * 16);
    const DeviceSolid solid = deviceSolid(device, nodes, {}).value();
    expectEndsSoon(
        "latticeSurface",
        [&](const Task& t) {
            CastBudget budget;
            (void)latticeSurface(solid, 4.0, budget, t);
        },
        9 * 15 * 30); // seven directions, cells at the surface, cells of the surface: rows of the lattice
}

TEST(Looks, ofTheVolumeOfAllCells)
{
    const DeviceNodes cube = evenNodes(3, 9), hypercube = evenNodes(6, 3);
    const Mesh mesh = cubeOf(17);
    const auto measure = [&mesh](const MappedDevice& device, const DeviceNodes& nodes) {
        return [&device, &nodes, &mesh](const Task& t) {
            UnionBudget budget;
            if (const auto lines = coveredLines(device, nodes, budget, t))
                (void)coveredVolume(*lines, mesh, t);
        };
    };
    const auto monotone = box(3), large = scattered(3), inks = scattered(6);
    constexpr int cells = 8 * 8 * 8, faces = 2 * 2 * 2 * 2 * 2 * 2 * 20;
    expectEndsSoon("cells of a cube", measure(monotone, cube), cells / 16);
    expectEndsSoon("large cells", measure(large, cube), cells / 16);
    expectEndsSoon("six inks", measure(inks, hypercube), faces / 1024);
}

TEST(Looks, ofTheCellsAtTheSurface)
{
    const auto device = jointPeak();
    const DeviceNodes nodes = evenNodes(4, 7);
    expectEndsSoon(
        "cellSolid",
        [&](const Task& t) {
            UnionBudget budget;
            (void)cellSolid(device, nodes, budget, t);
        },
        6 * 6 * 6 * 6 / 16);
}

TEST(Looks, ofTheColoursThatASurfaceMisses)
{
    const auto device = inksThatPeakEarly();
    const Mesh hull = radialHull(device, evenNodes(4, 9), {}).value();
    expectEndsSoon(
        "findMissedColours", [&](const Task& t) { (void)findMissedColours(hull, device, t); }, 4096);
    const std::vector<float> colours = gridColours(evenNodes(4, 7), {});
    expectEndsSoon(
        "coloursOutside", [&](const Task& t) { (void)coloursOutside(hull, device, colours, t); },
        7 * 7 * 7 * 7);
}

TEST(Looks, ofARefinement)
{
    const Mesh mesh = cubeOf(33);
    const auto triangles = static_cast<int>(mesh.triangles.size());
    expectEndsSoon(
        "refine",
        [&](const Task& t) {
            Mesh copy = mesh;
            (void)refine(copy, box(3), 1.0, 1, t);
        },
        triangles + partsOf(mesh.triangles.size()) + partsOf(4 * mesh.triangles.size()) / 2);
}

// --- Profiles -------------------------------------------------------------------------------------

TEST(Looks, atEachValueOfAProfile)
{
    constexpr int nodes = 9;
    const QByteArray profile = tableProfile(cmsSigCmykData, nodes, [](const std::vector<double>& d) {
        return Lab{100 * (1 - d[3]), 50 * (d[0] - d[1]), 50 * (d[2] - d[1])};
    });
    const auto create = [&](const Task& task) {
        const auto made = DeviceTransform::create(profile, INTENT_RELATIVE_COLORIMETRIC, false, task);
        if (task.isCancelled()) {
            ASSERT_FALSE(made);
            EXPECT_EQ(made.error().code, KVProblemCode::Cancelled);
        } else {
            EXPECT_TRUE(made);
        }
    };
    expectEndsSoon("create", create, 3 * nodes * nodes * nodes * nodes);
}

TEST(Looks, openAProfileWithoutACopy)
{
    const QByteArray profile = tableProfile(cmsSigRgbData, 33, [](const std::vector<double>& d) {
        return Lab{100 * d[0], 100 * d[1] - 50, 100 * d[2] - 50};
    });
    const auto opening = work::of([&] {
        (void)DeviceTransform::create(profile, INTENT_RELATIVE_COLORIMETRIC, false,
                                      Task([] { return true; }));
    });
    EXPECT_LT(opening.bytes, std::uint64_t(profile.size()) / 2);
}

// --- Whole computations ---------------------------------------------------------------------------

namespace {

// Three quarters of a ring whose outside is reached in the interior of the hypercube only.
MappedDevice innerCrescent()
{
    return MappedDevice(4, [](const float* d) {
        const double bump = 16.0 * double(d[2]) * (1.0 - double(d[2])) * double(d[3]) * (1.0 - double(d[3]));
        const double angle = 1.5 * M_PI * double(d[1]), radius = 20.0 + 12.0 * double(d[2]) + 18.0 * bump;
        return Vec3{20 + 60 * double(d[0]), radius * std::cos(angle), radius * std::sin(angle)};
    });
}

} // namespace

TEST(Looks, ofEveryMethodAreMetAtEveryStage)
{
    struct Case
    {
        const char* name;
        Result<std::unique_ptr<DeviceTransform>> transform;
        KVGamut::Method method;
    };
    const auto file = [](const QString& path) {
        return DeviceTransform::create(openedFile(path)->bytes, INTENT_RELATIVE_COLORIMETRIC, false);
    };
    std::vector<Case> cases;
    cases.push_back({"RGB", file(srgb()), KVGamut::Method::DeviceMesh});
    cases.push_back({"CMYK", file(printerCmyk()), KVGamut::Method::RadialHull});
    cases.push_back({"ring", std::make_unique<MappedDevice>(woundRing()), KVGamut::Method::LatticeSurface});
    cases.push_back(
        {"inks", std::make_unique<MappedDevice>(inksThatPeakEarly()), KVGamut::Method::RadialHull});
    cases.push_back(
        {"crescent", std::make_unique<MappedDevice>(innerCrescent()), KVGamut::Method::LatticeSurface});
    for (const Case& c : cases) {
        ASSERT_TRUE(c.transform) << c.name;
        const GamutRequest request{.gridPoints = 9, .refinements = 2};
        const auto build = [&](const Task& task) {
            const auto record = buildGamut(**c.transform, request, task);
            if (task.isCancelled()) {
                ASSERT_FALSE(record) << c.name;
                EXPECT_EQ(record.error().code, KVProblemCode::Cancelled) << c.name;
            } else {
                ASSERT_TRUE(record) << c.name << ' ' << KVProblem::sentence(record.error().code);
                EXPECT_EQ(record->method, c.method) << c.name;
            }
        };
        expectEndsSoon(c.name, build, 1000, 12);
    }
}

// --- Saved gamuts ---------------------------------------------------------------------------------

TEST(Looks, aRestoreConvertsItsTextInParts)
{
    const auto saved = gamutOf(openedFile(srgb()), 65).serialize();
    const auto size = static_cast<std::uint64_t>(saved.value(QStringLiteral("Gamut")).toString().size());
    const auto cancelled = work::of([&] { (void)deserialized(saved, Task([] { return true; })); });
    EXPECT_LT(cancelled.bytes, size); // the bytes of the result; a copy of the text would be more
}

TEST(Looks, aRestoreLooksOncePer64Kilobytes)
{
    auto saved = gamutOf(openedFile(srgb()), 65).serialize();
    saved[QStringLiteral("GamutChecksum")] = QStringLiteral("wrong"); // so that it ends after the text
    const auto size = saved.value(QStringLiteral("Gamut")).toString().size();
    const auto restore = [&](const Task& task) { (void)deserialized(saved, task); };
    expectEndsSoon("restore", restore, static_cast<int>(size / 65'536 + size * 3 / 4 / 65'536));
}

TEST(Looks, aRestoreWithAHandlePreparesTheOutline)
{
    const auto saved = gamutOf(openedFile(srgb()), 17).serialize();
    auto protocol = KVCompletionProtocol::createTask(QStringLiteral("restore"));
    KVGamut::GamutObject gamut;
    gamut.deserialize(saved, &protocol);
    EXPECT_FALSE(gamut.outline().isEmpty());
    EXPECT_EQ(work::of([&] { (void)gamut.outline(); }).bytes, 0u);
    KVGamut::GamutObject again;
    again.deserialize(saved, &protocol);
    EXPECT_LT(work::of([&] { (void)again.outline(); }).bytes, 1000u);
}
