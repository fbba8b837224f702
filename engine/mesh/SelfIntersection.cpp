// SPDX-License-Identifier: Apache-2.0
#include "SelfIntersection.h"

#include "CellLists.h"
#include "Columns.h"
#include <engine/base/Parts.h>

#include <algorithm>
#include <limits>
#include <span>

namespace velmora {
namespace {

using Sides = std::array<int, 3>; // the sides of the plane of t on which the vertices of s lie

// Common vertices lie in the plane; computing that would need 128-bit integers.
Sides sidesOf(const TrianglePoints& s, const TrianglePoints& t)
{
    const auto side = [&t](const LatticePoint& p) {
        return p == t[0] || p == t[1] || p == t[2] ? 0 : orientation3d(t[0], t[1], t[2], p);
    };
    return {side(s[0]), side(s[1]), side(s[2])};
}

bool onBothSides(const Sides& sides)
{
    const auto [low, high] = std::minmax({sides[0], sides[1], sides[2]});
    return low < 0 && high > 0;
}

// Whether an edge of s crosses the interior of t.
bool pierces(const TrianglePoints& s, const TrianglePoints& t, const Sides& sides)
{
    for (std::size_t i = 0; i < 3; ++i) {
        const std::size_t j = (i + 1) % 3;
        if (sides[i] * sides[j] >= 0)
            continue;
        const int turn = orientation3d(s[i], s[j], t[0], t[1]);
        if (turn != 0 && orientation3d(s[i], s[j], t[1], t[2]) == turn &&
            orientation3d(s[i], s[j], t[2], t[0]) == turn)
            return true;
    }
    return false;
}

// The common case first: most pairs lie on one side of each other's planes.
bool intersect(const TrianglePoints& s, const TrianglePoints& t)
{
    const Sides ofS = sidesOf(s, t);
    if (!onBothSides(ofS))
        return false;
    const Sides ofT = sidesOf(t, s);
    return onBothSides(ofT) && (pierces(s, t, ofS) || pierces(t, s, ofT));
}

// The vertices whose triangles do not overlap in a projection along one of the axes. Such triangles cannot
// intersect each other, so nearly all pairs of adjacent triangles need no test.
//
// The triangles of a vertex do not overlap in a projection if all have the same orientation there, if they
// form closed rings, and if together they cross a ray from the vertex once.
class EmbeddedFans
{
public:
    /// Incomplete if @p task is cancelled.
    EmbeddedFans(const Mesh& mesh, const std::vector<LatticePoint>& points, const Task& task)
    {
        std::vector<Fan> fans;
        growInParts(fans, points.size(), {}, task);
        for (const Triangle& t : mesh.triangles) {
            if (task.isCancelled())
                break;
            const std::array<int, 3> turns =
                turnsOf(points[static_cast<std::size_t>(t[0])], points[static_cast<std::size_t>(t[1])],
                        points[static_cast<std::size_t>(t[2])]);
            for (std::size_t i = 0; i < 3; ++i)
                addTo(fans[static_cast<std::size_t>(t[i])], points, t[i], t[(i + 1) % 3], t[(i + 2) % 3],
                      turns);
        }
        m_embedded.resize(points.size());
        forEachIndex(fans.size(), task, [&](std::size_t v) { m_embedded[v] = isEmbedded(fans[v]); });
    }

    bool at(int vertex) const { return m_embedded[static_cast<std::size_t>(vertex)] != 0; }

private:
    struct Fan
    {
        std::array<bool, 3> left{true, true, true}; // all counter-clockwise, seen along each axis
        std::array<bool, 3> right{true, true, true};
        std::array<int, 3> passes{};
        std::uint64_t ends =
            0; // sum of hashes; 0 if each edge is left by one triangle and entered by another
    };

    static std::array<int, 3> turnsOf(const LatticePoint& p, const LatticePoint& q, const LatticePoint& r)
    {
        const std::array<std::int64_t, 3> u{q.L - p.L, q.a - p.a, q.b - p.b},
            v{r.L - p.L, r.a - p.a, r.b - p.b};
        std::array<int, 3> turns{};
        for (std::size_t i = 0; i < 3; ++i) {
            const std::int64_t area = u[(i + 1) % 3] * v[(i + 2) % 3] - u[(i + 2) % 3] * v[(i + 1) % 3];
            turns[i] = (area > 0) - (area < 0);
        }
        return turns;
    }

    static std::uint64_t scattered(int vertex)
    {
        std::uint64_t x = static_cast<std::uint64_t>(vertex) + 0x9e3779b97f4a7c15u;
        x = (x ^ x >> 30) * 0xbf58476d1ce4e5b9u;
        x = (x ^ x >> 27) * 0x94d049bb133111ebu;
        return x ^ x >> 31;
    }

