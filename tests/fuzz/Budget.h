// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstring>
#include <initializer_list>

namespace kvfuzz {

/// What a reader may allocate for an input, as docs/LIMITS.md states it: at a time, and in total, which
/// counts what was freed since. The total stands for the work, which must be proportional to the size of the
/// input.
struct Budget
{
    std::ptrdiff_t atATime;
    std::ptrdiff_t total;

    static Budget of(const char* reader, std::size_t size)
    {
        constexpr std::ptrdiff_t mebi = std::ptrdiff_t(1) << 20;
        const auto bytes = static_cast<std::ptrdiff_t>(size);
        for (const char* picture : {"png", "jpeg", "tiff", "reference"})
            if (std::strcmp(reader, picture) == 0)
                return {16 * mebi + 4096 * bytes, 64 * mebi + 16384 * bytes};
        return {mebi + 256 * bytes, 16 * mebi + 2048 * bytes};
    }
};

} // namespace kvfuzz
