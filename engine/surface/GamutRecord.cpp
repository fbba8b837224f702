// SPDX-License-Identifier: Apache-2.0
#include "GamutRecord.h"

#include <engine/base/Parts.h>
#include <engine/mesh/MeshChecks.h>
#include <engine/mesh/MeshVolume.h>

#include <algorithm>

namespace velmora {

Result<void> checkSurface(const Mesh& mesh, const Task& task)
{
    if (mesh.triangles.empty())
        return failure(KVProblemCode::NoFaces);
    bool inRange = true;
    forEachIndex(mesh.lab.size(), task, [&](std::size_t i) {
        const LabPoint& v = mesh.lab[i];
        inRange = inRange && isFinite(toVec3(v)) &&
                  std::max({std::abs(v.L), std::abs(v.a), std::abs(v.b)}) <= float(maxLab);
    });
    if (!inRange)
        return failure(KVProblemCode::VertexOutOfRange);
    const MeshTopology shape = topology(mesh, task);
    if (task.isCancelled())
        return failure(KVProblemCode::Cancelled);
    if (!shape.indicesValid)
        return failure(KVProblemCode::VertexIndexOutOfRange);
    if (!shape.closed)
        return failure(KVProblemCode::SurfaceNotClosed);
    if (!shape.manifold)
        return failure(KVProblemCode::SurfaceNotManifold);
    const double volume = signedVolume(mesh, task);
    if (task.isCancelled())
        return failure(KVProblemCode::Cancelled);
    if (volume < -minVolume)
        return failure(KVProblemCode::SurfaceInsideOut);
    if (volume < minVolume)
        return failure(KVProblemCode::TooSmall);
    return {};
}

} // namespace velmora
