// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "WorkCount.h"

#include <platform/KVVelmoraFramework.h>

#include <vector>

/// Measures how much work computations still do after they are cancelled.
namespace cancelling {

struct Runs
{
    int cancelled = 0; ///< number of cancelled runs; the others completed before their next check
    work::Work max;    ///< maximum work of a run after cancel(), separately for each member
};

/// Computes a gamut completely, then once for each of @p shares: that run is cancelled after this share of
/// the work of the complete run.
Runs cancelledAfter(const std::vector<double>& shares, const KVProfilePtr& profile, int gridPoints,
                    float maxEdge);

} // namespace cancelling
