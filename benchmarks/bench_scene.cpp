// The viewer's own share of a frame and of a change, each beside a rival in the same run.
//
//     bench_scene [--benchmark_filter=...]
//
// Held constant: random triangles in a cube of 100 Lab units, the eye outside, one thread. The numbers
// in the names are triangles (sorting) or vertices (filling).

#include <scene/BackToFront.h>
#include <scene/Generators.h>
#include <scene/KV3DObject.h>
#include <scene/VertexStride.h>

#include <benchmark/benchmark.h>

#include <QtGui/QGuiApplication>

#include <algorithm>
#include <array>
#include <cstring>
#include <random>

namespace {

using Record = std::array<float, 3 * kvVertexFloats>; // one triangle, 180 bytes

std::vector<Record> randomTriangles(std::size_t count)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<float> coordinate(-50, 50), offset(-2, 2);
    std::vector<Record> records(count);
    for (Record& r : records) {
        r.fill(0.5f);
        const float center[3] = {coordinate(random), coordinate(random), coordinate(random)};
        for (std::size_t v = 0; v < 3; ++v)
            for (std::size_t k = 0; k < 3; ++k)
                r[v * kvVertexFloats + k] = center[k] + offset(random);
    }
    return records;
}

const QVector3D eye(0, 100, 400);

/// The obvious way: order the whole records, distances computed in the comparison.
bool isBehind(const Record& a, const Record& b)
{
    const auto distances = [](const Record& r) {
        float nearest = 1e30f, sum = 0;
        for (std::size_t v = 0; v < 3; ++v) {
            const float* p = r.data() + v * kvVertexFloats;
            const float dx = p[0] - eye.x(), dy = p[1] - eye.y(), dz = p[2] - eye.z();
            const float d = dx * dx + dy * dy + dz * dz;
            nearest = std::min(nearest, d);
            sum += d;
        }
        return std::pair(nearest, sum);
    };
    return distances(a) > distances(b);
}

void rivalSortOfWholeRecords(benchmark::State& state)
{
    const auto records = randomTriangles(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        auto sorted = records;
        std::sort(sorted.begin(), sorted.end(), isBehind);
        benchmark::DoNotOptimize(sorted.data());
    }
}

void sortBackToFront(benchmark::State& state)
{
    const auto records = randomTriangles(static_cast<std::size_t>(state.range(0)));
    std::vector<Record> sorted(records.size());
    BackToFront order;
    for (auto _ : state) {
        order.sort(records.front().data(), records.size(), 3, eye, sorted.front().data());
        benchmark::DoNotOptimize(sorted.data());
    }
}

void rivalCopyOfTheUploadedBytes(benchmark::State& state)
{
    const QList<float> from(state.range(0) * kvVertexFloats, 0.5f);
    QList<float> to(from.size());
    for (auto _ : state) {
        std::memcpy(to.data(), from.constData(), static_cast<std::size_t>(from.size()) * sizeof(float));
        benchmark::DoNotOptimize(to.data());
    }
}

void setVertices(benchmark::State& state)
{
    const QList<float> generated(state.range(0) * GeometryData::floatsPerVertex, 0.5f);
    KV3DObject object(QStringLiteral("x"));
    for (auto _ : state) {
        object.setVertices(generated);
        benchmark::DoNotOptimize(object.vertices().constData());
    }
}

void applyAlpha(benchmark::State& state)
{
    KV3DObject object(QStringLiteral("x"));
    object.setVertices(QList<float>(state.range(0) * GeometryData::floatsPerVertex, 0.5f));
    for (auto _ : state)
        object.applyAlpha(0.5f);
}

void wireframeRibbons(benchmark::State& state)
{
    const auto n = state.range(0);
    QList<ColoredSegment> segments;
    for (qint64 i = 0; i < n; ++i) {
        const auto at = static_cast<float>(i);
        segments.append({{Qt::red, QVector3D(at, 0, 0)}, {Qt::blue, QVector3D(at, 4, 3)}});
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(kvSegments(segments, true, 1.2f));
}

} // namespace

BENCHMARK(rivalSortOfWholeRecords)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(sortBackToFront)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(rivalCopyOfTheUploadedBytes)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(setVertices)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(applyAlpha)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(wireframeRibbons)->Arg(18'432)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
