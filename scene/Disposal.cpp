// SPDX-License-Identifier: Apache-2.0
#include <scene/Disposal.h>

#include <thread>

namespace {
/// 8 MB, which take less than a millisecond.
constexpr qsizetype maxShortList = 2'000'000;
} // namespace

// Not a thread of QThreadPool: if a pool cannot start a thread, it warns, and later waits for it for ever.
void kvDispose(std::shared_ptr<void> value) noexcept
{
    try {
        std::thread([moved = std::move(value)]() mutable { moved.reset(); }).detach();
    } catch (...) { // no thread, or no memory for it: the value is destroyed with the function
    }
}

LongList::~LongList()
{
    if (capacity() > maxShortList && isDetached()) // short, or still in use elsewhere
        kvDisposeOf(static_cast<QList<float>&&>(*this));
}
