#include "ReachedVolume.h"

#include <engine/mesh/MeshVolume.h>
#include "Refinement.h"

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
