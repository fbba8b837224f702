// SPDX-License-Identifier: Apache-2.0
#include <KVGamut3DViewer.h>

#include <scene/Coordinates.h>
#include <viewer/ViewerPrivate.h>

namespace {

// L* of the eye in the preset views, negative for Bottom. The interest point is at L* 50, so Bottom is
// farther away.
constexpr float presetHeight = 522.48712f;
constexpr float presetInterest = 50.0f;
// Not 0, so that the azimuth of the preset views is -π/2, with +a* to the right.
constexpr float presetEyeZ = -1.1920929e-7f;

} // namespace

void KVGamut3DViewer::setCamera(const QVector3D& position, int duration, const QVector3D& interestPt)
{
    d->widget->setCamera(kvSceneFromHost(position), kvSceneFromHost(interestPt), duration);
}

QVector3D KVGamut3DViewer::camera() const
{
    return kvHostFromScene(d->widget->camera());
}

QVector3D KVGamut3DViewer::interestPt() const
{
    return kvHostFromScene(d->widget->interestPt());
}

void KVGamut3DViewer::resetCamera(View view, int duration)
{
    const float height = view == Bottom ? -presetHeight : presetHeight;
    d->widget->setCamera(QVector3D(-0.0f, height, presetEyeZ), QVector3D(-0.0f, presetInterest, 0.0f),
                         duration);
}

void KVGamut3DViewer::setOrthogonalProjection(bool on, int duration)
{
    d->widget->setOrthogonalProjection(on, duration);
}

bool KVGamut3DViewer::orthogonalProjection() const
{
    return d->widget->orthogonalProjection();
}

void KVGamut3DViewer::setViewingAngle(float degrees, int duration)
{
    d->widget->setViewingAngle(degrees, duration);
}

float KVGamut3DViewer::viewingAngle() const
{
    return d->widget->viewingAngle();
}

std::pair<QVector3D, QVector3D> KVGamut3DViewer::rayToPoint(const QPoint& p) const
{
    const auto [origin, direction] = d->widget->rayToPoint(p);
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
    d->widget->setEnableInteraction(enabled);
}

bool KVGamut3DViewer::enableInteraction() const
{
    return d->widget->enableInteraction();
}
