// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/mesh/LineCast.h>
#include <engine/profile/DeviceNodes.h>

namespace velmora {

/// The six tetrahedra of a cell (Kuhn 1960): each follows the path from the cell's lowest corner to its
/// highest along one axis after the other. These are the first two axes.
inline constexpr std::array<std::array<std::size_t, 2>, 6> kuhnPaths{
    {{0, 1}, {1, 2}, {2, 0}, {1, 0}, {2, 1}, {0, 2}}};

/// All colours of a device as tetrahedra in CIELAB: the images of the three-dimensional faces of the device
/// hypercube (with three channels, the cube itself), divided into cells of six tetrahedra each (Kuhn 1960).
/// The gamut is their union, even if the device map folds or winds.
struct DeviceSolid
{
    int channels = 0;
    std::vector<float> device;                  ///< `channels` values for each point
    std::vector<Vec3> points;                   ///< Lab
    std::vector<std::array<int, 4>> tetrahedra; ///< point indices
};

/// With more channels there are too many three-dimensional faces.
inline constexpr int maxSolidChannels = 6;

/// Chooses the nodes of a solid. The number of tetrahedra is about the same as with @p nodesPerAxis nodes
/// along each axis, and at most 400,000. Axes along which the map is curved get more nodes than linear ones:
/// the error of a chord is proportional to the second difference and to the square of the step, and the total
/// error is least if it is the same along all axes.
/// @return fails as DeviceTransform::toLab()
[[nodiscard]] Result<DeviceNodes> solidNodes(const DeviceTransform& transform, int nodesPerAxis,
                                             const Task& task);

/// The solid of a device, with the three-dimensional faces divided at @p nodes. Fails as
/// DeviceTransform::toLab().
[[nodiscard]] Result<DeviceSolid> deviceSolid(const DeviceTransform& transform, const DeviceNodes& nodes,
                                              const Task& task);

} // namespace velmora
