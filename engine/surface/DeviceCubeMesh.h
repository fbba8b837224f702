// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/mesh/Mesh.h>
#include <engine/profile/DeviceNodes.h>

namespace velmora {

/// The image of the surface of a three-channel device cube: every device face becomes a sheet of
/// (N-1)^2 quads of two triangles, sharing the vertices of the cube's edges. Closed and manifold by
/// construction; exact but for the step width, as long as the device map does not fold.
/// Faces look outwards when the map keeps the handedness; @p nodes are three axes of N nodes.
[[nodiscard]] Result<Mesh> deviceCubeMesh(const DeviceTransform& transform, const DeviceNodes& nodes,
                                          const Task& task);

/// The mesh that deviceCubeMesh() would give for @p count of the @p nodesPerAxis nodes along each axis, as
/// thinnedAxis() keeps them: its vertices are some of the mesh's own.
Mesh thinnedCubeMesh(const Mesh& mesh, std::size_t nodesPerAxis, std::size_t count);

} // namespace velmora
