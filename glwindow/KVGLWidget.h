// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <annotation/Overlay.h>
#include <glwindow/CameraState.h>
#include <glwindow/ContextOwner.h>
#include <glwindow/FrameTarget.h>
#include <glwindow/MotionDetail.h>
#include <glwindow/OverlayRenderer.h>
#include <glwindow/VisibilityWatch.h>
#include <platform/KVProblem.h>
#include <scene/Coordinates.h>
#include <scene/KV3DObject.h>

#include <QtCore/QBasicTimer>
#include <QtCore/QElapsedTimer>
#include <QtCore/QPointF>
#include <QtCore/QSharedPointer>
#include <QtCore/QSize>
#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtGui/QSurfaceFormat>
#include <QtOpenGL/QOpenGLFunctions_1_2>
#include <QtOpenGL/QOpenGLWindow>

#include <functional>
#include <limits>
#include <optional>
#include <utility>

/// The OpenGL window in which the scene is rendered. It owns the context, the root of the scene tree, the
/// camera, the light and the frame loop, and converts input into camera changes and picking rays.
///
/// Frame loop: while the window can be seen (see VisibilityWatch), every completed frame schedules the next
/// one. At most one frame is drawn in 33 ms, and none if neither the scene nor the camera changed. While
/// nothing moves or changes, Qt paints and swaps nothing: the loop only looks for changes, every 33 ms. In a
/// frame that draws nothing Qt shows the last picture again (partial update).
///
/// While the window cannot be seen, nothing runs. The loop goes on by itself when it can be seen again.
///
/// Frames that are too slow show coarse surfaces while the camera moves, if that is allowed; see
/// MotionDetail.
///
/// Without usable OpenGL the window stays empty and needs no context; see drawingProblem().
///
/// With setTarget() nothing is drawn on the screen: the owner asks for each frame, and the window is never
/// shown.
///
/// Scene coordinates (-a*, L*, b*) unless stated otherwise; GUI thread only.
class KVGLWidget : public QOpenGLWindow, public ContextOwner
{
    Q_OBJECT
public:
    explicit KVGLWidget(QWindow* parent = nullptr);
    ~KVGLWidget() override;

    /// Of contexts in which the scene can be drawn.
    static QSurfaceFormat surfaceFormat();

    /// Only stored. It does not affect drawing, which is limited to one frame in 33 ms.
    void setFramerate(int framesPerSecond) { m_framerate = framesPerSecond; }
    int framerate() const { return m_framerate; }
    /// Takes effect in the next frame that is drawn for another reason, like the light colour.
    void setLightPos(const QVector3D& position) { m_lightPos = position; }
    QVector3D lightPos() const { return m_lightPos; }
    void setLightColor(const QColor& color) { m_lightColor = color; }
    QColor lightColor() const { return m_lightColor; }
    /// Takes effect at once. Exception: if the live camera equals a new CameraState() in every value, in the
    /// next frame that is drawn for another reason; until then isSettled() is false.
    void setBackground(QColor color);
    QColor background() const { return m_background; }
    /// Why nothing can be drawn; nullopt if drawing is possible. Checked by the first call, and again each
    /// time the window becomes exposed while there is a problem or no context. Shaders are checked when the
    /// context is made.
    std::optional<KVProblem> drawingProblem();
    /// The context, if it exists and objects can be initialised in it; null otherwise.
    QOpenGLContext* usableContext() const;
    /// Whether the scene survives the loss of the context. False at first: the tree is removed.
    void setKeepsScene(bool keeps) { m_keepsScene = keeps; }

    /// Whether frames may show coarse surfaces while the camera moves. Takes effect in the next frame.
    void setCoarseWhileMoving(bool coarse);
    bool coarseWhileMoving() const { return m_coarseWhileMoving; }
    /// Whether coarse surfaces are worth making: they are allowed, and the last frame without them was slow.
    bool wantsCoarse() const { return m_coarseWhileMoving && m_motion.isSlow(); }

    /// @name Without a window on the screen
    /// @{

