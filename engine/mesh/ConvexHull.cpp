// SPDX-License-Identifier: Apache-2.0
#include "ConvexHull.h"

#include <engine/base/LabGeometry.h>
#include <engine/base/Parts.h>

#include <algorithm>
#include <numeric>

namespace velmora {
namespace {

constexpr int unused = -1;

struct Facet
{
    std::array<int, 3> v;    // points, counter-clockwise from outside; `unused` in a free slot
    std::array<int, 3> next; // the facet beyond the edge v[i] -> v[i+1]
    int visit;               // the insertion that last tested it
    bool visible;            // ... and whether the inserted point sees it
};

struct HorizonEdge
{
    int from, to;
    int behind; // the facet beyond the edge, which is kept
};

std::uint64_t spread(std::uint32_t value)
{
    std::uint64_t v = value & 0x3ffu;
    v = (v | v << 16) & 0x30000ff;
    v = (v | v << 8) & 0x300f00f;
    v = (v | v << 4) & 0x30c30c3;
    v = (v | v << 2) & 0x9249249;
    return v;
}

// Rank of a point along a Z-order curve of 2^10 cells per axis.
std::uint64_t curveRank(const HullPoint& p)
{
    const auto cell = [](std::int32_t c) { return static_cast<std::uint32_t>(c + (1 << 24)) >> 15; };
    return spread(cell(p.x)) | spread(cell(p.y)) << 1 | spread(cell(p.z)) << 2;
}

std::uint32_t scramble(std::uint32_t x) // Mulvey's "lowbias32": a permutation of the 32-bit numbers
{
    x ^= x >> 16;
    x *= 0x7feb352du;
    x ^= x >> 15;
    x *= 0x846ca68bu;
    x ^= x >> 16;
    return x;
}

// Half of the points, chosen at random, are in the last round, a quarter in the one before, and so on.
// Incomplete if the task is cancelled.
std::vector<int> insertionOrder(const std::vector<HullPoint>& points, const Task& task)
{
    struct Entry
    {
        std::uint64_t key;
        int point;
    };
    std::vector<Entry> entries;
    entries.reserve(points.size());
    forEachIndex(points.size(), task, [&](std::size_t i) {
        std::uint32_t random = scramble(static_cast<std::uint32_t>(i) + 1);
        std::uint64_t round = 31;
        for (; round > 0 && (random & 1u); random >>= 1)
            --round;
        entries.push_back({round << 40 | curveRank(points[i]), static_cast<int>(i)});
    });
    const auto before = [](const Entry& x, const Entry& y) {
        return x.key != y.key ? x.key < y.key : x.point < y.point;
    };
    sortInParts(entries, before, task);
    std::vector<int> order(entries.size());
    forEachIndex(entries.size(), task, [&](std::size_t i) { order[i] = entries[i].point; });
    return order;
}

class HullBuilder
{
public:
    HullBuilder(const std::vector<HullPoint>& points, const Task& task) : m_task(task)
    {
        // Coordinates are multiplied by four, so that the centroid of four points has integer coordinates.
        m_points.reserve(points.size() + 1);
        forEachIndex(points.size(), task, [&](std::size_t i) {
            const HullPoint& p = points[i];
            m_points.push_back({4 * p.x, 4 * p.y, 4 * p.z});
        });
        m_fanAt.resize(points.size(), -1);
        m_order = insertionOrder(points, task);
    }

    Result<std::vector<std::array<int, 3>>> run()
    {
        if (m_task.isCancelled()) // the points are incomplete
            return failure(KVProblemCode::Cancelled);
        if (!startWithTetrahedron())
            return std::vector<std::array<int, 3>>();
        std::size_t done = 0;
        for (int p : m_order) {
            if (++done % 256 == 0)
                m_task.setProgress(static_cast<double>(done) / static_cast<double>(m_order.size()));
            if (m_task.isCancelled())
                return failure(KVProblemCode::Cancelled);
            insert(p);
        }
        return usedFacets();
    }

private:
    Result<std::vector<std::array<int, 3>>> usedFacets() const
    {
        std::vector<std::array<int, 3>> triangles;
        triangles.reserve(m_facets.size());
        const bool all = forEachIndex(m_facets.size(), m_task, [&](std::size_t f) {
            if (m_facets[f].v[0] != unused)
                triangles.push_back(m_facets[f].v);
        });
        if (!all)
            return failure(KVProblemCode::Cancelled);
        return triangles;
    }

