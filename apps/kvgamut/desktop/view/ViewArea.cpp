// SPDX-License-Identifier: Apache-2.0
#include "ViewArea.h"

#include "Accessibility.h"
#include "PointerZoom.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QVBoxLayout>

ViewArea::ViewArea(QWidget* parent)
    : QWidget(parent), m_viewer(new KVGamut3DViewer), m_view(new KVGamutView(m_viewer, this)),
      m_container(QWidget::createWindowContainer(m_viewer, this))
{
    m_view->setCoarseWhileMoving(true);
    m_viewer->setTitle(QStringLiteral("view")); // identifies it among the windows of the screen
    setObjectName(QStringLiteral("view"));
    setAccessibleRole(*this, QAccessible::Canvas);
    setAccessibleName(tr("Gamuts in Lab space"));
    setFocusPolicy(Qt::StrongFocus);
    m_container->setMinimumSize(200, 150);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_container);

    // Pointer events reach the viewer or the window inside it. Neither accepts the keyboard focus: if one of
    // these windows did, each click would move the focus between it, the container and the next control.
    QList<QWindow*> windows = m_viewer->findChildren<QWindow*>();
    windows.append(m_viewer);
    for (QWindow* window : std::as_const(windows)) {
        window->installEventFilter(this);
        window->setFlag(Qt::WindowDoesNotAcceptFocus);
    }
}

float ViewArea::aspect() const
{
    const QSize size = m_container->size();
    return size.isEmpty() ? 1.0f : static_cast<float>(size.width()) / static_cast<float>(size.height());
}

QSize ViewArea::pixels() const
{
    return (QSizeF(m_container->size()) * m_container->devicePixelRatioF()).toSize();
}

bool ViewArea::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseMove && passOnAsPan(*watched, *static_cast<QMouseEvent*>(event)))
        return true;
    if (event->type() == QEvent::MouseButtonPress) {
        activateWindow();
        setFocus(Qt::MouseFocusReason);
    } else if (event->type() == QEvent::Wheel) {
        const auto* wheel = static_cast<QWheelEvent*>(event);
        zoom(PointerZoom::factorOf(wheel->angleDelta().y()), wheel->position());
        return true;
    } else if (event->type() == QEvent::NativeGesture) {
        const auto* gesture = static_cast<QNativeGestureEvent*>(event);
        if (gesture->gestureType() == Qt::ZoomNativeGesture)
            zoom(1.0 + gesture->value(), gesture->position());
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

/// The viewer learns of Shift only from events of the key, which go to the control with the focus. A drag
/// with the right button does the same as one with Shift.
bool ViewArea::passOnAsPan(QObject& target, const QMouseEvent& event)
{
    if (m_shiftKnown || event.buttons() != Qt::LeftButton || !event.modifiers().testFlag(Qt::ShiftModifier))
        return false;
    QMouseEvent pan(QEvent::MouseMove, event.position(), event.globalPosition(), Qt::NoButton,
                    Qt::RightButton, event.modifiers());
    QCoreApplication::sendEvent(&target, &pan);
    return true;
}

/// @param place in the window of the viewer
void ViewArea::zoom(double factor, const QPointF& place)
{
    m_view->setCamera(PointerZoom::zoomed(m_view->camera(), m_viewer->rayToPoint(place.toPoint()), factor));
}

void ViewArea::keyPressEvent(QKeyEvent* event)
{
    passOn(event);
}

void ViewArea::keyReleaseEvent(QKeyEvent* event)
{
    passOn(event);
}

/// Passes on only the keys that the viewer uses. Any key would stop a camera animation in progress, and users
/// often press Ctrl soon after a key that moves the camera.
void ViewArea::passOn(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Shift)
        m_shiftKnown = event->type() == QEvent::KeyPress;
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Plus:
    case Qt::Key_Minus:
    case Qt::Key_Shift:
        QCoreApplication::sendEvent(m_viewer, event);
        break;
    default:
        event->ignore();
    }
}

/// Releases Shift in the viewer, which stores its state: the real release event goes to another widget.
void ViewArea::focusOutEvent(QFocusEvent* event)
{
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Shift, Qt::NoModifier);
    QCoreApplication::sendEvent(m_viewer, &release);
    m_shiftKnown = false;
    QWidget::focusOutEvent(event);
}
