// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/Task.h>

#include <algorithm>
#include <cstddef>
#include <vector>

/// @file
/// Long loops in parts. Each part takes less than a millisecond and begins with a look for cancellation.

namespace velmora {

/// Steps of a loop between two looks: a look in every step would slow down loops that do little in each.
inline constexpr std::size_t stepsBetweenLooks = 4096;

/// Calls @p visit with 0 .. @p count - 1.
/// @return false if @p task was cancelled before all were visited
template <typename Visit>
bool forEachIndex(std::size_t count, const Task& task, const Visit& visit)
{
    for (std::size_t begin = 0; begin < count; begin += stepsBetweenLooks) {
        if (task.isCancelled())
            return false;
        const std::size_t end = std::min(begin + stepsBetweenLooks, count);
        for (std::size_t i = begin; i < end; ++i)
            visit(i);
    }
    return true;
}

/// Resizes @p values to at least as many as they are. The system provides the memory when it is first
/// written, which takes longer than to fill it. Fewer than @p count if @p task is cancelled.
template <typename T>
void growInParts(std::vector<T>& values, std::size_t count, const T& value, const Task& task)
{
    constexpr std::size_t bytesInPart = std::size_t(1) << 18;
    constexpr std::size_t part = std::max<std::size_t>(1, bytesInPart / sizeof(T));
    values.reserve(count);
    while (values.size() < count && !task.isCancelled())
        values.resize(std::min(values.size() + part, count), value);
}

/// Sorts @p values; partly if @p task is cancelled.
template <typename T, typename Less>
void sortInParts(std::vector<T>& values, const Less& less, const Task& task)
{
    const auto at = [&values](std::size_t i) {
        return values.begin() + static_cast<std::ptrdiff_t>(std::min(i, values.size()));
    };
    for (std::size_t i = 0; i < values.size() && !task.isCancelled(); i += stepsBetweenLooks)
        std::sort(at(i), at(i + stepsBetweenLooks), less);
    for (std::size_t run = stepsBetweenLooks; run < values.size(); run *= 2)
        for (std::size_t i = 0; i + run < values.size() && !task.isCancelled(); i += 2 * run)
            std::inplace_merge(at(i), at(i + run), at(i + 2 * run), less);
}

} // namespace velmora
