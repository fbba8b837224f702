// SPDX-License-Identifier: Apache-2.0
// Pairs of random devices whose intersection is known: whether intersection, union and coverages lie within
// value ± uncertainty. The program bench_compare_truth does the same for other pairs.

#include "TestProfiles.h"
#include "devices/KnownIntersections.h"
#include "devices/TrueIntersection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

using namespace kvdevices;

namespace {

class Gamuts
{
public:
    const KVGamut::GamutObject& of(const DeviceName& device)
    {
        const auto key = std::pair(device.deviceClass, device.seed);
        if (!m_known.contains(key))
            m_known[key] =
                testprofiles::gamutOf(testprofiles::opened(deviceProfile(device.deviceClass, device.seed)));
        return m_known[key];
    }

private:
    std::map<std::pair<std::string, unsigned>, KVGamut::GamutObject> m_known;
};

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

QByteArray box(const testprofiles::Lab& low, const testprofiles::Lab& high, int channels)
{
    return testprofiles::tableProfile(channels == 3 ? cmsSigRgbData : cmsSigCmykData, 2,
                                      [=](const std::vector<double>& device) {
                                          testprofiles::Lab lab;
                                          for (std::size_t i = 0; i < 3; ++i)
                                              lab[i] = low[i] + (high[i] - low[i]) * device[i];
                                          return lab;
                                      });
}

} // namespace

TEST(RandomPairs, areComparedWithinTheUncertainty)
{
    Gamuts gamuts;
    std::vector<double> uncertaintiesOfSmooth;
    std::size_t count = 0, notHeld = 0;
    for (const auto& [first, second, common] : knownIntersections) {
        const auto report = gamuts.of(first).compareWithUncertainty(gamuts.of(second));
        ASSERT_FALSE(report.problem);
        ++count;
        if (!heldBy(report, {first, second}, common).all()) {
            ++notHeld;
            std::printf("not held: %s %u, %s %u\n", first.deviceClass.c_str(), first.seed,
                        second.deviceClass.c_str(), second.seed);
        }
        if (isSmooth({first, second}))
            uncertaintiesOfSmooth.push_back(report.uncertainty.intersection / common.volume);
    }
    EXPECT_GE(count, 100u);
    EXPECT_LE(notHeld, count / 100);
    EXPECT_LT(median(uncertaintiesOfSmooth), 0.001);
}

TEST(RandomPairs, areThoseOfTheKnownIntersections)
{
    const auto pairs = devicePairs(std::size(knownIntersections));
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        EXPECT_EQ(pairs[i].first.deviceClass, knownIntersections[i].first.deviceClass);
        EXPECT_EQ(pairs[i].first.seed, knownIntersections[i].first.seed);
        EXPECT_EQ(pairs[i].second.deviceClass, knownIntersections[i].second.deviceClass);
        EXPECT_EQ(pairs[i].second.seed, knownIntersections[i].second.seed);
    }
}

TEST(TrueIntersection, ofBoxesIsTheirCommonBox)
{
    const QByteArray first = box({20, -30, -60}, {80, 50, 10}, 3);
    for (int channels : {3, 4}) {
        const QByteArray second = box({50, -10, -20}, {90, 70, 40}, channels);
        const TrueVolume common = trueIntersection(first, second);
        EXPECT_NEAR(common.volume, 30.0 * 60.0 * 30.0, 0.002 * 54000.0) << channels;
        EXPECT_LE(common.error, 0.002 * 54000.0) << channels;
    }
    EXPECT_EQ(trueIntersection(first, box({20, 60, -60}, {80, 90, 10}, 3)).volume, 0.0);
}

TEST(TrueIntersection, isThatOfTheKnownPairs)
{
    for (std::size_t i : {3u, 7u, 60u}) {
        const auto& [first, second, common] = knownIntersections[i];
        const TrueVolume truth =
            trueIntersection(deviceProfile(first.deviceClass, first.seed),
                             deviceProfile(second.deviceClass, second.seed), {.columns = 20'000});
        EXPECT_NEAR(truth.volume, common.volume, truth.error + common.error) << first.deviceClass;
    }
}
