// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/mesh/Mesh.h>
#include <engine/profile/DeviceNodes.h>

namespace velmora {

/// The image of the surface of a three-channel device cube: each face of the cube becomes a sheet of (N-1)^2
/// quads of two triangles; adjacent sheets share the vertices of their common edge. Closed and manifold by
/// construction; exact except for the step width, unless the device map folds. The faces point outwards if
/// the map preserves orientation.
/// @param nodes three axes of N nodes each
/// @return fails as DeviceTransform::toLab()
[[nodiscard]] Result<Mesh> deviceCubeMesh(const DeviceTransform& transform, const DeviceNodes& nodes,
                                          const Task& task);

/// The result of deviceCubeMesh() for the nodes that thinnedAxis() keeps, @p count of @p nodesPerAxis. Needs
/// no transform: its vertices are a subset of those of @p mesh. Incomplete if @p task is cancelled.
[[nodiscard]] Mesh thinnedCubeMesh(const Mesh& mesh, std::size_t nodesPerAxis, std::size_t count,
                                   const Task& task = {});

} // namespace velmora
