// SPDX-License-Identifier: Apache-2.0
#include <viewer/GamutViewPrivate.h>

#include <glwindow/CameraState.h>
#include <scene/Coordinates.h>

#include <algorithm>
#include <cmath>
#include <numbers>

KVCamera KVGamutView::camera() const
{
    const ViewerScene* scene = d->scene();
    if (!scene)
        return {};
    const KVGamut3DViewer& viewer = scene->viewer;
    return {viewer.camera(), viewer.interestPt(), viewer.viewingAngle(), viewer.orthogonalProjection()};
}

void KVGamutView::setCamera(const KVCamera& camera, int durationMs)
{
    const ViewerScene* scene = d->scene();
    if (!scene || !camera.isValid())
        return;
    CameraState target = scene->widget->cameraState();
    target.setEyeAndInterest(kvSceneFromHost(camera.position), kvSceneFromHost(camera.interestPoint));
    target.setViewingAngle(camera.viewingAngle);
    target.setOrthogonal(camera.orthogonal);
    scene->widget->setCameraState(target, durationMs);
}

void KVGamutView::frame(const QStringList& ids, int durationMs)
{
    const ViewerScene* scene = d->scene();
    if (!scene)
        return;
    const KVGamut3DViewer& viewer = scene->viewer;
    QList<QVector3D> positions;
    const QStringList framed = ids.isEmpty() ? viewer.gamuts() : ids;
    for (const QString& id : framed) {
        if (ids.isEmpty() && !viewer.gamutVisible(id))
            continue;
        const KVGamut::GamutObject shown = gamut(id);
        for (const KVGamut::LabPoint& p : shown.mesh().lab)
            positions.append(QVector3D(p.L, p.a, p.b));
    }
    if (!positions.isEmpty())
        setCamera(framing(camera(), positions, scene->aspect()), durationMs);
}

KVCamera KVGamutView::framing(const KVCamera& camera, const QList<QVector3D>& positions, float aspect)
{
    if (positions.isEmpty())
        return camera;
    QVector3D min = positions.first();
    QVector3D max = positions.first();
    for (const QVector3D& p : positions) {
        for (int i = 0; i < 3; ++i) {
            min[i] = std::min(min[i], p[i]);
            max[i] = std::max(max[i], p[i]);
        }
    }
    const QVector3D centre = (min + max) / 2.0f;
    float radius = 0.0f;
    for (const QVector3D& p : positions)
        radius = std::max(radius, (p - centre).length());

    KVCamera framed = camera.isValid() ? camera : KVCamera();
    // the sphere around them touches the nearer pair of the view's edges
    constexpr float margin = 1.03f;
    constexpr float minDistance = 2.0f;
    const float tangent = std::tan(framed.viewingAngle / 2.0f * std::numbers::pi_v<float> / 180.0f);
    const float half = std::atan(tangent * (aspect > 0.0f ? std::min(1.0f, aspect) : 1.0f));
    const float distance = std::max(minDistance, margin * radius / std::sin(half));
    const QVector3D direction = (framed.position - framed.interestPoint).normalized();
    framed.interestPoint = centre;
    framed.position = centre + direction * distance;
    return framed;
}
