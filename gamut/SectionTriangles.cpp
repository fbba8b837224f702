// SPDX-License-Identifier: Apache-2.0
#include <gamut/SectionLid.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

namespace {

/// a* and b*.
using Place = std::array<double, 2>;
using Ring = std::vector<Place>; ///< counter-clockwise around the region, clockwise around a hole
using Rings = std::vector<Ring>;

constexpr int maxDepth = 48; // of splits: enough for all cells and all holes in them

double cross(const Place& o, const Place& p, const Place& q)
{
    return (p[0] - o[0]) * (q[1] - o[1]) - (p[1] - o[1]) * (q[0] - o[0]);
}

double areaOf(const Ring& ring)
{
    double twice = 0.0;
    for (std::size_t i = 1; i + 1 < ring.size(); ++i)
        twice += cross(ring[0], ring[i], ring[i + 1]);
    return 0.5 * twice;
}

double areaOf(const Rings& rings)
{
    double sum = 0.0;
    for (const Ring& ring : rings)
        sum += areaOf(ring);
    return sum;
}

/// Whether a ring turns back at @p q.
bool isSpike(const Place& p, const Place& q, const Place& r)
{
    return cross(p, q, r) == 0.0 && (q[0] - p[0]) * (r[0] - q[0]) + (q[1] - p[1]) * (r[1] - q[1]) <= 0.0;
}

/// @p ring without the parts that it follows in both directions: where a hole touches a line of the grid.
Ring withoutSpikes(Ring ring)
{
    std::size_t kept = 0; // points in a row without a spike
    for (std::size_t i = 0; ring.size() > 2 && kept < ring.size();) {
        const std::size_t size = ring.size();
        i %= size;
        if (isSpike(ring[(i + size - 1) % size], ring[i], ring[(i + 1) % size])) {
            ring.erase(ring.begin() + static_cast<std::ptrdiff_t>(i));
            i += size - 2; // the point before it may be one now
            kept = 0;
        } else {
            ++i;
            ++kept;
        }
    }
    return ring.size() > 2 ? ring : Ring();
}

/// Where a ring crosses the line of a split.
struct Crossing
{
    Place place;
    bool upwards; ///< from the lower side to the upper one
};

/// A part of a ring on one side of the line, from a crossing to a crossing.
struct Chain
{
    std::size_t from, to;
    Ring between;
};

/// Splits rings at the line where the coordinate @p axis is @p at.
class Split
{
public:
    Split(const Rings& rings, int axis, double at) : m_axis(static_cast<std::size_t>(axis)), m_at(at)
    {
        for (const Ring& ring : rings)
            add(ring);
        pairCrossings();
        join(false);
        join(true);
    }

    std::array<Rings, 2> sides; ///< below and above

private:
    bool isAbove(const Place& place) const { return place[m_axis] >= m_at; }

    /// The same place whatever the direction of the edge.
    Place crossingOf(Place from, Place to) const
    {
        if (to < from)
            std::swap(from, to);
        const double t = (m_at - from[m_axis]) / (to[m_axis] - from[m_axis]);
        Place place;
        place[m_axis] = m_at;
        place[1 - m_axis] = from[1 - m_axis] + t * (to[1 - m_axis] - from[1 - m_axis]);
        return place;
    }

    void add(const Ring& ring)
    {
        const std::size_t size = ring.size();
        const auto crosses = [&](std::size_t i) { return isAbove(ring[i]) != isAbove(ring[(i + 1) % size]); };
        std::size_t first = 0;
        while (first < size && !crosses(first))
            ++first;
        if (first == size) {
            sides[isAbove(ring.front()) ? 1 : 0].push_back(ring);
            return;
        }
        const std::size_t start = m_crossings.size();
        Chain part{start, 0, {}};
        for (std::size_t k = 0; k < size; ++k) { // from the first crossing back to it
            const std::size_t i = (first + k) % size;
            const Place& next = ring[(i + 1) % size];
            if (crosses(i)) {
                m_crossings.push_back({crossingOf(ring[i], next), isAbove(next)});
                if (k > 0)
                    finish(part, m_crossings.size() - 1);
            }
            part.between.push_back(next);
        }
        finish(part, start);
    }

    /// Ends @p part at a crossing; the next one begins there.
    void finish(Chain& part, std::size_t crossing)
    {
        const bool above = isAbove(part.between.front());
        part.to = crossing;
        m_parts[above ? 1 : 0].push_back(std::exchange(part, Chain{crossing, 0, {}}));
    }

