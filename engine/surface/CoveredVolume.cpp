// SPDX-License-Identifier: Apache-2.0
#include "CoveredVolume.h"

#include <engine/base/Parts.h>
#include <engine/mesh/Columns.h>
#include <engine/mesh/MeshVolume.h>

#include <algorithm>
#include <cmath>

namespace velmora {
namespace {

// Few lines cross a cell: to intersect each of them with more takes time, and only measures the cells' own
// error.
int linesAcross(const DeviceNodes& nodes)
{
    constexpr int perCell = 4, min = 24;
    const int max = nodes.size() == 3 ? 128 : 64;
    std::size_t most = 0;
    for (const auto& axis : nodes)
        most = std::max(most, axis.size());
    return std::clamp(perCell * static_cast<int>(most), min, max);
}

std::int64_t latticeUnits(double value)
{
    return std::llround(value * latticeScale);
}

// Length of the lines inside a surface.
Result<double> lengthInside(const Mesh& surface, const LineGrid& lines, const Task& task)
{
    ColumnGrid grid;
    grid.a0 = latticeUnits(lines.a0);
    grid.b0 = latticeUnits(lines.b0);
    grid.step = std::max<std::int64_t>(1, latticeUnits(lines.step));
    grid.na = lines.na;
    grid.nb = lines.nb;
    Mesh mesh = surface;
    forEachIndex(mesh.lab.size(), task,
                 [&](std::size_t v) { mesh.lab[v] = snapped(turned(toVec3(mesh.lab[v]))); });
    return castColumns(mesh, grid, task).map([](const ColumnCrossings& columns) {
        double sum = 0.0;
        for (const Crossing& crossing : columns.crossings)
            sum += crossing.sign * double(crossing.L);
        return sum;
    });
}

} // namespace

Result<CoveredLines> coveredLines(const DeviceTransform& transform, const DeviceNodes& nodes,
                                  UnionBudget& budget, const Task& task)
{
    return cellUnion(transform, nodes, linesAcross(nodes), budget, task).map([](const LineCover& cover) {
        return CoveredLines{cover.grid(), cover.length()};
    });
}

Result<double> coveredVolume(const CoveredLines& covered, const Mesh& surface, const Task& task)
{
    const auto inside = lengthInside(surface, covered.lines, task);
    if (!inside)
        return failure(inside);
    const double step = covered.lines.step;
    return signedVolume(surface, task) + (covered.length - *inside) * step * step;
}

} // namespace velmora
