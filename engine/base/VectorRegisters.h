// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace velmora {

#if defined(__x86_64__) && defined(__GNUC__)
namespace detail {
__attribute__((target("avx"), noinline)) inline void clearWithAvx()
{
    __builtin_ia32_vzeroupper();
}
} // namespace detail
#endif

/// Clears the upper halves of the vector registers. Call it before long computations with functions of the C
/// library, such as sine: if other code has left them in use, each change between that library's AVX code and
/// ours takes tens of cycles. CIEDE2000 takes up to ten times as long then. Values do not change.
inline void clearUpperVectorRegisters()
{
#if defined(__x86_64__) && defined(__GNUC__)
    if (__builtin_cpu_supports("avx"))
        detail::clearWithAvx();
#endif
}

} // namespace velmora
