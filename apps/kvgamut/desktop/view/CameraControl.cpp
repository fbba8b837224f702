// SPDX-License-Identifier: Apache-2.0
#include "CameraControl.h"

#include "ViewArea.h"
#include "model/pictures/CameraText.h"

#include <algorithm>

namespace {

constexpr int moveMs = 300;
constexpr float angleStep = 5.0f;
constexpr float minAngle = 5.0f;
constexpr float maxAngle = 120.0f;

} // namespace

CameraControl::CameraControl(ViewArea& area, QObject* parent) : QObject(parent), m_area(area) {}

KVCamera CameraControl::camera() const
{
    return m_area.view().camera();
}

int CameraControl::duration() const
{
    return m_isShown ? moveMs : 0;
}

void CameraControl::move(const KVCamera& camera)
{
    m_isChosen = true;
    m_area.view().setCamera(camera, duration());
    Q_EMIT moved();
}

void CameraControl::reset()
{
    move(obliqueCamera(m_area.aspect()));
}

void CameraControl::frameGamuts()
{
    const QSize size = m_area.pixels();
    move(KVGamutView::framing(camera(), m_area.view().shownFraming(size), size));
}

void CameraControl::lookFrom(KVGamut3DViewer::View preset)
{
    m_isChosen = true;
    m_area.viewer().resetCamera(preset, moveMs);
}

void CameraControl::lookFrom(const QVector3D& direction)
{
    KVCamera turned = cameraFrom(direction, m_area.aspect());
    turned.viewingAngle = camera().viewingAngle;
    turned.orthogonal = camera().orthogonal;
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
