// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sanitizer/allocator_interface.h>

#include <atomic>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

namespace kvfuzz {

/// Limits the heap that one input may use at a time. The size of the process cannot be used for that, because
/// it includes the sanitizers' shadow memory and the fuzzer's corpus.
class HeapLimit
{
public:
    static constexpr std::ptrdiff_t maxBytes = std::ptrdiff_t(256) << 20;

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
        if (watching() && (used() += static_cast<std::ptrdiff_t>(size)) > maxBytes) {
            watching() = false;
            std::fprintf(stderr, "the input takes more than %td MB\n", maxBytes >> 20);
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
