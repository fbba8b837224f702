// SPDX-License-Identifier: Apache-2.0
#include "ReachedVolume.h"

#include "Refinement.h"
#include <engine/mesh/MeshVolume.h>

namespace velmora {

std::optional<double> reachedVolume(const SurfaceMesh& mesh, const DeviceTransform& transform,
                                    const Task& task, QString& reason)
{
    SurfaceMesh images = mesh;
    if (!halveBridges(images, transform, task, reason))
        return std::nullopt;
    return signedVolume(images);
}

} // namespace velmora
