// SPDX-License-Identifier: Apache-2.0
#include <KVGamutCanvas.h>
#include <KVGamutGLWidget.h>

#include <QtCore/QEvent>
#include <QtGui/QOpenGLContext>

#include <utility>

class Q_DECL_HIDDEN KVGamutGLWidget::Private : public KVGamutCanvas::Target
{
public:
    explicit Private(KVGamutGLWidget& widget) : m_widget(widget) {}

    QOpenGLContext* context() const override { return m_widget.isValid() ? m_widget.context() : nullptr; }
    bool makeCurrent() override
    {
        m_widget.makeCurrent();
        return QOpenGLContext::currentContext() == m_widget.context();
    }
    void doneCurrent() override { m_widget.doneCurrent(); }
    unsigned int framebuffer() const override { return m_widget.defaultFramebufferObject(); }

    KVGamutCanvas canvas{this};
    bool asked = false; ///< the canvas has asked for a frame

private:
    KVGamutGLWidget& m_widget;
};

KVGamutGLWidget::KVGamutGLWidget(QWidget* parent) : QOpenGLWidget(parent), d(std::make_unique<Private>(*this))
{
    setFormat(KVGamutCanvas::format());
    setUpdateBehavior(PartialUpdate); // keeps the last frame while other widgets are painted
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true); // KVGamutView::hovered()
    connect(&d->canvas, &KVGamutCanvas::drawWanted, this, [this] {
        d->asked = true;
        update();
    });
}

KVGamutGLWidget::~KVGamutGLWidget() = default;

KVGamut3DViewer* KVGamutGLWidget::viewer() const
{
    return d->canvas.viewer();
}

KVGamutView* KVGamutGLWidget::view() const
{
    return d->canvas.view();
}

QSize KVGamutGLWidget::sizeHint() const
{
    return {640, 480};
}

QSize KVGamutGLWidget::minimumSizeHint() const
{
    return {80, 60};
}

void KVGamutGLWidget::initializeGL()
{
    d->asked = false; // the first frame in a new context is drawn at once
}

void KVGamutGLWidget::paintGL()
{
    d->canvas.setSize(size(), devicePixelRatioF());
    // Otherwise Qt paints for another reason, such as a picture of the window, which must be up to date.
    const bool asked = std::exchange(d->asked, false);
    d->canvas.draw(asked ? KVGamutCanvas::Pace::Limited : KVGamutCanvas::Pace::Now);
}

bool KVGamutGLWidget::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::Show:
        d->canvas.setShown(true);
        break;
    case QEvent::Hide:
        d->canvas.setShown(false);
        break;
    case QEvent::Resize:
        d->canvas.setSize(size(), devicePixelRatioF());
        break;
    default:
        if (isEnabled() && d->canvas.passOn(*event))
            return true;
        break;
    }
    return QOpenGLWidget::event(event);
}
