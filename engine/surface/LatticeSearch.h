// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DeviceSolid.h"
#include <engine/mesh/Mesh.h>

namespace velmora {

/// The lattice surface of a solid with the number of faces that suits the grid, checked for
/// self-intersection.
/// @param fine, coarse the same solid with two steps, or why there is none; the coarse one is used to find
/// the pitch
/// @param fineness nodes relative to those of the default grid
/// @return fails as latticeSurface() and with SurfaceSelfIntersects
[[nodiscard]] Result<Mesh> latticeOf(const Result<DeviceSolid>& fine, const Result<DeviceSolid>& coarse,
                                     double fineness, const Task& task);

} // namespace velmora
