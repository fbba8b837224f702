// SPDX-License-Identifier: Apache-2.0
#include "MeshBody.h"

#include "MeshChecks.h"
#include "MeshCrossing.h"
#include "PolygonTriangles.h"
#include <engine/base/Parts.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace velmora {
namespace {

using KVGamut::Body;

// Vertices of the body are numbered: those of the first mesh, those of the second one, the points.
struct BodyNumbers
{
    int second; // of the first vertex of the second mesh
    int points;
};

// The parts of one mesh that become part of the body.
struct Kept
{
    const Mesh& mesh;
    const std::vector<int>& winding;
    bool isFirst;
    bool inside; // else: outside of the other mesh

    // How often a place is part of the body, where the winding number of the other mesh is @p w: 1 or 0,
    // unless that one intersects itself.
    int copies(int w) const { return inside ? w : 1 - w; }
    int copiesAt(int vertex) const { return copies(winding[static_cast<std::size_t>(vertex)]); }
};

// A part of an edge or of the curve, between two vertices of the body.
struct Stretch
{
    int from;
    int to;
};

class FaceCutter
{
public:
    FaceCutter(const Kept& kept, const MeshCrossing& crossing, BodyNumbers numbers, const Task& task);

    /// The triangles that are kept, as they face in the mesh.
    std::vector<Triangle> triangles() const;

private:
    int numberOf(int vertex) const { return m_kept.isFirst ? vertex : vertex + m_numbers.second; }
    void addStretchesAlong(int from, int to, std::vector<Stretch>& stretches) const;
    void cut(std::size_t face, std::span<const Stretch> ofCurve, std::vector<Triangle>& triangles) const;
    PlaneLoop loopOf(const std::vector<int>& numbers, std::array<std::size_t, 2> axes) const;
    Vec3 placeOf(int number) const;

