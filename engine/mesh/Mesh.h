// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/LabGeometry.h>

#include <vector>

namespace velmora {

using KVGamut::Mesh;
using Triangle = Mesh::Triangle;

std::vector<LatticePoint> latticePoints(const Mesh& mesh);

/// Turns the surface inside out.
void flip(Mesh& mesh);

/// Drops the vertices that no triangle names; the others keep their order.
void dropUnusedVertices(Mesh& mesh);

} // namespace velmora
