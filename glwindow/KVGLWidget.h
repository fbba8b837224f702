// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <glwindow/CameraState.h>
#include <scene/Coordinates.h>
#include <scene/KV3DObject.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QPointF>
#include <QtCore/QSharedPointer>
#include <QtCore/QSize>
#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtOpenGL/QOpenGLFunctions_1_2>
#include <QtOpenGL/QOpenGLWindow>

#include <limits>
#include <utility>

/// The OpenGL window in which the whole scene is rendered: it owns the context, the root of the scene
/// tree, the camera, the light and the frame loop, and turns input into camera changes and rays.
///
/// Every completed frame schedules the next, as long as the window is exposed and its parent is visible.
/// What is drawn is at most one frame in 33 ms, and nothing when neither the scene nor the camera changed;
/// in between Qt shows the last picture again (partial update).
///
/// Scene coordinates (-a*, L*, b*) unless said; GUI thread only.
class KVGLWidget : public QOpenGLWindow
{
    Q_OBJECT
public:
    explicit KVGLWidget(QWindow* parent = nullptr);
    ~KVGLWidget() override;

    /// Stored and returned; the pace is fixed at one frame in 33 ms whatever it says.
    void setFramerate(int framesPerSecond) { m_framerate = framesPerSecond; }
    int framerate() const { return m_framerate; }
    /// Shows with the next frame that is drawn for another reason, as does the light colour.
    void setLightPos(const QVector3D& position) { m_lightPos = position; }
    QVector3D lightPos() const { return m_lightPos; }
    void setLightColor(const QColor& color) { m_lightColor = color; }
    QColor lightColor() const { return m_lightColor; }
    /// Shows at once.
    void setBackground(QColor color);
    QColor background() const { return m_background; }
    KV3DObject& root() { return m_root; }
    const KV3DObject& root() const { return m_root; }

    /// @name Camera
    /// Each change is a move of @p duration milliseconds, at whose end moveFinised() is emitted, or
    /// immediate and silent below 1. A new change replaces a move in progress without a signal.
    /// @{
    void setCamera(const QVector3D& eye, const QVector3D& interest, int duration);
    void setCameraState(const CameraState& target, int duration);
    void setOrthogonalProjection(bool on, int duration);
    void setViewingAngle(float degrees, int duration);
    QVector3D camera() const { return m_camera.eye(); }
    QVector3D interestPt() const { return m_camera.interestPoint(); }
    bool orthogonalProjection() const { return m_camera.orthogonal(); }
    /// The angle at the start while a move runs.
    float viewingAngle() const;
    const CameraState& cameraState() const { return m_camera; }
    bool isMoving() const { return !m_animation.isNull(); }
    /// @}

    /// @name Input
    /// @{
    void setEnableInteraction(bool enabled) { m_interactionEnabled = enabled; }
    bool enableInteraction() const { return m_interactionEnabled; }
    bool panMode() const { return m_panMode; }
    QPointF lastMousePosition() const { return m_lastMousePosition; }
    /// Ray through a pixel (window coordinates, origin top left): origin, then direction, not normalised.
    std::pair<QVector3D, QVector3D> rayToPoint(const QPoint& p) const;

    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    /// @}

    /// Whether everything is drawn as it stands: no move, no opacity change, no change undrawn.
    bool isSettled() const;
    /// The picture as last drawn, in device pixels; null before the first frame.
    QImage picture();
    /// The present view drawn anew, @p size device pixels large whatever the window's size; in tiles when
    /// it is large. Null before the first frame, for an empty size and when memory does not suffice.
    /// While something moves, its tiles may show different moments.
    QImage picture(const QSize& size);
    /// Frames drawn so far (skipped ones do not count).
    int drawnFrames() const { return m_drawnFrames; }

Q_SIGNALS:
    /// A camera move has come to its end. The spelling is what receivers connect to.
    void moveFinised();
    /// A mouse button was released at pixel p; the ray is in host coordinates (L*, a*, b*).
    void click(QPoint p, QVector3D origin, QVector3D direction);
    void doubleClick(QPoint p, QVector3D origin, QVector3D direction);

public Q_SLOTS:
    /// Releases the scene's GPU objects and the scene below the root; the context is about to go.
    void teardownGL();
    /// Schedules the next frame, unless the parent window is hidden.
    void update();

protected:
    void initializeGL() override;
    void resizeGL(int w, int h) override;
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintGL() override;

private:
    template <typename Change>
    void moveCamera(int duration, Change change);
    void advanceCamera();
    void logContext();
    void drawScene(const CameraState& camera, const QMatrix4x4& projection);
    QImage resolved(GLuint framebuffer, const QSize& size);
    QSize deviceSize() const;
    bool canPaint() const;

    QElapsedTimer m_frameTimer;
    int m_framerate = 30;
    QOpenGLFunctions_1_2 m_functions;
    KV3DObject m_root;
    CameraState m_camera;
    CameraState m_lastDrawnCamera;
    QVector3D m_lightPos;
    QColor m_lightColor;
    QPointF m_lastMousePosition;
    bool m_panMode = false;
    QColor m_background;
    QSharedPointer<CameraAnimation> m_animation;
    bool m_interactionEnabled = true;

    /// Qt has thrown the last picture away (new context, size or pixel ratio): the next frame is drawn
    /// even when nothing changed.
    bool m_mustDraw = true;
    QSize m_drawnSize; ///< device pixels of the last drawn frame, and so of Qt's framebuffer
    int m_drawnFrames = 0;
    GLint m_longestSide = std::numeric_limits<GLint>::max(); ///< of a framebuffer, as the context says
};
