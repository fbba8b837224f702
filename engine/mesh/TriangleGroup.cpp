// SPDX-License-Identifier: Apache-2.0
#include "TriangleGroup.h"

#include <algorithm>
#include <cmath>

namespace velmora {
namespace {

// The squared distances from an edge of each triangle; x is given from the beginning of the edge.
inline Lanes fromEdge(const LanesVec3& x, const LanesVec3& along, Lanes inverseSquare)
{
    const Lanes t = lower(upper(dot(x, along) * inverseSquare, Lanes{}), lanesOf(1.0f));
    const LanesVec3 left = x - t * along;
    return dot(left, left);
}

} // namespace

TriangleGroup::TriangleGroup(std::span<const std::array<Vec3, 3>> triangles) : m_origin(triangles[0][0])
{
    for (int lane = 0; lane < laneCount; ++lane) {
        const auto last = static_cast<int>(triangles.size()) - 1;
        const auto& [p, q, r] = triangles[static_cast<std::size_t>(std::min(lane, last))];
        m_corner.set(lane, p - m_origin);
        m_edges[0].set(lane, q - p);
        m_edges[1].set(lane, r - q);
        std::size_t edge = 0;
        for (const Vec3& along : {q - p, r - q, p - r}) {
            const double square = squaredLength(along);
            m_inverseSquares[edge++][lane] = square > 0.0 ? static_cast<float>(1.0 / square) : 0.0f;
        }
        const Vec3 normal = cross(q - p, r - p);
        const double area = length(normal);
        m_normal.set(lane, area > 0.0 ? 1.0 / area * normal : Vec3{});
    }
}

// A triangle without an area seems to be at the distance 0.
Lanes TriangleGroup::squaredDistances(Vec3 x) const
{
    const LanesVec3 fromP = LanesVec3::all(x - m_origin) - m_corner;
    const LanesVec3 fromQ = fromP - m_edges[0];
    const LanesVec3 fromR = fromQ - m_edges[1];
    const LanesVec3 last = LanesVec3{} - m_edges[0] - m_edges[1];

    const auto isInside = (dot(cross(m_normal, m_edges[0]), fromP) >= 0.0f) &
                          (dot(cross(m_normal, m_edges[1]), fromQ) >= 0.0f) &
                          (dot(cross(m_normal, last), fromR) >= 0.0f);
    const Lanes height = dot(fromP, m_normal);
    const Lanes edges = lower(lower(fromEdge(fromP, m_edges[0], m_inverseSquares[0]),
                                    fromEdge(fromQ, m_edges[1], m_inverseSquares[1])),
                              fromEdge(fromR, last, m_inverseSquares[2]));
    return isInside ? height * height : edges;
}

// The values are rounded to 24 bits: up to 0.01 of maxDistance.
float TriangleGroup::farthest(double squared)
{
    constexpr double roundingError = 0.02, relativeError = 1e-5;
    const double distance = std::sqrt(squared) + roundingError;
    return static_cast<float>(distance * distance * (1.0 + relativeError));
}

} // namespace velmora
