// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DeviceSolid.h"

namespace velmora {

/// Surface of any solid, wherever it folds, winds or hides from its middle: which nodes of a cubic
/// lattice lie in it, exactly where the lattice's edges leave it, and a surface between them by
/// marching tetrahedra (Doi and Koide 1991). Each cell of the lattice is divided into six tetrahedra
/// whose edges run along the cell's edges and its diagonals; along each of these seven directions
/// lines are cast through the solid.
///
/// Every face lies within one of the lattice's tetrahedra, and the vertices within its edges, away
/// from their ends. So the surface is closed and manifold and cannot meet itself.
/// @param pitch of the lattice, dE
/// @return a surface that may have parts of no substance, for removeTinyComponents(); fails as castThrough()
[[nodiscard]] Result<Mesh> latticeSurface(const DeviceSolid& solid, double pitch, CastBudget& budget,
                                          const Task& task);

/// The pitch at which the lattice surface of a solid has about so many faces.
/// Fails as castThrough(), or with TooSmall if the solid encloses nothing.
[[nodiscard]] Result<double> pitchForFaces(const DeviceSolid& solid, double faces, CastBudget& budget,
                                           const Task& task);

/// Drops the parts of a surface that enclose less than a ten-thousandth of what it encloses in all:
/// pockets between the tetrahedra of a solid that folds, and their crumbs.
void removeTinyComponents(Mesh& mesh);

} // namespace velmora
