// The colour engine: what each step of a gamut costs, and each question asked of it.
//
// Held constant: the profile (sRGB of colord-data for three channels, default_cmyk of libgs-common
// for four), relative colorimetric intent, no black-point compensation, one thread. The argument is
// the number of grid points per device axis. "transform" is the rival of "surface": Little CMS alone
// over the same device colours; the counter "times_transform" of the others is against it.

#include "platform/velmora/Compare.h"
#include "platform/velmora/DeviceCubeMesh.h"
#include "platform/velmora/FoldCheck.h"
#include "platform/velmora/LatticeSurface.h"
#include "platform/velmora/MeshChecks.h"
#include "platform/velmora/Outline.h"
#include "platform/velmora/Profile.h"
#include "platform/velmora/RadialHull.h"
#include "platform/velmora/SelfCrossing.h"
#include "platform/velmora/WindingIndex.h"

#include <platform/KVVelmoraFramework.h>

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <cmath>
#include <random>

using namespace velmora;

namespace {

constexpr const char* paths[] = {"/usr/share/color/icc/colord/sRGB.icc",
                                 "/usr/share/color/icc/ghostscript/default_cmyk.icc"};

KVProfilePtr profileOf(int kind)
{
    static const KVProfilePtr profiles[] = {
        KVProfilePtr(KVProfileCreateWithPath(paths[0]), KVProfileRelease),
        KVProfilePtr(KVProfileCreateWithPath(paths[1]), KVProfileRelease)};
    return profiles[kind];
}

struct Device
{
    explicit Device(int kind, int grid)
    {
        transform =
            DeviceTransform::create(profileOf(kind)->bytes, KVVMRenderRelativeColorimetric, false, reason);
        nodes = equalisedNodes(*transform, grid, smallEvenShare, {}, reason);
        samples =
            kind == 0 ? deviceCubeMesh(*transform, nodes, {}, reason).device : hypercubeFaceSamples(nodes);
        lab.resize(samples.size() / static_cast<std::size_t>(transform->channels()));
    }

    void runTransform() { transform->toLab(samples.data(), lab.data(), lab.size(), {}, reason); }

