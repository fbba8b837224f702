// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutRecord.h"
#include <engine/profile/DeviceTransform.h>

namespace velmora {

struct GamutRequest
{
    bool withDecoration = true;
    double maxEdge = 40.0;
    int gridPoints = -1;
    int refinements = 0;
};

/// Samples along each axis that a request comes to for a device of so many channels.
int effectiveGridPoints(int requested, int channels);

/// Computes the gamut of a device: chooses the method, refines, validates, and adds what the request
/// asks for.
[[nodiscard]] Result<GamutRecord> buildGamut(const DeviceTransform& transform, const GamutRequest& request,
                                             const Task& task);

} // namespace velmora