    const Kept& m_kept;
    const MeshCrossing& m_crossing;
    BodyNumbers m_numbers;
    const Task& m_task;
    std::vector<std::pair<int, Stretch>> m_ofCurve; // by face
};

FaceCutter::FaceCutter(const Kept& kept, const MeshCrossing& crossing, BodyNumbers numbers, const Task& task)
    : m_kept(kept), m_crossing(crossing), m_numbers(numbers), m_task(task)
{
    m_ofCurve.reserve(crossing.pieces.size());
    // A piece has the outside of the second mesh on its left in the first one, and the inside of the first
    // mesh on its left in the second one.
    const bool turned = kept.isFirst && kept.inside;
    for (const CrossingPiece& piece : crossing.pieces) {
        const int start = numbers.points + piece.start, end = numbers.points + piece.end;
        m_ofCurve.emplace_back(kept.isFirst ? piece.first : piece.second,
                               turned ? Stretch{end, start} : Stretch{start, end});
    }
    sortInParts(
        m_ofCurve, [](const auto& p, const auto& q) { return p.first < q.first; }, task);
}

std::vector<Triangle> FaceCutter::triangles() const
{
    std::vector<Triangle> triangles;
    std::vector<Stretch> ofCurve;
    auto next = m_ofCurve.begin();
    for (std::size_t f = 0; f < m_kept.mesh.triangles.size() && !m_task.isCancelled(); ++f) {
        const Triangle& t = m_kept.mesh.triangles[f];
        ofCurve.clear();
        for (; next != m_ofCurve.end() && next->first == static_cast<int>(f); ++next)
            ofCurve.push_back(next->second);
        if (!ofCurve.empty()) {
            cut(f, ofCurve, triangles);
            continue;
        }
        const int copies = m_kept.copiesAt(t[0]); // the same at all corners
        const Triangle whole{numberOf(t[0]), numberOf(t[1]), numberOf(t[2])};
        for (int i = 0; i < std::abs(copies); ++i)
            triangles.push_back(copies > 0 ? whole : Triangle{whole[0], whole[2], whole[1]});
    }
    return triangles;
}

// The kept stretches of an edge. Each begins at an end of the edge that is kept or where the edge enters the
// part that is kept, and ends likewise; there are as many beginnings as ends. Points whose order rounding has
// changed give stretches in the opposite direction, and the mesh stays closed.
void FaceCutter::addStretchesAlong(int from, int to, std::vector<Stretch>& stretches) const
{
    const MeshEdge edge{std::min(from, to), std::max(from, to)};
    const std::pair key(!m_kept.isFirst, edge);
    const auto less = [](const CrossingPoint& p, const auto& k) { return std::pair(!p.ofFirst, p.edge) < k; };
    std::vector<std::pair<double, int>> begins, ends;
    const auto add = [&](double share, int number, int copies) {
        for (int i = 0; i < std::abs(copies); ++i)
            (copies > 0 ? begins : ends).emplace_back(share, number);
    };
    auto point = std::lower_bound(m_crossing.points.begin(), m_crossing.points.end(), key, less);
    for (; point != m_crossing.points.end() && std::pair(!point->ofFirst, point->edge) == key; ++point)
        add(point->share, m_numbers.points + static_cast<int>(point - m_crossing.points.begin()),
            m_kept.inside ? -point->sign : point->sign);
    add(-1.0, numberOf(edge.from), m_kept.copiesAt(edge.from));
    add(2.0, numberOf(edge.to), -m_kept.copiesAt(edge.to));
    std::sort(begins.begin(), begins.end());
    std::sort(ends.begin(), ends.end());
    for (std::size_t i = 0; i < std::min(begins.size(), ends.size()); ++i)
        stretches.push_back(from < to ? Stretch{begins[i].second, ends[i].second}
                                      : Stretch{ends[i].second, begins[i].second});
}

Vec3 FaceCutter::placeOf(int number) const
{
    if (number >= m_numbers.points)
        return m_crossing.points[static_cast<std::size_t>(number - m_numbers.points)].at;
    const int vertex = m_kept.isFirst ? number : number - m_numbers.second;
    return toVec3(m_kept.mesh.lab[static_cast<std::size_t>(vertex)]);
}

PlaneLoop FaceCutter::loopOf(const std::vector<int>& numbers, std::array<std::size_t, 2> axes) const
{
    PlaneLoop loop;
    for (const int number : numbers) {
        const Vec3 place = placeOf(number);
        const std::array<double, 3> all{place.L, place.a, place.b};
        loop.push_back({all[axes[0]], all[axes[1]], number});
    }
    return loop;
}

// Follows the stretches, which enter each vertex as often as they leave it, around their loops.
std::vector<std::vector<int>> loopsOf(const std::vector<Stretch>& stretches)
{
    std::multimap<int, int> next;
    for (const Stretch& s : stretches)
        next.emplace(s.from, s.to);
    std::vector<std::vector<int>> loops;
    while (!next.empty()) {
        std::vector<int> loop;
        const int first = next.begin()->first;
        int at = first;
        do {
            const auto step = next.find(at);
            if (step == next.end())
                break;
            loop.push_back(at);
            at = step->second;
            next.erase(step);
        } while (at != first);
        loops.push_back(std::move(loop));
    }
    return loops;
}

void FaceCutter::cut(std::size_t face, std::span<const Stretch> ofCurve,
                     std::vector<Triangle>& triangles) const
{
    const Triangle& t = m_kept.mesh.triangles[face];
    std::vector<Stretch> stretches(ofCurve.begin(), ofCurve.end());
    for (std::size_t i = 0; i < 3; ++i)
        addStretchesAlong(t[i], t[(i + 1) % 3], stretches);
    const Vec3 p = placeOf(numberOf(t[0]));
    const Vec3 normal = cross(placeOf(numberOf(t[1])) - p, placeOf(numberOf(t[2])) - p);
    const std::array<double, 3> n{normal.L, normal.a, normal.b};
    const std::array<double, 3> sizes{std::abs(n[0]), std::abs(n[1]), std::abs(n[2])};
    const auto along = static_cast<std::size_t>(std::max_element(sizes.begin(), sizes.end()) - sizes.begin());
    std::array<std::size_t, 2> axes{(along + 1) % 3, (along + 2) % 3};
    if (n[along] < 0.0) // so that the triangle is counter-clockwise in the plane
        std::swap(axes[0], axes[1]);
    std::vector<PlaneLoop> loops;
    for (const std::vector<int>& loop : loopsOf(stretches))
        loops.push_back(loopOf(loop, axes));
    const auto parts = trianglesOf(loops, m_task);
    triangles.insert(triangles.end(), parts.begin(), parts.end());
}

// --- What becomes of the triangles ----------------------------------------------------------------

Triangle rotatedToLowest(const Triangle& t)
{
    const auto lowest = static_cast<std::size_t>(std::min_element(t.begin(), t.end()) - t.begin());
    return {t[lowest], t[(lowest + 1) % 3], t[(lowest + 2) % 3]};
}

// Removes pairs of triangles that are the same and face each other: nothing is between them.
void removePairs(Mesh& mesh, const Task& task)
{
    // By their vertices; those that face one way before those that face the other way.
    const auto key = [](const Triangle& t) {
        const bool isTurned = t[1] > t[2];
        return std::pair(Triangle{t[0], std::min(t[1], t[2]), std::max(t[1], t[2])}, isTurned);
    };
    for (Triangle& t : mesh.triangles)
        t = rotatedToLowest(t);
    sortInParts(
        mesh.triangles, [&key](const Triangle& p, const Triangle& q) { return key(p) < key(q); }, task);
    std::vector<Triangle> left;
    for (const Triangle& t : mesh.triangles) {
        if (!left.empty() && key(left.back()).first == key(t).first && left.back() != t)
            left.pop_back();
        else
            left.push_back(t);
    }
    mesh.triangles = std::move(left);
}

// The number of the connected component of each triangle; triangles are connected by edges.
std::vector<int> componentsOf(const Mesh& mesh, const Task& task)
{
    const auto neighbours = triangleNeighbours(mesh, task);
    std::vector<int> components(mesh.triangles.size(), -1);
    std::vector<int> waiting;
    int count = 0;
    for (std::size_t f = 0; f < components.size() && !task.isCancelled(); ++f) {
        if (components[f] >= 0)
            continue;
        components[f] = count;
        waiting.push_back(static_cast<int>(f));
        while (!waiting.empty() && !task.isCancelled()) {
            const auto at = static_cast<std::size_t>(waiting.back());
            waiting.pop_back();
            for (const int n : neighbours[at])
                if (n >= 0 && components[static_cast<std::size_t>(n)] < 0) {
                    components[static_cast<std::size_t>(n)] = count;
                    waiting.push_back(n);
                }
        }
        ++count;
    }
    return components;
}

void removeFilms(Mesh& mesh, const Task& task)
{
    constexpr double minThickness = 1.0 / 16384.0;
    const std::vector<int> components = componentsOf(mesh, task);
    std::vector<double> volumes(components.size(), 0.0), areas(components.size(), 0.0);
    const auto component = [&components](std::size_t f) { return static_cast<std::size_t>(components[f]); };
    if (task.isCancelled())
        return;
    forEachIndex(mesh.triangles.size(), task, [&](std::size_t f) {
        const auto at = [&](std::size_t i) {
            return toVec3(mesh.lab[static_cast<std::size_t>(mesh.triangles[f][i])]);
        };
        const Vec3 q = at(1) - at(0), r = at(2) - at(0);
        areas[component(f)] += 0.5 * length(cross(q, r));
        volumes[component(f)] += dot(at(0) - toVec3(mesh.lab[0]), cross(q, r)) / 6.0;
    });
    std::vector<Triangle> left;
    for (std::size_t f = 0; f < mesh.triangles.size(); ++f)
        if (std::abs(volumes[component(f)]) > 0.5 * areas[component(f)] * minThickness)
            left.push_back(mesh.triangles[f]);
    mesh.triangles = std::move(left);
}

} // namespace

