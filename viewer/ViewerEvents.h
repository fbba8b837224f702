// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <glwindow/KVGLWidget.h>

#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtCore/QPointF>

#include <optional>

class QMouseEvent;

/// Events of a viewer's windows, for the views attached to it.
///
/// cameraChanged(), settled(), coarseWanted() and drawableChanged() are emitted from the event loop,
/// released() and moved() while the event is delivered.
class ViewerEvents : public QObject
{
    Q_OBJECT
public:
    /// Both windows must outlive this object.
    ViewerEvents(QObject& viewer, KVGLWidget& widget);
    ~ViewerEvents() override;

    /// Discards changes of the camera that were not reported yet.
    void adoptCamera();

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void cameraChanged();
    void settled();
    void coarseWanted();    ///< the widget's wantsCoarse() became true
    void drawableChanged(); ///< the widget's drawingProblem() changed
    void frameWanted();     ///< see KVGLWidget::Hooks; from anywhere inside the library
    void themeChanged();    ///< emitted by the scene
    /// @param endsDrag the pointer moved farther than the system's drag distance since the press
    void released(const QPoint& pixel, Qt::MouseButton button, Qt::KeyboardModifiers modifiers,
                  bool endsDrag);
    /// The pointer moved with no button held.
    void moved(const QPoint& pixel, Qt::KeyboardModifiers modifiers);

private:
    /// The properties of the camera that hosts can read.
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
    std::optional<QPointF> m_press; ///< global position where the button was pressed
    bool m_dragged = false;
};
