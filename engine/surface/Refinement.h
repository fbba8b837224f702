// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/mesh/Mesh.h>
#include <engine/profile/DeviceTransform.h>

namespace velmora {

/// Splits the edges that are longer than @p maxEdge (dE76) at most @p rounds times: the Lab of the device
/// colour midway between an edge's ends becomes a vertex of both triangles, so that a closed mesh stays
/// closed. Only edges whose ends lie on one two-dimensional face of the device hypercube are split, because
/// only there the midpoint is on the surface.
/// @return fails as DeviceTransform::toLab()
[[nodiscard]] Result<void> refine(Mesh& mesh, const DeviceTransform& transform, double maxEdge, int rounds,
                                  const Task& task);

/// Splits once all edges that refine() does not split, because they connect different faces of the device
/// hypercube. Their midpoints may lie anywhere in the gamut.
/// @return fails as DeviceTransform::toLab()
[[nodiscard]] Result<void> halveBridges(Mesh& mesh, const DeviceTransform& transform, const Task& task);

} // namespace velmora