Result<Mesh> bodyOf(const Mesh& first, const Mesh& second, Body body, const Task& task)
{
    const auto crossing = crossingOf(first, second, task.part(0.0, 0.5));
    if (!crossing)
        return failure(crossing);
    const BodyNumbers numbers{static_cast<int>(first.lab.size()),
                              static_cast<int>(first.lab.size() + second.lab.size())};
    const bool common = body == Body::Intersection;
    const Kept ofFirst{first, crossing->firstWinding, true, common};
    const Kept ofSecond{second, crossing->secondWinding, false, true};
    Mesh mesh;
    mesh.lab = first.lab;
    mesh.lab.insert(mesh.lab.end(), second.lab.begin(), second.lab.end());
    for (const CrossingPoint& point : crossing->points)
        mesh.lab.push_back(snapped(point.at));
    mesh.triangles = FaceCutter(ofFirst, *crossing, numbers, task).triangles();
    for (const Triangle& t : FaceCutter(ofSecond, *crossing, numbers, task).triangles())
        mesh.triangles.push_back(common ? t : Triangle{t[0], t[2], t[1]});
    if (task.isCancelled())
        return failure(KVProblemCode::Cancelled);
    weld(mesh, task);
    removePairs(mesh, task);
    removeFilms(mesh, task);
    dropUnusedVertices(mesh, task);
    if (task.isCancelled())
        return failure(KVProblemCode::Cancelled);
    task.setProgress(1.0);
    return mesh;
}

} // namespace velmora