    // Little CMS alone, the best of several runs.
    double transformSeconds()
    {
        constexpr int repeats = 5;
        double best = 1e9;
        for (int i = 0; i < repeats; ++i) {
            const auto start = std::chrono::steady_clock::now();
            runTransform();
            best = std::min(best,
                            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        }
        return best;
    }

    QString reason;
    std::unique_ptr<DeviceTransform> transform;
    DeviceNodes nodes;
    std::vector<float> samples;
    std::vector<Vec3> lab;
};

KVGamut::GamutObject gamutOf(int kind, int grid)
{
    KVGamut::GamutObject gamut;
    gamut.init(profileOf(kind), KVVMRenderRelativeColorimetric, false, true, 40.0f, grid, 2, nullptr);
    return gamut;
}

void setRatio(benchmark::State& state, Device& device)
{
    const double alone = device.transformSeconds();
    // Google Benchmark divides by the time of all iterations: iterations * alone / time, inverted.
    state.counters["times_transform"] = benchmark::Counter(
        alone * double(state.iterations()), benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    state.counters["colours"] = double(device.lab.size());
}

void transformAlone(benchmark::State& state)
{
    Device device(int(state.range(0)), int(state.range(1)));
    for (auto _ : state)
        device.runTransform();
    state.counters["colours"] = double(device.lab.size());
}

void gamut(benchmark::State& state)
{
    Device device(int(state.range(0)), int(state.range(1)));
    for (auto _ : state)
        benchmark::DoNotOptimize(gamutOf(int(state.range(0)), int(state.range(1))).faceCount());
    setRatio(state, device);
}

void surface(benchmark::State& state)
{
    Device device(int(state.range(0)), int(state.range(1)));
    for (auto _ : state) {
        const SurfaceMesh mesh = state.range(0) == 0
                                     ? deviceCubeMesh(*device.transform, device.nodes, {}, device.reason)
                                     : radialHull(*device.transform, device.nodes, {}, device.reason);
        benchmark::DoNotOptimize(mesh.triangles.size());
    }
    setRatio(state, device);
}

SurfaceMesh meshOf(int kind, int grid)
{
    Device device(kind, grid);
    return kind == 0 ? deviceCubeMesh(*device.transform, device.nodes, {}, device.reason)
                     : radialHull(*device.transform, device.nodes, {}, device.reason);
}

void foldCheck(benchmark::State& state)
{
    Device device(0, 17);
    for (auto _ : state)
        benchmark::DoNotOptimize(checkFolds(*device.transform, device.nodes, {}, device.reason).foldShare);
}

void topologyCheck(benchmark::State& state)
{
    const SurfaceMesh mesh = meshOf(int(state.range(0)), int(state.range(1)));
    for (auto _ : state)
        benchmark::DoNotOptimize(topology(mesh).eulerCharacteristic);
}

void crossingCheck(benchmark::State& state)
{
    const SurfaceMesh mesh = meshOf(int(state.range(0)), int(state.range(1)));
    for (auto _ : state)
        benchmark::DoNotOptimize(countCrossings(mesh, 1, {}));
    state.counters["faces"] = double(mesh.triangles.size());
}

// A ring that the device's map winds around one and a half times.
class WoundDevice final : public DeviceTransform
{
public:
    int channels() const override { return 3; }
    ChannelKind kind() const override { return ChannelKind::Coordinates; }
    std::vector<float> white() const override { return {1.0f, 1.0f, 1.0f}; }
    std::vector<float> black() const override { return {0.0f, 0.0f, 0.0f}; }
    std::vector<float> origin() const override { return black(); }

protected:
    void convertBlock(const float* block, Vec3* lab, std::size_t count) const override
    {
        for (std::size_t i = 0; i < count; ++i) {
            const float* d = block + 3 * i;
            const double angle = 3.0 * M_PI * double(d[1]), radius = 20.0 + 40.0 * double(d[2]);
            lab[i] = {20.0 + 60.0 * double(d[0]), radius * std::cos(angle), radius * std::sin(angle)};
        }
    }
};

void lattice(benchmark::State& state)
{
    const WoundDevice device;
    QString reason;
    const DeviceNodes nodes = solidNodes(device, 33, {}, reason);
    const DeviceSolid solid = deviceSolid(device, nodes, {}, reason);
    const double pitch = pitchForFaces(solid, double(state.range(0)), {});
    std::size_t faces = 0;
    for (auto _ : state)
        faces = latticeSurface(solid, pitch, {}).triangles.size();
    state.counters["faces"] = double(faces);
    state.counters["pitch"] = pitch;
}

void index(benchmark::State& state)
{
    const SurfaceMesh mesh = meshOf(int(state.range(0)), int(state.range(1)));
    for (auto _ : state)
        benchmark::DoNotOptimize(WindingIndex(mesh).isInside({50, 0, 0}));
}

void inside(benchmark::State& state)
{
    const auto object = gamutOf(int(state.range(0)), int(state.range(1)));
    std::mt19937 random(1);
    std::uniform_real_distribution<float> any(-100.0f, 100.0f);
    std::vector<std::array<float, 3>> points(4096);
    for (auto& p : points)
        p = {50.0f + 0.5f * any(random), any(random), any(random)};
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(object.isInside(points[i++ % points.size()].data()));
}

void nearest(benchmark::State& state)
{
    const auto object = gamutOf(int(state.range(0)), int(state.range(1)));
    std::mt19937 random(1);
    std::uniform_real_distribution<float> any(-100.0f, 100.0f);
    std::vector<std::array<float, 3>> points(4096);
    for (auto& p : points)
        p = {50.0f + 0.5f * any(random), any(random), any(random)};
    object.nearest(points[0].data()); // builds the tree
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(object.nearest(points[i++ % points.size()].data()).distance);
}

void ring(benchmark::State& state)
{
    const auto faces = gamutOf(int(state.range(0)), int(state.range(1))).faces();
    const float plane[] = {1.0f, 0.0f, 0.0f, -50.0f};
    for (auto _ : state)
        benchmark::DoNotOptimize(KVGamut::computeRing(plane, faces).size());
}

void outline(benchmark::State& state)
{
    const SurfaceMesh mesh = meshOf(int(state.range(0)), int(state.range(1)));
    for (auto _ : state)
        benchmark::DoNotOptimize(outlineOf(mesh).size());
}

void compare(benchmark::State& state)
{
    const SurfaceMesh first = meshOf(0, int(state.range(0))), second = meshOf(1, int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(intersectionVolume(first, second));
}

void serialize(benchmark::State& state)
{
    const auto object = gamutOf(int(state.range(0)), int(state.range(1)));
    for (auto _ : state)
        benchmark::DoNotOptimize(object.serialize().size());
}

void deserialize(benchmark::State& state)
{
    const auto hash = gamutOf(int(state.range(0)), int(state.range(1))).serialize();
    for (auto _ : state) {
        KVGamut::GamutObject object;
        object.deserialize(hash);
        benchmark::DoNotOptimize(object.faceCount());
    }
}

void lab2rgb(benchmark::State& state)
{
    const float chroma = float(state.range(0)); // 20: displayable; 150: to be brought in
    float hue = 0.0f;
    for (auto _ : state) {
        hue += 0.01f;
        benchmark::DoNotOptimize(
            KVColorConversionHelper::KVHLab2RGB({60.0f, chroma * std::cos(hue), chroma * std::sin(hue)}));
    }
}

void sizes(benchmark::internal::Benchmark* b)
{
    b->ArgNames({"cmyk", "grid"})->ArgsProduct({{0, 1}, {9, 17, 33, 65}})->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK(transformAlone)->Apply(sizes);
BENCHMARK(gamut)->Apply(sizes);
BENCHMARK(surface)->Apply(sizes);
BENCHMARK(foldCheck)->Unit(benchmark::kMillisecond);
BENCHMARK(topologyCheck)->Apply(sizes);
BENCHMARK(crossingCheck)->Apply(sizes);
BENCHMARK(lattice)->ArgName("faces")->Arg(25000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(index)->Apply(sizes);
BENCHMARK(inside)->Apply(sizes)->Unit(benchmark::kNanosecond);
BENCHMARK(nearest)->Apply(sizes)->Unit(benchmark::kNanosecond);
BENCHMARK(ring)->Apply(sizes);
BENCHMARK(outline)->Apply(sizes);
BENCHMARK(compare)->ArgName("grid")->Arg(9)->Arg(17)->Arg(33)->Arg(65)->Unit(benchmark::kMillisecond);
BENCHMARK(serialize)->Apply(sizes);
BENCHMARK(deserialize)->Apply(sizes);
BENCHMARK(lab2rgb)->ArgName("chroma")->Arg(20)->Arg(150);

BENCHMARK_MAIN();
