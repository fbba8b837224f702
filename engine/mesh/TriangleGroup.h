// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lanes.h"

#include <array>
#include <span>

namespace velmora {

/// Up to four triangles whose distances from a point are estimated at the same time. Single precision is
/// enough to see which of them are worth an exact computation.
class TriangleGroup
{
public:
    static constexpr int maxCount = laneCount;
    static constexpr double maxDistance = 10.0 * maxLab; ///< of a point from the triangles

    /// @param triangles one to maxCount; the last one also fills the places that are left
    explicit TriangleGroup(std::span<const std::array<Vec3, 3>> triangles);

    /// Estimates of the squared distances from @p x: at most farthest() of the exact value.
    [[nodiscard]] Lanes squaredDistances(Vec3 x) const;

    /// What is estimated to have a larger squared distance is farther away than the root of @p squared.
    [[nodiscard]] static float farthest(double squared);

private:
    Vec3 m_origin;                           // close to the triangles: keeps the other values small
    LanesVec3 m_corner;                      // the first one, from the origin
    std::array<LanesVec3, 2> m_edges;        // from the first corner to the second and on to the third
    std::array<Lanes, 3> m_inverseSquares{}; // of the lengths of all edges; 0 for those without a length
    LanesVec3 m_normal;                      // of length 1; null for a triangle without an area
};

} // namespace velmora