    int orientation(int p, int q, int r, int s) const
    {
        return orientation3d(m_points[static_cast<std::size_t>(p)], m_points[static_cast<std::size_t>(q)],
                             m_points[static_cast<std::size_t>(r)], m_points[static_cast<std::size_t>(s)]);
    }

    bool sees(int point, const Facet& f) const { return orientation(f.v[0], f.v[1], f.v[2], point) > 0; }

    bool collinear(int p, int q, int r) const
    {
        const auto& a = m_points[static_cast<std::size_t>(p)];
        const auto& b = m_points[static_cast<std::size_t>(q)];
        const auto& c = m_points[static_cast<std::size_t>(r)];
        const std::int64_t ux = b.x - a.x, uy = b.y - a.y, uz = b.z - a.z;
        const std::int64_t vx = c.x - a.x, vy = c.y - a.y, vz = c.z - a.z;
        return uy * vz == uz * vy && uz * vx == ux * vz && ux * vy == uy * vx;
    }

    // Starts with the first four points that are not coplanar; false if all points are coplanar.
    bool startWithTetrahedron()
    {
        if (m_order.empty())
            return false;
        std::array<int, 4> t{m_order.front(), -1, -1, -1};
        const auto same = [this](int p, int q) {
            const auto& a = m_points[static_cast<std::size_t>(p)];
            const auto& b = m_points[static_cast<std::size_t>(q)];
            return a.x == b.x && a.y == b.y && a.z == b.z;
        };
        for (int p : m_order) {
            if (t[1] < 0) {
                if (!same(t[0], p))
                    t[1] = p;
            } else if (t[2] < 0) {
                if (!collinear(t[0], t[1], p))
                    t[2] = p;
            } else if (orientation(t[0], t[1], t[2], p) != 0) {
                t[3] = p;
                break;
            }
        }
        if (t[3] < 0)
            return false;
        if (orientation(t[0], t[1], t[2], t[3]) > 0)
            std::swap(t[1], t[2]); // t[3] now lies behind t[0], t[1], t[2]
        m_facets = {{{t[0], t[1], t[2]}, {1, 2, 3}, 0, false},
                    {{t[1], t[0], t[3]}, {0, 3, 2}, 0, false},
                    {{t[2], t[1], t[3]}, {0, 1, 3}, 0, false},
                    {{t[0], t[2], t[3]}, {0, 2, 1}, 0, false}};
        HullPoint middle;
        for (int p : t) {
            const auto& q = m_points[static_cast<std::size_t>(p)];
            middle = {middle.x + q.x / 4, middle.y + q.y / 4, middle.z + q.z / 4};
        }
        m_middle = static_cast<int>(m_points.size());
        m_points.push_back(middle);
        m_newest = 0;
        return true;
    }

    // A facet that the point sees, or -1 for a point inside the hull. Found by a visibility walk (Devillers,
    // Pion and Teillaud 2002) towards the facet that the ray from the middle to the point crosses.
    int facetTowards(int point)
    {
        int current = m_newest;
        int came = -1;
        const std::size_t maxSteps = 64 + 4 * m_facets.size();
        for (std::size_t step = 0; step < maxSteps; ++step) {
            const Facet& f = m_facets[static_cast<std::size_t>(current)];
            if (sees(point, f))
                return current;
            m_random = scramble(m_random + 0x9e3779b9u);
            const std::size_t start = m_random % 3; // with a fixed order the walk might not terminate
            int onwards = -1;
            for (std::size_t i = 0; i < 3 && onwards < 0; ++i) {
                const std::size_t e = (start + i) % 3;
                if (f.next[e] != came && orientation(f.v[e], f.v[(e + 1) % 3], m_middle, point) < 0)
                    onwards = f.next[e];
            }
            if (onwards < 0)
                return -1; // the ray leaves the hull through this facet, beyond the point
            came = current;
            current = onwards;
        }
        for (std::size_t f = 0; f < m_facets.size(); ++f)
            if (m_facets[f].v[0] != unused && sees(point, m_facets[f]))
                return static_cast<int>(f);
        return -1;
    }

