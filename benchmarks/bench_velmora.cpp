// SPDX-License-Identifier: Apache-2.0
// The colour engine: processor time of each step of a gamut, and of each query.
//
// The arguments are the kind of profile and the number of grid points per device axis. Kinds: 0 is RGB
// (sRGB of colord-data, a device mesh), 1 is CMYK (default_cmyk of libgs-common, a radial hull), 2 is a
// table that winds one and a half times around the L* axis (a lattice surface). Held constant: relative
// colorimetric intent, no black-point compensation, one thread.
//
// The baseline is "transformAlone": Little CMS converts the device colours of the surface. The counter
// "times_transform" of all others is their processor time divided by that of the baseline. The queries inside
// and nearest are called for one point at a time; they are compared with as many converted colours.

#include <engine/mesh/Columns.h>
#include <engine/mesh/Compare.h>
#include <engine/mesh/MeshChecks.h>
#include <engine/mesh/Outline.h>
#include <engine/mesh/SelfIntersection.h>
#include <engine/mesh/WindingIndex.h>
#include <engine/surface/DeviceCubeMesh.h>
#include <engine/surface/FoldCheck.h>
#include <engine/surface/GamutBuilder.h>
#include <engine/surface/LatticeSurface.h>
#include <engine/surface/RadialHull.h>

#include "engine/TestProfiles.h"

#include <platform/KVVelmoraFramework.h>

#include <benchmark/benchmark.h>

#include <QtCore/QFile>

#include <array>
#include <cmath>
#include <ctime>
#include <map>
#include <memory>
#include <random>

using namespace velmora;

namespace {

enum Kind
{
    Rgb,
    Cmyk,
    Ring
};

constexpr int foldCheckNodes = 17;
constexpr double latticeFaces = 100'000.0; // at the default grid of 33

double processorSeconds()
{
    timespec now;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) + 1e-9 * double(now.tv_nsec);
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        std::abort(); // the profiles are required
    return file.readAll();
}

QByteArray ringProfile()
{
    return testprofiles::tableProfile(cmsSigRgbData, 33, [](const std::vector<double>& d) {
        const double angle = 3.0 * M_PI * d[1], radius = 20.0 + 40.0 * d[2];
        return testprofiles::Lab{20.0 + 60.0 * d[0], radius * std::cos(angle), radius * std::sin(angle)};
    });
}

QByteArray profileBytes(int kind)
{
    return kind == Rgb    ? bytesOf(testprofiles::srgb())
           : kind == Cmyk ? bytesOf(testprofiles::printerCmyk())
                          : ringProfile();
}

// A device, and the colours of its surface with one grid.
struct Device
{
    Device(int kind, int gridPoints) : grid(gridPoints), bytes(profileBytes(kind))
    {
        transform = DeviceTransform::create(bytes, KVVMRenderRelativeColorimetric, false).value();
        if (kind == Ring) {
            nodes = solidNodes(*transform, grid, {}).value();
            samples = deviceSolid(*transform, nodes, {}).value().device;
        } else {
            nodes = equalisedNodes(*transform, grid, minEvenShare, {}).value();
            samples = kind == Rgb ? deviceCubeMesh(*transform, nodes, {}).value().device
                                  : hypercubeFaceSamples(nodes);
        }
    }

    std::size_t colours() const { return samples.size() / static_cast<std::size_t>(transform->channels()); }
    void runTransform() { benchmark::DoNotOptimize(transform->toLab(samples, {})); }

    // Little CMS alone: the minimum of several runs, measured once for all benchmarks.
    double transformSeconds()
    {
        constexpr int repeats = 10;
        for (int i = 0; i < repeats && !m_isMeasured; ++i) {
            const double start = processorSeconds();
            runTransform();
            m_transformSeconds = std::min(m_transformSeconds, processorSeconds() - start);
        }
        m_isMeasured = true;
        return m_transformSeconds;
    }

    int grid;
    QByteArray bytes;
    std::unique_ptr<DeviceTransform> transform;
    DeviceNodes nodes;
    std::vector<float> samples;

private:
    double m_transformSeconds = 1e9;
    bool m_isMeasured = false;
};

Device& deviceOf(const benchmark::State& state)
{
    static std::map<std::pair<std::int64_t, std::int64_t>, std::unique_ptr<Device>> known;
    auto& device = known[{state.range(0), state.range(1)}];
    if (!device)
        device = std::make_unique<Device>(int(state.range(0)), int(state.range(1)));
    return *device;
}

KVGamut::GamutObject gamutOf(const Device& device)
{
    return testprofiles::gamutOf(testprofiles::opened(device.bytes), device.grid);
}

