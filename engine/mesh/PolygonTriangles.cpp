// SPDX-License-Identifier: Apache-2.0
#include "PolygonTriangles.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace velmora {
namespace {

constexpr double noDistance = std::numeric_limits<double>::infinity();

// Twice the signed area of a triangle.
double turnOf(const PlanePoint& p, const PlanePoint& q, const PlanePoint& r)
{
    return (q.x - p.x) * (r.y - p.y) - (q.y - p.y) * (r.x - p.x);
}

double squaredGap(const PlanePoint& p, const PlanePoint& q)
{
    return (q.x - p.x) * (q.x - p.x) + (q.y - p.y) * (q.y - p.y);
}

double areaOf(const PlaneLoop& loop)
{
    double area = 0.0;
    for (std::size_t i = 1; i + 1 < loop.size(); ++i)
        area += turnOf(loop[0], loop[i], loop[i + 1]);
    return area;
}

// --- Holes ----------------------------------------------------------------------------------------

// The place in @p outer from which a bridge leads to @p corner, a corner of a hole, and does not cross an
// edge: the next edge to the right of the corner leads to it (Eberly 1998, "Triangulation by ear clipping").
// nullopt if the corner is outside.
std::optional<std::size_t> bridgeTo(const PlanePoint& corner, const PlaneLoop& outer)
{
    double nearest = noDistance;
    std::size_t best = 0;
    bool isInside = false;
    for (std::size_t i = 0; i < outer.size(); ++i) {
        const std::size_t next = (i + 1) % outer.size();
        const PlanePoint &p = outer[i], &q = outer[next];
        if ((p.y > corner.y) == (q.y > corner.y))
            continue;
        const double x = p.x + (corner.y - p.y) / (q.y - p.y) * (q.x - p.x);
        if (x < corner.x)
            continue;
        isInside = !isInside;
        if (x < nearest) {
            nearest = x;
            best = p.x > q.x ? i : next;
        }
    }
    if (!isInside)
        return {};
    // Corners in the triangle between both and the edge would be crossed; then the one at the smallest angle.
    const PlanePoint hit{nearest, corner.y, 0}, end = outer[best];
    const auto steepness = [&](const PlanePoint& p) { return std::abs(p.y - corner.y) / (p.x - corner.x); };
    double least = end.x > corner.x ? steepness(end) : noDistance;
    const double side = end.y > corner.y ? 1.0 : -1.0;
    for (std::size_t i = 0; i < outer.size(); ++i) {
        const PlanePoint& p = outer[i];
        const bool isWithin = p.x > corner.x && side * turnOf(corner, hit, p) >= 0.0 &&
                              side * turnOf(hit, end, p) >= 0.0 && side * turnOf(end, corner, p) >= 0.0;
        if (isWithin && !p.isAt(end) && steepness(p) < least) {
            least = steepness(p);
            best = i;
        }
    }
    return best;
}

// Joins @p hole to @p outer by a bridge, which becomes two edges. @return whether it is inside
bool joinHole(PlaneLoop& outer, const PlaneLoop& hole)
{
    const auto corner = std::max_element(hole.begin(), hole.end(),
                                         [](const PlanePoint& p, const PlanePoint& q) { return p.x < q.x; });
    const auto place = bridgeTo(*corner, outer);
    if (!place)
        return false;
    PlaneLoop bridged(corner, hole.end());
    bridged.insert(bridged.end(), hole.begin(), corner + 1);
    bridged.push_back(outer[*place]);
    outer.insert(outer.begin() + static_cast<std::ptrdiff_t>(*place) + 1, bridged.begin(), bridged.end());
    return true;
}

double rightmost(const PlaneLoop& loop)
{
    double x = -noDistance;
    for (const PlanePoint& p : loop)
        x = std::max(x, p.x);
    return x;
}

// Polygons without holes: each hole is joined to the smallest polygon around it.
std::vector<PlaneLoop> withoutHoles(const std::vector<PlaneLoop>& loops, const Task& task)
{
    std::vector<PlaneLoop> outers, holes;
    for (const PlaneLoop& loop : loops)
        (areaOf(loop) < 0.0 ? holes : outers).push_back(loop);
    std::sort(outers.begin(), outers.end(),
              [](const PlaneLoop& p, const PlaneLoop& q) { return areaOf(p) < areaOf(q); });
    std::sort(holes.begin(), holes.end(),
              [](const PlaneLoop& p, const PlaneLoop& q) { return rightmost(p) > rightmost(q); });
    std::vector<PlaneLoop> alone;
    for (const PlaneLoop& hole : holes)
        if (!task.isCancelled() && std::none_of(outers.begin(), outers.end(),
                                                [&hole](PlaneLoop& outer) { return joinHole(outer, hole); }))
            alone.push_back(hole);
    outers.insert(outers.end(), alone.begin(), alone.end());
    return outers;
}

// --- Ears -----------------------------------------------------------------------------------------

// A polygon from which triangles are cut off at its corners.
class EarCutter
{
public:
    EarCutter(const PlaneLoop& loop, const Task& task) : m_left(loop), m_task(task) {}

