// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>

#include <QtCore/QObject>

class ViewArea;

/// Moves the camera for the actions of the window.
class CameraControl : public QObject
{
    Q_OBJECT
public:
    explicit CameraControl(ViewArea& area, QObject* parent = nullptr);

    KVCamera camera() const;
    void move(const KVCamera& camera);
    void reset();
    void frameGamuts();
    void lookFrom(KVGamut3DViewer::View preset);
    /// Looks at the middle of the L* axis along @p direction (L*, a*, b*), from the default distance.
    void lookFrom(const QVector3D& direction);
    void setOrthogonal(bool orthogonal);
    void widenAngle();
    void narrowAngle();

    /// Call when other code has set the camera: showFirst() then keeps it.
    void keep() { m_isChosen = true; }
    /// Call when the window is first shown and its aspect ratio is known: sets the default camera, unless
    /// another was chosen. From then on camera changes are animated.
    void showFirst();

Q_SIGNALS:
    void moved();

private:
    int duration() const;
    void changeAngle(float step);

    ViewArea& m_area;
    bool m_isChosen = false;
    bool m_isShown = false;
};
