// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/Task.h>

#include <functional>
#include <limits>

constexpr int neverCancelled = std::numeric_limits<int>::max();

/// Runs @p computation with a task that is cancelled from look number @p last on. Returns how often it
/// looked.
inline int looksOf(const std::function<void(const velmora::Task&)>& computation, int last = neverCancelled)
{
    int looks = 0;
    computation(velmora::Task([&looks, last] { return looks++ >= last; }));
    return looks;
}
