// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "WorkCount.h"

#include <platform/KVVelmoraFramework.h>

#include <vector>

/// How much computations still do after they have been cancelled.
namespace cancelling {

struct Runs
{
    int cancelled = 0; ///< the others ended without another look at the cancellation
    work::Work max;    ///< the most that a run still did after cancel(), each number on its own
};

/// Computes a gamut whole, and then again and again, each time cancelled after a share of the steps that the
/// whole one took.
Runs cancelledAfter(const std::vector<double>& shares, const KVProfilePtr& profile, int gridPoints,
                    float maxEdge);

} // namespace cancelling
