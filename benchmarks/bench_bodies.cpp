// SPDX-License-Identifier: Apache-2.0
// What the two bodies of a pair of gamuts cost, beside the computation of the first gamut from its profile at
// the default grid.
//
//     bench_bodies [runs]
//
// Processor time of the whole process, medians of the runs. Needs no display. The exit code is 1 if a
// documented limit is exceeded.

#include <platform/KVVelmoraFramework.h>

#include <time.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

using KVGamut::GamutObject;

namespace {

constexpr double maxVolumeError = 1e-3; // of outside + intersection, relative to the first gamut

bool withinLimits = true;

[[noreturn]] void fail(const char* reason)
{
    std::fprintf(stderr, "bench_bodies: %s\n", reason);
    std::exit(2);
}

double processMs()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
}

/// The median of the runs.
double costOf(int runs, const std::function<void()>& work)
{
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        const double start = processMs();
        work();
        times.push_back(processMs() - start);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

struct Source
{
    const char* name;
    const char* path;
    double maxRatio; ///< of a body to the computation of this gamut
};

GamutObject computed(const Source& source)
{
    const KVProfilePtr profile(KVProfileCreateWithPath(source.path), KVProfileRelease);
    GamutObject gamut;
    if (!profile || !gamut.init(profile, KVGamut::Settings()))
        fail(source.path);
    return gamut;
}

void measure(const Source& one, const Source& two, int runs)
{
    GamutObject first;
    const double ofGamut = costOf(runs, [&] { first = computed(one); });
    const GamutObject second = computed(two);
    GamutObject outside, common;
    const double ofOutside = costOf(runs, [&] { outside = first.body(second, KVGamut::Body::Outside); });
    const double ofCommon = costOf(runs, [&] { common = first.body(second, KVGamut::Body::Intersection); });
    if (outside.problem() || common.problem())
        fail("a body could not be computed");
    const double volume = double(first.report().volume);
    const double parts = double(outside.report().volume) + double(common.report().volume);
    std::printf("%-13s %-10s %8.1f %12.1f %6.2f %13.1f %6.2f %10zu\n", one.name, two.name, ofGamut, ofOutside,
                ofOutside / ofGamut, ofCommon, ofCommon / ofGamut, outside.mesh().triangles.size());
    withinLimits &= std::max(ofOutside, ofCommon) <= one.maxRatio * ofGamut;
    withinLimits &= std::abs(parts - volume) <= maxVolumeError * volume;
}

} // namespace

int main(int argc, char** argv)
{
    const int runs = argc > 1 ? std::atoi(argv[1]) : 5;
    if (runs < 1)
        fail("the number of runs must be 1 or more");
    const Source sRGB{"sRGB", "/usr/share/color/icc/colord/sRGB.icc", 12.0};
    const Source adobe{"Adobe RGB", "/usr/share/color/icc/colord/AdobeRGB1998.icc", 12.0};
    const Source inks{"default_cmyk", "/usr/share/color/icc/ghostscript/default_cmyk.icc", 1.5};
    std::printf("Milliseconds, medians of %d runs; ratios to the computation of the first gamut\n", runs);
    std::printf("first         second        gamut      outside  ratio  intersection  ratio  triangles\n");
    measure(adobe, sRGB, runs);
    measure(sRGB, adobe, runs);
    measure(inks, sRGB, runs);
    measure(sRGB, inks, runs);
    return withinLimits ? 0 : 1;
}
