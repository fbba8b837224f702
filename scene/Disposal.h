// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>

#include <memory>
#include <utility>

/// @file
/// Destroys large values on another thread: to return hundreds of megabytes to the system takes longer than a
/// frame. If no thread is available, the value is destroyed inside the call. Callable from any thread.

/// @param value destroyed soon, if this is the last reference to it
void kvDispose(std::shared_ptr<void> value) noexcept;

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
