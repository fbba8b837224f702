// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>

#include <QtCore/QObject>

class ViewArea;

/// Moves the camera of the window as its actions ask.
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

    /// The camera was set from outside: showFirst() keeps it.
    void keep() { m_isChosen = true; }
    /// To be called when the window is first shown and its shape is known: sets the default camera, unless
    /// another was chosen. From then on the camera moves instead of jumping.
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
