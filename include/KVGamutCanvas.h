// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamut3DViewer.h>
#include <KVGamutView.h>

#include <QtCore/QObject>
#include <QtCore/QSize>
#include <QtGui/QImage>
#include <QtGui/QSurfaceFormat>

#include <memory>

class QEvent;
class QOpenGLContext;

/// A viewer without a window of its own, for hosts that compose what is on the screen themselves: among other
/// items, under rounded corners, in an animation. KVGamutGLWidget and KVGamutQuickView are made with it.
///
/// The host tells the size, passes input on, and asks for a frame when drawWanted() says that one may be due:
/// nothing is drawn otherwise. viewer() and view() work as with a window: the same scene, the same camera.
///
/// Sizes and positions of input are logical pixels. GUI thread only. Destroy the canvas before the
/// QGuiApplication.
class KV3DVIEWER_EXPORT KVGamutCanvas : public QObject
{
    Q_OBJECT
public:
    /// An OpenGL context and a framebuffer of the host, in which a canvas draws. All functions are called on
    /// the GUI thread.
    class KV3DVIEWER_EXPORT Target
    {
    public:
        Target() = default;
        virtual ~Target();
        Q_DISABLE_COPY_MOVE(Target)

        /// Null if there is none now. It may be replaced between frames. Its format should be
        /// KVGamutCanvas::format().
        virtual QOpenGLContext* context() const = 0;
        /// Makes the context current and binds the framebuffer. False if that is not possible now.
        virtual bool makeCurrent() = 0;
        virtual void doneCurrent() = 0; ///< the opposite
        /// Its name. It has the size given with setSize(), and keeps its content between frames.
        virtual unsigned int framebuffer() const = 0;
    };

    /// Draws into a context and a framebuffer of its own; see frame().
    explicit KVGamutCanvas(QObject* parent = nullptr);
    /// Draws into @p target, which must outlive the canvas.
    explicit KVGamutCanvas(Target* target, QObject* parent = nullptr);
    ~KVGamutCanvas() override;

    /// The format of contexts and framebuffers in which a canvas can draw: desktop OpenGL with the functions
    /// of version 1.2, depth, stencil and 8 samples.
    static QSurfaceFormat format();

    /// Owned by the canvas. Never show it: it is a window that stays hidden.
    KVGamut3DViewer* viewer() const;
    KVGamutView* view() const; ///< attached to viewer(); owned by the canvas

    /// The size of the frames; empty at first: nothing is drawn. A frame has @p size times
    /// @p devicePixelRatio pixels, rounded.
    void setSize(const QSize& size, qreal devicePixelRatio);
    QSize size() const;             ///< as set
    qreal devicePixelRatio() const; ///< as set
    /// Whether the frames can be seen. If not (at first), nothing runs and drawWanted() is not emitted;
    /// camera moves end when it is shown again.
    void setShown(bool shown);
    bool isShown() const; ///< as set

    /// When a change is drawn.
    enum class Pace
    {
        Limited, ///< not within 33 ms after the last frame, as in the window of KVGamut3DViewer
        Now,     ///< at once, for example for a picture of the host
    };
    /// Draws a frame if one is due. Makes the OpenGL context that was current before current again.
    /// @return whether there is a new frame. False if nothing changed, it is too early, the canvas is not
    ///   shown, or there is no usable OpenGL
    bool draw(Pace pace = Pace::Limited);
    /// The last frame in device pixels, opaque; null before the first one. With a target: read back from its
    /// framebuffer.
    QImage frame() const;

    /// Passes an event of the pointer, the wheel or the keyboard on to the viewer, or the loss of the focus.
    /// Positions are taken from QSinglePointEvent::position().
    /// @return whether the viewer uses events of this kind. For any other, the caller should do what it does
    ///   without a viewer; keys that do not move the camera are not passed on.
    bool passOn(QEvent& event);

Q_SIGNALS:
    /// A frame may be due: call draw() soon, for example from the next update of the screen, but not from the
    /// slot. Emitted from inside functions of viewer(), view() and this class, and from the event loop; again
    /// and again until draw() is called.
    void drawWanted();

private:
    class Q_DECL_HIDDEN Private;
    std::unique_ptr<Private> d;
};
