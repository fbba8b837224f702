// SPDX-License-Identifier: Apache-2.0
#include <platform/KVVelmoraFramework.h>

#include <engine/base/LabGeometry.h>
#include <engine/base/ListOf.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using velmora::Vec3;

struct PlaneVertex
{
    Vec3 lab;
    double distance; // signed, from the plane, times the length of the plane's normal
};

// Where the edge meets the plane. Interpolated from the lower to the higher end, in whatever order the ends
// are given, so that both triangles of an edge get exactly the same point.
KVGamut::LabPoint crossing(const PlaneVertex& p, const PlaneVertex& q)
{
    const bool ordered = std::tie(p.lab.L, p.lab.a, p.lab.b) <= std::tie(q.lab.L, q.lab.a, q.lab.b);
    const PlaneVertex& low = ordered ? p : q;
    const PlaneVertex& high = ordered ? q : p;
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

// The edges of a triangle in which the plane crosses it, as positions of their first vertex.
struct CrossedEdges
{
    std::size_t down; // from above the plane to below it
    std::size_t up;
};

// The crossed edges, or nullopt if the plane does not cross it or a vertex is not finite.
//
// A vertex on the plane counts as above it. A plane through vertices therefore cuts like one just below them,
// and its rings are closed, too. The piece runs from the edge that crosses the plane downwards to the one
// that crosses it upwards, where the piece of the next triangle begins.
std::optional<CrossedEdges> crossedEdges(const std::array<PlaneVertex, 3>& vertices)
{
    for (const PlaneVertex& vertex : vertices)
        if (!std::isfinite(vertex.distance))
            return {};
    std::optional<std::size_t> down;
    std::size_t up = 0;
    for (std::size_t e = 0; e < 3; ++e) {
        const bool from = vertices[e].distance >= 0.0;
        const bool to = vertices[(e + 1) % 3].distance >= 0.0;
        if (from && !to)
            down = e;
        else if (!from && to)
            up = e;
    }
    if (!down)
        return {};
    return CrossedEdges{*down, up};
}

KVGamut::RingPiece pieceOf(const std::array<PlaneVertex, 3>& vertices, const CrossedEdges& edges)
{
    const auto edge = [&](std::size_t e) { return crossing(vertices[e], vertices[(e + 1) % 3]); };
    return {edge(edges.down), edge(edges.up)};
}

// The vertices of a face, or nullopt if it is not a triangle.
std::optional<std::array<PlaneVertex, 3>> verticesOf(const QList<KVHull::Node>& face, const Plane& plane)
{
    if (face.size() != 3)
        return {};
    std::array<PlaneVertex, 3> vertices;
    for (std::size_t i = 0; i < 3; ++i) {
        const QList<float>& lab = face[static_cast<qsizetype>(i)].lab;
        if (lab.size() < 3)
            return {};
        vertices[i].lab = {lab[0], lab[1], lab[2]};
        vertices[i].distance = plane.distanceOf(vertices[i].lab);
    }
    return vertices;
}

std::array<PlaneVertex, 3> verticesOf(const KVGamut::Mesh& mesh, const KVGamut::Mesh::Triangle& t,
                                      const Plane& plane)
{
    std::array<PlaneVertex, 3> vertices;
    for (std::size_t i = 0; i < 3; ++i) {
        vertices[i].lab = velmora::toVec3(mesh.lab[static_cast<std::size_t>(t[i])]);
        vertices[i].distance = plane.distanceOf(vertices[i].lab);
    }
    return vertices;
}

// The triangles with vertices on both sides of a plane: few of many. Each vertex is measured once.
class CrossedTriangles
{
public:
    CrossedTriangles(const KVGamut::Mesh& mesh, const Plane& plane) : m_above(mesh.lab.size())
    {
        for (std::size_t v = 0; v < m_above.size(); ++v)
            m_above[v] = plane.distanceOf(velmora::toVec3(mesh.lab[v])) >= 0.0;
    }
    bool contains(const KVGamut::Mesh::Triangle& t) const
    {
        const char first = above(t[0]);
        return above(t[1]) != first || above(t[2]) != first;
    }

private:
    char above(int vertex) const { return m_above[static_cast<std::size_t>(vertex)]; }

    std::vector<char> m_above;
};

using MeshEdge = std::pair<int, int>; // vertices, the smaller index first

// A step of a loop: where it begins, and the edge from which the loop goes on.
struct Step
{
    KVGamut::LabPoint start;
    MeshEdge next;
};

// The steps by the edge in which they begin. In a closed manifold each crossed edge begins exactly one.
std::map<MeshEdge, Step> stepsOf(const KVGamut::Mesh& mesh, const Plane& plane)
{
    std::map<MeshEdge, Step> steps;
    const CrossedTriangles crossedTriangles(mesh, plane);
    for (const KVGamut::Mesh::Triangle& t : mesh.triangles) {
        if (!crossedTriangles.contains(t))
            continue;
        const auto vertices = verticesOf(mesh, t, plane);
        const auto crossed = crossedEdges(vertices);
        if (!crossed)
            continue;
        const auto edge = [&t](std::size_t e) { return MeshEdge(std::minmax(t[e], t[(e + 1) % 3])); };
        steps.emplace(edge(crossed->down), Step{pieceOf(vertices, *crossed)[0], edge(crossed->up)});
    }
    return steps;
}

QList<float> pointOf(const KVGamut::LabPoint& p)
{
    return velmora::listOf({p.L, p.a, p.b});
}

} // namespace

QList<QList<QList<float>>> KVGamut::computeRing(const float* plane, const QList<QList<KVHull::Node>>& faces)
{
    QList<QList<QList<float>>> ring;
    const auto cut = Plane::of(plane);
    if (!cut)
        return ring;
    for (const auto& face : faces) {
        const auto vertices = verticesOf(face, *cut);
        if (!vertices)
            continue;
        if (const auto crossed = crossedEdges(*vertices)) {
            const RingPiece piece = pieceOf(*vertices, *crossed);
            ring.append(velmora::listOf({pointOf(piece[0]), pointOf(piece[1])}));
        }
    }
    return ring;
}

std::vector<KVGamut::RingPiece> KVGamut::computeRing(const float* plane, const Mesh& mesh)
{
    std::vector<RingPiece> ring;
    const auto cut = Plane::of(plane);
    if (!cut)
        return ring;
    const CrossedTriangles crossedTriangles(mesh, *cut);
    for (const Mesh::Triangle& t : mesh.triangles) {
        if (!crossedTriangles.contains(t))
            continue;
        const auto vertices = verticesOf(mesh, t, *cut);
        if (const auto crossed = crossedEdges(vertices))
            ring.push_back(pieceOf(vertices, *crossed));
    }
    return ring;
}

std::vector<KVGamut::SectionLoop> KVGamut::sectionLoops(const float* plane, const Mesh& mesh)
{
    std::vector<SectionLoop> loops;
    const auto cut = Plane::of(plane);
    if (!cut)
        return loops;
    auto steps = stepsOf(mesh, *cut);
    while (!steps.empty()) {
        const MeshEdge first = steps.begin()->first;
        SectionLoop loop;
        MeshEdge at = first;
        for (auto step = steps.find(at); step != steps.end(); step = steps.find(at)) {
            loop.push_back(step->second.start);
            at = step->second.next;
            steps.erase(step);
        }
        if (at == first) // if not, the mesh has a boundary here
            loops.push_back(std::move(loop));
    }
    return loops;
}