    /// Draws into @p target from now on, which must outlive this object. Call it before anything is drawn.
    void setTarget(FrameTarget* target);
    /// The logical size of the frames, and device pixels for each logical one.
    void setTargetSize(const QSize& size, qreal pixelRatio);
    /// Whether the frames can be seen; false at first. If not, nothing runs, as in a hidden window.
    void setTargetShown(bool shown);
    /// When a change of the picture is drawn.
    enum class Pace
    {
        Limited, ///< not within 33 ms after the last frame
        Now,
    };
    /// Draws the next frame into the target if it is due. False if nothing was drawn: the last frame is still
    /// up to date, it is not time yet, nothing can be seen or nothing can be drawn. Hooks::frameWanted tells
    /// when to call this.
    bool drawInTarget(Pace pace = Pace::Limited);
    /// @}

    /// @name Context
    /// That of the target, if there is one, or that of the window. Null if there is none.
    /// @{
    [[nodiscard]] QOpenGLContext* glContext() const override
    {
        return m_target ? m_target->context() : context();
    }
    void makeContextCurrent() override;
    void releaseContext() override;
    [[nodiscard]] GLuint framebuffer() const
    {
        return m_target ? m_target->framebuffer() : defaultFramebufferObject();
    }
    [[nodiscard]] qreal pixelRatio() const { return m_target ? m_targetPixelRatio : devicePixelRatio(); }
    /// @}

    KV3DObject& root() { return m_root; }
    const KV3DObject& root() const { return m_root; }
    /// Frees what the driver keeps of the last frames: software renderers keep their triangles until they
    /// draw again. The context must be current.
    void releaseFrames();
    /// Draws the next frame even if nothing changed.
    void redraw();

    /// Makes what is drawn on top of a picture of @p size pixels. @p toClip converts scene coordinates to
    /// clip coordinates. Called from inside paint events: it must not change or destroy anything.
    using OverlaySource = std::function<Overlay(const QMatrix4x4& toClip, const QSize& size)>;
    /// Null: nothing is drawn on top. Takes effect at once.
    void setOverlaySource(OverlaySource source);
    /// The overlay of a picture of the present view.
    [[nodiscard]] Overlay overlay(const QSize& size) const;

    /// @name Camera
    /// Each change is an animated move of @p duration milliseconds; moveFinised() is emitted at its end. With
    /// a duration below 1 the change is immediate and no signal is emitted. A new change replaces a running
    /// move without a signal.
    /// @{
    void setCamera(const QVector3D& eye, const QVector3D& interest, int duration);
    void setCameraState(const CameraState& target, int duration);
    void setOrthogonalProjection(bool on, int duration);
    void setViewingAngle(float degrees, int duration);
    QVector3D camera() const { return m_camera.eye(); }
    QVector3D interestPt() const { return m_camera.interestPoint(); }
    bool orthogonalProjection() const { return m_camera.orthogonal(); }
    /// During a move: the angle at its start.
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
    /// Picking ray through a pixel (window coordinates, origin top left): origin and direction, not
    /// normalised.
    [[nodiscard]] std::pair<QVector3D, QVector3D> rayToPoint(const QPoint& p) const;

    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    /// @}

    /// Functions that are called from inside paint and input events: they must not change or destroy
    /// anything.
    struct Hooks
    {
        std::function<void()> cameraMayHaveChanged;
        std::function<void()> settled;               ///< isSettled() became true
        std::function<void()> coarseWanted;          ///< wantsCoarse() became true
        std::function<void()> drawingProblemChanged; ///< drawingProblem() changed; it is nullopt at first
        /// A frame may be due in the target: drawInTarget() is to be called soon, but not from inside.
        std::function<void()> frameWanted;
    };
    void setHooks(Hooks hooks) { m_hooks = std::move(hooks); }

