// SPDX-License-Identifier: Apache-2.0
#include "MeshCrossing.h"

#include "CellLists.h"
#include <engine/base/Parts.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <tuple>

namespace velmora {
namespace {

__extension__ using WideInteger = __int128;

constexpr std::size_t maxCellEntries = 32'000'000;
constexpr std::size_t maxCrossingPieces = 10'000'000;

using LatticeVector = std::array<std::int64_t, 3>; // L*, a*, b*

LatticeVector between(const LatticePoint& p, const LatticePoint& q)
{
    return {q.L - p.L, q.a - p.a, q.b - p.b};
}

LatticeVector latticeCross(const LatticeVector& u, const LatticeVector& v)
{
    return {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
}

// The sign of the product of @p v with the shift of the first mesh.
int signAlongShift(const LatticeVector& v)
{
    for (const std::size_t axis : {1, 2, 0})
        if (v[axis] != 0)
            return v[axis] > 0 ? 1 : -1;
    return 0;
}

// The determinant whose sign is orientation3d(); 0 is decided by the shift.
WideInteger determinantOf(const TrianglePoints& t, const LatticePoint& x)
{
    const LatticeVector n = latticeCross(between(t[0], t[1]), between(t[0], t[2])), w = between(t[0], x);
    return WideInteger(w[0]) * n[0] + WideInteger(w[1]) * n[1] + WideInteger(w[2]) * n[2];
}

// The side of the triangle t on which x lies: +1 outside. One of them belongs to the first mesh: x if @p
// shift is +1, t if it is -1. 0 only if t has no area.
int sideOfTriangle(const TrianglePoints& t, const LatticePoint& x, int shift)
{
    if (const int side = orientation3d(t[0], t[1], t[2], x))
        return side;
    return shift * signAlongShift(latticeCross(between(t[0], t[1]), between(t[0], t[2])));
}

// On which side the edge p, q of the first mesh passes the edge r, s of the second one. 0 only for parallel
// edges.
int passingSide(const LatticePoint& p, const LatticePoint& q, const LatticePoint& r, const LatticePoint& s)
{
    if (const int side = orientation3d(p, q, r, s))
        return side;
    return signAlongShift(latticeCross(between(p, q), between(r, s)));
}

// sideAb() of x, which is shifted along the shift of the first mesh or against it.
int sideAbShifted(const LatticePoint& p, const LatticePoint& q, const LatticePoint& x, int shift)
{
    const int side = sideAb(p, q, x);
    return orientationAb(p, q, x) != 0 ? side : shift * side;
}

// One of the two meshes.
struct Surface
{
    const Mesh& mesh;
    std::vector<LatticePoint> points;

    TrianglePoints triangle(int f) const
    {
        const Triangle& t = mesh.triangles[static_cast<std::size_t>(f)];
        return {at(t[0]), at(t[1]), at(t[2])};
    }
    const LatticePoint& at(int v) const { return points[static_cast<std::size_t>(v)]; }
};

// A point as one pair of triangles finds it. Other pairs with triangles beside the edge find it again.
struct Found
{
    CrossingPoint point;
    std::size_t piece = 0;
    bool isStart = false;

    bool isBefore(const Found& other) const
    {
        const auto key = [](const CrossingPoint& p) { return std::tuple(!p.ofFirst, p.edge, p.triangle); };
        return key(point) < key(other.point);
    }
    bool isSame(const Found& other) const { return !isBefore(other) && !other.isBefore(*this); }
};

CrossingPoint crossingPoint(const Surface& ofEdge, MeshEdge edge, const Surface& other, int triangle)
{
    const TrianglePoints t = other.triangle(triangle);
    const auto low = static_cast<long double>(determinantOf(t, ofEdge.at(edge.from)));
    const auto high = static_cast<long double>(determinantOf(t, ofEdge.at(edge.to)));
    CrossingPoint point;
    point.edge = edge;
    point.triangle = triangle;
    point.share = low == high ? 0.0 : std::clamp(static_cast<double>(low / (low - high)), 0.0, 1.0);
    const Vec3 p = toVec3(ofEdge.mesh.lab[static_cast<std::size_t>(edge.from)]);
    point.at = p + point.share * (toVec3(ofEdge.mesh.lab[static_cast<std::size_t>(edge.to)]) - p);
    return point;
}

class CrossingSearch
{
public:
    CrossingSearch(const Mesh& first, const Mesh& second, const Task& task)
        : m_first{first, latticePoints(first, task)}, m_second{second, latticePoints(second, task)},
          m_task(task)
    {
    }

    Result<MeshCrossing> run();

private:
    std::optional<KVProblem> findPieces();
    void testCell(std::span<const CellLists::Entry> entries, const std::vector<TriangleBounds>& bounds);
    void testPair(int f, int g);
    void addPoint(bool ofFirst, int from, int to, int triangle, int fromSide);
    void joinPoints();

    Surface m_first, m_second;
    Task m_task;
    MeshCrossing m_crossing;
    std::vector<Found> m_found;
    std::vector<CellLists::Entry> m_inFirst, m_inSecond; // of one cell
};

void CrossingSearch::addPoint(bool ofFirst, int from, int to, int triangle, int fromSide)
{
    Found found;
    found.point = ofFirst
                      ? crossingPoint(m_first, {std::min(from, to), std::max(from, to)}, m_second, triangle)
                      : crossingPoint(m_second, {std::min(from, to), std::max(from, to)}, m_first, triangle);
    found.point.ofFirst = ofFirst;
    const int sign = -fromSide; // in the direction of the triangle's edge: it leaves what it starts inside of
    found.point.sign = from < to ? sign : -sign;
    found.piece = m_crossing.pieces.size();
    found.isStart = ofFirst == (sign < 0);
    m_found.push_back(found);
}

void CrossingSearch::testPair(int f, int g)
{
    const Triangle& tf = m_first.mesh.triangles[static_cast<std::size_t>(f)];
    const Triangle& tg = m_second.mesh.triangles[static_cast<std::size_t>(g)];
    const TrianglePoints p = m_first.triangle(f), q = m_second.triangle(g);
    std::array<int, 3> ofP{}, ofQ{};
    for (std::size_t i = 0; i < 3; ++i)
        ofP[i] = sideOfTriangle(q, p[i], 1);
    if (std::abs(ofP[0] + ofP[1] + ofP[2]) == 3)
        return;
    for (std::size_t i = 0; i < 3; ++i)
        ofQ[i] = sideOfTriangle(p, q[i], -1);
    if (std::abs(ofQ[0] + ofQ[1] + ofQ[2]) == 3)
        return;
    std::array<std::array<int, 3>, 3> passing{};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j)
            passing[i][j] = passingSide(p[i], p[(i + 1) % 3], q[j], q[(j + 1) % 3]);
    const std::size_t before = m_found.size();
    for (std::size_t i = 0; i < 3; ++i) {
        const std::size_t next = (i + 1) % 3;
        if (ofP[i] * ofP[next] < 0 && passing[i][0] == passing[i][1] && passing[i][1] == passing[i][2])
            addPoint(true, tf[i], tf[next], g, ofP[i]);
        if (ofQ[i] * ofQ[next] < 0 && passing[0][i] == passing[1][i] && passing[1][i] == passing[2][i])
            addPoint(false, tg[i], tg[next], f, ofQ[i]);
    }
    if (m_found.size() > before)
        m_crossing.pieces.push_back({f, g, -1, -1});
}

void CrossingSearch::testCell(std::span<const CellLists::Entry> entries,
                              const std::vector<TriangleBounds>& bounds)
{
    const std::size_t count = m_first.mesh.triangles.size();
    m_inFirst.clear();
    m_inSecond.clear();
    for (const CellLists::Entry& e : entries)
        (e.triangle < count ? m_inFirst : m_inSecond).push_back(e);
    for (const CellLists::Entry& f : m_inFirst) {
        if (m_task.isCancelled())
            return;
        for (const CellLists::Entry& g : m_inSecond)
            if ((f.begins | g.begins) == 7 && overlap(bounds[f.triangle], bounds[g.triangle]))
                testPair(static_cast<int>(f.triangle), static_cast<int>(g.triangle - count));
    }
}

std::optional<KVProblem> CrossingSearch::findPieces()
{
    std::vector<TriangleBounds> bounds = triangleBounds(m_first.mesh, m_first.points, m_task);
    const auto others = triangleBounds(m_second.mesh, m_second.points, m_task);
    bounds.insert(bounds.end(), others.begin(), others.end());
    const LatticeBox p = boundsOf(m_first.points), q = boundsOf(m_second.points);
    const LatticeBox box{
        {std::min(p.low.L, q.low.L), std::min(p.low.a, q.low.a), std::min(p.low.b, q.low.b)},
        {std::max(p.high.L, q.high.L), std::max(p.high.a, q.high.a), std::max(p.high.b, q.high.b)}};
    CellLists cells(bounds, box);
    if (cells.entriesOf(bounds, m_task) > maxCellEntries)
        return KVProblem{KVProblemCode::TooManyCrossings, {}, {}};
    cells.fill(bounds, m_task);
    constexpr std::size_t cellsBetweenLooks = 256;
    for (std::size_t cell = 0; !m_task.isCancelled() && cell < cells.size(); ++cell) {
        testCell(cells.in(cell), bounds);
        if (m_crossing.pieces.size() > maxCrossingPieces)
            return KVProblem{KVProblemCode::TooManyCrossings, {}, {}};
        while (cell + 1 < cells.size() && (cell + 1) % cellsBetweenLooks != 0 && cells.in(cell + 1).empty())
            ++cell;
    }
    return m_task.isCancelled() ? std::optional(KVProblem{KVProblemCode::Cancelled, {}, {}}) : std::nullopt;
}

// Numbers the points, each once, and gives them to the pieces.
void CrossingSearch::joinPoints()
{
    sortInParts(
        m_found, [](const Found& p, const Found& q) { return p.isBefore(q); }, m_task);
    for (std::size_t i = 0; i < m_found.size() && !m_task.isCancelled(); ++i) {
        if (i == 0 || !m_found[i].isSame(m_found[i - 1]))
            m_crossing.points.push_back(m_found[i].point);
        CrossingPiece& piece = m_crossing.pieces[m_found[i].piece];
        (m_found[i].isStart ? piece.start : piece.end) = static_cast<int>(m_crossing.points.size()) - 1;
    }
}

// --- Winding numbers of the vertices --------------------------------------------------------------

// The winding number of @p other at a point: the faces above it that face up, minus those that face down.
int windingAt(const LatticePoint& x, const Surface& other, int shift, const Task& task)
{
    int winding = 0;
    forEachIndex(other.mesh.triangles.size(), task, [&](std::size_t f) {
        const TrianglePoints t = other.triangle(static_cast<int>(f));
        const int sign = sideAbShifted(t[0], t[1], x, shift);
        if (sign != 0 && sideAbShifted(t[1], t[2], x, shift) == sign &&
            sideAbShifted(t[2], t[0], x, shift) == sign && sideOfTriangle(t, x, shift) * sign < 0)
            winding += sign;
    });
    return winding;
}

// The change of the winding number along an edge, seen from each of its ends.
struct CrossingStep
{
    int vertex;
    int other;
    int change;

