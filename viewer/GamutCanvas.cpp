// SPDX-License-Identifier: Apache-2.0
#include <KVGamutCanvas.h>

#include <glwindow/OffscreenTarget.h>
#include <viewer/ViewerPrivate.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPointingDevice>

#include <algorithm>
#include <array>

namespace {

/// The target of a host.
class HostTarget : public FrameTarget
{
public:
    explicit HostTarget(KVGamutCanvas::Target& target) : m_target(target) {}

    QOpenGLContext* context() const override { return m_target.context(); }
    bool makeCurrent() override { return m_target.context() && m_target.makeCurrent(); }
    void doneCurrent() override { m_target.doneCurrent(); }
    GLuint framebuffer() const override { return m_target.framebuffer(); }
    bool prepare(const QSize&, const QSurfaceFormat&) override { return m_target.context() != nullptr; }

private:
    KVGamutCanvas::Target& m_target;
};

/// Keys that move the camera, or change what a drag does. Any other one would end a camera move.
constexpr std::array<int, 7> usedKeys = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up,   Qt::Key_Down,
                                         Qt::Key_Plus, Qt::Key_Minus, Qt::Key_Shift};

std::unique_ptr<FrameTarget> frameTarget(KVGamutCanvas::Target* target)
{
    if (target)
        return std::make_unique<HostTarget>(*target);
    return std::make_unique<OffscreenTarget>();
}

} // namespace

class Q_DECL_HIDDEN KVGamutCanvas::Private
{
public:
    explicit Private(Target* target) : frames(frameTarget(target)) {}

    void send(QEvent& event) { QCoreApplication::sendEvent(&viewer, &event); }
    void sendMouse(QEvent::Type type, const QSinglePointEvent& event, Qt::MouseButton button,
                   Qt::MouseButtons buttons);
    bool passOnMouse(QSinglePointEvent& event);
    bool passOnKey(QKeyEvent& event);
    void releaseShift();

    std::unique_ptr<FrameTarget> frames; // destroyed last
    /// Qt keeps in the device which item has grabbed it: a second event of the same device would change that.
    const QPointingDevice mouse{QStringLiteral("KVGamutCanvas"),
                                0,
                                QInputDevice::DeviceType::Mouse,
                                QPointingDevice::PointerType::Generic,
                                QInputDevice::Capability::Position,
                                1,
                                3};
    KVGamut3DViewer viewer;
    KVGamutView view{&viewer};
    QSize size;
    qreal devicePixelRatio = 1.0;
    bool shown = false;
};

KVGamutCanvas::Target::~Target() = default;

KVGamutCanvas::KVGamutCanvas(QObject* parent) : KVGamutCanvas(nullptr, parent) {}

KVGamutCanvas::KVGamutCanvas(Target* target, QObject* parent)
    : QObject(parent), d(std::make_unique<Private>(target))
{
    d->viewer.d->widget->setTarget(d->frames.get());
    setSize({}, 1.0);
    connect(&d->viewer.d->events, &ViewerEvents::frameWanted, this, &KVGamutCanvas::drawWanted);
}

KVGamutCanvas::~KVGamutCanvas() = default;

QSurfaceFormat KVGamutCanvas::format()
{
    return KVGLWidget::surfaceFormat();
}

KVGamut3DViewer* KVGamutCanvas::viewer() const
{
    return &d->viewer;
}

KVGamutView* KVGamutCanvas::view() const
{
    return &d->view;
}

void KVGamutCanvas::setSize(const QSize& size, qreal devicePixelRatio)
{
    d->size = size;
    d->devicePixelRatio = devicePixelRatio;
    d->viewer.resize(size);
    d->viewer.d->widget->setTargetSize(size, devicePixelRatio);
}

QSize KVGamutCanvas::size() const
{
    return d->size;
}

qreal KVGamutCanvas::devicePixelRatio() const
{
    return d->devicePixelRatio;
}

void KVGamutCanvas::setShown(bool shown)
{
    d->shown = shown;
    d->viewer.d->widget->setTargetShown(shown);
}

bool KVGamutCanvas::isShown() const
{
    return d->shown;
}

bool KVGamutCanvas::draw(Pace pace)
{
    return d->viewer.d->widget->drawInTarget(pace == Pace::Now ? KVGLWidget::Pace::Now
                                                               : KVGLWidget::Pace::Limited);
}

QImage KVGamutCanvas::frame() const
{
    return d->viewer.picture();
}

/// The viewer computes drags from global positions. Those of the host would be wrong for an item that is
/// scaled or rotated.
void KVGamutCanvas::Private::sendMouse(QEvent::Type type, const QSinglePointEvent& event,
                                       Qt::MouseButton button, Qt::MouseButtons buttons)
{
    const QPointF position = event.position();
    QMouseEvent sent(type, position, position, position, button, buttons, event.modifiers(), &mouse);
    send(sent);
}

bool KVGamutCanvas::Private::passOnMouse(QSinglePointEvent& event)
{
    // Without it a drag would start where the pointer was last seen: hosts do not report each move.
    if (event.type() == QEvent::MouseButtonPress || event.type() == QEvent::HoverMove)
        sendMouse(QEvent::MouseMove, event, Qt::NoButton, Qt::NoButton);
    if (event.type() != QEvent::HoverMove)
        sendMouse(event.type(), event, event.button(), event.buttons());
    return true;
}

bool KVGamutCanvas::Private::passOnKey(QKeyEvent& event)
{
    if (std::find(usedKeys.begin(), usedKeys.end(), event.key()) == usedKeys.end())
        return false;
    send(event);
    event.accept();
    return true;
}

/// The release of the key goes to what has the focus then.
void KVGamutCanvas::Private::releaseShift()
{
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Shift, Qt::NoModifier);
    send(release);
}

bool KVGamutCanvas::passOn(QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::HoverMove:
        return d->passOnMouse(static_cast<QSinglePointEvent&>(event));
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return d->passOnKey(static_cast<QKeyEvent&>(event));
    case QEvent::Wheel:
        d->send(event);
        event.accept();
        return true;
    case QEvent::FocusOut:
        d->releaseShift();
        return false;
    default:
        return false;
    }
}
