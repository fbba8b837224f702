// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace kvtest {

/// Number of allocations of this process so far, including those of Qt and the C++ library. For programs
/// that link AllocationCount.cpp, with glibc only.
std::uint64_t allocationsSoFar();

/// Sum of the sizes of these allocations; freed ones are not subtracted.
std::uint64_t bytesAllocatedSoFar();

/// Calls @p hook at the start of every allocation, on the thread that allocates; null calls nothing.
/// The hook itself must not allocate.
void setAllocationHook(void (*hook)());

/// Whether allocations are counted. They are not in sanitized builds, which replace the heap.
bool countsAllocations();

} // namespace kvtest
