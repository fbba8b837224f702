// SPDX-License-Identifier: Apache-2.0
#include <scene/Disposal.h>

#include <QtCore/QtGlobal>

#include <algorithm>
#include <cstdint>
#include <thread>

#ifdef Q_OS_LINUX
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace {

#ifdef Q_OS_LINUX
/// Only whole pages: the rest of the first and of the last one may belong to others.
void returnToSystem(std::span<std::byte> memory)
{
    constexpr std::uintptr_t part = std::uintptr_t(1) << 20;
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto begin = (reinterpret_cast<std::uintptr_t>(memory.data()) + page - 1) / page * page;
    const auto end = reinterpret_cast<std::uintptr_t>(memory.data() + memory.size()) / page * page;
    for (std::uintptr_t at = begin; at < end; at += part)
        madvise(reinterpret_cast<void*>(at), std::min(part, end - at), MADV_DONTNEED);
}
#else
void returnToSystem(std::span<std::byte>) {}
#endif

} // namespace

// Not a thread of QThreadPool: if a pool cannot start a thread, it warns, and later waits for it for ever.
void kvDispose(std::shared_ptr<void> value, std::span<std::byte> contents) noexcept
{
    try {
        std::thread([moved = std::move(value), contents]() mutable {
            returnToSystem(contents);
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