    /// The line is inside the region between its first and second crossing, its third and fourth, etc. The
    /// directions of the crossings alternate, which orders those in the same place.
    void pairCrossings()
    {
        std::vector<std::size_t> order(m_crossings.size());
        for (std::size_t i = 0; i < order.size(); ++i)
            order[i] = i;
        const auto along = [&](std::size_t i) { return m_crossings[i].place[1 - m_axis]; };
        std::stable_sort(order.begin(), order.end(),
                         [&](std::size_t i, std::size_t j) { return along(i) < along(j); });
        const bool startsUpwards = m_axis == 0;
        for (std::size_t k = 0; k < order.size(); ++k) {
            const bool wanted = (k % 2 == 0) == startsUpwards;
            std::size_t other = k;
            while (other < order.size() && along(order[other]) == along(order[k]) &&
                   m_crossings[order[other]].upwards != wanted)
                ++other;
            if (other < order.size() && along(order[other]) == along(order[k]))
                std::swap(order[k], order[other]);
        }
        m_partner.resize(order.size());
        for (std::size_t k = 0; k + 1 < order.size(); k += 2) {
            m_partner[order[k]] = order[k + 1];
            m_partner[order[k + 1]] = order[k];
        }
    }

    /// Joins the parts of one side to rings, along the line.
    void join(bool above)
    {
        std::vector<Chain>& parts = m_parts[above ? 1 : 0];
        const std::size_t none = parts.size();
        std::vector<std::size_t> starting(m_crossings.size(), none); // the part at each crossing
        for (std::size_t i = 0; i < parts.size(); ++i)
            starting[parts[i].from] = i;
        std::vector<bool> used(parts.size(), false);
        for (std::size_t i = 0; i < parts.size(); ++i) {
            Ring ring;
            for (std::size_t at = i; at != none && !used[at]; at = starting[m_partner[parts[at].to]]) {
                used[at] = true;
                append(ring, m_crossings[parts[at].from].place);
                for (const Place& place : parts[at].between)
                    append(ring, place);
                append(ring, m_crossings[parts[at].to].place);
            }
            while (ring.size() > 1 && ring.back() == ring.front())
                ring.pop_back();
            if (ring.size() > 2)
                sides[above ? 1 : 0].push_back(std::move(ring));
        }
    }

    static void append(Ring& ring, const Place& place)
    {
        if (ring.empty() || ring.back() != place)
            ring.push_back(place);
    }

    std::size_t m_axis;
    double m_at;
    std::vector<Crossing> m_crossings;
    std::vector<std::size_t> m_partner;
    std::array<std::vector<Chain>, 2> m_parts;
};

/// Cells of the grid, from @ref low to below @ref high.
struct Block
{
    std::array<int, 2> low, high;

    int count(int axis) const
    {
        const auto i = static_cast<std::size_t>(axis);
        return high[i] - low[i];
    }
};

/// Cuts a region along the lines of a grid into triangles.
class Triangulation
{
public:
    Triangulation(double cell, float lightness) : m_cell(cell), m_lightness(lightness) {}

    KVGamut::Mesh mesh;

    void add(const Rings& rings, const Block& block, int depth)
    {
        if (rings.empty())
            return;
        if (isFull(rings, block))
            return addCells(block);
        const int axis = block.count(0) >= block.count(1) ? 0 : 1;
        const auto i = static_cast<std::size_t>(axis);
        if (block.count(axis) < 2)
            return addRings(rings, depth);
        const int middle = block.low[i] + block.count(axis) / 2;
        const Split split(rings, axis, m_cell * middle);
        Block below = block, above = block;
        below.high[i] = above.low[i] = middle;
        add(split.sides[0], below, depth + 1);
        add(split.sides[1], above, depth + 1);
    }

private:
    bool isFull(const Rings& rings, const Block& block) const
    {
        const double whole = m_cell * block.count(0) * m_cell * block.count(1);
        return rings.size() == 1 && rings[0].size() == 4 && areaOf(rings[0]) >= whole * (1.0 - 1e-12);
    }

    int addVertex(const Place& place)
    {
        mesh.lab.push_back({m_lightness, static_cast<float>(place[0]), static_cast<float>(place[1])});
        return static_cast<int>(mesh.lab.size()) - 1;
    }

