// SPDX-License-Identifier: Apache-2.0
#include <scene/PageReturn.h>

#ifdef __linux__
#include <algorithm>
#include <cstdint>
#include <sys/mman.h>
#include <unistd.h>

/// Only whole pages: the rest of the first and of the last one may belong to others.
void kvReturnPages(std::span<std::byte> memory)
{
    constexpr std::uintptr_t part = std::uintptr_t(1) << 20;
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto begin = (reinterpret_cast<std::uintptr_t>(memory.data()) + page - 1) / page * page;
    const auto end = reinterpret_cast<std::uintptr_t>(memory.data() + memory.size()) / page * page;
    for (std::uintptr_t at = begin; at < end; at += part)
        madvise(reinterpret_cast<void*>(at), std::min(part, end - at), MADV_DONTNEED);
}
#else
void kvReturnPages(std::span<std::byte>) {} // elsewhere the call may keep the pages
#endif
