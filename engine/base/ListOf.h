// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>

#include <span>

namespace velmora {

/// A list of @p values. The constructors of QList that take values crash if there is not enough memory in
/// some versions of Qt; this function throws std::bad_alloc.
template <typename T>
[[nodiscard]] QList<T> listOf(std::span<const T> values)
{
    QList<T> list;
    list.reserve(static_cast<qsizetype>(values.size()));
    for (const T& value : values)
        list.append(value);
    return list;
}

template <typename T, std::size_t count>
[[nodiscard]] QList<T> listOf(const T (&values)[count])
{
    return listOf(std::span<const T>(values));
}

} // namespace velmora
