// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DeviceTransform.h"

#include <vector>

namespace velmora {

/// Sample positions along each device axis, ascending from exactly 0 to exactly 1.
using DeviceNodes = std::vector<std::vector<float>>;

/// Nodes that divide each axis into steps of equal length in Lab.
///
/// Equal steps of the device waste samples wherever its tone curve is flat: at 33 nodes a linear RGB
/// space loses 0.4 % of its volume that way, and 0.02 % this way. The length is summed over the edges
/// of the device's hypercube along that axis which have at most one other channel at full (and over
/// all four of three channels); from nine channels on, where colours cost more, over the first alone.
/// @param evenShare how much of each step is measured in device values instead, 0..1: where a map
///        turns back, equal steps in Lab would leave out the turning point
[[nodiscard]] Result<DeviceNodes> equalisedNodes(const DeviceTransform& transform, int nodesPerAxis,
                                                 double evenShare, const Task& task);

/// Positions of equal steps in Lab from @p start, where the channel is 0, along one channel.
[[nodiscard]] Result<std::vector<float>> equalisedRamp(const DeviceTransform& transform,
                                                       std::vector<float> start, std::size_t channel,
                                                       int count, const Task& task);

/// Nodes of @p axis at equal distances, ends included: @p count of them, or all when it has fewer.
std::vector<float> thinnedAxis(const std::vector<float>& axis, std::size_t count);
/// Which of @p all nodes the i-th of @p count that are kept is; from two of each on.
inline std::size_t thinnedPlace(std::size_t i, std::size_t all, std::size_t count)
{
    return i * (all - 1) / (count - 1);
}

/// Between the even steps that meet the turning points of a fold and the equal ones that suit the rest.
inline constexpr double evenShareOfFolds = 0.5;
/// Share of the device's own measure that keeps nodes apart where Lab stands still.
inline constexpr double smallEvenShare = 0.02;

} // namespace velmora
