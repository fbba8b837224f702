// SPDX-License-Identifier: Apache-2.0
#include "LatticeSearch.h"

#include "LatticeSurface.h"
#include "SurfaceChecks.h"
#include <engine/mesh/MeshComponents.h>

#include <algorithm>

namespace velmora {

Result<Mesh> latticeOf(const Result<DeviceSolid>& fine, const Result<DeviceSolid>& coarse, double fineness,
                       const Task& task)
{
    if (!fine)
        return failure(fine);
    if (!coarse)
        return failure(coarse);
    // With more faces less is cut off the edges of the solid.
    constexpr double facesOfDefaultGrid = 100'000.0;
    const double faces = facesOfDefaultGrid * std::min(1.0, fineness * fineness);
    CastBudget budget;
    const auto pitch = pitchForFaces(*coarse, faces, budget, task.part(0.0, 0.1));
    if (!pitch)
        return failure(pitch);
    auto mesh = latticeSurface(*fine, *pitch, budget, task.part(0.1, 1.0));
    if (!mesh)
        return mesh;
    removeTinyComponents(*mesh, task);
    const auto intersects = hasIntersections(*mesh, task);
    if (!intersects)
        return failure(intersects);
    if (*intersects)
        return failure(KVProblemCode::SurfaceSelfIntersects);
    return mesh;
}

} // namespace velmora
