// SPDX-License-Identifier: Apache-2.0
#include <platform/KVVelmoraFramework.h>

#include <engine/base/LabGeometry.h>

#include <array>
#include <cmath>
#include <optional>
#include <tuple>

namespace {

using velmora::Vec3;

struct SideCorner
{
    Vec3 lab;
    double distance; // from the plane, times the length of its normal
};

// Where the edge meets the plane. Taken from the lower end to the upper, whichever triangle asks, so that
// both triangles of an edge find the same point to the last bit.
KVGamut::LabPoint crossing(const SideCorner& p, const SideCorner& q)
{
    const bool ordered = std::tie(p.lab.L, p.lab.a, p.lab.b) <= std::tie(q.lab.L, q.lab.a, q.lab.b);
    const SideCorner& low = ordered ? p : q;
    const SideCorner& high = ordered ? q : p;
    const double t = low.distance / (low.distance - high.distance);
    const Vec3 x = low.lab + t * (high.lab - low.lab);
    return {static_cast<float>(x.L), static_cast<float>(x.a), static_cast<float>(x.b)};
}

struct Plane
{
    Vec3 normal;
    double offset;

    static std::optional<Plane> of(const float* coefficients)
    {
        if (!coefficients)
            return {};
        const Plane plane{{coefficients[0], coefficients[1], coefficients[2]}, coefficients[3]};
        if (!velmora::isFinite(plane.normal) || !std::isfinite(plane.offset))
            return {};
        return plane;
    }
    double distanceOf(const Vec3& p) const { return velmora::dot(normal, p) + offset; }
};

// The piece of a triangle, or nullopt where the plane does not cross it.
//
// Each corner is on one side or the other, never on the plane: then a plane through corners cuts as one
// right below them, and its rings close too. The piece runs from the edge that comes down through the
// plane to the one that goes up; its neighbours run on from there.
std::optional<KVGamut::RingPiece> pieceOf(const std::array<SideCorner, 3>& corners)
{
    std::optional<std::size_t> down;
    std::size_t up = 0;
    for (std::size_t e = 0; e < 3; ++e) {
        const bool from = corners[e].distance >= 0.0;
        const bool to = corners[(e + 1) % 3].distance >= 0.0;
        if (from && !to)
            down = e;
        else if (!from && to)
            up = e;
    }
    if (!down)
        return {};
    const auto edge = [&](std::size_t e) { return crossing(corners[e], corners[(e + 1) % 3]); };
    return KVGamut::RingPiece{edge(*down), edge(up)};
}

// The corners of a face, or nullopt where one has no finite position.
std::optional<std::array<SideCorner, 3>> cornersOf(const QList<KVHull::Node>& face, const Plane& plane)
{
    if (face.size() != 3)
        return {};
    std::array<SideCorner, 3> corners;
    for (std::size_t i = 0; i < 3; ++i) {
        const QList<float>& lab = face[static_cast<qsizetype>(i)].lab;
        if (lab.size() < 3)
            return {};
        corners[i].lab = {lab[0], lab[1], lab[2]};
        corners[i].distance = plane.distanceOf(corners[i].lab);
        if (!std::isfinite(corners[i].distance))
            return {};
    }
    return corners;
}

QList<float> listOf(const KVGamut::LabPoint& p)
{
    return {p.L, p.a, p.b};
}

} // namespace

QList<QList<QList<float>>> KVGamut::computeRing(const float* plane, const QList<QList<KVHull::Node>>& faces)
{
    QList<QList<QList<float>>> ring;
    const auto cut = Plane::of(plane);
    if (!cut)
        return ring;
    for (const auto& face : faces) {
        const auto corners = cornersOf(face, *cut);
        if (!corners)
            continue;
        if (const auto piece = pieceOf(*corners))
            ring.append({listOf((*piece)[0]), listOf((*piece)[1])});
    }
    return ring;
}

std::vector<KVGamut::RingPiece> KVGamut::computeRing(const float* plane, const Mesh& mesh)
{
    std::vector<RingPiece> ring;
    const auto cut = Plane::of(plane);
    if (!cut)
        return ring;
    for (const Mesh::Triangle& t : mesh.triangles) {
        std::array<SideCorner, 3> corners;
        for (std::size_t i = 0; i < 3; ++i) {
            corners[i].lab = velmora::toVec3(mesh.lab[static_cast<std::size_t>(t[i])]);
            corners[i].distance = cut->distanceOf(corners[i].lab);
        }
        if (const auto piece = pieceOf(corners))
            ring.push_back(*piece);
    }
    return ring;
}
