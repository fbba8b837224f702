// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/Result.h>
#include <engine/base/Task.h>

#include <array>
#include <cstdint>
#include <vector>

namespace velmora {

/// A point with integer coordinates of at most ±maxHullCoordinate.
struct HullPoint
{
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t z = 0;
};
/// Limit of a point's coordinates, either sign.
inline constexpr std::int32_t maxHullCoordinate = (1 << 24) - 1;

/// Convex hull of points with integer coordinates.
///
/// Incremental (Clarkson and Shor 1989), in rounds of doubling size, each along a space-filling curve
/// (Amenta, Choi and Rote 2003), so that a point is located by a short walk from the previous one. All
/// predicates are exact: the hull is closed, manifold and convex for any input, and the same on every
/// machine. Repeated points and points on a facet or an edge of the current hull are skipped.
/// A single point, collinear and coplanar points give no triangles. @p task is checked every 256 points.
/// @return triangles as point indices, counter-clockwise seen from outside; fails if cancelled
[[nodiscard]] Result<std::vector<std::array<int, 3>>> convexHull(const std::vector<HullPoint>& points,
                                                                 const Task& task);

} // namespace velmora
