// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "SurfaceSearch.h"

namespace velmora {

/// What is computed; see GamutObject::init().
struct GamutRequest
{
    bool withDecoration = true;
    double maxEdge = KVGamut::Settings::defaultMaxEdge;
    int gridPoints = KVGamut::Settings::engineChoosesGrid;
    int refinements = 0; ///< at most this many rounds
    KVGamut::Construction construction = KVGamut::Construction::Accurate;
};

/// Computes the gamut of a device: chooses the method, refines and validates the surface, and adds end points
/// and primaries. Fails with the reason why there is no gamut.
[[nodiscard]] Result<GamutRecord> buildGamut(const DeviceTransform& transform, const GamutRequest& request,
                                             const Task& task);

} // namespace velmora