// The final surface.
Mesh meshOf(Device& device)
{
    GamutRequest request;
    request.gridPoints = device.grid;
    return buildGamut(*device.transform, request, {}).value().mesh;
}

// Repeats an operation and reports its processor time relative to the baseline.
template <typename Operation>
void measure(benchmark::State& state, double baselineSeconds, const Operation& operation)
{
    const double start = processorSeconds();
    for (auto _ : state)
        operation();
    const double seconds = processorSeconds() - start;
    state.counters["times_transform"] = seconds / double(state.iterations()) / baselineSeconds;
}

void transformAlone(benchmark::State& state)
{
    Device& device = deviceOf(state);
    state.counters["colours"] = double(device.colours());
    measure(state, device.transformSeconds(), [&] { device.runTransform(); });
}

void gamut(benchmark::State& state)
{
    Device& device = deviceOf(state);
    int faces = 0;
    measure(state, device.transformSeconds(), [&] { faces = gamutOf(device).faceCount(); });
    state.counters["faces"] = faces;
}

Mesh latticeOf(Device& device)
{
    const DeviceSolid solid = deviceSolid(*device.transform, device.nodes, {}).value();
    const double fineness = std::min(1.0, device.grid / 33.0);
    CastBudget budget;
    const double pitch = pitchForFaces(solid, latticeFaces * fineness * fineness, budget, {}).value();
    return latticeSurface(solid, pitch, budget, {}).value();
}

void surface(benchmark::State& state)
{
    Device& device = deviceOf(state);
    measure(state, device.transformSeconds(), [&] {
        const Mesh mesh = state.range(0) == Rgb ? deviceCubeMesh(*device.transform, device.nodes, {}).value()
                          : state.range(0) == Cmyk ? radialHull(*device.transform, device.nodes, {}).value()
                                                   : latticeOf(device);
        benchmark::DoNotOptimize(mesh.triangles.size());
    });
}

// Only for three channels.
void foldCheck(benchmark::State& state)
{
    Device& device = deviceOf(state);
    const DeviceNodes nodes =
        equalisedNodes(*device.transform, std::min(device.grid, foldCheckNodes), minEvenShare, {}).value();
    measure(state, device.transformSeconds(),
            [&] { benchmark::DoNotOptimize(checkFolds(*device.transform, nodes, {}).value().foldShare); });
}

void topologyCheck(benchmark::State& state)
{
    Device& device = deviceOf(state);
    const Mesh mesh = meshOf(device);
    measure(state, device.transformSeconds(),
            [&] { benchmark::DoNotOptimize(topology(mesh).eulerCharacteristic); });
}

void crossingCheck(benchmark::State& state)
{
    Device& device = deviceOf(state);
    const Mesh mesh = meshOf(device);
    measure(state, device.transformSeconds(),
            [&] { benchmark::DoNotOptimize(countIntersections(mesh, 1, {}).value()); });
}

void windingCheck(benchmark::State& state)
{
    Device& device = deviceOf(state);
    const Mesh mesh = meshOf(device);
    constexpr double pitch = 2.0;
    const ColumnGrid grid = columnsOver(boundsOf(latticePoints(mesh)), pitch);
    measure(state, device.transformSeconds(), [&] {
        benchmark::DoNotOptimize(checkWinding(castColumns(mesh, grid, {}).value(), grid).insideVolume);
    });
}

void index(benchmark::State& state)
{
    Device& device = deviceOf(state);
    const Mesh mesh = meshOf(device);
    measure(state, device.transformSeconds(), [&] {
        benchmark::DoNotOptimize(WindingIndex(mesh).isInside({50, 0, 0}));
    });
}

std::vector<std::array<float, 3>> somePoints()
{
    std::mt19937 random(1);
    std::uniform_real_distribution<float> any(-100.0f, 100.0f);
    std::vector<std::array<float, 3>> points(4096);
    for (auto& p : points)
        p = {50.0f + 0.5f * any(random), any(random), any(random)};
    return points;
}

// Tests one point after the other; the index is built beforehand.
template <typename Ask>
void askPoints(benchmark::State& state, const Ask& ask)
{
    Device& device = deviceOf(state);
    const auto object = gamutOf(device);
    const auto points = somePoints();
    ask(object, points[0].data());
    std::size_t i = 0;
    measure(state, device.transformSeconds() / double(device.colours()),
            [&] { ask(object, points[i++ % points.size()].data()); });
}

void inside(benchmark::State& state)
{
    askPoints(state, [](const KVGamut::GamutObject& object, const float* lab) {
        benchmark::DoNotOptimize(object.isInside(lab));
    });
}

