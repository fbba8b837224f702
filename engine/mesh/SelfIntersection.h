// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"
#include <engine/base/Result.h>
#include <engine/base/Task.h>

#include <cstddef>
#include <optional>

namespace velmora {

/// Number of pairs of triangles that intersect: an edge of one crosses the interior of the other. Exact, on
/// the vertices' lattice. Triangles that only touch, or that are coplanar, do not intersect.
/// @param maxCount the search stops at this count
/// @return at most @p maxCount; fails if @p task is cancelled
[[nodiscard]] Result<std::size_t> countIntersections(const Mesh& mesh, std::size_t maxCount,
                                                     const Task& task);

/// Whether an untrusted surface self-intersects. The faces of a computed surface have few other faces near
/// them. In a hostile file each face may be close to all others, and testing all pairs would take minutes;
/// the work is therefore limited to 20 million pairs.
/// @return nullopt if the limit is reached, or @p task cancelled, before the result is known
[[nodiscard]] std::optional<bool> selfIntersects(const Mesh& mesh, const Task& task = {});

} // namespace velmora
