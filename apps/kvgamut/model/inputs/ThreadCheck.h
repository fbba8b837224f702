// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <system_error>
#include <thread>

/// Whether a thread can be started now. There may be a limit of processes, or not enough memory.
inline bool threadsAreAvailable()
{
    try {
        std::thread([] {}).join();
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}
