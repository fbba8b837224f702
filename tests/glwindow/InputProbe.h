// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QCoreApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>

/// Sends events directly to the handlers of a window that is never shown.
namespace kvtest {

template <typename Window>
void pressKey(Window& w, int key)
{
    QKeyEvent e(QEvent::KeyPress, key, Qt::NoModifier);
    w.keyPressEvent(&e);
}

template <typename Window>
void releaseKey(Window& w, int key)
{
    QKeyEvent e(QEvent::KeyRelease, key, Qt::NoModifier);
    w.keyReleaseEvent(&e);
}

template <typename Window>
void turnWheel(Window& w, QPoint angleDelta)
{
    QWheelEvent e(QPointF(10, 10), QPointF(110, 110), QPoint(), angleDelta, Qt::NoButton, Qt::NoModifier,
                  Qt::NoScrollPhase, false);
    w.wheelEvent(&e);
}

/// A move to @p global with @p buttons pressed. The local position deliberately differs.
template <typename Window>
void moveMouse(Window& w, QPointF global, Qt::MouseButtons buttons = Qt::NoButton)
{
    QMouseEvent e(QEvent::MouseMove, global - QPointF(1234, 567), global, Qt::NoButton, buttons,
                  Qt::NoModifier);
    w.mouseMoveEvent(&e);
}

template <typename Window>
void releaseMouse(Window& w, QPointF local, Qt::MouseButton button = Qt::LeftButton)
{
    QMouseEvent e(QEvent::MouseButtonRelease, local, local + QPointF(1000, 500), button, Qt::NoButton,
                  Qt::NoModifier);
    w.mouseReleaseEvent(&e);
}

template <typename Window>
void doubleClickMouse(Window& w, QPointF local, Qt::MouseButton button = Qt::LeftButton)
{
    QMouseEvent e(QEvent::MouseButtonDblClick, local, local + QPointF(1000, 500), button, button,
                  Qt::NoModifier);
    w.mouseDoubleClickEvent(&e);
}

} // namespace kvtest
