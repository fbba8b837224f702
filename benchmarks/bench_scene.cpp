// SPDX-License-Identifier: Apache-2.0
// The time that the viewer needs for a frame and for a change, without OpenGL. Each operation is compared
// with a simple solution of the same task in the same run.
//
//     bench_scene [--benchmark_filter=...]
//
// Held constant: random triangles in a cube of 100 Lab units, the eye outside, one thread. The numbers in the
// names are triangles (sorting), vertices (setters) or as named.

#include <glwindow/CameraState.h>
#include <scene/BackToFront.h>
#include <scene/Generators.h>
#include <scene/KV3DObject.h>
#include <scene/VertexStride.h>

#include "support/AllocationCount.h"

#include <benchmark/benchmark.h>

#include <QtGui/QGuiApplication>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <malloc.h>
#include <numbers>
#include <random>
#include <span>

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

/// The simple solution: sort whole records and compute the distances in the comparison.
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

std::span<const float> floatsOf(const std::vector<Record>& records)
{
    return {records.front().data(), records.size() * records.front().size()};
}

std::span<float> floatsOf(std::vector<Record>& records)
{
    return {records.front().data(), records.size() * records.front().size()};
}

void sortBackToFront(benchmark::State& state)
{
    const auto records = randomTriangles(static_cast<std::size_t>(state.range(0)));
    std::vector<Record> sorted(records.size());
    BackToFront order;
    for (auto _ : state) {
        order.sort(floatsOf(records), 3, eye, floatsOf(sorted));
        benchmark::DoNotOptimize(sorted.data());
    }
}

/// The camera turns by one degree per frame.
void resortAfterASmallMove(benchmark::State& state)
{
    const auto records = randomTriangles(static_cast<std::size_t>(state.range(0)));
    std::vector<Record> sorted(records.size()), previous(records.size());
    BackToFront order;
    order.sort(floatsOf(records), 3, eye, floatsOf(sorted));
    double angle = 0.0;
    for (auto _ : state) {
        angle += std::numbers::pi / 180.0;
        sorted.swap(previous);
        order.resort(floatsOf(previous),
                     QVector3D(400.0f * float(std::sin(angle)), 100, 400.0f * float(std::cos(angle))),
                     floatsOf(sorted));
        benchmark::DoNotOptimize(sorted.data());
    }
}

/// A scene of @p objects translucent surfaces, like several gamuts.
void fillScene(KV3DObject& root, qint64 objects, qint64 vertices)
{
    const auto records = randomTriangles(static_cast<std::size_t>(vertices / objects / 3));
    QList<float> generated;
    for (const Record& record : records)
        for (std::size_t v = 0; v < 3; ++v)
            generated.append(
                QList<float>(record.begin() + v * kvVertexFloats,
                             record.begin() + v * kvVertexFloats + GeometryData::floatsPerVertex));
    for (qint64 i = 0; i < objects; ++i) {
        const auto object = QSharedPointer<KV3DObject>::create(QStringLiteral("x"), QString::number(i));
        object->setVertices(generated);
        object->applyAlpha(0.5f);
        root.addChild(object);
    }
}

void drawFrame(KV3DObject& root, const CameraState& camera)
{
    for (const int pass : {KVPassOpaque, KVPassTranslucent})
        root.draw(nullptr, camera.viewMatrix(), camera.projectionMatrix(), QMatrix4x4(), camera, {0, 300, 0},
                  Qt::white, pass);
}

/// Everything in a frame except OpenGL calls: the tree, the sort, the batch.
void frameFromANewEye(benchmark::State& state)
{
    KV3DObject root(QStringLiteral("root"));
    fillScene(root, state.range(0), state.range(1));
    double angle = 0.0;
    drawFrame(root, CameraState({0, 100, 400}, {0, 0, 0}));
    const std::uint64_t before = kvtest::allocationsSoFar();
    for (auto _ : state) {
        angle += std::numbers::pi / 180.0;
        drawFrame(root, CameraState({400.0f * float(std::sin(angle)), 100, 400.0f * float(std::cos(angle))},
                                    {0, 0, 0}));
    }
    state.counters["allocations"] = benchmark::Counter(
        static_cast<double>(kvtest::allocationsSoFar() - before), benchmark::Counter::kAvgIterations);
}

void frameFromTheSameEye(benchmark::State& state)
{
    KV3DObject root(QStringLiteral("root"));
    fillScene(root, state.range(0), state.range(1));
    const CameraState camera({0, 100, 400}, {0, 0, 0});
    drawFrame(root, camera);
    for (auto _ : state)
        drawFrame(root, camera);
}

