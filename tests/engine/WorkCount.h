// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>

/// Cost of a computation, counted instead of timed: equal on every machine, and independent of its load.
namespace work {

struct Work
{
    std::uint64_t colours = 0; ///< transformed by Little CMS
    std::uint64_t corners = 0; ///< colour table nodes read for that; 2^channels for each colour
    std::uint64_t bytes = 0;   ///< allocated, including those freed since; 0 if allocations are not counted

    /// One number that is roughly proportional to the time: a corner counts as much as 16 bytes.
    std::uint64_t total() const { return 16 * corners + bytes; }
};

/// The work of this process so far.
Work soFar();

/// The work of @p computation.
Work of(const std::function<void()>& computation);

/// Calls @p action during @p computation, on its thread, when its total work reaches @p total, and
/// returns the work that it does after that. The action must not allocate.
Work after(std::uint64_t total, const std::function<void()>& action,
           const std::function<void()>& computation);

} // namespace work
