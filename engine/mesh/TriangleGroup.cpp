// SPDX-License-Identifier: Apache-2.0
#include "TriangleGroup.h"

#include <algorithm>

namespace velmora {

void TriangleGroup::LanesVec3::set(int lane, Vec3 value)
{
    L[lane] = static_cast<float>(value.L);
    a[lane] = static_cast<float>(value.a);
    b[lane] = static_cast<float>(value.b);
}

TriangleGroup::LanesVec3 TriangleGroup::minus(const LanesVec3& p, const LanesVec3& q)
{
    return {p.L - q.L, p.a - q.a, p.b - q.b};
}

TriangleGroup::LanesVec3 TriangleGroup::cross(const LanesVec3& p, const LanesVec3& q)
{
    return {p.a * q.b - p.b * q.a, p.b * q.L - p.L * q.b, p.L * q.a - p.a * q.L};
}

TriangleGroup::Lanes TriangleGroup::dot(const LanesVec3& p, const LanesVec3& q)
{
    return p.L * q.L + p.a * q.a + p.b * q.b;
}

// x is given from the beginning of the edge.
TriangleGroup::Lanes TriangleGroup::fromEdge(const LanesVec3& x, const LanesVec3& along,
                                             const Lanes& inverseSquare)
{
    Lanes t = dot(x, along) * inverseSquare;
    t = t > 0.0f ? t : Lanes{};
    t = t < 1.0f ? t : Lanes{} + 1.0f;
    const LanesVec3 left = minus(x, {t * along.L, t * along.a, t * along.b});
    return dot(left, left);
}

TriangleGroup::TriangleGroup(std::span<const std::array<Vec3, 3>> triangles) : m_origin(triangles[0][0])
{
    for (int lane = 0; lane < size; ++lane) {
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
        const Vec3 normal = velmora::cross(q - p, r - p);
        const double area = length(normal);
        m_normal.set(lane, area > 0.0 ? 1.0 / area * normal : Vec3{});
    }
}

// Without an area the triangle seems to be at the distance 0.
TriangleGroup::Lanes TriangleGroup::squaredDistances(Vec3 x) const
{
    const Vec3 near = x - m_origin;
    const Lanes none{};
    const LanesVec3 point{none + static_cast<float>(near.L), none + static_cast<float>(near.a),
                          none + static_cast<float>(near.b)};
    const LanesVec3 fromP = minus(point, m_corner);
    const LanesVec3 fromQ = minus(fromP, m_edges[0]);
    const LanesVec3 fromR = minus(fromQ, m_edges[1]);
    const LanesVec3 last = minus(minus(LanesVec3{}, m_edges[0]), m_edges[1]);

    const Lanes height = dot(fromP, m_normal);
    const auto isInside = (dot(cross(m_normal, m_edges[0]), fromP) >= 0.0f) &
                          (dot(cross(m_normal, m_edges[1]), fromQ) >= 0.0f) &
                          (dot(cross(m_normal, last), fromR) >= 0.0f);
    const Lanes pq = fromEdge(fromP, m_edges[0], m_inverseSquares[0]);
    const Lanes qr = fromEdge(fromQ, m_edges[1], m_inverseSquares[1]);
    const Lanes rp = fromEdge(fromR, last, m_inverseSquares[2]);
    const Lanes two = pq < qr ? pq : qr;
    const Lanes edges = two < rp ? two : rp;
    return isInside ? height * height : edges;
}

// The values are rounded to 24 bits. Within 10 maxLab of the origin this is 0.001 of a distance at most.
float TriangleGroup::farthest(double squared)
{
    constexpr double roundingError = 0.02, relativeError = 1e-5;
    const double distance = std::sqrt(squared) + roundingError;
    return static_cast<float>(distance * distance * (1.0 + relativeError));
}

} // namespace velmora
