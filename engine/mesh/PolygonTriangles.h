// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/Task.h>

#include <array>
#include <vector>

namespace velmora {

/// A corner of a polygon in the plane.
struct PlanePoint
{
    double x = 0.0;
    double y = 0.0;
    int number = 0; ///< what it is called in the result

    bool isAt(const PlanePoint& p) const { return x == p.x && y == p.y; }
};

/// A closed loop of corners: counter-clockwise around a polygon, clockwise around a hole in one.
using PlaneLoop = std::vector<PlanePoint>;

/// Divides polygons with holes into triangles of their corners.
///
/// Each edge of a loop belongs to one triangle, in the direction of the loop, and each other edge to two, in
/// opposite directions. This holds for all loops, also for those that cross themselves or have no area: the
/// signed areas of the triangles then sum to that of the loops, but triangles may overlap. Well-shaped
/// triangles are cut off first. The time grows with the square of the number of corners.
/// If @p task is cancelled, the result has no meaning.
[[nodiscard]] std::vector<std::array<int, 3>> trianglesOf(const std::vector<PlaneLoop>& loops,
                                                          const Task& task = {});

} // namespace velmora
