// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/mesh/Mesh.h>
#include <engine/profile/DeviceNodes.h>

namespace velmora {

/// Colours of a device that a surface does not contain.
struct MissedColours
{
    double volume = 0.0; ///< estimate of the volume that they fill, dE76 cubed
    double share = 0.0;  ///< share of the device's colours that are outside by more than a tenth dE
};

/// Looks for colours outside a surface made of samples of the device hypercube's two-dimensional faces, in
/// two ways:
///
/// - At vertices of the surface, each channel that is at an end of its range is moved inwards. If all inks
/// are
///   monotone, these colours lie inside (the Karush-Kuhn-Tucker conditions of the point that is farthest
///   out). If an ink is darkest below its maximum, they lie outside.
/// - Random colours of the device are outside if two or more inks have their extremum inside together.
/// @return fails as DeviceTransform::toLab()
[[nodiscard]] Result<MissedColours> findMissedColours(const Mesh& surface, const DeviceTransform& transform,
                                                      const Task& task);

/// Device colours that lie farther out than vertices of a surface: found from up to 12,000 of them by moving
/// the channels that are at an end of their range inwards, each as far as the colour moves outwards. Fails as
/// DeviceTransform::toLab().
[[nodiscard]] Result<std::vector<float>> coloursBeyond(const Mesh& surface, const DeviceTransform& transform,
                                                       const Task& task);

/// Those of the device @p colours that are outside a surface. Fails as DeviceTransform::toLab().
[[nodiscard]] Result<std::vector<float>> coloursOutside(const Mesh& surface, const DeviceTransform& transform,
                                                        const std::vector<float>& colours, const Task& task);

} // namespace velmora
