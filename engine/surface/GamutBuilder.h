// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutRecord.h"
#include <engine/profile/DeviceTransform.h>

namespace velmora {

/// What is computed; see GamutObject::init().
struct GamutRequest
{
    bool withDecoration = true;
    double maxEdge = KVGamut::Settings::defaultMaxEdge;
    int gridPoints = KVGamut::Settings::engineChoosesGrid;
    int refinements = 0; ///< at most this many rounds
};

/// Samples along each axis for a requested number: the default of the method for values below 2, otherwise
/// clamped to 3..129.
[[nodiscard]] int effectiveGridPoints(int requested, int channels);

/// Computes the gamut of a device: chooses the method, refines and validates the surface, and adds end points
/// and primaries. Fails with the reason why there is no gamut.
[[nodiscard]] Result<GamutRecord> buildGamut(const DeviceTransform& transform, const GamutRequest& request,
                                             const Task& task);

} // namespace velmora
