// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "WorkCount.h"

#include <platform/KVVelmoraFramework.h>

#include <vector>

/// Measures how much work computations still do after they are cancelled.
namespace cancelling {

struct Runs
{
    int cancelled = 0; ///< the others ended before their next check
    work::Work max;    ///< maximum work of a run after cancel(), for each number separately
};

/// Computes a gamut whole, and then again and again, each time cancelled after a share of the steps that the
/// whole one took.
Runs cancelledAfter(const std::vector<double>& shares, const KVProfilePtr& profile, int gridPoints,
                    float maxEdge);

} // namespace cancelling