    void insert(int point)
    {
        const int seed = facetTowards(point);
        if (seed < 0)
            return;
        ++m_insertion;
        collectSeen(seed, point);
        replaceSeen(point);
    }

    // Flood fill of the facets that the point sees; collects the edges around them, the horizon.
    void collectSeen(int seed, int point)
    {
        m_seen.assign(1, seed);
        m_horizon.clear();
        m_facets[static_cast<std::size_t>(seed)].visit = m_insertion;
        m_facets[static_cast<std::size_t>(seed)].visible = true;
        for (std::size_t i = 0; i < m_seen.size(); ++i) {
            const Facet f = m_facets[static_cast<std::size_t>(m_seen[i])];
            for (std::size_t e = 0; e < 3; ++e) {
                Facet& g = m_facets[static_cast<std::size_t>(f.next[e])];
                if (g.visit != m_insertion) {
                    g.visit = m_insertion;
                    g.visible = sees(point, g);
                    if (g.visible)
                        m_seen.push_back(f.next[e]);
                }
                if (!g.visible)
                    m_horizon.push_back({f.v[e], f.v[(e + 1) % 3], f.next[e]});
            }
        }
    }

    int freeSlot()
    {
        if (m_free.empty()) {
            m_facets.emplace_back();
            return static_cast<int>(m_facets.size()) - 1;
        }
        const int index = m_free.back();
        m_free.pop_back();
        return index;
    }

    // Replaces the facets that the point sees by a fan from the horizon to the point.
    void replaceSeen(int point)
    {
        m_fan.clear();
        for (int index : m_seen)
            m_facets[static_cast<std::size_t>(index)].v[0] = unused;
        m_free.insert(m_free.end(), m_seen.rbegin(), m_seen.rend());
        for (const HorizonEdge& edge : m_horizon) {
            const int index = freeSlot();
            m_fan.push_back(index);
            m_facets[static_cast<std::size_t>(index)] = {
                {edge.from, edge.to, point}, {edge.behind, -1, -1}, 0, false};
            Facet& behind = m_facets[static_cast<std::size_t>(edge.behind)];
            for (std::size_t e = 0; e < 3; ++e)
                if (behind.v[e] == edge.to && behind.v[(e + 1) % 3] == edge.from)
                    behind.next[e] = index;
            m_fanAt[static_cast<std::size_t>(edge.from)] = index;
        }
        for (int index : m_fan) {
            Facet& f = m_facets[static_cast<std::size_t>(index)];
            f.next[1] = m_fanAt[static_cast<std::size_t>(f.v[1])];
            m_facets[static_cast<std::size_t>(f.next[1])].next[2] = index;
        }
        m_newest = m_fan.back();
    }

    const Task& m_task;
    std::vector<HullPoint> m_points;
    std::vector<int> m_order;
    std::vector<Facet> m_facets;
    int m_middle = -1;
    int m_newest = 0;
    int m_insertion = 0;
    std::uint32_t m_random = 1;
    std::vector<int> m_seen;
    std::vector<int> m_free; // slots of removed facets
    std::vector<HorizonEdge> m_horizon;
    std::vector<int> m_fan;
    std::vector<int> m_fanAt; // for each point the new facet whose first edge starts there
};

} // namespace

Result<std::vector<std::array<int, 3>>> convexHull(const std::vector<HullPoint>& points, const Task& task)
{
    return HullBuilder(points, task).run();
}

} // namespace velmora
