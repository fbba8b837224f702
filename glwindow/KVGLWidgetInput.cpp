// SPDX-License-Identifier: Apache-2.0
#include <glwindow/KVGLWidget.h>
#include <scene/Coordinates.h>

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>

#include <cmath>
#include <numbers>

namespace {

constexpr double pi = std::numbers::pi;
constexpr auto keyTurn = static_cast<float>(pi / 20.0); // 9 degrees
constexpr float keyZoom = 20.0f;
constexpr int keyMoveMs = 50;
constexpr int wheelPerUnit = 20; // angleDelta per Lab unit; one notch (120) is 6 units

/// The position of the event, rounded to the nearest pixel (halves away from zero).
QPoint pixelOf(const QMouseEvent& event)
{
    const QPointF p = event.points().first().position();
    return {static_cast<int>(std::round(p.x())), static_cast<int>(std::round(p.y()))};
}

} // namespace

void KVGLWidget::keyPressEvent(QKeyEvent* event)
{
    if (!m_interactionEnabled)
        return;
    CameraState target = m_camera;
    switch (event->key()) {
    case Qt::Key_Left:
        target.rotate(keyTurn, 0.0f);
        break;
    case Qt::Key_Right:
        target.rotate(-keyTurn, 0.0f);
        break;
    case Qt::Key_Up:
        target.rotate(0.0f, keyTurn);
        break;
    case Qt::Key_Down:
        target.rotate(0.0f, -keyTurn);
        break;
    case Qt::Key_Shift:
        m_panMode = true;
        break;
    case Qt::Key_Plus:
        target.zoom(-keyZoom);
        break;
    case Qt::Key_Minus:
        target.zoom(keyZoom);
        break;
    default:
        break;
    }
    // Documented behaviour: every key starts a move, so that moveFinised() follows every key press.
    setCameraState(target, keyMoveMs);
}

void KVGLWidget::keyReleaseEvent(QKeyEvent* event)
{
    if (m_interactionEnabled && event->key() == Qt::Key_Shift)
        m_panMode = false;
}

void KVGLWidget::wheelEvent(QWheelEvent* event)
{
    if (!m_interactionEnabled)
        return;
    const int units =
        event->angleDelta().y() / wheelPerUnit; // truncated towards zero before the sign changes
    m_camera.zoom(static_cast<float>(-units));
    m_moveGoesOn = true;
    noteCamera();
}

void KVGLWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_interactionEnabled)
        return;
    const QPointF position = event->points().first().globalPosition();
    const auto dx = static_cast<float>(m_lastMousePosition.x() - position.x());
    const auto dy = static_cast<float>(m_lastMousePosition.y() - position.y());
    if (event->buttons() & Qt::LeftButton) {
        if (m_panMode) {
            m_camera.pan(dx, dy);
        } else {
            // a drag across the whole window is two full turns
            const double perRadianX = geometry().width() / (4.0 * pi);
            const double perRadianY = geometry().height() / (4.0 * pi);
            m_camera.rotate(static_cast<float>(-(dx / perRadianX)), static_cast<float>(dy / perRadianY));
        }
    } else if (event->buttons() & Qt::RightButton) {
        m_camera.pan(dx, dy);
    }
    m_lastMousePosition = position;
    m_moveGoesOn = m_moveGoesOn || event->buttons() != Qt::NoButton;
    noteCamera();
}

void KVGLWidget::mouseReleaseEvent(QMouseEvent* event)
{
    const QPoint p = pixelOf(*event);
    const auto [origin, direction] = rayToPoint(p);
    Q_EMIT click(p, kvHostFromScene(origin), kvHostFromScene(direction));
}

void KVGLWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QPoint p = pixelOf(*event);
    const auto [origin, direction] = rayToPoint(p);
    Q_EMIT doubleClick(p, kvHostFromScene(origin), kvHostFromScene(direction));
}

std::pair<QVector3D, QVector3D> KVGLWidget::rayToPoint(const QPoint& p) const
{
    const QMatrix4x4 eyeFromClip = m_camera.projectionMatrix().inverted();
    const QMatrix4x4 worldFromEye = m_camera.viewMatrix().inverted();
    const float x = 2.0f * static_cast<float>(p.x()) / static_cast<float>(geometry().width()) - 1.0f;
    const float y = 1.0f - 2.0f * static_cast<float>(p.y()) / static_cast<float>(geometry().height());
    const QVector4D onNearPlane(x, y, -1.0f, 1.0f);

    if (m_camera.orthogonal()) {
        const QVector3D origin = ((worldFromEye * eyeFromClip) * onNearPlane).toVector3D();
        return {origin, m_camera.interestPoint() - m_camera.eye()};
    }
    const QVector4D inEye = eyeFromClip * onNearPlane;
    const QVector4D direction = worldFromEye * QVector4D(inEye.x(), inEye.y(), -1.0f, 0.0f);
    return {m_camera.eye(), direction.toVector3D()};
}
