// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/points/PointSet.h"
#include "model/problems/Result.h"

#include <array>
#include <vector>

/// The measured patches of a chart whose device values are known: what a printer printed, or a display
/// showed.
struct DeviceChart
{
    /// Device values, 0..1: red, green, blue and 0, or four inks.
    using Device = std::array<double, 4>;

    struct Patch
    {
        Device device{};
        KVGamut::LabPoint lab; ///< of a display adapted to D50, of a print as measured
    };

    int channels = 0;              ///< 3 or 4
    bool isDisplay = false;        ///< otherwise a print
    std::vector<Patch> patches;    ///< sorted by device values, each occurs once
    qsizetype measured = 0;        ///< patches before equal ones were averaged
    std::array<double, 3> white{}; ///< X, Y and Z as measured, Y 1 for the perfect diffuser
    bool isWhiteMeasured = false;  ///< otherwise it is that of the lightest patch

    /// Whether colours of @p set have device values from which a surface can be made. False for charts of
    /// scanners and cameras, whose device values are answers.
    static bool isIn(const PointSet& set);

    /// The chart in @p set. Device values are scaled by the largest: up to 1, to 100 or to 255.
    /// @return fails with ChartTooSmall if the chart does not cover its channels, or with TooManyPatches
    static Result<DeviceChart> of(const PointSet& set);
};
