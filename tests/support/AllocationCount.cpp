// SPDX-License-Identifier: Apache-2.0
#include "AllocationCount.h"

#include <atomic>
#include <cstddef>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || !defined(__GLIBC__)

std::uint64_t kvtest::allocationsSoFar()
{
    return 0;
}

std::uint64_t kvtest::bytesAllocatedSoFar()
{
    return 0;
}

void kvtest::setAllocationHook(void (*)()) {}

bool kvtest::countsAllocations()
{
    return false;
}

#else

namespace {
std::atomic<std::uint64_t> count{0};
std::atomic<std::uint64_t> bytes{0};
std::atomic<void (*)()> hook{nullptr};

void countAllocation(std::size_t size)
{
    if (const auto call = hook.load(std::memory_order_relaxed))
        call();
    count.fetch_add(1, std::memory_order_relaxed);
    bytes.fetch_add(size, std::memory_order_relaxed);
}
} // namespace

std::uint64_t kvtest::allocationsSoFar()
{
    return count;
}

std::uint64_t kvtest::bytesAllocatedSoFar()
{
    return bytes;
}

void kvtest::setAllocationHook(void (*newHook)())
{
    hook = newHook;
}

bool kvtest::countsAllocations()
{
    return true;
}

// Definitions in the program replace those of the C library for all libraries in the process.
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);

void* malloc(std::size_t size)
{
    countAllocation(size);
    return __libc_malloc(size);
}

void* calloc(std::size_t n, std::size_t size)
{
    countAllocation(n * size);
    return __libc_calloc(n, size);
}

void* realloc(void* block, std::size_t size)
{
    countAllocation(size);
    return __libc_realloc(block, size);
}

} // extern "C"

#endif