    static void addTo(Fan& fan, const std::vector<LatticePoint>& points, int vertex, int next, int last,
                      const std::array<int, 3>& turns)
    {
        const auto offset = [&](int to) {
            const LatticePoint& p = points[static_cast<std::size_t>(vertex)];
            const LatticePoint& q = points[static_cast<std::size_t>(to)];
            return std::array<int, 3>{q.L - p.L, q.a - p.a, q.b - p.b};
        };
        const std::array<int, 3> toNext = offset(next), toLast = offset(last);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            fan.left[axis] &= turns[axis] > 0;
            fan.right[axis] &= turns[axis] < 0;
            // A ray along an edge counts for the triangle that begins there, counter-clockwise.
            const auto& from = turns[axis] > 0 ? toNext : toLast;
            const auto& to = turns[axis] > 0 ? toLast : toNext;
            const std::size_t x = (axis + 1) % 3, y = (axis + 2) % 3;
            fan.passes[axis] += (from[y] < 0 && to[y] > 0) || (from[y] == 0 && from[x] > 0);
        }
        fan.ends += scattered(next) - scattered(last);
    }

    static bool isEmbedded(const Fan& fan)
    {
        bool embedded = false;
        for (std::size_t axis = 0; axis < 3; ++axis)
            embedded |= (fan.left[axis] || fan.right[axis]) && fan.passes[axis] == 1;
        return embedded && fan.ends == 0;
    }

    std::vector<char> m_embedded;
};

// Whether two triangles cannot intersect because of what they share: with a common edge each lies on one side
// of the other, or both are coplanar; see also EmbeddedFans.
bool cannotIntersect(const Triangle& s, const Triangle& t, const EmbeddedFans& fans)
{
    int common = 0;
    bool embedded = false;
    for (int v : s)
        if (v == t[0] || v == t[1] || v == t[2]) {
            ++common;
            embedded |= fans.at(v);
        }
    return common >= 2 || embedded;
}

// Limits on the work of one search.
struct Effort
{
    std::size_t entries = std::numeric_limits<std::size_t>::max(); // in all cell lists together
    std::size_t pairs = std::numeric_limits<std::size_t>::max();   // of triangles to be tested
};

struct Search
{
    std::size_t intersections = 0;
    bool isComplete = false;
};

Search searchIntersections(const Mesh& mesh, std::size_t maxCount, Effort effort, const Task& task)
{
    if (mesh.triangles.empty())
        return {0, true};
    const auto points = latticePoints(mesh, task);
    const auto pointsOf = [&](std::size_t f) {
        const Triangle& t = mesh.triangles[f];
        return TrianglePoints{points[static_cast<std::size_t>(t[0])], points[static_cast<std::size_t>(t[1])],
                              points[static_cast<std::size_t>(t[2])]};
    };
    const std::vector<TriangleBounds> bounds = triangleBounds(mesh, points, task);
    CellLists cells(bounds, boundsOf(points));
    if (cells.entriesOf(bounds, task) > effort.entries)
        return {};
    cells.fill(bounds, task);
    const EmbeddedFans fans(mesh, points, task);
    if (task.isCancelled()) // the lists may be incomplete
        return {};

    constexpr std::size_t cellsBetweenChecks = 256;
    Search search;
    std::vector<TriangleBounds> inCell;
    for (std::size_t cell = 0; cell < cells.size(); ++cell) {
        if (cell % cellsBetweenChecks == 0 && task.isCancelled())
            return search;
        const auto entries = cells.in(cell);
        const std::size_t pairs = entries.size() * entries.size() / 2;
        if (pairs > effort.pairs)
            return search;
        effort.pairs -= pairs;
        inCell.clear();
        for (const CellLists::Entry& e : entries)
            inCell.push_back(bounds[e.triangle]);
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (task.isCancelled())
                return search;
            for (std::size_t j = i + 1; j < entries.size(); ++j) {
                const bool here = (entries[i].begins | entries[j].begins) == 7;
                if (!here || !overlap(inCell[i], inCell[j]))
                    continue;
                const std::size_t f = entries[i].triangle, g = entries[j].triangle;
                if (!cannotIntersect(mesh.triangles[f], mesh.triangles[g], fans) &&
                    intersect(pointsOf(f), pointsOf(g)) && ++search.intersections >= maxCount)
                    return search;
            }
        }
    }
    search.isComplete = true;
    return search;
}

} // namespace

Result<std::size_t> countIntersections(const Mesh& mesh, std::size_t maxCount, const Task& task)
{
    const Search search = searchIntersections(mesh, maxCount, {}, task);
    if (!search.isComplete && search.intersections < maxCount)
        return failure(KVProblemCode::Cancelled); // the effort is unlimited, so nothing else can fail
    return search.intersections;
}

std::optional<bool> selfIntersects(const Mesh& mesh, const Task& task)
{
    constexpr std::size_t entriesPerFace = 32, minEntries = 1'000'000, maxPairs = 20'000'000;
    const Search search =
        searchIntersections(mesh, 1, {entriesPerFace * mesh.triangles.size() + minEntries, maxPairs}, task);
    if (search.intersections > 0)
        return true;
    return search.isComplete ? std::optional(false) : std::nullopt;
}

} // namespace velmora
