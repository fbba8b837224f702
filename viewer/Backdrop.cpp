// SPDX-License-Identifier: Apache-2.0
#include <glwindow/WaylandPlatform.h>
#include <viewer/Backdrop.h>

#include <QtGui/QPainter>

bool Backdrop::isNeeded()
{
    return isOnWayland();
}

void Backdrop::paint(const QColor& color)
{
    if (!isNeeded() || !m_window.isExposed() || m_window.size().isEmpty())
        return;
    if (!m_store)
        m_store.emplace(&m_window);
    const QRegion all(QRect(QPoint(), m_window.size()));
    m_store->resize(m_window.size());
    m_store->beginPaint(all);
    QPainter(m_store->paintDevice()).fillRect(all.boundingRect(), color);
    m_store->endPaint();
    m_store->flush(all);
}
