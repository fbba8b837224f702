// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>

#include <concepts>

/// A list of values. The constructors of QList that take values crash if there is not enough memory in some
/// versions of Qt; this function throws std::bad_alloc.
template <typename T, std::convertible_to<T>... More>
[[nodiscard]] QList<T> listOf(T first, More... more)
{
    QList<T> list;
    list.append(std::move(first));
    (list.append(T(std::move(more))), ...);
    return list;
}
