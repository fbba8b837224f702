// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <glwindow/KVGLWidget.h>

#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtCore/QPointF>

#include <optional>

class QMouseEvent;

/// What happens in a viewer's windows, for the views attached to it.
///
/// cameraChanged() and settled() come from the event loop, where the host may do anything; the signals of
/// the pointer come from inside the event.
class ViewerEvents : public QObject
{
    Q_OBJECT
public:
    /// Both windows must outlive it.
    ViewerEvents(QObject& viewer, KVGLWidget& widget);
    ~ViewerEvents() override;

    /// Takes the present camera as known, so that its change is not reported.
    void adoptCamera();

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void cameraChanged();
    void settled();
    void themeChanged(); ///< emitted by the scene
    /// @param endsDrag the pointer moved farther than the system's drag distance since the press
    void released(const QPoint& pixel, Qt::MouseButton button, Qt::KeyboardModifiers modifiers,
                  bool endsDrag);
    /// The pointer moved with no button held.
    void moved(const QPoint& pixel, Qt::KeyboardModifiers modifiers);

private:
    /// What of the camera hosts can see.
    struct SeenCamera
    {
        QVector3D eye;
        QVector3D interest;
        float viewingAngle = 0.0f;
        bool orthogonal = false;

        bool operator==(const SeenCamera&) const = default;
    };

    SeenCamera seenCamera() const;
    void postCameraCheck();
    void checkCamera();
    void checkSettled();
    void onMove(const QMouseEvent& event);
    void trackDrag(const QMouseEvent& event);
    void onRelease(const QMouseEvent& event);

    KVGLWidget& m_widget;
    SeenCamera m_lastCamera;
    bool m_cameraCheckPosted = false;
    std::optional<QPointF> m_press; ///< global position of the press that is held
    bool m_dragged = false;
};
