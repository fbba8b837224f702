// SPDX-License-Identifier: Apache-2.0
#include <glwindow/VisibilityWatch.h>
#include <glwindow/WaylandPlatform.h>

#include <QtCore/QEvent>
#include <QtGui/QWindow>

#include <utility>

namespace {

bool isShown(const QWindow& window)
{
    // Qt does not know whether a window of another program is visible.
    return window.type() == Qt::ForeignWindow ||
           (window.isVisible() && !window.windowStates().testFlag(Qt::WindowMinimized));
}

} // namespace

VisibilityWatch::VisibilityWatch(QWindow& window) : m_window(window)
{
    window.installEventFilter(this);
}

bool VisibilityWatch::canBeSeen()
{
    watchWindowsAbove();
    if (m_unmapped || !m_window.isExposed() || !m_window.isVisible())
        return false;
    for (const QPointer<QWindow>& window : std::as_const(m_above)) {
        if (!isShown(*window))
            return false;
    }
    return true;
}

void VisibilityWatch::watchWindowsAbove()
{
    qsizetype depth = 0;
    QWindow* window = m_window.parent();
    while (window && depth < m_above.size() && m_above[depth] == window) {
        window = window->parent();
        ++depth;
    }
    if (!window && depth == m_above.size())
        return;
    while (m_above.size() > depth) {
        if (const QPointer<QWindow> old = m_above.takeLast())
            unwatch(*old);
    }
    for (; window; window = window->parent()) {
        m_above.append(window);
        watch(*window);
    }
    m_unmapped = false; // of another top level
}

void VisibilityWatch::watch(QWindow& window)
{
    window.installEventFilter(this);
    // Qt sends no event for show() of a minimised window.
    connect(&window, &QWindow::visibilityChanged, this, &VisibilityWatch::check);
}

void VisibilityWatch::unwatch(QWindow& window)
{
    window.removeEventFilter(this);
    window.disconnect(this);
}

bool VisibilityWatch::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Expose:
    case QEvent::Paint:
        onExpose(*static_cast<QWindow*>(watched));
        break;
    case QEvent::ChildRemoved:
        // A window below has got another parent, but only after this event.
        QMetaObject::invokeMethod(this, &VisibilityWatch::check, Qt::QueuedConnection);
        break;
    default:
        break;
    }
    return false;
}

void VisibilityWatch::onExpose(const QWindow& window)
{
    // Only the loss of exposure is evidence: a window that is covered by its children may never be exposed.
    // On Wayland it may also lose its exposure then, and each window has its own that is reliable.
    if (window.isExposed())
        m_unmapped = false;
    else if (!window.parent() && !isOnWayland())
        m_unmapped = true;
    if (&window != &m_window)
        check();
}

void VisibilityWatch::check()
{
    const bool wasSeen = std::exchange(m_seen, canBeSeen());
    if (m_seen && !wasSeen)
        Q_EMIT appeared();
    if (m_seen)
        Q_EMIT mayHaveAppeared();
}
