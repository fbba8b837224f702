// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace kvtest {

/// How often this process has asked the heap for memory so far, Qt's and the C++ library's calls
/// included. Only programs that link AllocationCount.cpp have it, and glibc only.
std::uint64_t allocationsSoFar();

/// Whether allocations are counted: not in sanitized builds, which bring their own heap.
bool countsAllocations();

} // namespace kvtest
