// SPDX-License-Identifier: Apache-2.0
// How the comparisons of the colour engine and their uncertainties compare with the true intersections of
// pairs of random devices.
//
//     bench_compare_truth [--count 120] [--seed 1] [--grid -1] [--verbose]
//
// For all pairs, and for those of smooth devices alone: how many true intersections, unions and coverages lie
// within value ± uncertainty (the error of the truth allowed for), errors and uncertainties relative to the
// truth. --verbose adds a line for each pair. The truths cost much more than the engine. They are kept in a
// file in the build folder.

#include "engine/TestProfiles.h"
#include "engine/devices/RandomPairs.h"
#include "engine/devices/TrueIntersection.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace {

using namespace kvdevices;

struct Options
{
    std::size_t count = 120;
    unsigned seed = 1;
    int grid = -1;
    bool isVerbose = false;
};

std::string keyOf(const DeviceName& device)
{
    return device.deviceClass + ' ' + std::to_string(device.seed);
}

std::string keyOf(const DevicePair& pair)
{
    return keyOf(pair.first) + ' ' + keyOf(pair.second);
}

/// The truths that are known from earlier runs.
class Truths
{
public:
    Truths()
    {
        std::ifstream file(KV_PAIR_TRUTH_FILE);
        int version = 0;
        DevicePair pair;
        TrueVolume truth{};
        while (file >> version >> pair.first.deviceClass >> pair.first.seed >> pair.second.deviceClass >>
               pair.second.seed >> truth.volume >> truth.error)
            if (version == devicesVersion)
                m_known[keyOf(pair)] = truth;
    }

    TrueVolume of(const DevicePair& pair)
    {
        const auto known = m_known.find(keyOf(pair));
        if (known != m_known.end())
            return known->second;
        const TrueVolume truth = trueIntersection(deviceProfile(pair.first.deviceClass, pair.first.seed),
                                                  deviceProfile(pair.second.deviceClass, pair.second.seed));
        std::ofstream file(KV_PAIR_TRUTH_FILE, std::ios::app);
        file.precision(10);
        file << devicesVersion << ' ' << keyOf(pair) << ' ' << truth.volume << ' ' << truth.error << '\n';
        return truth;
    }

private:
    std::map<std::string, TrueVolume> m_known;
};

class Gamuts
{
public:
    explicit Gamuts(int grid) : m_grid(grid) {}
    const KVGamut::GamutObject& of(const DeviceName& device)
    {
        auto& gamut = m_known[keyOf(device)];
        if (gamut.mesh().isEmpty())
            gamut = testprofiles::gamutOf(
                testprofiles::opened(deviceProfile(device.deviceClass, device.seed)), m_grid);
        return gamut;
    }

private:
    int m_grid;
    std::map<std::string, KVGamut::GamutObject> m_known;
};

double medianOf(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0.0 : values[values.size() / 2];
}

double maxOf(const std::vector<double>& values)
{
    return values.empty() ? 0.0 : *std::max_element(values.begin(), values.end());
}

struct Row
{
    int pairs = 0, intersections = 0, unions = 0, coverages = 0;
    std::vector<double> errors, uncertainties, coverageUncertainties;

    void add(const DevicePair& pair, const TrueVolume& truth, const KVGamut::ComparisonReport& report)
    {
        const PairHeld held = heldBy(report, pair, truth);
        ++pairs;
        intersections += held.intersection;
        unions += held.unionVolume;
        coverages += held.firstCovered + held.secondCovered;
        errors.push_back(std::abs(double(report.values.intersection) - truth.volume) /
                         std::max(truth.volume, 1.0));
        uncertainties.push_back(report.uncertainty.intersection / std::max(truth.volume, 1.0));
        coverageUncertainties.push_back(report.uncertainty.firstCovered);
        coverageUncertainties.push_back(report.uncertainty.secondCovered);
    }

    void print(const char* name) const
    {
        std::printf("%-8s %4d %6d %6d %4d/%-4d %8.4f %8.4f %8.4f %8.4f %8.4f\n", name, pairs, intersections,
                    unions, coverages, 2 * pairs, 100.0 * medianOf(errors), 100.0 * maxOf(errors),
                    100.0 * medianOf(uncertainties), 100.0 * maxOf(uncertainties),
                    100.0 * medianOf(coverageUncertainties));
    }
};

void print(const DevicePair& pair, const TrueVolume& truth, const KVGamut::ComparisonReport& report)
{
    const PairHeld held = heldBy(report, pair, truth);
    std::printf("  %-17s %u  %-17s %u  truth %10.1f ± %6.1f  intersection %10.1f ± %7.1f%s%s%s%s\n",
                pair.first.deviceClass.c_str(), pair.first.seed, pair.second.deviceClass.c_str(),
                pair.second.seed, truth.volume, truth.error, double(report.values.intersection),
                report.uncertainty.intersection, held.intersection ? "" : "  NOT HELD",
                held.unionVolume ? "" : "  UNION NOT HELD", held.firstCovered ? "" : "  FIRST NOT HELD",
                held.secondCovered ? "" : "  SECOND NOT HELD");
    std::fflush(stdout);
}

void run(const Options& options)
{
    Truths truths;
    Gamuts gamuts(options.grid);
    Row all, smooth;
    for (const DevicePair& pair : devicePairs(options.count, options.seed)) {
        const TrueVolume truth = truths.of(pair);
        const auto report = gamuts.of(pair.first).compareWithUncertainty(gamuts.of(pair.second));
        all.add(pair, truth, report);
        if (isSmooth(pair))
            smooth.add(pair, truth, report);
        if (options.isVerbose)
            print(pair, truth, report);
    }
    std::printf("%-8s %4s %6s %6s %9s %8s %8s %8s %8s %8s\n", "pairs", "n", "inter.", "union", "coverage",
                "error", "worst", "uncert.", "worst", "of cov.");
    all.print("all");
    smooth.print("smooth");
}

bool read(int argc, char* argv[], Options& options)
{
    for (int i = 1; i < argc; ++i) {
        const std::string option = argv[i];
        if (option == "--verbose") {
            options.isVerbose = true;
            continue;
        }
        if (++i == argc)
            return false;
        if (option == "--count")
            options.count = std::size_t(std::max(0, std::atoi(argv[i])));
        else if (option == "--seed")
            options.seed = unsigned(std::atoi(argv[i]));
        else if (option == "--grid")
            options.grid = std::atoi(argv[i]);
        else
            return false;
    }
    return true;
}

} // namespace

int main(int argc, char* argv[])
{
    Options options;
    if (!read(argc, argv, options)) {
        std::fprintf(stderr, "usage: bench_compare_truth [--count 120] [--seed 1] [--grid -1] [--verbose]\n");
        return 2;
    }
    run(options);
    return 0;
}
