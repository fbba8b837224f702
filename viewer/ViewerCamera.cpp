// SPDX-License-Identifier: Apache-2.0
#include <KVGamut3DViewer.h>

#include <glwindow/KVGLWidget.h>
#include <scene/Coordinates.h>

namespace {

// Height of the preset eyes above and below L* 0. The interest point is at L* 50, so that the bottom
// view is the farther one.
constexpr float presetHeight = 522.48712f;
constexpr float presetInterest = 50.0f;
// Not quite zero: it decides that the preset azimuth is -π/2, with +a* to the right.
constexpr float presetEyeZ = -1.1920929e-7f;

} // namespace

void KVGamut3DViewer::setCamera(const QVector3D& position, int duration, const QVector3D& interestPt)
{
    m_widget->setCamera(kvSceneFromHost(position), kvSceneFromHost(interestPt), duration);
}

QVector3D KVGamut3DViewer::camera() const
{
    return kvHostFromScene(m_widget->camera());
}

QVector3D KVGamut3DViewer::interestPt() const
{
    return kvHostFromScene(m_widget->interestPt());
}

void KVGamut3DViewer::resetCamera(View view, int duration)
{
    const float height = view == Bottom ? -presetHeight : presetHeight;
    m_widget->setCamera(QVector3D(-0.0f, height, presetEyeZ), QVector3D(-0.0f, presetInterest, 0.0f),
                        duration);
}

void KVGamut3DViewer::setOrthogonalProjection(bool on, int duration)
{
    m_widget->setOrthogonalProjection(on, duration);
}

bool KVGamut3DViewer::orthogonalProjection() const
{
    return m_widget->orthogonalProjection();
}

void KVGamut3DViewer::setViewingAngle(float degrees, int duration)
{
    m_widget->setViewingAngle(degrees, duration);
}

float KVGamut3DViewer::viewingAngle() const
{
    return m_widget->viewingAngle();
}

std::pair<QVector3D, QVector3D> KVGamut3DViewer::rayToPoint(const QPoint& p) const
{
    const auto [origin, direction] = m_widget->rayToPoint(p);
    return {kvHostFromScene(origin), kvHostFromScene(direction)};
}

float KVGamut3DViewer::squaredDistanceToRay(const QVector3D& point,
                                            const std::pair<QVector3D, QVector3D>& ray)
{
    const QVector3D w = point - ray.first;
    return QVector3D::crossProduct(w, ray.second).lengthSquared() / ray.second.lengthSquared();
}

void KVGamut3DViewer::setEnableInteraction(bool enabled)
{
    m_widget->setEnableInteraction(enabled);
}

bool KVGamut3DViewer::enableInteraction() const
{
    return m_widget->enableInteraction();
}
