#pragma once

#include "SurfaceMesh.h"
#include "Task.h"

#include <cstddef>

namespace velmora {

/// How many pairs of triangles pass through each other: an edge of one goes through the inside of the
/// other. Decided in integers, on the lattice that the vertices lie on. Triangles that touch, or lie in
/// one plane, do not pass through each other.
/// @param most counting ends there
std::size_t countCrossings(const SurfaceMesh& mesh, std::size_t most, const Task& task);

} // namespace velmora
