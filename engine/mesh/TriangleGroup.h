// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/LabGeometry.h>

#include <array>
#include <span>

namespace velmora {

/// Up to four triangles whose distances from a point are estimated at the same time, in one vector register
/// each for a coordinate of all four. Single precision is enough to see which of them are worth an exact
/// computation.
class TriangleGroup
{
public:
    static constexpr int size = 4;
    using Lanes __attribute__((vector_size(size * sizeof(float)))) = float;

    /// @param triangles one to four; the last one also fills the places that are left
    explicit TriangleGroup(std::span<const std::array<Vec3, 3>> triangles);

    /// Estimates of the squared distances from @p x: at most farthest() of the exact value, for any point
    /// that is at most 10 maxLab away.
    [[nodiscard]] Lanes squaredDistances(Vec3 x) const;

    /// A triangle whose estimate is larger is farther away than the root of @p squared.
    [[nodiscard]] static float farthest(double squared);

private:
    struct LanesVec3
    {
        Lanes L{}, a{}, b{};
        void set(int lane, Vec3 value);
    };
    static LanesVec3 minus(const LanesVec3& p, const LanesVec3& q);
    static LanesVec3 cross(const LanesVec3& p, const LanesVec3& q);
    static Lanes dot(const LanesVec3& p, const LanesVec3& q);
    static Lanes fromEdge(const LanesVec3& x, const LanesVec3& along, const Lanes& inverseSquare);

    Vec3 m_origin;                           // close to the triangles: keeps the other values small
    LanesVec3 m_corner;                      // the first one, from the origin
    std::array<LanesVec3, 2> m_edges;        // from the first corner to the second and on to the third
    std::array<Lanes, 3> m_inverseSquares{}; // of the lengths of all edges; 0 for those without a length
    LanesVec3 m_normal;                      // of length 1; null for a triangle without an area
};

} // namespace velmora