/// A frame after a change of one object.
void frameAfterAChange(benchmark::State& state)
{
    KV3DObject root(QStringLiteral("root"));
    fillScene(root, state.range(0), state.range(1));
    const CameraState camera({0, 100, 400}, {0, 0, 0});
    drawFrame(root, camera);
    for (auto _ : state) {
        root.child(QStringLiteral("0"))->setClip(50.0f);
        drawFrame(root, camera);
    }
}

void sphereMarkers(benchmark::State& state)
{
    QList<ColoredPoint> markers;
    for (qint64 i = 0; i < state.range(0); ++i)
        markers.append({Qt::red, QVector3D(float(i % 100), float(i / 100 % 100), float(i / 10000))});
    qsizetype uploaded = 0;
    for (auto _ : state) {
        KV3DObject object(QStringLiteral("x"));
        object.setMarkers(1, markers, 4.0f, 0.5f);
        uploaded = object.vertices().size() * qsizetype(sizeof(float));
        state.PauseTiming(); // the destructor is not measured
        const std::size_t heap = mallinfo2().hblkhd + mallinfo2().uordblks;
        state.counters["MB"] = static_cast<double>(uploaded) / 1e6;
        state.counters["heap/uploaded"] = static_cast<double>(heap) / static_cast<double>(uploaded);
        state.ResumeTiming();
    }
}

/// Lower limit for a change of one value of every vertex: one pass over the memory.
void rivalPassOverTheMemory(benchmark::State& state)
{
    std::vector<VertexStride> records(static_cast<std::size_t>(state.range(0)));
    float value = 0.0f;
    for (auto _ : state) {
        value += 1.0f;
        for (VertexStride& record : records)
            record.clip = value;
        benchmark::DoNotOptimize(records.data());
        benchmark::ClobberMemory();
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

/// An object whose records are built, so that setters have to change them.
QSharedPointer<KV3DObject> shownObject(const QString& id, qint64 vertices)
{
    const auto object = QSharedPointer<KV3DObject>::create(id, id);
    object->setVertices(QList<float>(vertices * GeometryData::floatsPerVertex, 0.5f));
    (void)object->vertices();
    return object;
}

void applyAlpha(benchmark::State& state)
{
    const auto object = shownObject(QStringLiteral("x"), state.range(0));
    float alpha = 0.0f;
    for (auto _ : state)
        object->applyAlpha(alpha = 1.0f - alpha);
}

void setClip(benchmark::State& state)
{
    const auto object = shownObject(QStringLiteral("x"), state.range(0));
    float clip = 0.0f;
    for (auto _ : state)
        object->setClip(clip = 1.0f - clip);
}

/// A shaded surface, whose colours depend on the lightness.
void applyColor(benchmark::State& state)
{
    const auto object = shownObject(QStringLiteral("Front"), state.range(0));
    bool red = false;
    for (auto _ : state)
        object->setColor((red = !red) ? Qt::red : Qt::blue);
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

#define KV_BENCHMARK(name) BENCHMARK(name)->Unit(benchmark::kMillisecond)

KV_BENCHMARK(rivalSortOfWholeRecords)->Arg(10'000)->Arg(100'000)->Arg(1'000'000);
KV_BENCHMARK(sortBackToFront)->Arg(10'000)->Arg(100'000)->Arg(1'000'000);
KV_BENCHMARK(resortAfterASmallMove)->Arg(10'000)->Arg(100'000)->Arg(1'000'000);
KV_BENCHMARK(rivalCopyOfTheUploadedBytes)->Arg(100'000)->Arg(1'000'000);
KV_BENCHMARK(setVertices)->Arg(100'000)->Arg(1'000'000);
KV_BENCHMARK(rivalPassOverTheMemory)->Arg(100'000)->Arg(1'000'000);
KV_BENCHMARK(applyAlpha)->Arg(100'000)->Arg(1'000'000);
KV_BENCHMARK(setClip)->Arg(100'000)->Arg(1'000'000);
KV_BENCHMARK(applyColor)->Arg(100'000)->Arg(1'000'000);
KV_BENCHMARK(wireframeRibbons)->Arg(18'432);
KV_BENCHMARK(sphereMarkers)->Arg(1'000)->Arg(10'000)->Arg(100'000);

// Cost of a frame by number of objects and vertices.
constexpr std::initializer_list<std::int64_t> objectCounts{1, 10, 100, 1'000};
constexpr std::initializer_list<std::int64_t> vertexCounts{10'000, 100'000, 1'000'000, 10'000'000};
KV_BENCHMARK(frameFromANewEye)->ArgsProduct({objectCounts, vertexCounts})->ArgNames({"objects", "vertices"});
KV_BENCHMARK(frameFromTheSameEye)
    ->ArgsProduct({objectCounts, vertexCounts})
    ->ArgNames({"objects", "vertices"});
KV_BENCHMARK(frameAfterAChange)->ArgsProduct({objectCounts, vertexCounts})->ArgNames({"objects", "vertices"});

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
