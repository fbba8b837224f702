// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/Result.h>
#include <engine/base/Task.h>

#include <array>
#include <cstdint>
#include <vector>

namespace velmora {

struct HullPoint
{
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t z = 0;
};
/// Largest coordinate of a point, either sign.
inline constexpr std::int32_t maxHullCoordinate = (1 << 24) - 1;

/// Convex hull of points with integer coordinates.
///
/// Incremental (Clarkson and Shor 1989) in rounds of doubling size, each along a space-filling curve
/// (Amenta, Choi and Rote 2003), so that a point is found by a short walk from the last one. All
/// decisions are exact: the hull is closed, manifold and convex whatever the points, and the same on
/// every machine. A repeated point, one on a face or on an edge of the present hull is left out.
/// A single point, collinear and coplanar points give no triangles. @p task is checked every 256 points.
/// @return triangles as point indices, counter-clockwise seen from outside; fails if cancelled
[[nodiscard]] Result<std::vector<std::array<int, 3>>> convexHull(const std::vector<HullPoint>& points,
                                                                 const Task& task);

} // namespace velmora
