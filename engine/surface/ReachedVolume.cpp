// SPDX-License-Identifier: Apache-2.0
#include "ReachedVolume.h"

#include "Refinement.h"
#include <engine/mesh/MeshVolume.h>

namespace velmora {

Result<double> reachedVolume(const SurfaceMesh& mesh, const DeviceTransform& transform, const Task& task)
{
    SurfaceMesh images = mesh;
    if (const auto halved = halveBridges(images, transform, task); !halved)
        return failure(halved);
    return signedVolume(images);
}

} // namespace velmora
