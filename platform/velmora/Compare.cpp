#include "Compare.h"

#include "Columns.h"
#include "MeshVolume.h"

#include <algorithm>

namespace velmora {
namespace {

// What the columns of one grid see of two solids.
struct Overlap
{
    double both = 0.0;      // volume in both
    double firstOnly = 0.0; // volume in the first alone
    LatticeBox box;         // columns that pass through both
    std::size_t columns = 0;
};

Overlap overlapOf(const ColumnCrossings& first, const ColumnCrossings& second, const ColumnGrid& grid)
{
    Overlap sum;
    for (int j = 0; j < grid.nb; ++j)
        for (int i = 0; i < grid.na; ++i) {
            const auto c =
                static_cast<std::size_t>(j) * static_cast<std::size_t>(grid.na) + static_cast<std::size_t>(i);
            std::uint32_t p = first.first[c], q = second.first[c];
            const std::uint32_t pEnd = first.first[c + 1], qEnd = second.first[c + 1];
            int windingFirst = 0, windingSecond = 0;
            double from = 0.0, both = 0.0;
            while (p < pEnd) {
                const bool takeFirst = q >= qEnd || first.crossings[p].L <= second.crossings[q].L;
                const Crossing& next = takeFirst ? first.crossings[p] : second.crossings[q];
                if (windingFirst != 0)
                    (windingSecond != 0 ? both : sum.firstOnly) += next.L - from;
                from = next.L;
                (takeFirst ? windingFirst : windingSecond) -= next.sign;
                ++(takeFirst ? p : q);
            }
            if (both <= 0.0)
                continue;
            sum.both += both;
            const auto a = static_cast<std::int32_t>(grid.a0 + i * grid.step);
            const auto b = static_cast<std::int32_t>(grid.b0 + j * grid.step);
            if (sum.columns++ == 0)
                sum.box = {{0, a, b}, {0, a, b}};
            sum.box.low = {0, std::min(sum.box.low.a, a), std::min(sum.box.low.b, b)};
            sum.box.high = {0, std::max(sum.box.high.a, a), std::max(sum.box.high.b, b)};
        }
    sum.both *= grid.area();
    sum.firstOnly *= grid.area();
    return sum;
}

double extentOf(const LatticeBox& box)
{
    return std::max(box.high.a - box.low.a, box.high.b - box.low.b) / latticeScale;
}

LatticeBox intersected(const LatticeBox& p, const LatticeBox& q)
{
    return {{std::max(p.low.L, q.low.L), std::max(p.low.a, q.low.a), std::max(p.low.b, q.low.b)},
            {std::min(p.high.L, q.high.L), std::min(p.high.a, q.high.a), std::min(p.high.b, q.high.b)}};
}

bool isEmpty(const LatticeBox& box)
{
    return box.low.L > box.high.L || box.low.a > box.high.a || box.low.b > box.high.b;
}

} // namespace

// Columns are integrated exactly along L* and by the midpoint rule across. Its error comes from the
// rims of what is summed, so of the ways to the answer - the common part, or the smaller solid less
// what sticks out of the other - that with the smaller sum is taken.
double intersectionVolume(const SurfaceMesh& first, const SurfaceMesh& second)
{
    if (first.triangles.empty() || second.triangles.empty())
        return 0.0;
    const double firstVolume = signedVolume(first), secondVolume = signedVolume(second);
    const bool firstIsSmaller = firstVolume <= secondVolume;
    const SurfaceMesh& small = firstIsSmaller ? first : second;
    const SurfaceMesh& large = firstIsSmaller ? second : first;
    const double smallVolume = std::min(firstVolume, secondVolume);
    const LatticeBox smallBox = boundsOf(latticePoints(small));
    const LatticeBox common = intersected(smallBox, boundsOf(latticePoints(large)));
    if (isEmpty(common))
        return 0.0;

    constexpr double widestPitch = 1.0;
    constexpr double columnsAcross = 128.0;
    const auto pitchFor = [&](const LatticeBox& box) {
        return std::min(widestPitch, extentOf(box) / columnsAcross);
    };
    const auto look = [&](const LatticeBox& box) {
        const ColumnGrid grid = columnsOver(box, pitchFor(box));
        return overlapOf(castColumns(small, grid, {}), castColumns(large, grid, {}), grid);
    };
    Overlap whole = look(smallBox);
    if (whole.firstOnly < whole.both)
        return std::clamp(smallVolume - whole.firstOnly, 0.0, smallVolume);

    // A small common part gets columns of its own, closer together. The first look knows its rim to
    // one column.
    LatticeBox box = common;
    if (whole.columns > 0) {
        const auto margin = static_cast<std::int32_t>(std::lround(2.0 * pitchFor(smallBox) * latticeScale));
        box = intersected(common, {{common.low.L, whole.box.low.a - margin, whole.box.low.b - margin},
                                   {common.high.L, whole.box.high.a + margin, whole.box.high.b + margin}});
    }
    if (pitchFor(box) < 0.7 * pitchFor(smallBox))
        whole = look(box);
    return std::clamp(whole.both, 0.0, smallVolume);
}

} // namespace velmora