    /// All of @p block.
    void addCells(const Block& block)
    {
        const int first = static_cast<int>(mesh.lab.size());
        const int columns = block.count(0) + 1;
        for (int j = block.low[1]; j <= block.high[1]; ++j)
            for (int i = block.low[0]; i <= block.high[0]; ++i)
                addVertex({m_cell * i, m_cell * j});
        for (int j = 0; j < block.count(1); ++j)
            for (int i = 0; i < block.count(0); ++i) {
                const int corner = first + j * columns + i;
                mesh.triangles.push_back({corner, corner + 1, corner + columns + 1});
                mesh.triangles.push_back({corner, corner + columns + 1, corner + columns});
            }
    }

    /// The rings of one cell. Holes are split until none is left.
    void addRings(const Rings& rings, int depth)
    {
        const auto hole =
            std::find_if(rings.begin(), rings.end(), [](const Ring& ring) { return areaOf(ring) < 0.0; });
        if (hole != rings.end() && depth < maxDepth) {
            const auto [left, right] = std::minmax_element(hole->begin(), hole->end());
            const Split split(rings, 0, 0.5 * ((*left)[0] + (*right)[0]));
            addRings(split.sides[0], depth + 1);
            addRings(split.sides[1], depth + 1);
            return;
        }
        for (const Ring& ring : rings)
            addRing(withoutSpikes(ring));
    }

    /// Cuts off one corner after the other.
    void addRing(const Ring& ring)
    {
        std::vector<int> rest;
        for (const Place& place : ring)
            rest.push_back(addVertex(place));
        std::vector<Place> places = ring;
        while (places.size() > 2) {
            const std::size_t size = places.size();
            std::size_t ear = 0;
            while (ear < size && !isEar(places, ear))
                ++ear;
            ear %= size; // none can be found only if rounding made edges cross
            const std::size_t before = (ear + size - 1) % size, after = (ear + 1) % size;
            if (cross(places[before], places[ear], places[after]) > 0.0)
                mesh.triangles.push_back({rest[before], rest[ear], rest[after]});
            places.erase(places.begin() + static_cast<std::ptrdiff_t>(ear));
            rest.erase(rest.begin() + static_cast<std::ptrdiff_t>(ear));
        }
    }

    static bool isEar(const std::vector<Place>& places, std::size_t at)
    {
        const std::size_t size = places.size();
        const Place& p = places[(at + size - 1) % size];
        const Place& q = places[at];
        const Place& r = places[(at + 1) % size];
        if (!(cross(p, q, r) > 0.0))
            return false;
        return std::none_of(places.begin(), places.end(), [&](const Place& other) {
            return other != p && other != q && other != r && cross(p, q, other) >= 0.0 &&
                   cross(q, r, other) >= 0.0 && cross(r, p, other) >= 0.0;
        });
    }

    double m_cell;
    float m_lightness;
};

/// Counter-clockwise around the region. Empty if a point is not finite.
Rings ringsOf(std::span<const KVGamut::SectionLoop> loops)
{
    Rings rings;
    for (const KVGamut::SectionLoop& loop : loops) {
        Ring ring;
        for (const KVGamut::LabPoint& lab : loop) {
            const Place place{double(lab.a), double(lab.b)};
            if (!std::isfinite(place[0]) || !std::isfinite(place[1]))
                return {};
            if (ring.empty() || ring.back() != place)
                ring.push_back(place);
        }
        while (ring.size() > 1 && ring.back() == ring.front())
            ring.pop_back();
        if (ring.size() > 2)
            rings.push_back(std::move(ring));
    }
    if (areaOf(rings) < 0.0)
        for (Ring& ring : rings)
            std::reverse(ring.begin(), ring.end());
    return rings;
}

} // namespace

KVGamut::Mesh kvSectionTriangles(std::span<const KVGamut::SectionLoop> loops, double cell)
{
    const Rings rings = ringsOf(loops);
    if (rings.empty())
        return {};
    Place low = rings[0][0], high = low;
    for (const Ring& ring : rings)
        for (const Place& place : ring)
            for (std::size_t i = 0; i < 2; ++i) {
                low[i] = std::min(low[i], place[i]);
                high[i] = std::max(high[i], place[i]);
            }
    const double extent = std::max(high[0] - low[0], high[1] - low[1]);
    const double size = std::max(cell, extent / (kvMaxLidCells - 2));
    if (!(std::max({high[0], high[1], -low[0], -low[1]}) < 1e6 * size))
        return {}; // far from all colours
    Block block{};
    for (std::size_t i = 0; i < 2; ++i) {
        block.low[i] = static_cast<int>(std::floor(low[i] / size));
        block.high[i] = static_cast<int>(std::floor(high[i] / size)) + 1;
    }
    Triangulation triangulation(size, loops[0][0].L);
    triangulation.add(rings, block, 0);
    return std::move(triangulation.mesh);
}
