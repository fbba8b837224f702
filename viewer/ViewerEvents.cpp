// SPDX-License-Identifier: Apache-2.0
#include <viewer/ViewerEvents.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QMouseEvent>
#include <QtGui/QStyleHints>

#include <cmath>

namespace {

/// Rounded as for KVGamut3DViewer::click().
QPoint pixelOf(const QMouseEvent& event)
{
    const QPointF p = event.points().first().position();
    return {static_cast<int>(std::round(p.x())), static_cast<int>(std::round(p.y()))};
}

QPointF globalPosition(const QMouseEvent& event)
{
    return event.points().first().globalPosition();
}

} // namespace

ViewerEvents::ViewerEvents(QObject& viewer, KVGLWidget& widget) : m_widget(widget), m_lastCamera(seenCamera())
{
    // The viewer gets the input. Where windows cannot be transparent for input, the child window gets that of
    // the system.
    viewer.installEventFilter(this);
    widget.installEventFilter(this);
    widget.setHooks(
        {[this] { postCameraCheck(); },
         [this] { QMetaObject::invokeMethod(this, &ViewerEvents::checkSettled, Qt::QueuedConnection); },
         [this] { QMetaObject::invokeMethod(this, &ViewerEvents::coarseWanted, Qt::QueuedConnection); },
         [this] { QMetaObject::invokeMethod(this, &ViewerEvents::drawableChanged, Qt::QueuedConnection); },
         [this] { Q_EMIT frameWanted(); }});
}

ViewerEvents::~ViewerEvents()
{
    m_widget.setHooks({});
}

ViewerEvents::SeenCamera ViewerEvents::seenCamera() const
{
    return {m_widget.camera(), m_widget.interestPt(), m_widget.viewingAngle(),
            m_widget.orthogonalProjection()};
}

void ViewerEvents::adoptCamera()
{
    m_lastCamera = seenCamera();
}

void ViewerEvents::postCameraCheck()
{
    if (m_cameraCheckPosted)
        return;
    m_cameraCheckPosted = true;
    QMetaObject::invokeMethod(this, &ViewerEvents::checkCamera, Qt::QueuedConnection);
}

void ViewerEvents::checkCamera()
{
    m_cameraCheckPosted = false;
    const SeenCamera camera = seenCamera();
    if (camera == m_lastCamera)
        return;
    m_lastCamera = camera;
    Q_EMIT cameraChanged();
}

void ViewerEvents::checkSettled()
{
    if (m_widget.isSettled()) // otherwise a later frame will be reported
        Q_EMIT settled();
}

bool ViewerEvents::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        m_press = globalPosition(*static_cast<QMouseEvent*>(event));
        m_dragged = false;
        break;
    case QEvent::MouseMove:
        onMove(*static_cast<QMouseEvent*>(event));
        break;
    case QEvent::MouseButtonRelease:
        onRelease(*static_cast<QMouseEvent*>(event));
        break;
    default:
        break;
    }
    return false;
}

void ViewerEvents::onMove(const QMouseEvent& event)
{
    if (event.buttons() == Qt::NoButton) {
        m_press.reset();
        Q_EMIT moved(pixelOf(event), event.modifiers());
        return;
    }
    trackDrag(event);
}

void ViewerEvents::trackDrag(const QMouseEvent& event)
{
    const int distance = QGuiApplication::styleHints()->startDragDistance();
    if (m_press && (globalPosition(event) - *m_press).manhattanLength() >= distance)
        m_dragged = true;
}

void ViewerEvents::onRelease(const QMouseEvent& event)
{
    trackDrag(event);
    Q_EMIT released(pixelOf(event), event.button(), event.modifiers(), m_dragged);
    if (event.buttons() == Qt::NoButton) {
        m_press.reset();
        m_dragged = false;
    }
}
