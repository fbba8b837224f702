// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "SurfaceSearch.h"

namespace velmora {

/// The surface of a @p construction with 11 nodes, which are evenly spaced device values. It is not checked,
/// and the volume is that of the mesh. The uncertainty is the difference to the mesh of six nodes.
/// @return fails with NotThreeChannels, or as DeviceTransform::toLab()
[[nodiscard]] Result<FoundSurface> gridSurface(const DeviceTransform& transform,
                                               KVGamut::Construction construction, const Task& task);

} // namespace velmora
