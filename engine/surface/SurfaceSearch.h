// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutRecord.h"
#include <engine/profile/DeviceTransform.h>

namespace velmora {

/// Samples along each axis for a requested number: the default of the method for values below 2, otherwise
/// clamped to 3..129.
[[nodiscard]] int effectiveGridPoints(int requested, int channels);

/// The surface of a gamut, and the volume of the device's colours.
struct FoundSurface
{
    Mesh mesh;
    KVGamut::Method method = KVGamut::Method::None;
    int gridPoints = 0;       ///< as KVGamut::Report::gridPoints
    double foldShare = 0.0;   ///< as KVGamut::Report::foldShare
    double volume = 0.0;      ///< of the device's colours; the mesh encloses slightly more or less
    double uncertainty = 0.0; ///< of the volume
};

/// Computes the surface of a device's gamut: tries the methods in the order of KVGamut::Method, and checks
/// each result against the colours that the device reaches.
/// @param gridPoints samples along each device axis, see effectiveGridPoints()
/// @return fails with the reason why there is no gamut
[[nodiscard]] Result<FoundSurface> findSurface(const DeviceTransform& transform, int gridPoints,
                                               const Task& task);

} // namespace velmora
