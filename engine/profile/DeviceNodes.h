// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DeviceTransform.h"

#include <algorithm>
#include <vector>

namespace velmora {

/// Sample positions along each device axis, ascending from exactly 0 to exactly 1.
using DeviceNodes = std::vector<std::vector<float>>;

/// Nodes that divide each axis into steps of equal length in Lab.
///
/// Equal steps in device values waste samples where the tone curve is flat: with 33 nodes a linear RGB space
/// loses 0.4 % of its volume that way, and 0.02 % this way. The length is summed over those edges of the
/// device hypercube along the axis on which at most one other channel is at its maximum (with three
/// channels, over all four edges); from nine channels on, where transforms are slow, over the first edge.
/// @param nodesPerAxis at least 2
/// @param evenShare weight of the device values in the length, 0..1. Where the map folds, equal steps in Lab
///        would skip the turning point.
/// @return fails as DeviceTransform::toLab()
[[nodiscard]] Result<DeviceNodes> equalisedNodes(const DeviceTransform& transform, int nodesPerAxis,
                                                 double evenShare, const Task& task);

/// Positions along one channel at equal steps in Lab, from 0 to 1. @p start is a device colour; its value of
/// @p channel is ignored. Fails as DeviceTransform::toLab().
[[nodiscard]] Result<std::vector<float>> equalisedRamp(const DeviceTransform& transform,
                                                       std::vector<float> start, std::size_t channel,
                                                       int count, const Task& task);

/// Curvature of the map along each axis: the mean second difference along the hypercube's edges and through
/// its centre. The error of a chord is proportional to it and to the square of the step.
/// @param equalised many nodes from equalisedNodes()
/// @return fails as DeviceTransform::toLab()
[[nodiscard]] Result<std::vector<double>> axisCurvatures(const DeviceTransform& transform,
                                                         const DeviceNodes& equalised, const Task& task);

/// The value of each channel at which its colour, without any other colorant, is farthest from the colour of
/// its value 0: 1, unless the colorant turns back, by a third of its way at most. If it does, the device
/// reaches its outermost colours there.
/// @return fails as DeviceTransform::toLab()
[[nodiscard]] Result<std::vector<float>> turningPoints(const DeviceTransform& transform, const Task& task);

/// Numbers of nodes along each axis whose product is at most @p count to the power of the number of axes.
/// Axes along which the map is curved get more nodes than linear ones, so that the error is the same along
/// all of them.
[[nodiscard]] std::vector<std::size_t> nodeCounts(const std::vector<double>& curvatures, std::size_t count);

/// Nodes between which the map has no kink: those of the device's table, with the longest steps between them
/// divided until there are as many as @p counts. Axes without a table, and those whose table has more than @p
/// maxTableNodes, get nodes at equal steps in Lab.
/// @param equalised many nodes from equalisedNodes()
/// @param turns see turningPoints(): of the nodes at equal steps the nearest one is moved there
[[nodiscard]] DeviceNodes alignedNodes(const DeviceTransform& transform, const DeviceNodes& equalised,
                                       const std::vector<float>& turns,
                                       const std::vector<std::size_t>& counts, std::size_t maxTableNodes);

/// Whether the device has a table for each axis, and the image of each step between two of its nodes is a
/// straight line. Then the nodes of the table are enough: the image of a cell follows from its corners,
/// whatever curves are in front of the table.
/// @return fails as DeviceTransform::toLab()
[[nodiscard]] Result<bool> isLinearBetweenTableNodes(const DeviceTransform& transform, const Task& task);

/// @p count of the nodes of @p axis, evenly distributed by index, ends included; all if there are fewer.
[[nodiscard]] std::vector<float> thinnedAxis(const std::vector<float>& axis, std::size_t count);
/// thinnedAxis() of all axes.
[[nodiscard]] DeviceNodes thinnedNodes(const DeviceNodes& nodes, std::size_t count);
/// How many of an axis' nodes halvedNodes() takes.
[[nodiscard]] inline std::size_t halfOf(std::size_t nodes)
{
    return std::max<std::size_t>(2, (nodes + 1) / 2);
}
/// Half of the nodes of each axis, for steps of twice the size.
[[nodiscard]] DeviceNodes halvedNodes(const DeviceNodes& nodes);
/// Index among @p all nodes of the i-th of @p count kept ones. Both counts are at least 2.
[[nodiscard]] inline std::size_t thinnedPlace(std::size_t i, std::size_t all, std::size_t count)
{
    return i * (all - 1) / (count - 1);
}

/// evenShare for a device map that may fold: a compromise between steps that find the turning points and
/// steps of equal length in Lab.
inline constexpr double evenShareOfFolds = 0.5;
/// evenShare for other maps: keeps nodes apart where Lab is constant.
inline constexpr double minEvenShare = 0.02;

} // namespace velmora
