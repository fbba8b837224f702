// SPDX-License-Identifier: Apache-2.0
#include "SurfaceChecks.h"

#include <engine/mesh/SelfIntersection.h>

#include <algorithm>

namespace velmora {

Result<WindingCheck> windingOf(const Mesh& mesh, const Task& task)
{
    const LatticeBox box = boundsOf(latticePoints(mesh, task));
    const double extent = std::max(box.high.a - box.low.a, box.high.b - box.low.b) / latticeScale;
    const double pitch = std::min(2.0, std::max(extent, 0.1) / 64.0);
    const ColumnGrid grid = columnsOver(box, pitch);
    return castColumns(mesh, grid, task).map([&grid](const ColumnCrossings& columns) {
        return checkWinding(columns, grid);
    });
}

Result<bool> hasIntersections(const Mesh& mesh, const Task& task)
{
    return countIntersections(mesh, 1, task).map([](std::size_t count) { return count > 0; });
}

Result<bool> isSimple(const Mesh& mesh, CoincidentSheets coincident, const Task& task)
{
    const auto check = windingOf(mesh, task);
    if (!check)
        return failure(check);
    if (check->invalidVolume > maxInvalidShare * check->insideVolume)
        return false;
    if (coincident == CoincidentSheets::Refused &&
        check->coincidentArea > maxInvalidShare * check->coveredArea)
        return false;
    return hasIntersections(mesh, task).map([](bool intersects) { return !intersects; });
}

} // namespace velmora