    /// Whether the picture is up to date: no running move or opacity change, every change was drawn, and the
    /// surfaces are exact.
    [[nodiscard]] bool isSettled() const;
    /// The last drawn frame, in device pixels; if that has coarse surfaces, the same with exact ones. Null
    /// before the first frame of a context.
    QImage picture();
    /// Renders the present view in @p size device pixels, independent of the size of the window. Large
    /// pictures are rendered in tiles; during a move the tiles may show different moments. Null before the
    /// first frame of a context, for an empty size and if there is not enough memory, also of the GPU.
    QImage picture(const QSize& size);
    /// Number of frames drawn so far, without skipped ones.
    int drawnFrames() const { return m_drawnFrames; }

Q_SIGNALS:
    /// A camera move has ended. Receivers connect to exactly this spelling.
    void moveFinised();
    /// A mouse button was released at pixel p. The picking ray is in host coordinates (L*, a*, b*).
    void click(QPoint p, QVector3D origin, QVector3D direction);
    void doubleClick(QPoint p, QVector3D origin, QVector3D direction);

public Q_SLOTS:
    /// Releases the GPU objects of the scene and removes all objects below the root, which setKeepsScene()
    /// prevents. Called before the context is destroyed. The next paint initialises the scene in the context
    /// that there is by then.
    void teardownGL();
    /// Schedules the next frame, unless the window cannot be seen.
    void update();

protected:
    void initializeGL() override;
    void resizeGL(int w, int h) override;
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void paintGL() override;

private:
    template <typename Change>
    void moveCamera(int duration, Change change);
    void advanceCamera();
    bool isFrameDue();
    bool isIdle() const;
    bool canBeSeen();
    void lookAgainLater();
    void paintNow();
    bool prepareTarget();
    bool prepareTargetContext();
    void loseTargetContext();
    bool hasNothingToDraw() const; ///< isSettled() without regard to the background and to coarse surfaces
    void drawFrame();
    MotionDetail::Move moveOfFrame() const;
    void noteFrame(MotionDetail::Move move, bool coarse, qint64 startedAt);
    bool mayRun();
    void lookForChanges();
    void noteCamera() const;
    void noteSettled();
    void logContext();
    bool isReadyFor(QEvent::Type type);
    void prepareContext();
    bool renewContext();
    void releaseScene();
    void renewFramebuffer();
    void restoreSize();
    void retryLater();
    void setDrawingProblem(const std::optional<KVProblem>& problem);
    void drawScene(const CameraState& camera, const QMatrix4x4& projection);
    void drawOverlay();
    void makeOpaque();
    QImage resolved(GLuint framebuffer, const QSize& size);
    QSize deviceSize() const;
    bool canPaint() const;

    QElapsedTimer m_frameTimer; ///< since the last frame that was considered for drawing
    int m_framerate = 30;
    QOpenGLFunctions_1_2 m_functions;
    KV3DObject m_root;
    OverlaySource m_overlaySource;
    OverlayRenderer m_overlayRenderer;
    CameraState m_camera;
    CameraState m_lastDrawnCamera;
    QVector3D m_lightPos;
    QColor m_lightColor;
    QPointF m_lastMousePosition;
    bool m_panMode = false;
    QColor m_background;
    QColor m_drawnBackground; ///< of the last drawn frame
    QSharedPointer<CameraAnimation> m_animation;
    QElapsedTimer m_clock; ///< of m_motion
    MotionDetail m_motion;
    bool m_coarseWhileMoving = false;
    bool m_moveGoesOn = false; ///< the camera moves by input or animation since the last drawn frame
    bool m_interactionEnabled = true;

    /// Qt has discarded the last picture (new context, size or pixel ratio): the next frame must be drawn
    /// even if nothing changed.
    bool m_mustDraw = true;
    QSize m_drawnSize; ///< size of the last drawn frame and of Qt's framebuffer, in device pixels
    int m_drawnFrames = 0;
    QBasicTimer m_lookTimer; ///< runs while the window can be seen and nothing moves or changes
    VisibilityWatch m_visibility{*this};
    Hooks m_hooks;
    FrameTarget* m_target = nullptr; ///< null: the window
    std::optional<QSize> m_targetSize;
    qreal m_targetPixelRatio = 1.0;
    bool m_targetShown = false;
    GLuint m_drawnFramebuffer = 0; ///< of the target, with the last drawn frame
    bool m_settledNoted = false;   ///< since the last drawn frame
    GLint m_maxFramebufferSide = std::numeric_limits<GLint>::max(); ///< limit of the context

    std::optional<KVProblem> m_drawingProblem;
    bool m_drawingChecked = false; ///< m_drawingProblem is known
    bool m_exposed = false;        ///< as of the last expose event
    bool m_mustCheck = false;      ///< the window became exposed after the last check
    bool m_initialized = false;    ///< initializeGL() succeeded for the present context
    bool m_hasPicture = false;     ///< a frame was drawn in the present context
    bool m_keepsScene = false;
    bool m_mustRenew = false;   ///< the context could not be made current when it was new
    bool m_mustRelease = false; ///< the scene has GPU objects of a context that was lost
    bool m_retryPosted = false;
    std::optional<QSize> m_sizeToRestore; ///< see renewFramebuffer()
};
