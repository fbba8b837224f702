// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <vector>

/// How long computations go on after they have been cancelled.
namespace cancelling {

struct Runs
{
    int cancelled = 0;    ///< the others had ended before
    double longest = 0.0; ///< seconds of the computing thread's processor time after the call of cancel()
};

/// Computes a gamut whole, and then again and again, each time cancelled from another thread after a share
/// of the processor time that the whole one took.
Runs cancelledAfter(const std::vector<double>& shares, const KVProfilePtr& profile, int gridPoints,
                    float maxEdge);

} // namespace cancelling
