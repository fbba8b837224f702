// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/LabGeometry.h>
#include <engine/base/Task.h>

#include <span>
#include <vector>

namespace velmora {

/// Inside the engine all vertices lie on the lattice.
using KVGamut::Mesh;
using Triangle = Mesh::Triangle;

// If the task of one of these functions is cancelled, its result has no meaning.

/// The vertices as lattice points.
[[nodiscard]] std::vector<LatticePoint> latticePoints(const Mesh& mesh, const Task& task = {});

/// The points of the lattice next to @p points.
[[nodiscard]] std::vector<KVGamut::LabPoint> snappedAll(std::span<const Vec3> points, const Task& task = {});

/// Reverses the orientation of all triangles.
void flip(Mesh& mesh, const Task& task = {});

/// Merges the vertices at the same place, as KVGamut::weldedMesh() does.
void weld(Mesh& mesh, const Task& task = {});

/// Removes the vertices that no triangle uses; the others keep their order.
void dropUnusedVertices(Mesh& mesh, const Task& task = {});

} // namespace velmora
