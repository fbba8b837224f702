// SPDX-License-Identifier: Apache-2.0
#include "AllocationCount.h"

#include <atomic>
#include <cstddef>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || !defined(__GLIBC__)

std::uint64_t kvtest::allocationsSoFar()
{
    return 0;
}

bool kvtest::countsAllocations()
{
    return false;
}

#else

namespace {
std::atomic<std::uint64_t> count{0};
}

std::uint64_t kvtest::allocationsSoFar()
{
    return count;
}

bool kvtest::countsAllocations()
{
    return true;
}

// The program's own definitions go before the library's, for all libraries in the process.
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);

void* malloc(std::size_t size)
{
    count.fetch_add(1, std::memory_order_relaxed);
    return __libc_malloc(size);
}

void* calloc(std::size_t n, std::size_t size)
{
    count.fetch_add(1, std::memory_order_relaxed);
    return __libc_calloc(n, size);
}

void* realloc(void* block, std::size_t size)
{
    count.fetch_add(1, std::memory_order_relaxed);
    return __libc_realloc(block, size);
}

} // extern "C"

#endif
