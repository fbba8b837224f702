// SPDX-License-Identifier: Apache-2.0
// How the volumes of the colour engine and their uncertainties compare with the true volumes of random
// devices.
//
//     bench_gamut_truth [--classes a,b,...] [--count 9] [--seed 1] [--grid -1] [--verbose]
//
// A row for each class: the number of devices, how many truths lie within volume ± uncertainty (the error of
// the truth allowed for), error and uncertainty relative to the truth (median and worst), refused devices,
// and the processor time of the engine. --classes takes names or their beginnings. --verbose adds a line for
// each device. The truths cost much more than the engine. They are kept in a file in the build folder.

#include "engine/TestProfiles.h"
#include "engine/devices/RandomDevices.h"
#include "engine/devices/TrueVolume.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

using kvdevices::TrueVolume;

double processorSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) + 1e-9 * double(time.tv_nsec);
}

struct Options
{
    std::vector<std::string> classes;
    int count = 9;
    unsigned seed = 1;
    int grid = -1;
    bool isVerbose = false;
};

/// The truths that are known from earlier runs.
class Truths
{
public:
    Truths()
    {
        std::ifstream file(KV_TRUTH_FILE);
        int version = 0;
        unsigned seed = 0;
        TrueVolume truth{};
        for (std::string name; file >> version >> name >> seed >> truth.volume >> truth.error;)
            if (version == kvdevices::devicesVersion)
                m_known[{name, seed}] = truth;
    }

    TrueVolume of(const std::string& name, unsigned seed, const QByteArray& profile)
    {
        const auto known = m_known.find({name, seed});
        if (known != m_known.end())
            return known->second;
        const TrueVolume truth = kvdevices::trueVolume(profile);
        std::ofstream file(KV_TRUTH_FILE, std::ios::app);
        file.precision(10);
        file << kvdevices::devicesVersion << ' ' << name << ' ' << seed << ' ' << truth.volume << ' '
             << truth.error << '\n';
        return truth;
    }

private:
    std::map<std::pair<std::string, unsigned>, TrueVolume> m_known;
};

struct Row
{
    int devices = 0, held = 0, refused = 0;
    std::vector<double> errors, uncertainties, seconds;
};

double medianOf(std::vector<double> values)
{
    if (values.empty())
        return 0.0;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double maxOf(const std::vector<double>& values)
{
    return values.empty() ? 0.0 : *std::max_element(values.begin(), values.end());
}

const char* nameOf(KVGamut::Method method)
{
    return method == KVGamut::Method::DeviceMesh       ? "mesh"
           : method == KVGamut::Method::RadialHull     ? "hull"
           : method == KVGamut::Method::LatticeSurface ? "lattice"
                                                       : "none";
}

void measure(const std::string& name, unsigned seed, const Options& options, Truths& truths, Row& row)
{
    const QByteArray profile = kvdevices::deviceProfile(name, seed);
    const TrueVolume truth = truths.of(name, seed, profile);
    const double start = processorSeconds();
    const auto report = testprofiles::gamutOf(testprofiles::opened(profile), options.grid).report();
    row.seconds.push_back(processorSeconds() - start);
    const double error = report.volume - truth.volume;
    const bool isHeld = std::abs(error) <= report.volumeUncertainty + truth.error;
    ++row.devices;
    if (report.problem) {
        ++row.refused;
    } else {
        row.held += isHeld;
        row.errors.push_back(std::abs(error) / truth.volume);
        row.uncertainties.push_back(report.volumeUncertainty / truth.volume);
    }
    if (options.isVerbose)
        std::printf(
            "  %-18s %3u %-7s truth %11.1f ± %7.1f  volume %11.1f ± %7.1f  error %+8.4f %%  ratio %6.2f%s\n",
            name.c_str(), seed, nameOf(report.method), truth.volume, truth.error, report.volume,
            report.volumeUncertainty, 100.0 * error / truth.volume,
            std::abs(error) / (report.volumeUncertainty + 1e-9),
            report.problem ? "  REFUSED"
            : isHeld       ? ""
                           : "  NOT HELD");
    if (options.isVerbose && report.problem)
        std::printf("    %s\n", KVProblem::sentence(report.problem->code));
    std::fflush(stdout);
}

void print(const std::string& name, const Row& row)
{
    std::printf("%-18s %4d %5d %8.4f %8.4f %8.4f %8.4f %7d %7.3f %7.3f\n", name.c_str(), row.devices,
                row.held, 100.0 * medianOf(row.errors), 100.0 * maxOf(row.errors),
                100.0 * medianOf(row.uncertainties), 100.0 * maxOf(row.uncertainties), row.refused,
                medianOf(row.seconds), maxOf(row.seconds));
    std::fflush(stdout);
}

void add(Row& all, const Row& row)
{
    all.devices += row.devices;
    all.held += row.held;
    all.refused += row.refused;
    const auto append = [](std::vector<double>& to, const std::vector<double>& from) {
        to.insert(to.end(), from.begin(), from.end());
    };
    append(all.errors, row.errors);
    append(all.uncertainties, row.uncertainties);
    append(all.seconds, row.seconds);
}

bool isWanted(const std::string& name, const Options& options)
{
    return options.classes.empty() ||
           std::any_of(options.classes.begin(), options.classes.end(),
                       [&name](const std::string& wanted) { return name.rfind(wanted, 0) == 0; });
}

void run(const Options& options)
{
    std::printf("%-18s %4s %5s %8s %8s %8s %8s %7s %7s %7s\n", "class", "n", "held", "error", "worst",
                "uncert.", "worst", "refused", "seconds", "worst");
    std::printf("%-18s %4s %5s %8s %8s %8s %8s\n", "", "", "", "%", "%", "%", "%");
    Truths truths;
    Row all;
    for (const std::string& name : kvdevices::deviceClasses()) {
        if (!isWanted(name, options))
            continue;
        Row row;
        for (int i = 0; i < options.count; ++i)
            measure(name, options.seed + unsigned(i), options, truths, row);
        print(name, row);
        add(all, row);
    }
    print("all", all);
}

std::vector<std::string> partsOf(const char* list)
{
    std::vector<std::string> parts;
    std::istringstream stream(list);
    for (std::string part; std::getline(stream, part, ',');)
        parts.push_back(part);
    return parts;
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
        if (option == "--classes")
            options.classes = partsOf(argv[i]);
        else if (option == "--count")
            options.count = std::atoi(argv[i]);
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
        std::fprintf(stderr,
                     "usage: bench_gamut_truth [--classes a,b,...] [--count 9] [--seed 1] [--grid -1] "
                     "[--verbose]\n");
        return 2;
    }
    run(options);
    return 0;
}
