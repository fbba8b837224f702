// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Calls @p work, in which only allocations can fail. False if there is not enough memory.
template <typename Work>
bool kvEnoughMemoryFor(const Work& work)
{
    try {
        work();
        return true;
    } catch (...) {
        return false;
    }
}
