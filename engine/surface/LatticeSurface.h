// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DeviceSolid.h"
#include <engine/mesh/Mesh.h>

namespace velmora {

/// Surface of any solid, whether it folds, winds or is not star-shaped, by marching tetrahedra (Doi and Koide
/// 1991): finds which nodes of a cubic lattice lie in the solid, and where exactly the lattice's edges leave
/// it. Each cell of the lattice is divided into six tetrahedra, whose edges run along the cell's edges and
/// diagonals. Lines along these seven directions are intersected with the solid.
///
/// Every face lies in one of the lattice's tetrahedra, and its vertices lie on that tetrahedron's edges, away
/// from their ends. The surface is therefore closed, manifold and free of self-intersections.
/// @param pitch edge of a lattice cell, dE
/// @return a surface that may have tiny components, see removeTinyComponents(); fails as castThrough()
[[nodiscard]] Result<Mesh> latticeSurface(const DeviceSolid& solid, double pitch, CastBudget& budget,
                                          const Task& task);

/// The pitch, in dE, with which the lattice surface of a solid has about @p faces faces.
/// Fails as castThrough(), or with TooSmall if the solid encloses no volume.
[[nodiscard]] Result<double> pitchForFaces(const DeviceSolid& solid, double faces, CastBudget& budget,
                                           const Task& task);

} // namespace velmora
