// SPDX-License-Identifier: Apache-2.0
#include <scene/Disposal.h>

#include <QtCore/QThreadPool>

namespace {
/// 8 MB, which take less than a millisecond.
constexpr qsizetype maxShortList = 2'000'000;
} // namespace

void kvDispose(std::shared_ptr<void> value) noexcept
{
    try {
        QThreadPool* const pool = QThreadPool::globalInstance(); // null while the process ends
        if (pool)
            (void)pool->tryStart([moved = std::move(value)]() mutable { moved.reset(); });
    } catch (...) { // no memory for the task: the value is destroyed with it
    }
}

LongList::~LongList()
{
    if (capacity() > maxShortList && isDetached()) // short, or still in use elsewhere
        kvDisposeOf(static_cast<QList<float>&&>(*this));
}
