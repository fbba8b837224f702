// SPDX-License-Identifier: Apache-2.0
#include <glwindow/KVGLWidget.h>

/// Applies @p change to the camera: immediately, or as an animated move to a changed copy of the live camera.
template <typename Change>
void KVGLWidget::moveCamera(int duration, Change change)
{
    if (duration < 1) {
        m_animation.reset();
        change(m_camera);
        m_camera.resetProjectionOverride();
        noteCamera();
        return;
    }
    auto move = QSharedPointer<CameraAnimation>::create();
    move->start = m_camera;
    move->target = m_camera;
    change(move->target);
    move->duration = duration;
    move->timer.start();
    m_animation = move;
    update(); // not only when the loop next looks for changes
}

void KVGLWidget::setCamera(const QVector3D& eye, const QVector3D& interest, int duration)
{
    moveCamera(duration, [&](CameraState& c) { c.setEyeAndInterest(eye, interest); });
}

void KVGLWidget::setCameraState(const CameraState& target, int duration)
{
    moveCamera(duration, [&](CameraState& c) { c = target; });
}

void KVGLWidget::setOrthogonalProjection(bool on, int duration)
{
    moveCamera(duration, [on](CameraState& c) { c.setOrthogonal(on); });
}

void KVGLWidget::setViewingAngle(float degrees, int duration)
{
    moveCamera(duration, [degrees](CameraState& c) { c.setViewingAngle(degrees); });
}

float KVGLWidget::viewingAngle() const
{
    return m_animation ? m_animation->start.viewingAngle() : m_camera.viewingAngle();
}
