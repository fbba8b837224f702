// SPDX-License-Identifier: Apache-2.0
// Cancelling with the largest grid, and with the devices whose transforms are slowest.

#include "Cancelling.h"
#include "TestProfiles.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace testprofiles;
using cancelling::cancelledAfter;

namespace {

constexpr int maxGrid = 129;

void expectSoonEnded(const KVProfilePtr& profile, float maxEdge)
{
    const auto runs = cancelledAfter({0.05, 0.25, 0.45, 0.65, 0.85}, profile, maxGrid, maxEdge);
    EXPECT_GE(runs.cancelled, 3);
    EXPECT_LE(runs.max.colours, 4096u);
    EXPECT_LE(runs.max.corners, 4096u << 6); // as many as 4,096 colours of six channels
    EXPECT_LE(runs.max.bytes, 256u << 20);
}

Lab mixture(const std::vector<double>& device)
{
    constexpr double inks[15][3] = {{-9, -30, -20}, {-10, 35, -5}, {-4, -3, 45},  {-9, 2, 3},   {-6, 20, 25},
                                    {-7, -25, 12},  {-5, 9, -28},  {-3, -9, -12}, {-2, 14, 6},  {-3, -6, 17},
                                    {-4, -15, 1},   {-2, 7, -9},   {-3, 11, -14}, {-1, -4, -6}, {-2, 3, 9}};
    Lab lab{97, 0, 0};
    for (std::size_t c = 0; c < device.size(); ++c)
        for (std::size_t i = 0; i < 3; ++i)
            lab[i] += device[c] * inks[c][i];
    return lab;
}

} // namespace

TEST(CancellationAtMaxGrid, stopsADeviceMeshSoon)
{
    expectSoonEnded(openedFile(prophotoRgb()), 1.0f);
}

TEST(CancellationAtMaxGrid, stopsARadialHullSoon)
{
    expectSoonEnded(openedFile(printerCmyk()), 1.0f);
}

TEST(CancellationAtMaxGrid, stopsALatticeSurfaceSoon)
{
    expectSoonEnded(opened(tableProfile(
                        cmsSigRgbData, 65,
                        [](const std::vector<double>& d) {
                            const double angle = 3.0 * M_PI * d[1], radius = 20.0 + 40.0 * d[2];
                            return Lab{20 + 60 * d[0], radius * std::cos(angle), radius * std::sin(angle)};
                        })),
                    40.0f);
    expectSoonEnded(
        opened(tableProfile(
            cmsSig6colorData, 5,
            [](const std::vector<double>& d) {
                const double angle = 1.5 * M_PI * 0.5 * (d[1] + d[4]);
                const double radius = 20.0 + 30.0 * (0.6 * d[2] + 0.4 * d[5]);
                return Lab{20 + 30 * (d[0] + d[3]), radius * std::cos(angle), radius * std::sin(angle)};
            })),
        40.0f);
}

TEST(CancellationAtMaxGrid, stopsFifteenInksSoon)
{
    expectSoonEnded(opened(tableProfile(cmsSig15colorData, 2, mixture)), 1.0f);
}
