// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DeviceChart.h"

#include <array>

/// How well the profile of a device tells what was measured on it: for each patch of a chart the CIEDE2000
/// between the measured colour and the one that the profile says for the same device values. Both are
/// absolute; those of a display are relative to its white.
struct ChartComparison
{
    double mean = 0.0, p95 = 0.0, max = 0.0; ///< CIEDE2000
    KVGamut::LabPoint worst;                 ///< the measured colour with the largest difference

    /// @param name of the profile, for failures
    /// @return fails with PointSpaceDiffers if the profile has other channels than the chart, with
    /// PointSpaceUnusable, or with Cancelled
    static Result<ChartComparison> of(const DeviceChart& chart, const KVProfilePtr& profile,
                                      const QString& name, const KVCompletionProtocolPtr& task = {});
};

/// The colour of one gamut that is farthest outside another one.
struct Farthest
{
    float distance = 0.0f; ///< dE76; 0 if nothing is outside
    KVGamut::LabPoint place;

    /// Looks at all vertices of the surface of @p gamut.
    static Farthest of(const KVGamut::GamutObject& gamut, const KVGamut::GamutObject& outside);

    static constexpr std::size_t sectors = 12; ///< of 30 degrees, the first one from hue 0 to 30
    /// The same for the colours of each sector of hue.
    static std::array<Farthest, sectors> byHue(const KVGamut::GamutObject& gamut,
                                               const KVGamut::GamutObject& outside);
};
