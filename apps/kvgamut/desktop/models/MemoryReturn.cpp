// SPDX-License-Identifier: Apache-2.0
#include "MemoryReturn.h"

#include "HeapReturn.h"
#include "desktop/models/Threads.h"

#include <tuple>

namespace {

constexpr int quietMs = 700;

} // namespace

MemoryReturn::MemoryReturn(const GamutListModel& gamuts, KVGamutView& view, QObject* parent)
    : QObject(parent), m_view(view)
{
    HeapReturn::keepLittle();
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
    std::ignore = Threads::run(*QThreadPool::globalInstance(), HeapReturn::returnAll);
}