    bool operator<(const CrossingStep& s) const { return vertex < s.vertex; }
};

std::vector<CrossingStep> crossingStepsOf(const Mesh& mesh, std::span<const CrossingPoint> points,
                                          const Task& task)
{
    std::vector<CrossingStep> steps;
    steps.reserve(3 * mesh.triangles.size());
    forEachIndex(mesh.triangles.size(), task, [&](std::size_t f) {
        const Triangle& t = mesh.triangles[f];
        for (std::size_t i = 0; i < 3; ++i) {
            const int p = t[i], q = t[(i + 1) % 3];
            const MeshEdge edge{std::min(p, q), std::max(p, q)};
            auto at = std::lower_bound(points.begin(), points.end(), edge,
                                       [](const CrossingPoint& x, const MeshEdge& e) { return x.edge < e; });
            int change = 0;
            for (; at != points.end() && at->edge == edge; ++at)
                change -= at->sign;
            steps.push_back({p, q, p < q ? change : -change});
        }
    });
    sortInParts(steps, std::less<>(), task);
    return steps;
}

// In a closed mesh each edge is left from both of its ends, so the steps lead to all vertices of a component.
std::vector<int> windingsOf(const Surface& surface, const Surface& other, int shift,
                            std::span<const CrossingPoint> points, const Task& task)
{
    const std::vector<CrossingStep> steps = crossingStepsOf(surface.mesh, points, task);
    std::vector<int> windings(surface.points.size(), 0);
    std::vector<char> isKnown(surface.points.size(), 0);
    std::vector<int> waiting;
    for (const CrossingStep& seed : steps) {
        if (task.isCancelled())
            return windings;
        if (isKnown[static_cast<std::size_t>(seed.vertex)])
            continue;
        windings[static_cast<std::size_t>(seed.vertex)] =
            windingAt(surface.at(seed.vertex), other, shift, task);
        isKnown[static_cast<std::size_t>(seed.vertex)] = 1;
        waiting.push_back(seed.vertex);
        while (!waiting.empty() && !task.isCancelled()) {
            const int vertex = waiting.back();
            waiting.pop_back();
            const auto [from, to] = std::equal_range(steps.begin(), steps.end(), CrossingStep{vertex, 0, 0});
            for (auto step = from; step != to; ++step)
                if (!isKnown[static_cast<std::size_t>(step->other)]) {
                    windings[static_cast<std::size_t>(step->other)] =
                        windings[static_cast<std::size_t>(vertex)] + step->change;
                    isKnown[static_cast<std::size_t>(step->other)] = 1;
                    waiting.push_back(step->other);
                }
        }
    }
    return windings;
}

Result<MeshCrossing> CrossingSearch::run()
{
    if (m_task.isCancelled())
        return failure(KVProblemCode::Cancelled);
    if (const auto problem = findPieces())
        return tl::unexpected(*problem);
    joinPoints();
    const auto split = std::partition_point(m_crossing.points.begin(), m_crossing.points.end(),
                                            [](const CrossingPoint& p) { return p.ofFirst; });
    const std::span<const CrossingPoint> ofFirst(m_crossing.points.begin(), split);
    const std::span<const CrossingPoint> ofSecond(split, m_crossing.points.end());
    m_crossing.firstWinding = windingsOf(m_first, m_second, 1, ofFirst, m_task);
    m_crossing.secondWinding = windingsOf(m_second, m_first, -1, ofSecond, m_task);
    if (m_task.isCancelled())
        return failure(KVProblemCode::Cancelled);
    return std::move(m_crossing);
}

} // namespace

Result<MeshCrossing> crossingOf(const Mesh& first, const Mesh& second, const Task& task)
{
    if (first.isEmpty() || second.isEmpty())
        return MeshCrossing{
            {}, {}, std::vector<int>(first.lab.size(), 0), std::vector<int>(second.lab.size(), 0)};
    return CrossingSearch(first, second, task).run();
}

} // namespace velmora
