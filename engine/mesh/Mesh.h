// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/LabGeometry.h>

#include <vector>

namespace velmora {

using Triangle = KVGamut::Mesh::Triangle;
using SurfaceMesh = KVGamut::Mesh; ///< its vertices lie on the lattice

std::vector<LatticePoint> latticePoints(const SurfaceMesh& mesh);

/// Turns the surface inside out.
void flip(SurfaceMesh& mesh);

/// Drops the vertices that no triangle names; the others keep their order.
void dropUnusedVertices(SurfaceMesh& mesh);

} // namespace velmora
