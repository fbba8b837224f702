// SPDX-License-Identifier: Apache-2.0
// Random devices whose true volume is known: whether it lies within the engine's volume ± uncertainty. The
// program bench_gamut_truth does the same for many more devices.

#include "TestProfiles.h"
#include "devices/KnownTruths.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace kvdevices;

namespace {

constexpr int engineChooses = -1, fineGrid = 65;

void expectHeld(const KnownTruth& known, int grid)
{
    const QByteArray profile = deviceProfile(known.deviceClass, known.seed);
    const auto report = testprofiles::gamutOf(testprofiles::opened(profile), grid).report();
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
