// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace kvtest {

/// How often this process has asked the heap for memory so far, Qt's and the C++ library's calls
/// included. Only programs that link AllocationCount.cpp have it, and glibc only.
std::uint64_t allocationsSoFar();

/// How many bytes those calls asked for in all; what was freed since is not subtracted.
std::uint64_t bytesAllocatedSoFar();

/// Calls @p hook at the begin of every allocation, on the thread that allocates; null calls nothing.
/// The hook itself must not allocate.
void setAllocationHook(void (*hook)());

/// Whether allocations are counted: not in sanitized builds, which bring their own heap.
bool countsAllocations();

} // namespace kvtest
