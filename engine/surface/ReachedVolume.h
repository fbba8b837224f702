// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/mesh/Mesh.h>
#include <engine/profile/DeviceTransform.h>

namespace velmora {

/// How much of what a surface encloses the device is known to show: the volume within the image of the
/// surface's faces, as the device has them.
///
/// The device colours between the corners of a face, and between a face and any one colour, exist. So
/// do, by continuity, all colours that the images of the faces wind around: the cone over them in the
/// device's coordinates maps onto those. Where the solid follows its surface, the images of the faces are
/// the faces, and nothing is missing; where a face bridges a hollow, its image runs through the solid
/// around it. The faces' images are taken from the middles of those edges that do not lie on one
/// two-dimensional face of the device hypercube; that is few colours, however many channels there are.
[[nodiscard]] Result<double> reachedVolume(const Mesh& mesh, const DeviceTransform& transform,
                                           const Task& task);

} // namespace velmora
