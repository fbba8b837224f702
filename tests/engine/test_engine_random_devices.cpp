// SPDX-License-Identifier: Apache-2.0
// Random devices whose true volume is known: whether it lies within the engine's volume ± uncertainty. The
// program bench_gamut_truth does the same for many more devices.

#include "TestProfiles.h"
#include "devices/KnownTruths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <tuple>
#include <vector>

using namespace kvdevices;

namespace {

constexpr int engineChooses = -1, fineGrid = 65;

/// What the engine reports about the gamut of a device. Several tests ask for the same devices.
const auto& reportOf(const KnownTruth& known, int grid)
{
    using Report = decltype(testprofiles::gamutOf(testprofiles::opened({}), grid).report());
    static std::map<std::tuple<std::string, decltype(known.seed), int>, Report> reports;
    const std::tuple device{std::string(known.deviceClass), known.seed, grid};
    if (!reports.contains(device)) {
        const QByteArray profile = deviceProfile(known.deviceClass, known.seed);
        reports[device] = testprofiles::gamutOf(testprofiles::opened(profile), grid).report();
    }
    return reports.at(device);
}

void expectHeld(const KnownTruth& known, int grid)
{
    const auto& report = reportOf(known, grid);
    EXPECT_FALSE(report.problem) << known.deviceClass << " " << known.seed << " grid " << grid;
    EXPECT_NEAR(report.volume, known.truth.volume, report.volumeUncertainty + known.truth.error)
        << known.deviceClass << " " << known.seed << " grid " << grid;
}

// Of each class one device with the finer grid, because it takes longer.
void expectClassHeld(const std::string& deviceClass)
{
    for (const KnownTruth& known : knownTruths)
        if (known.deviceClass == deviceClass) {
            expectHeld(known, engineChooses);
            if (known.seed == 1)
                expectHeld(known, fineGrid);
        }
}

std::string nameOf(const testing::TestParamInfo<std::string>& parameter)
{
    std::string name = parameter.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

class RandomDevice : public testing::TestWithParam<std::string>
{
};

} // namespace

TEST_P(RandomDevice, hasItsVolumeWithinTheUncertainty)
{
    expectClassHeld(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Class, RandomDevice, testing::ValuesIn(deviceClasses()), nameOf);

// The presses without noise, ink inversion or extrema inside.
TEST(SmoothPresses, haveAMedianUncertaintyBelow005Percent)
{
    for (const std::string deviceClass : {"cmyk", "cmyk-8bit", "cmyk-v4", "cmyk-xyz"}) {
        std::vector<double> shares;
        for (const KnownTruth& known : knownTruths)
            if (known.deviceClass == deviceClass) {
                const auto& report = reportOf(known, engineChooses);
                shares.push_back(report.volumeUncertainty / known.truth.volume);
            }
        ASSERT_FALSE(shares.empty()) << deviceClass;
        std::sort(shares.begin(), shares.end());
        constexpr double maxShare = 5e-4;
        EXPECT_LT(shares[shares.size() / 2], maxShare) << deviceClass;
    }
}

TEST(KnownTruths, areThoseThatTheProgramComputes)
{
    for (const KnownTruth& known : knownTruths) {
        const std::string name = known.deviceClass;
        if (known.seed != 1 || (name != "rgb-noise" && name != "fold-linear-3" && name != "cmyk-v4"))
            continue;
        const TrueVolume truth = trueVolume(deviceProfile(name, known.seed), {.columns = 10'000});
        EXPECT_NEAR(truth.volume, known.truth.volume, truth.error + known.truth.error) << name;
    }
}

TEST(KnownTruths, areThereForEveryClass)
{
    for (const std::string& name : deviceClasses())
        EXPECT_TRUE(std::any_of(std::begin(knownTruths), std::end(knownTruths),
                                [&name](const KnownTruth& known) { return known.deviceClass == name; }))
            << name;
}
