// SPDX-License-Identifier: Apache-2.0
#include "ReachedVolume.h"

#include "Refinement.h"
#include <engine/mesh/MeshVolume.h>

namespace velmora {

Result<double> reachedVolume(const Mesh& mesh, const DeviceTransform& transform, const Task& task)
{
    Mesh images = mesh;
    if (const auto halved = halveBridges(images, transform, task); !halved)
        return failure(halved);
    return signedVolume(images);
}

} // namespace velmora
