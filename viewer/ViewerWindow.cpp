// SPDX-License-Identifier: Apache-2.0
#include <KVGamut3DViewer.h>

#include <glwindow/ContextScope.h>
#include <glwindow/KVGLWidget.h>
#include <platform/KVVelmoraFramework.h>
#include <viewer/GroupNames.h>

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QResizeEvent>
#include <QtGui/QWheelEvent>

KVGamut3DViewer::KVGamut3DViewer(QWindow* parent) : QWindow(parent), m_widget(new KVGLWidget(this))
{
    // hosts put profile handles into parameter hashes by this name
    qRegisterMetaType<KVProfilePtr>("KVProfilePtr");

    m_widget->setVisible(true);
    addabPlane();
    addAxesAndGrid();
    connect(m_widget, SIGNAL(moveFinised()), this, SIGNAL(moveFinished()));
    resetCamera(Top, 0);
    connect(m_widget, SIGNAL(click(QPoint, QVector3D, QVector3D)), this,
            SIGNAL(click(QPoint, QVector3D, QVector3D)));
    connect(m_widget, SIGNAL(doubleClick(QPoint, QVector3D, QVector3D)), this,
            SIGNAL(doubleClick(QPoint, QVector3D, QVector3D)));
}

KVGamut3DViewer::~KVGamut3DViewer()
{
    if (!handle())
        hide(); // as the window inside does, and for the same reason: this one may have a parent, too
}

bool KVGamut3DViewer::event(QEvent* e)
{
    switch (e->type()) {
    case QEvent::Resize:
        m_widget->resize(static_cast<QResizeEvent*>(e)->size());
        break;
    case QEvent::KeyPress:
        m_widget->keyPressEvent(static_cast<QKeyEvent*>(e));
        break;
    case QEvent::KeyRelease:
        m_widget->keyReleaseEvent(static_cast<QKeyEvent*>(e));
        break;
    case QEvent::Wheel:
        m_widget->wheelEvent(static_cast<QWheelEvent*>(e));
        break;
    case QEvent::MouseMove:
        m_widget->mouseMoveEvent(static_cast<QMouseEvent*>(e));
        break;
    case QEvent::MouseButtonRelease:
        m_widget->mouseReleaseEvent(static_cast<QMouseEvent*>(e));
        break;
    case QEvent::MouseButtonDblClick:
        m_widget->mouseDoubleClickEvent(static_cast<QMouseEvent*>(e));
        break;
    case QEvent::Show:
        m_widget->update(); // the frame loop rests while the viewer is hidden
        break;
    case QEvent::PlatformSurface:
        // Qt hides the child windows of a native window that is destroyed (closing does that, and so may a
        // host that moves its widgets about), and leaves them hidden when it is made again.
        if (static_cast<QPlatformSurfaceEvent*>(e)->surfaceEventType() ==
            QPlatformSurfaceEvent::SurfaceCreated)
            m_widget->setVisible(true);
        break;
    default: // presses too: drags work from the moves alone
        break;
    }
    return QWindow::event(e);
}

// --- Groups ---------------------------------------------------------------------------------------

QSharedPointer<KV3DObject> KVGamut3DViewer::group(const QString& id) const
{
    return m_widget->root().child(id);
}

/// The child @p id of @p parent; made, prepared and added when it is missing.
QSharedPointer<KV3DObject> KVGamut3DViewer::findOrCreate(KV3DObject& parent, const QString& name,
                                                         const QString& id, bool atFront,
                                                         const std::function<void(KV3DObject&)>& prepare)
{
    auto object = parent.child(id);
    if (object)
        return object;
    object.reset(new KV3DObject(name, id));
    object->setId(id); // an empty set name is a name, not a request for a UUID
    if (m_widget->context())
        object->initializeGL(m_widget->context());
    if (prepare)
        prepare(*object);
    parent.addChild(object, atFront);
    return object;
}

void KVGamut3DViewer::setGroupVisible(const QString& id, bool visible)
{
    const auto object = group(id);
    if (!object)
        return;
    const ContextScope scope(m_widget);
    object->setVisible(visible);
}

bool KVGamut3DViewer::groupVisible(const QString& id) const
{
    const auto object = group(id);
    return object && object->isVisible();
}

void KVGamut3DViewer::clearGroup(const QString& id)
{
    const ContextScope scope(m_widget);
    m_widget->root().takeChild(id);
}

void KVGamut3DViewer::removeItem(const QString& groupId, const QString& id)
{
    const auto object = group(groupId);
    if (!object)
        return;
    const ContextScope scope(m_widget);
    object->takeChild(id);
}

QStringList KVGamut3DViewer::itemsOf(const QString& groupId) const
{
    QStringList ids;
    if (const auto object = group(groupId)) {
        const auto items = object->children();
        for (const auto& item : items)
            ids.append(item->id());
    }
    return ids;
}

void KVGamut3DViewer::setDisplayGrid(bool display)
{
    setGroupVisible(GroupNames::grid(), display);
}

bool KVGamut3DViewer::displayGrid() const
{
    return groupVisible(GroupNames::grid());
}

void KVGamut3DViewer::setDisplayAxes(bool display)
{
    setGroupVisible(GroupNames::axes(), display);
}

bool KVGamut3DViewer::displayAxes() const
{
    return groupVisible(GroupNames::axes());
}

void KVGamut3DViewer::setabPlane(bool display)
{
    setGroupVisible(GroupNames::plane(), display);
}

bool KVGamut3DViewer::abPlane() const
{
    return groupVisible(GroupNames::plane());
}

// --- Look -----------------------------------------------------------------------------------------

void KVGamut3DViewer::setFramerate(int framesPerSecond)
{
    m_widget->setFramerate(framesPerSecond);
}

int KVGamut3DViewer::framerate() const
{
    return m_widget->framerate();
}

void KVGamut3DViewer::setLightPos(const QVector3D& position)
{
    m_widget->setLightPos(position);
}

QVector3D KVGamut3DViewer::lightPos() const
{
    return m_widget->lightPos();
}

void KVGamut3DViewer::setLightColor(const QColor& color)
{
    m_widget->setLightColor(color);
}

QColor KVGamut3DViewer::lightColor() const
{
    return m_widget->lightColor();
}

void KVGamut3DViewer::setBackground(QColor color)
{
    m_widget->setBackground(color);
}

QColor KVGamut3DViewer::background() const
{
    return m_widget->background();
}

QImage KVGamut3DViewer::picture() const
{
    return m_widget->picture();
}

QImage KVGamut3DViewer::picture(const QSize& size) const
{
    return m_widget->picture(size);
}

bool KVGamut3DViewer::isSettled() const
{
    return m_widget->isSettled();
}
