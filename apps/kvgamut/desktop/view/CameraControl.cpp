// SPDX-License-Identifier: Apache-2.0
#include "CameraControl.h"

#include "ViewArea.h"

#include <algorithm>

namespace {

constexpr int moveMs = 300;
constexpr float angleStep = 5.0f;
constexpr float minAngle = 5.0f;
constexpr float maxAngle = 120.0f;

} // namespace

CameraControl::CameraControl(ViewArea& area, QObject* parent) : QObject(parent), m_area(area) {}

ViewCamera CameraControl::camera() const
{
    return ViewCamera::of(m_area.viewer());
}

void CameraControl::move(const ViewCamera& camera)
{
    m_isChosen = true;
    camera.applyTo(m_area.viewer(), m_isShown ? moveMs : 0);
    Q_EMIT moved();
}

void CameraControl::reset()
{
    move(obliqueCamera(m_area.aspect()));
}

void CameraControl::frameGamuts()
{
    KVGamut3DViewer& viewer = m_area.viewer();
    QList<QVector3D> positions;
    const QStringList ids = viewer.gamuts();
    for (const QString& id : ids) {
        if (!viewer.gamutVisible(id))
            continue;
        const auto faces = viewer.faceList(id);
        for (const auto& face : faces)
            positions.append(face);
    }
    move(framing(camera(), positions, m_area.aspect()));
}

void CameraControl::lookFrom(KVGamut3DViewer::View preset)
{
    m_isChosen = true;
    m_area.viewer().resetCamera(preset, moveMs);
}

void CameraControl::lookFrom(const QVector3D& direction)
{
    ViewCamera turned = camera();
    turned.interest = QVector3D(50, 0, 0);
    const float distance = (obliqueCamera(m_area.aspect()).eye - turned.interest).length();
    turned.eye = turned.interest + direction * distance;
    move(turned);
}

void CameraControl::setOrthogonal(bool orthogonal)
{
    m_area.viewer().setOrthogonalProjection(orthogonal, 0);
}

void CameraControl::widenAngle()
{
    changeAngle(angleStep);
}

void CameraControl::narrowAngle()
{
    changeAngle(-angleStep);
}

void CameraControl::changeAngle(float step)
{
    KVGamut3DViewer& viewer = m_area.viewer();
    viewer.setViewingAngle(std::clamp(viewer.viewingAngle() + step, minAngle, maxAngle), 0);
}

void CameraControl::showFirst()
{
    if (m_isShown)
        return;
    if (!m_isChosen)
        reset();
    m_isShown = true;
}
