// SPDX-License-Identifier: Apache-2.0
#pragma once

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KV_COUNTS_HEAP
#include <sanitizer/allocator_interface.h>
#endif
#endif

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

namespace kvfuzz {

/// Limits the heap that one input may use: at a time, and in total, which counts what was freed since. The
/// total stands for the work: a reader that copies what it has read again and again exceeds it. The size of
/// the process cannot be used for that, because it includes the sanitizers' shadow memory and the fuzzer's
/// corpus.
class HeapLimit
{
public:
    static constexpr std::ptrdiff_t mebi = std::ptrdiff_t(1) << 20;

    explicit HeapLimit(std::ptrdiff_t maxBytes = 256 * mebi, std::ptrdiff_t maxTotal = PTRDIFF_MAX)
    {
        static const bool installed = install();
        if (!installed)
            std::abort();
        state().used = 0;
        state().peak = 0;
        state().total = 0;
        state().maxBytes = maxBytes;
        state().maxTotal = maxTotal;
        state().watching = true;
    }
    ~HeapLimit() { state().watching = false; }
    HeapLimit(const HeapLimit&) = delete;
    HeapLimit& operator=(const HeapLimit&) = delete;

    std::ptrdiff_t peak() const { return state().peak; }
    std::ptrdiff_t total() const { return state().total; }

private:
    struct State
    {
        std::atomic<std::ptrdiff_t> used{0};
        std::atomic<std::ptrdiff_t> peak{0};
        std::atomic<std::ptrdiff_t> total{0};
        std::ptrdiff_t maxBytes = 0;
        std::ptrdiff_t maxTotal = 0;
        std::atomic<bool> watching{false};
    };
    static State& state()
    {
        static State values;
        return values;
    }

#ifdef KV_COUNTS_HEAP
    static bool install()
    {
        return __sanitizer_install_malloc_and_free_hooks(allocated, released) != 0;
    }
    static std::size_t sizeOf(const volatile void* block)
    {
        return __sanitizer_get_allocated_size(const_cast<const void*>(block));
    }

    static void fail(const char* what, std::ptrdiff_t bytes)
    {
        state().watching = false;
        std::fprintf(stderr, "the input takes more than %td bytes %s\n", bytes, what);
        std::abort();
    }
    static void allocated(const volatile void*, std::size_t size)
    {
        if (!state().watching)
            return;
        const auto bytes = static_cast<std::ptrdiff_t>(size);
        const std::ptrdiff_t used = state().used += bytes;
        state().peak = std::max<std::ptrdiff_t>(state().peak, used);
        if (used > state().maxBytes)
            fail("at a time", state().maxBytes);
        if ((state().total += bytes) > state().maxTotal)
            fail("in total", state().maxTotal);
    }
    static void released(const volatile void* block)
    {
        if (state().watching && block)
            state().used -= static_cast<std::ptrdiff_t>(sizeOf(block));
    }
#else
    static bool install()
    {
        return true;
    } // other sanitizers do not report allocations
#endif
};

} // namespace kvfuzz
