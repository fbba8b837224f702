// SPDX-License-Identifier: Apache-2.0
// The volume of a device's colours, where the surface alone would be wrong about it.

#include "Problems.h"
#include "TestProfiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace testprofiles;

namespace {

// Four inks whose effects add up; the share of ink at a device value is given.
QByteArray press(int nodes, const std::function<double(double)>& share)
{
    static const std::vector<Lab> inks{{-20, -30, -30}, {-25, 40, -5}, {-5, -3, 60}, {-35, 2, 3}};
    return tableProfile(cmsSigCmykData, nodes, [&share](const std::vector<double>& d) {
        Lab lab{95, 0, 0};
        for (std::size_t c = 0; c < inks.size(); ++c)
            for (std::size_t i = 0; i < 3; ++i)
                lab[i] += share(d[c]) * inks[c][i];
        return lab;
    });
}

// An ink that is darkest at 7/8, and lighter by a share at 1. All such presses print the same colours.
std::function<double(double)> peaked(double fall)
{
    return [fall](double d) { return d <= 0.875 ? d / 0.875 : 1.0 - fall * (d - 0.875) / 0.125; };
}

KVGamut::Report reportOf(const QByteArray& profile, int grid = -1)
{
    return gamutOf(opened(profile), grid, KVVMRenderPerceptual).report();
}

} // namespace

TEST(Volume, doesNotDependOnInksThatInvert)
{
    // the parallelepipeds of all triples of the inks
    constexpr double truth = 300'480.0;
    for (double fall : {0.0, 0.01, 0.04, 0.2}) {
        const auto report = reportOf(press(9, peaked(fall)));
        EXPECT_NEAR(report.volume, truth, report.volumeUncertainty) << fall;
        EXPECT_NEAR(report.surfaceVolume, truth, 0.01 * truth) << fall;
        EXPECT_LE(report.volumeUncertainty, 0.001 * truth) << fall;
    }
}

// Between the nodes of its table a device is linear, so that more nodes than those change nothing.
TEST(Volume, isTheSameWithFinerGrids)
{
    const auto profile = tableProfile(cmsSigRgbData, 11, [](const std::vector<double>& d) {
        return Lab{100 * std::cbrt(0.2 * d[0] + 0.7 * d[1] + 0.1 * d[2]),
                   90 * (std::sqrt(d[0]) - std::sqrt(d[1])), 70 * (std::sqrt(d[1]) - std::sqrt(d[2]))};
    });
    const auto coarse = reportOf(profile, 17);
    for (int grid : {33, 41, 49, 65, 129}) {
        const auto fine = reportOf(profile, grid);
        EXPECT_NEAR(fine.volume, coarse.volume, coarse.volumeUncertainty) << grid;
        EXPECT_LE(fine.volumeUncertainty, 1.5 * coarse.volumeUncertainty) << grid;
    }
}

TEST(Volume, ofAThinSolidIsNotRefused)
{
    for (double thickness : {0.01, 0.1, 1.0}) {
        const auto profile = tableProfile(cmsSigRgbData, 2, [thickness](const std::vector<double>& d) {
            return Lab{10 + 60 * d[0] + 20 * d[1], 40 * d[1] - 20 + thickness * d[2], 30 * d[1] - 20 * d[0]};
        });
        // the table's values are rounded to 1/257 dE
        const double truth = thickness * std::abs(60.0 * 30.0 + 20.0 * 20.0);
        const auto report = reportOf(profile);
        EXPECT_EQ(codeOf(report.problem), std::nullopt) << thickness;
        EXPECT_NEAR(report.volume, truth, report.volumeUncertainty + 2200.0 / 257.0) << thickness;
    }
}

TEST(Volume, ofASurfaceWithFewFacesIsTheLimit)
{
    const auto gamut = gamutOf(openedFile(srgb()), 9);
    EXPECT_NEAR(gamut.report().volume, 832'781.0, 0.001 * 832'781.0);
    EXPECT_LT(gamut.report().surfaceVolume, 0.996 * 832'781.0);
    EXPECT_EQ(gamut.volume(), static_cast<float>(gamut.report().volume));
}

TEST(Volume, isRestored)
{
    const auto gamut = gamutOf(openedFile(srgb()), 9);
    KVGamut::GamutObject copy;
    copy.deserialize(gamut.serialize());
    EXPECT_EQ(copy.report().volume, gamut.report().volume);
    EXPECT_EQ(copy.report().surfaceVolume, gamut.report().surfaceVolume);
}
