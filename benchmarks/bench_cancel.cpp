// SPDX-License-Identifier: Apache-2.0
// The longest time between two looks for cancellation in each stage of a load. A host that removes or reloads
// a gamut, or destroys its viewer, waits that long for the worker.
//
//     bench_cancel [runs]
//
// A computation looks at the same points in every run. Of all runs the shortest time before each look counts,
// and of elapsed and processor time the shorter one: other programs lengthen the first, and the system may
// count the second in coarse steps. The exit code is 1 if the documented limit is exceeded.

#include <engine/gamut/GamutData.h>
#include <engine/gamut/Serialize.h>
#include <engine/surface/GamutBuilder.h>
#include <gamut/GamutMeshes.h>

#include "engine/devices/RandomDevices.h"

#include <QtCore/QFile>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <vector>

namespace {

using namespace velmora;
using Check = std::function<bool()>;

constexpr double maxGapMs = 5.0;

bool withinLimits = true;

[[noreturn]] void fail(const char* reason)
{
    std::fprintf(stderr, "bench_cancel: %s\n", reason);
    std::exit(2);
}

double msOf(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
}

struct Moment
{
    double elapsed = msOf(CLOCK_MONOTONIC);
    double processor = msOf(CLOCK_THREAD_CPUTIME_ID);
};

double between(const Moment& p, const Moment& q)
{
    return std::min(q.elapsed - p.elapsed, q.processor - p.processor);
}

/// The shortest time before each look, over several runs of one computation.
class Gaps
{
public:
    void run(const std::function<void(const Check&)>& computation)
    {
        m_look = 0;
        m_last = Moment();
        computation([this] {
            note();
            return false;
        });
        note(); // from the last look to the end
    }
    double max() const { return *std::max_element(m_ms.begin(), m_ms.end()); }
    std::size_t looks() const { return m_ms.size(); }

private:
    void note()
    {
        const auto ms = static_cast<float>(between(m_last, Moment()));
        if (m_look == m_ms.size())
            m_ms.push_back(ms);
        m_ms[m_look] = std::min(m_ms[m_look], ms);
        ++m_look;
        m_last = Moment();
    }

    std::vector<float> m_ms;
    std::size_t m_look = 0;
    Moment m_last;
};

void measure(const char* stage, int runs, const std::function<void(const Check&)>& computation)
{
    Gaps gaps;
    for (int i = 0; i < runs; ++i)
        gaps.run(computation);
    const bool kept = gaps.max() <= maxGapMs;
    withinLimits = withinLimits && kept;
    std::printf("    %-24s %6.2f ms, %9zu looks%s\n", stage, gaps.max(), gaps.looks(),
                kept ? "" : "  OVER THE LIMIT");
    std::fflush(stdout);
}

void compute(const QByteArray& profile, const KVGamut::Settings& settings, const Check& check)
{
    const Task task(check);
    const auto transform =
        DeviceTransform::create(profile, settings.intent, settings.blackPointCompensation, task);
    if (!transform)
        fail("a profile cannot be used");
    auto record = buildGamut(
        **transform,
        {.gridPoints = settings.gridPoints, .refinements = KVGamut::Settings::defaultMaxRefinements}, task);
    if (!record)
        fail("a gamut cannot be computed");
    (void)KVGamut::GamutData(*std::move(record), task).outline(task);
}

void restore(const QHash<QString, QVariant>& saved, const Check& check)
{
    const Task task(check);
    auto record = deserialized(saved, task);
    if (!record)
        fail("a gamut cannot be restored");
    (void)KVGamut::GamutData(*std::move(record), task).outline(task);
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        fail("a profile is missing");
    return file.readAll();
}

void measureAll(const char* name, const QByteArray& bytes, int grid, int runs)
{
    std::printf("%s, grid %d\n", name, grid);
    const KVGamut::Settings settings{.gridPoints = grid};
    KVGamut::GamutObject gamut;
    const KVProfilePtr profile(KVProfileCreateWithData(bytes.constData(), static_cast<int>(bytes.size())),
                               KVProfileRelease);
    if (!gamut.init(profile, settings))
        fail("a gamut cannot be computed");
    const auto saved = gamut.serialize();
    const GamutStyles withWireframe{.front = {}, .wireframe = VertexStyle()};

    measure("compute", runs, [&](const Check& check) { compute(bytes, settings, check); });
    measure("restore", runs, [&](const Check& check) { restore(saved, check); });
    measure("surface", runs, [&](const Check& check) { (void)kvGamutMeshes(gamut, {}, check); });
    measure("surface and wireframe", runs,
            [&](const Check& check) { (void)kvGamutMeshes(gamut, withWireframe, check); });
}

} // namespace

int main(int argc, char** argv)
{
    const int runs = argc > 1 ? std::clamp(std::atoi(argv[1]), 1, 1000) : 5;
    std::printf("longest time between two looks for cancellation, %d runs\n", runs);
    for (int grid : {33, 65, 129}) {
        measureAll("sRGB", bytesOf(QStringLiteral("/usr/share/color/icc/colord/sRGB.icc")), grid, runs);
        measureAll("CMYK", bytesOf(QStringLiteral("/usr/share/color/icc/ghostscript/default_cmyk.icc")), grid,
                   runs);
    }
    // devices whose colours are measured in all cells of the device hypercube
    constexpr unsigned seed = 1;
    for (const char* name : {"fold-smooth-3", "cmyk-inverting", "cmyk-extremum", "inks6-noise"})
        measureAll(name, kvdevices::deviceProfile(name, seed), -1, 1 + runs / 5);
    return withinLimits ? 0 : 1;
}