void nearest(benchmark::State& state)
{
    askPoints(state, [](const KVGamut::GamutObject& object, const float* lab) {
        benchmark::DoNotOptimize(object.nearest(lab).distance);
    });
}

void nearestByCiede2000(benchmark::State& state)
{
    askPoints(state, [](const KVGamut::GamutObject& object, const float* lab) {
        benchmark::DoNotOptimize(object.nearestByCiede2000(lab).distance);
    });
}

void nearestAtHue(benchmark::State& state)
{
    askPoints(state, [](const KVGamut::GamutObject& object, const float* lab) {
        benchmark::DoNotOptimize(object.nearestAtHue(lab).distance);
    });
}

void ring(benchmark::State& state)
{
    Device& device = deviceOf(state);
    const auto faces = gamutOf(device).faces();
    const float plane[] = {1.0f, 0.0f, 0.0f, -50.0f};
    measure(state, device.transformSeconds(),
            [&] { benchmark::DoNotOptimize(KVGamut::computeRing(plane, faces).size()); });
}

void outline(benchmark::State& state)
{
    Device& device = deviceOf(state);
    const Mesh mesh = meshOf(device);
    measure(state, device.transformSeconds(), [&] { benchmark::DoNotOptimize(outlineOf(mesh).size()); });
}

// With Adobe RGB at the same grid.
void compare(benchmark::State& state)
{
    Device& device = deviceOf(state);
    const Mesh mesh = meshOf(device);
    GamutRequest request;
    request.gridPoints = device.grid;
    const auto adobe =
        DeviceTransform::create(bytesOf(testprofiles::adobeRgb()), KVVMRenderRelativeColorimetric, false)
            .value();
    const GamutRecord other = buildGamut(*adobe, request, {}).value();
    measure(state, device.transformSeconds(),
            [&] { benchmark::DoNotOptimize(intersectionVolume(mesh, other.mesh)); });
}

void serialize(benchmark::State& state)
{
    Device& device = deviceOf(state);
    const auto object = gamutOf(device);
    measure(state, device.transformSeconds(), [&] { benchmark::DoNotOptimize(object.serialize().size()); });
}

void deserialize(benchmark::State& state)
{
    Device& device = deviceOf(state);
    const auto hash = gamutOf(device).serialize();
    measure(state, device.transformSeconds(), [&] {
        KVGamut::GamutObject object;
        object.deserialize(hash);
        benchmark::DoNotOptimize(object.faceCount());
    });
}

void lab2rgb(benchmark::State& state)
{
    const float chroma = float(state.range(0)); // 20: in gamut; 150: to be mapped
    float hue = 0.0f;
    for (auto _ : state) {
        hue += 0.01f;
        benchmark::DoNotOptimize(
            KVColorConversionHelper::KVHLab2RGB({60.0f, chroma * std::cos(hue), chroma * std::sin(hue)}));
    }
}

void allKinds(benchmark::internal::Benchmark* b)
{
    b->ArgNames({"kind", "grid"})
        ->ArgsProduct({{Rgb, Cmyk, Ring}, {9, 17, 33, 65}})
        ->Unit(benchmark::kMillisecond);
}

void threeChannels(benchmark::internal::Benchmark* b)
{
    b->ArgNames({"kind", "grid"})->ArgsProduct({{Rgb, Ring}, {9, 17, 33, 65}})->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK(transformAlone)->Apply(allKinds);
BENCHMARK(gamut)->Apply(allKinds);
BENCHMARK(surface)->Apply(allKinds);
BENCHMARK(foldCheck)->Apply(threeChannels);
BENCHMARK(topologyCheck)->Apply(allKinds);
BENCHMARK(crossingCheck)->Apply(allKinds);
BENCHMARK(windingCheck)->Apply(allKinds);
BENCHMARK(index)->Apply(allKinds);
BENCHMARK(inside)->Apply(allKinds)->Unit(benchmark::kNanosecond);
BENCHMARK(nearest)->Apply(allKinds)->Unit(benchmark::kNanosecond);
BENCHMARK(nearestByCiede2000)->Apply(allKinds)->Unit(benchmark::kNanosecond);
BENCHMARK(nearestAtHue)->Apply(allKinds)->Unit(benchmark::kNanosecond);
BENCHMARK(ring)->Apply(allKinds);
BENCHMARK(outline)->Apply(allKinds);
BENCHMARK(compare)->Apply(allKinds);
BENCHMARK(serialize)->Apply(allKinds);
BENCHMARK(deserialize)->Apply(allKinds);
BENCHMARK(lab2rgb)->ArgName("chroma")->Arg(20)->Arg(150);

BENCHMARK_MAIN();
