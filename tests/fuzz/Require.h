// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdio>
#include <cstdlib>

namespace kvfuzz {

/// Ends the process, so that a fuzzer saves the input.
[[noreturn]] inline void abortWith(const char* property)
{
    std::fprintf(stderr, "violated: %s\n", property);
    std::abort();
}

/// What happens if a property does not hold; a test sets a function that throws. It must not return.
inline void (*violated)(const char* property) = abortWith;

/// Reports the violation of @p property if @p holds is false.
inline void require(bool holds, const char* property)
{
    if (!holds)
        violated(property);
}

} // namespace kvfuzz
