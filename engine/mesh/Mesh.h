// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/LabGeometry.h>

#include <vector>

namespace velmora {

/// Inside the engine all vertices lie on the lattice.
using KVGamut::Mesh;
using Triangle = Mesh::Triangle;

/// The vertices as lattice points.
[[nodiscard]] std::vector<LatticePoint> latticePoints(const Mesh& mesh);

/// Reverses the orientation of all triangles.
void flip(Mesh& mesh);

/// Removes the vertices that no triangle uses; the others keep their order.
void dropUnusedVertices(Mesh& mesh);

} // namespace velmora