    void cutInto(std::vector<std::array<int, 3>>& triangles)
    {
        rateAll();
        while (m_left.size() > 3 && !m_task.isCancelled()) {
            const std::size_t i = best();
            triangles.push_back({last(i).number, m_left[i].number, next(i).number});
            m_left.erase(m_left.begin() + static_cast<std::ptrdiff_t>(i));
            m_ratings.erase(m_ratings.begin() + static_cast<std::ptrdiff_t>(i));
            m_ratings[i % m_left.size()] = rating(i % m_left.size());
            const std::size_t before = (i + m_left.size() - 1) % m_left.size();
            m_ratings[before] = rating(before);
        }
        if (m_left.size() == 3)
            triangles.push_back({m_left[0].number, m_left[1].number, m_left[2].number});
    }

private:
    const PlanePoint& last(std::size_t i) const { return m_left[(i + m_left.size() - 1) % m_left.size()]; }
    const PlanePoint& next(std::size_t i) const { return m_left[(i + 1) % m_left.size()]; }

    void rateAll()
    {
        m_ratings.clear();
        for (std::size_t i = 0; i < m_left.size() && !m_task.isCancelled(); ++i)
            m_ratings.push_back(rating(i));
        m_ratings.resize(m_left.size(), blocked);
    }

    // The corner to cut off. Corners that were blocked may have become free; if all are blocked, which
    // happens where rounding lets edges cross, the one with the most area.
    std::size_t best()
    {
        auto found = std::max_element(m_ratings.begin(), m_ratings.end());
        if (*found <= thin) {
            rateAll();
            found = std::max_element(m_ratings.begin(), m_ratings.end());
        }
        if (*found > blocked)
            return static_cast<std::size_t>(found - m_ratings.begin());
        std::size_t largest = 0;
        double area = -noDistance;
        for (std::size_t i = 0; i < m_left.size(); ++i)
            if (const double turn = turnOf(last(i), m_left[i], next(i)); turn > area) {
                area = turn;
                largest = i;
            }
        return largest;
    }

    // The shape of the triangle at a corner: 1 for an equilateral one, 0 for one without area.
    double rating(std::size_t i) const
    {
        const PlanePoint &p = last(i), &q = m_left[i], &r = next(i);
        if (p.isAt(q) || q.isAt(r) || p.isAt(r))
            return 1.0; // without area, so it can be cut off anywhere
        const double turn = turnOf(p, q, r);
        if (!(turn > 0.0))
            return blocked;
        for (const PlanePoint& x : m_left)
            if (!x.isAt(p) && !x.isAt(q) && !x.isAt(r) && turnOf(p, q, x) >= 0.0 && turnOf(q, r, x) >= 0.0 &&
                turnOf(r, p, x) >= 0.0)
                return blocked;
        constexpr double ofEquilateral = 0.8660254037844386;
        return turn / ofEquilateral / std::max({squaredGap(p, q), squaredGap(q, r), squaredGap(r, p)});
    }

    static constexpr double blocked = -1.0;
    static constexpr double thin = 1e-9; // rounding of corners on one line

    PlaneLoop m_left;
    std::vector<double> m_ratings;
    const Task& m_task;
};

} // namespace

std::vector<std::array<int, 3>> trianglesOf(const std::vector<PlaneLoop>& loops, const Task& task)
{
    std::vector<std::array<int, 3>> triangles;
    const bool isSimple = loops.size() == 1;
    for (const PlaneLoop& loop : isSimple ? loops : withoutHoles(loops, task))
        EarCutter(loop, task).cutInto(triangles);
    return triangles;
}

} // namespace velmora
