// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"
#include <engine/base/Result.h>
#include <engine/base/Task.h>

#include <cstddef>
#include <optional>

namespace velmora {

/// How many pairs of triangles pass through each other: an edge of one goes through the inside of the
/// other. Decided in integers, on the lattice that the vertices lie on. Triangles that touch, or lie in
/// one plane, do not pass through each other.
/// Fails if @p task is cancelled.
/// @param maxCount counting ends there
[[nodiscard]] Result<std::size_t> countIntersections(const Mesh& mesh, std::size_t maxCount,
                                                     const Task& task);

/// Whether a surface that comes from somewhere else passes through itself. Faces of computed surfaces have
/// few others near; of hostile ones each may lie beside all, and all pairs of a large file would take
/// minutes.
/// @return nothing when a second's work does not tell
[[nodiscard]] std::optional<bool> selfIntersects(const Mesh& mesh);

} // namespace velmora
