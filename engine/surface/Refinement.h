// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/mesh/Mesh.h>
#include <engine/profile/DeviceTransform.h>

namespace velmora {

/// Halves the edges that are longer than @p maxEdge (dE76): the device colour midway between an
/// edge's ends goes through the profile and becomes a vertex of both triangles, so that a closed
/// mesh stays closed. At most @p rounds times. Only edges whose ends lie on one two-dimensional face
/// of the device hypercube are halved, since only there midway is on the surface.
[[nodiscard]] Result<void> refine(Mesh& mesh, const DeviceTransform& transform, double maxEdge, int rounds,
                                  const Task& task);

/// Halves once all edges that refine() leaves alone, which lead from one face of the device hypercube to
/// another: midway may be anywhere.
[[nodiscard]] Result<void> halveBridges(Mesh& mesh, const DeviceTransform& transform, const Task& task);

} // namespace velmora
