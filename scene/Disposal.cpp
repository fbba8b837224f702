// SPDX-License-Identifier: Apache-2.0
#include <scene/Disposal.h>
#include <scene/PageReturn.h>

#include <thread>

// Not a thread of QThreadPool: if a pool cannot start a thread, it warns, and later waits for it for ever.
void kvDispose(std::shared_ptr<void> value, std::span<std::byte> contents) noexcept
{
    try {
        std::thread([moved = std::move(value), contents]() mutable {
            kvReturnPages(contents);
            moved.reset();
        }).detach();
    } catch (...) { // no thread, or no memory for it: the value is destroyed with the function
    }
}

LongList::~LongList()
{
    if (isDetached()) // not in use elsewhere
        kvDisposeOfElements(static_cast<QList<float>&&>(*this));
}
