// SPDX-License-Identifier: Apache-2.0
#include "Columns.h"

#include <algorithm>
#include <numeric>

namespace velmora {

LatticeBox boundsOf(const std::vector<LatticePoint>& points)
{
    LatticeBox box;
    if (points.empty())
        return box;
    box = {points.front(), points.front()};
    for (const LatticePoint& p : points) {
        box.low = {std::min(box.low.L, p.L), std::min(box.low.a, p.a), std::min(box.low.b, p.b)};
        box.high = {std::max(box.high.L, p.L), std::max(box.high.a, p.a), std::max(box.high.b, p.b)};
    }
    return box;
}

ColumnGrid columnsOver(const LatticeBox& box, double pitch)
{
    ColumnGrid grid;
    grid.step = std::max<std::int64_t>(1, std::llround(pitch * latticeScale));
    grid.na = static_cast<int>((std::int64_t(box.high.a) - box.low.a) / grid.step + 1);
    grid.nb = static_cast<int>((std::int64_t(box.high.b) - box.low.b) / grid.step + 1);
    grid.a0 = box.low.a + grid.step / 2;
    grid.b0 = box.low.b + grid.step / 2;
    return grid;
}

namespace {

// Calls hit(column, its point in the ab plane, sign) for each column that crosses the triangle.
template <typename Hit>
void forColumnsThrough(const LatticePoint& p, const LatticePoint& q, const LatticePoint& r,
                       const ColumnGrid& grid, const Hit& hit)
{
    const auto index = [](std::int64_t value, std::int64_t start, std::int64_t step, int count, bool up) {
        const std::int64_t offset = value - start + (up ? step - 1 : 0);
        const std::int64_t floored = offset >= 0 ? offset / step : -((-offset + step - 1) / step);
        return static_cast<int>(std::clamp<std::int64_t>(floored, up ? 0 : -1, up ? count : count - 1));
    };
    // sideAb() shifts a column by an infinitely small distance to the right of and above its nominal
    // position.
    const int i0 = index(std::min({p.a, q.a, r.a}), grid.a0, grid.step, grid.na, true);
    const int i1 = index(std::max({p.a, q.a, r.a}), grid.a0, grid.step, grid.na, false);
    const int j0 = index(std::min({p.b, q.b, r.b}), grid.b0, grid.step, grid.nb, true);
    const int j1 = index(std::max({p.b, q.b, r.b}), grid.b0, grid.step, grid.nb, false);
    if (i0 > i1 || j0 > j1)
        return;
    const std::int64_t twiceArea = orientationAb(p, q, r);
    if (twiceArea == 0)
        return;
    const int sign = twiceArea > 0 ? 1 : -1;
    for (int j = j0; j <= j1; ++j)
        for (int i = i0; i <= i1; ++i) {
            const LatticePoint x{0, static_cast<std::int32_t>(grid.a0 + i * grid.step),
                                 static_cast<std::int32_t>(grid.b0 + j * grid.step)};
            if (sideAb(p, q, x) == sign && sideAb(q, r, x) == sign && sideAb(r, p, x) == sign)
                hit(static_cast<std::size_t>(j) * static_cast<std::size_t>(grid.na) +
                        static_cast<std::size_t>(i),
                    x, sign);
        }
}

constexpr std::size_t trianglesBetweenChecks = 1024;

} // namespace

Result<ColumnCrossings> castColumns(const Mesh& mesh, const ColumnGrid& grid, const Task& task)
{
    const auto points = latticePoints(mesh, task);
    const auto point = [&](const Triangle& t, std::size_t i) -> const LatticePoint& {
        return points[static_cast<std::size_t>(t[i])];
    };
    struct Hit
    {
        std::uint32_t column;
        Crossing crossing;
    };
    std::vector<Hit> hits;
    ColumnCrossings result;
    result.first.assign(grid.size() + 1, 0);
    for (std::size_t f = 0; f < mesh.triangles.size(); ++f) {
        if (f % trianglesBetweenChecks == 0 && task.isCancelled())
            return failure(KVProblemCode::Cancelled);
        const Triangle& t = mesh.triangles[f];
        const LatticePoint& p = point(t, 0);
        const LatticePoint& q = point(t, 1);
        const LatticePoint& r = point(t, 2);
        // L over the triangle's plane: p.L + u (a - p.a) + v (b - p.b)
        const double area = double(orientationAb(p, q, r));
        const double u =
            (double(q.L - p.L) * double(r.b - p.b) - double(r.L - p.L) * double(q.b - p.b)) / area;
        const double v =
            (double(r.L - p.L) * double(q.a - p.a) - double(q.L - p.L) * double(r.a - p.a)) / area;
        const double low = std::min({p.L, q.L, r.L});
        const double high = std::max({p.L, q.L, r.L});
        forColumnsThrough(p, q, r, grid, [&](std::size_t column, const LatticePoint& x, int sign) {
            const double L = std::clamp(p.L + u * double(x.a - p.a) + v * double(x.b - p.b), low, high);
            hits.push_back(
                {static_cast<std::uint32_t>(column), {static_cast<float>(L / latticeScale), sign}});
            ++result.first[column + 1];
        });
    }
    std::partial_sum(result.first.begin(), result.first.end(), result.first.begin());
    result.crossings.resize(hits.size());
    std::vector<std::uint32_t> next(result.first.begin(), result.first.end() - 1);
    for (const Hit& h : hits)
        result.crossings[next[h.column]++] = h.crossing;
    for (std::size_t c = 0; c < grid.size(); ++c)
        std::sort(
            result.crossings.begin() + result.first[c], result.crossings.begin() + result.first[c + 1],
            [](const Crossing& x, const Crossing& y) { return x.L != y.L ? x.L < y.L : x.sign < y.sign; });
    return result;
}

WindingCheck checkWinding(const ColumnCrossings& columns, const ColumnGrid& grid)
{
    constexpr float minGap = 1e-3f; // dE; greater than the rounding error of two heights on one plane
    WindingCheck check;
    for (std::size_t c = 0; c + 1 < columns.first.size(); ++c) {
        int winding = 0;
        bool touches = false;
        for (std::uint32_t i = columns.first[c]; i < columns.first[c + 1]; ++i) {
            touches |= i > columns.first[c] && columns.crossings[i].L - columns.crossings[i - 1].L < minGap;
            if (winding != 0) {
                const double height = columns.crossings[i].L - columns.crossings[i - 1].L;
                (winding == 1 ? check.insideVolume : check.invalidVolume) += height * grid.area();
            }
            winding -= columns.crossings[i].sign;
        }
        check.coveredArea += columns.first[c] < columns.first[c + 1] ? grid.area() : 0.0;
        check.coincidentArea += touches ? grid.area() : 0.0;
    }
    return check;
}

} // namespace velmora
