// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/mesh/Mesh.h>
#include <engine/profile/DeviceTransform.h>

namespace velmora {

/// Volume, in dE76 cubed, that the device certainly reaches within a surface: the volume enclosed by the
/// image of the surface's faces under the device map.
///
/// All mixtures of a face's vertices in device coordinates exist, and so do all mixtures of those with any
/// fixed device colour: a cone over the surface. By continuity its image covers every point around which the
/// images of the faces wind. Where the solid follows the surface, the image of a face is the face itself.
/// Where a face bridges a concavity, its image runs through the solid beside it. The image is approximated by
/// the midpoints of those edges that do not lie on one two-dimensional face of the device hypercube; these
/// are few, whatever the number of channels.
/// @return fails as DeviceTransform::toLab()
[[nodiscard]] Result<double> reachedVolume(const Mesh& mesh, const DeviceTransform& transform,
                                           const Task& task);

/// For devices with more channels than DeviceCells supports: checks that a hull contains only device colours,
/// and all of them as far as the hull of a coarser grid can show.
/// @return fails with UnresolvedConcavity, or as DeviceTransform::toLab()
[[nodiscard]] Result<void> checkFilled(const Mesh& hull, const Mesh& coarse, const DeviceTransform& transform,
                                       const Task& task);

} // namespace velmora
