// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>

#include <cstddef>
#include <memory>
#include <span>
#include <type_traits>
#include <utility>

/// @file
/// Destroys large values on another thread: to return hundreds of megabytes to the system takes longer than a
/// frame. If no thread is available, the value is destroyed inside the call. Callable from any thread.

/// @param value destroyed soon, if this is the last reference to it
/// @param contents memory that only the value uses, and that its destructor does not read. It is returned to
///   the system in parts first: while the system takes back a large block, no other thread gets memory.
void kvDispose(std::shared_ptr<void> value, std::span<std::byte> contents = {}) noexcept;

/// A list that may be long. If it is, it is destroyed by kvDispose().
class LongList : public QList<float>
{
public:
    LongList() = default;
    LongList(const QList<float>& list) : QList<float>(list) {}
    LongList(const LongList&) = default;
    LongList(LongList&&) noexcept = default;
    LongList& operator=(LongList other) noexcept
    {
        swap(other);
        return *this;
    }
    ~LongList();
};

/// Destroys what @p value contains, if it can be moved from.
template <typename T>
void kvDisposeOf(T&& value) noexcept
{
    try {
        kvDispose(std::make_shared<std::remove_reference_t<T>>(std::forward<T>(value)));
    } catch (...) { // no memory: the caller destroys it
    }
}

/// Destroys the elements of @p list, which no other list shares: if there are many, as kvDispose().
template <typename List>
void kvDisposeOfElements(List&& list) noexcept
{
    static_assert(std::is_rvalue_reference_v<List&&>);
    static_assert(std::is_trivially_destructible_v<typename List::value_type>);
    constexpr std::size_t maxBytesAtOnce = std::size_t(8) << 20; // less than a millisecond
    if (static_cast<std::size_t>(list.capacity()) * sizeof(typename List::value_type) <= maxBytesAtOnce)
        return;
    try {
        const auto moved = std::make_shared<List>(std::move(list));
        kvDispose(moved,
                  std::as_writable_bytes(std::span(moved->data(), static_cast<std::size_t>(moved->size()))));
    } catch (...) { // no memory: the caller destroys it
    }
}
