// SPDX-License-Identifier: Apache-2.0
#include <KVGamut3DViewer.h>

#include <glwindow/ContextScope.h>
#include <platform/KVVelmoraFramework.h>
#include <viewer/GroupNames.h>
#include <viewer/ViewerPrivate.h>

#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QResizeEvent>
#include <QtGui/QWheelEvent>

namespace {

/// On these platforms, input for a window that is transparent for input goes to the window behind it. Others
/// are not known to do so; there, the child window gets the input, and handles it in the same way.
bool canPassInputOn()
{
    const QString platform = QGuiApplication::platformName();
    return platform == QLatin1String("xcb") || platform.startsWith(QLatin1String("wayland"));
}

} // namespace

KVGamut3DViewer::KVGamut3DViewer(QWindow* parent) : QWindow(parent), d(std::make_unique<Private>(*this))
{
    // the name under which hosts put profile handles into parameter hashes
    qRegisterMetaType<KVProfilePtr>("KVProfilePtr");

    // so that event() and the event filters of hosts see all input
    d->widget->setFlag(Qt::WindowTransparentForInput, canPassInputOn());
    d->widget->setVisible(true);
    // With Qt 6.8 it may draw before this window gets the event for its first size.
    const auto fit = [this] { d->widget->resize(size()); };
    connect(this, &QWindow::widthChanged, this, fit);
    connect(this, &QWindow::heightChanged, this, fit);
    addabPlane();
    addAxesAndGrid();
    connect(d->widget, SIGNAL(moveFinised()), this, SIGNAL(moveFinished()));
    resetCamera(Top, 0);
    d->events.adoptCamera();
    connect(d->widget, SIGNAL(click(QPoint, QVector3D, QVector3D)), this,
            SIGNAL(click(QPoint, QVector3D, QVector3D)));
    connect(d->widget, SIGNAL(doubleClick(QPoint, QVector3D, QVector3D)), this,
            SIGNAL(doubleClick(QPoint, QVector3D, QVector3D)));
}

KVGamut3DViewer::~KVGamut3DViewer()
{
    if (!handle())
        hide(); // see ~KVGLWidget(): this window may have a parent, too
}

void KVGamut3DViewer::Private::onSurfaceEvent(const QPlatformSurfaceEvent& event)
{
    // Qt hides the child windows of a native window that is destroyed (when it is closed or when the host
    // moves it to another parent) and does not show them when the native window is created again.
    if (event.surfaceEventType() == QPlatformSurfaceEvent::SurfaceCreated)
        widget->setVisible(!Backdrop::isNeeded());
    else
        backdrop.release();
}

void KVGamut3DViewer::Private::onHide()
{
    if (Backdrop::isNeeded())
        widget->setVisible(false);
}

void KVGamut3DViewer::Private::onExpose()
{
    // Qt creates a Wayland surface each time that a window is shown. The surface of a child window that
    // existed before is not attached to it, or is never exposed. So the child is shown only now.
    if (Backdrop::isNeeded() && viewer.isExposed() && viewer.isVisible())
        widget->setVisible(true);
    backdrop.paint(widget->background());
}

bool KVGamut3DViewer::event(QEvent* e)
{
    const QPointer<KVGamut3DViewer> self(this); // a slot of click() or doubleClick() may destroy the viewer
    switch (e->type()) {
    case QEvent::Resize:
        d->widget->resize(static_cast<QResizeEvent*>(e)->size());
        d->backdrop.paint(background());
        break;
    case QEvent::KeyPress:
        d->widget->keyPressEvent(static_cast<QKeyEvent*>(e));
        break;
    case QEvent::KeyRelease:
        d->widget->keyReleaseEvent(static_cast<QKeyEvent*>(e));
        break;
    case QEvent::Wheel:
        d->widget->wheelEvent(static_cast<QWheelEvent*>(e));
        break;
    case QEvent::MouseMove:
        d->widget->mouseMoveEvent(static_cast<QMouseEvent*>(e));
        break;
    case QEvent::MouseButtonRelease:
        d->widget->mouseReleaseEvent(static_cast<QMouseEvent*>(e));
        break;
    case QEvent::MouseButtonDblClick:
        d->widget->mouseDoubleClickEvent(static_cast<QMouseEvent*>(e));
        break;
    case QEvent::PlatformSurface:
        d->onSurfaceEvent(*static_cast<QPlatformSurfaceEvent*>(e));
        break;
    case QEvent::Hide:
        d->onHide();
        break;
    case QEvent::Expose:
        d->onExpose();
        break;
    default: // including presses: drags only need the moves
        break;
    }
    if (!self)
        return true;
    const bool recognised = QWindow::event(e);
    if (e->type() == QEvent::KeyPress)
        d->leaveByTab(*static_cast<QKeyEvent*>(e));
    return recognised;
}

// --- Frame of reference -----------------------------------------------------------------------------

void KVGamut3DViewer::setDisplayGrid(bool display)
{
    d->setGroupVisible(GroupNames::grid(), display);
}

bool KVGamut3DViewer::displayGrid() const
{
    return d->groupVisible(GroupNames::grid());
}

void KVGamut3DViewer::setDisplayAxes(bool display)
{
    d->setGroupVisible(GroupNames::axes(), display);
}

bool KVGamut3DViewer::displayAxes() const
{
    return d->groupVisible(GroupNames::axes());
}

void KVGamut3DViewer::setabPlane(bool display)
{
    d->setGroupVisible(GroupNames::plane(), display);
}

bool KVGamut3DViewer::abPlane() const
{
    return d->groupVisible(GroupNames::plane());
}

// --- Look -----------------------------------------------------------------------------------------

void KVGamut3DViewer::setFramerate(int framesPerSecond)
{
    d->widget->setFramerate(framesPerSecond);
}

int KVGamut3DViewer::framerate() const
{
    return d->widget->framerate();
}

void KVGamut3DViewer::setLightPos(const QVector3D& position)
{
    d->widget->setLightPos(position);
}

QVector3D KVGamut3DViewer::lightPos() const
{
    return d->widget->lightPos();
}

void KVGamut3DViewer::setLightColor(const QColor& color)
{
    d->widget->setLightColor(color);
}

QColor KVGamut3DViewer::lightColor() const
{
    return d->widget->lightColor();
}

void KVGamut3DViewer::setBackground(QColor color)
{
    d->setBackground(color);
}

QColor KVGamut3DViewer::background() const
{
    return d->widget->background();
}

QImage KVGamut3DViewer::picture() const
{
    return d->widget->picture();
}

QImage KVGamut3DViewer::picture(const QSize& size) const
{
    return d->widget->picture(size);
}

bool KVGamut3DViewer::isSettled() const
{
    return d->widget->isSettled();
}
