#include "SelfCrossing.h"

#include "Columns.h"

#include <algorithm>
#include <numeric>

namespace velmora {
namespace {

using Corners = std::array<LatticePoint, 3>;

using Sides = std::array<int, 3>; // of the plane of t on which the corners of s lie

// Common corners are known to lie in the plane; to find it out would take long numbers.
Sides sidesOf(const Corners& s, const Corners& t)
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

// Whether an edge of s goes through the inside of t.
bool pierces(const Corners& s, const Corners& t, const Sides& sides)
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

// Neighbours on a curved surface lie on one side of each other's planes.
bool cross(const Corners& s, const Corners& t)
{
    const Sides ofS = sidesOf(s, t);
    if (!onBothSides(ofS))
        return false;
    const Sides ofT = sidesOf(t, s);
    return onBothSides(ofT) && (pierces(s, t, ofS) || pierces(t, s, ofT));
}

struct CellRange
{
    std::array<int, 3> low;
    std::array<int, 3> high;

    bool meets(const CellRange& other) const
    {
        for (std::size_t i = 0; i < 3; ++i)
            if (low[i] > other.high[i] || other.low[i] > high[i])
                return false;
        return true;
    }
    CellRange common(const CellRange& other) const
    {
        CellRange c;
        for (std::size_t i = 0; i < 3; ++i) {
            c.low[i] = std::max(low[i], other.low[i]);
            c.high[i] = std::min(high[i], other.high[i]);
        }
        return c;
    }
};

CellRange boundsOf(const Corners& t)
{
    return {{std::min({t[0].L, t[1].L, t[2].L}), std::min({t[0].a, t[1].a, t[2].a}),
             std::min({t[0].b, t[1].b, t[2].b})},
            {std::max({t[0].L, t[1].L, t[2].L}), std::max({t[0].a, t[1].a, t[2].a}),
             std::max({t[0].b, t[1].b, t[2].b})}};
}

} // namespace

std::size_t countCrossings(const SurfaceMesh& mesh, std::size_t most, const Task& task)
{
    if (mesh.triangles.empty())
        return 0;
    const auto points = latticePoints(mesh);
    const LatticeBox box = boundsOf(points);
    const auto cornersOf = [&](std::size_t f) {
        const Triangle& t = mesh.triangles[f];
        return Corners{points[static_cast<std::size_t>(t[0])], points[static_cast<std::size_t>(t[1])],
                       points[static_cast<std::size_t>(t[2])]};
    };

    // Cells of a cubic grid list the triangles whose boxes reach them; about as many cells meet a
    // surface as it has triangles.
    const auto extent = std::max({box.high.L - box.low.L, box.high.a - box.low.a, box.high.b - box.low.b});
    const int wantedCells =
        std::clamp(static_cast<int>(std::sqrt(double(mesh.triangles.size()) / 2.0)), 4, 128);
    int shift = 0;
    while ((extent >> shift) > wantedCells)
        ++shift;
    const std::array<int, 3> counts{((box.high.L - box.low.L) >> shift) + 1,
                                    ((box.high.a - box.low.a) >> shift) + 1,
                                    ((box.high.b - box.low.b) >> shift) + 1};
    const auto cellAt = [&](int i, int j, int k) {
        return static_cast<std::size_t>((i * counts[1] + j) * counts[2] + k);
    };
    const auto cellsOf = [&](const CellRange& r) {
        return CellRange{{(r.low[0] - box.low.L) >> shift, (r.low[1] - box.low.a) >> shift,
                          (r.low[2] - box.low.b) >> shift},
                         {(r.high[0] - box.low.L) >> shift, (r.high[1] - box.low.a) >> shift,
                          (r.high[2] - box.low.b) >> shift}};
    };
    const auto forCells = [&](const CellRange& bounds, const auto& visit) {
        const CellRange c = cellsOf(bounds);
        for (int i = c.low[0]; i <= c.high[0]; ++i)
            for (int j = c.low[1]; j <= c.high[1]; ++j)
                for (int k = c.low[2]; k <= c.high[2]; ++k)
                    visit(cellAt(i, j, k));
    };
    std::vector<CellRange> bounds(mesh.triangles.size());
    std::vector<int> first(static_cast<std::size_t>(counts[0]) * static_cast<std::size_t>(counts[1]) *
                               static_cast<std::size_t>(counts[2]) +
                           1);
    for (std::size_t f = 0; f < bounds.size(); ++f) {
        bounds[f] = boundsOf(cornersOf(f));
        forCells(bounds[f], [&](std::size_t cell) { ++first[cell + 1]; });
    }
    std::partial_sum(first.begin(), first.end(), first.begin());
    std::vector<int> listed(static_cast<std::size_t>(first.back()));
    std::vector<int> next(first.begin(), first.end() - 1);
    for (std::size_t f = 0; f < bounds.size(); ++f)
        forCells(bounds[f], [&](std::size_t cell) {
            listed[static_cast<std::size_t>(next[cell]++)] = static_cast<int>(f);
        });

    constexpr std::size_t cellsBetweenLooks = 1024;
    std::size_t crossings = 0;
    for (std::size_t cell = 0; cell + 1 < first.size(); ++cell) {
        if (cell % cellsBetweenLooks == 0 && task.isCancelled())
            return crossings;
        for (int i = first[cell]; i < first[cell + 1]; ++i) {
            const auto f = static_cast<std::size_t>(listed[static_cast<std::size_t>(i)]);
            const Corners s = cornersOf(f);
            for (int j = i + 1; j < first[cell + 1]; ++j) {
                const auto g = static_cast<std::size_t>(listed[static_cast<std::size_t>(j)]);
                if (!bounds[f].meets(bounds[g]))
                    continue;
                // Both may be listed in several cells; the lowest corner of what is common counts.
                const auto home = cellsOf(bounds[f].common(bounds[g])).low;
                if (cellAt(home[0], home[1], home[2]) != cell)
                    continue;
                const Corners t = cornersOf(g);
                if (cross(s, t) && ++crossings >= most)
                    return crossings;
            }
        }
    }
    return crossings;
}

} // namespace velmora
