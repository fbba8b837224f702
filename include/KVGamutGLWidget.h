// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamut3DViewer.h>
#include <KVGamutView.h>

#include <QtOpenGLWidgets/QOpenGLWidget>

#include <memory>

#if defined(KV3DVIEWERWIDGETS_LIBRARY)
#define KV3DVIEWERWIDGETS_EXPORT Q_DECL_EXPORT
#else
#define KV3DVIEWERWIDGETS_EXPORT Q_DECL_IMPORT
#endif

/// A viewer as a widget that Qt composes with the others: child widgets may lie on top of it, it can be
/// grabbed, masked, and moved to another parent. QWidget::createWindowContainer() with a KVGamut3DViewer can
/// do none of these, but needs a little less time for each frame.
///
/// The wheel, drags and keys move the camera as in KVGamut3DViewer while the widget has the focus, which it
/// takes by Tab and by a click. Other keys go to the parent.
///
/// Nothing is drawn while nothing changes. Without usable OpenGL, Qt reports that in its log, the widget is
/// empty, and everything else works. GUI thread only.
class KV3DVIEWERWIDGETS_EXPORT KVGamutGLWidget : public QOpenGLWidget
{
    Q_OBJECT
public:
    explicit KVGamutGLWidget(QWidget* parent = nullptr); ///< an empty view, seen from above
    ~KVGamutGLWidget() override;

    /// What is shown; owned by the widget. Never show this window.
    KVGamut3DViewer* viewer() const;
    KVGamutView* view() const; ///< attached to viewer(); owned by the widget

    QSize sizeHint() const override;        ///< 640 x 480
    QSize minimumSizeHint() const override; ///< 80 x 60

protected:
    /// @cond what Qt calls
    void initializeGL() override;
    void paintGL() override;
    bool event(QEvent* event) override;
    /// @endcond

private:
    class Q_DECL_HIDDEN Private;
    std::unique_ptr<Private> d;
};
