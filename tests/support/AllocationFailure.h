// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace kvtest {

/// While it exists, one allocation fails that the libraries under test make, directly or through Qt or
/// another library, on any thread: the one with the number @p n, from 0. For programs that link
/// AllocationFailure.cpp and the shared libraries of the project, with the GNU C library and without
/// sanitizers, which replace the heap.
class AllocationFailure
{
public:
    explicit AllocationFailure(std::uint64_t n);
    ~AllocationFailure();
    AllocationFailure(const AllocationFailure&) = delete;
    AllocationFailure& operator=(const AllocationFailure&) = delete;

    /// Whether there were as many allocations.
    bool wasReached() const;
    /// Whether it failed. Those of other code do not, nor a few in Qt that end the process.
    bool hasFailed() const;
    /// Writes the functions from which the failed allocation was made to standard error. Also happens when
    /// the process crashes.
    static void printOrigin();
};

/// While it exists, no allocation of this thread fails or is counted: for calls that are not tested.
class AllocationsWork
{
public:
    AllocationsWork();
    ~AllocationsWork();
    AllocationsWork(const AllocationsWork&) = delete;
    AllocationsWork& operator=(const AllocationsWork&) = delete;
};

} // namespace kvtest
