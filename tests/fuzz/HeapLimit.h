// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sanitizer/allocator_interface.h>

#include <atomic>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

namespace kvfuzz {

/// Holds what one input may have on the heap at a time. The process's own size says less: the
/// sanitizers' shadow and the fuzzer's corpus are in it.
class HeapLimit
{
public:
    static constexpr std::ptrdiff_t most = std::ptrdiff_t(256) << 20;

    HeapLimit()
    {
        static const bool installed = __sanitizer_install_malloc_and_free_hooks(allocated, released) != 0;
        if (!installed)
            std::abort();
        used() = 0;
        watching() = true;
    }
    ~HeapLimit() { watching() = false; }
    HeapLimit(const HeapLimit&) = delete;
    HeapLimit& operator=(const HeapLimit&) = delete;

private:
    static std::atomic<std::ptrdiff_t>& used()
    {
        static std::atomic<std::ptrdiff_t> bytes{0};
        return bytes;
    }
    static std::atomic<bool>& watching()
    {
        static std::atomic<bool> yes{false};
        return yes;
    }
    static void allocated(const volatile void*, std::size_t size)
    {
        if (watching() && (used() += static_cast<std::ptrdiff_t>(size)) > most) {
            watching() = false;
            std::fprintf(stderr, "the input takes more than %td MB\n", most >> 20);
            std::abort();
        }
    }
    static void released(const volatile void* block)
    {
        if (watching() && block)
            used() -=
                static_cast<std::ptrdiff_t>(__sanitizer_get_allocated_size(const_cast<const void*>(block)));
    }
};

} // namespace kvfuzz
