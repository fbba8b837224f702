// SPDX-License-Identifier: Apache-2.0
#include "MemoryReturn.h"

#include "desktop/models/Threads.h"

#include <tuple>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

constexpr int quietMs = 700;

int returnMemory()
{
#ifdef __GLIBC__
    return malloc_trim(0);
#else
    return 0;
#endif
}

/// By default the C library keeps up to 64 MB for each thread as soon as large blocks were freed once.
void keepLittle()
{
#ifdef __GLIBC__
    constexpr int megabyte = 1 << 20;
    mallopt(M_MMAP_THRESHOLD, megabyte);
    mallopt(M_TRIM_THRESHOLD, megabyte);
#endif
}

} // namespace

MemoryReturn::MemoryReturn(const GamutListModel& gamuts, KVGamutView& view, QObject* parent)
    : QObject(parent), m_view(view)
{
    keepLittle();
    m_soon.setSingleShot(true);
    m_soon.setInterval(quietMs);
    connect(&m_soon, &QTimer::timeout, this, &MemoryReturn::giveBack);
    connect(&gamuts, &QAbstractItemModel::rowsRemoved, &m_soon, qOverload<>(&QTimer::start));
    connect(&view, &KVGamutView::settled, &m_soon, qOverload<>(&QTimer::start));
    connect(&view, &KVGamutView::cameraChanged, &m_soon, qOverload<>(&QTimer::start));
}

void MemoryReturn::giveBack()
{
    m_view.releaseMemory();
    std::ignore = Threads::run(*QThreadPool::globalInstance(), returnMemory);
}
