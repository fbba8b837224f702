// SPDX-License-Identifier: Apache-2.0
#include <viewer/FocusChain.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QMetaObject>
#include <QtCore/QObject>
#include <QtCore/QScopedPointer>
#include <QtGui/QDropEvent>
#include <QtGui/QGuiApplication>

namespace {

/// Swallows events, and knows whether it has seen the one that it looks for.
class Swallow : public QObject
{
public:
    explicit Swallow(QObject* from) { from->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event == wanted)
            seen = true;
        return wanted ? event == wanted : event->type() == QEvent::FocusIn;
    }

    const QEvent* wanted = nullptr; ///< null: all that give the focus
    bool seen = false;
};

QWindow* topLevelOf(QWindow* window)
{
    while (window->parent())
        window = window->parent();
    return window;
}

/// Whether @p container is the widget around @p viewer: it passes events of dragging on to its window.
bool isAround(QObject* container, QWindow& viewer)
{
    QDragLeaveEvent probe;
    Swallow swallow(&viewer);
    swallow.wanted = &probe;
    container->event(&probe); // QApplication would deliver it only while something is dragged
    return swallow.seen;
}

/// The widget that QWidget::createWindowContainer() returned; null if there is none. The library does not
/// link Qt Widgets, so it is found by the name of its class.
QObject* containerOf(QWindow& viewer)
{
    QObject* root = topLevelOf(&viewer)->focusObject();
    while (root && root->parent())
        root = root->parent();
    if (!root)
        return nullptr;
    const QObjectList objects = root->findChildren<QObject*>();
    for (QObject* object : objects) {
        if (object->inherits("QWindowContainer") && isAround(object, viewer))
            return object;
    }
    return nullptr;
}

/// Makes the container the widget at which its window continues the focus chain. The container must not get
/// the event, because it would pass the focus on to the viewer or to the next widget.
void continueAt(QObject* container)
{
    const Swallow swallow(container);
    QMetaObject::invokeMethod(container, "setFocus", Qt::DirectConnection);
}

} // namespace

bool kvIsTab(const QKeyEvent& event)
{
    constexpr auto others = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    return (event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab) && !(event.modifiers() & others);
}

void kvLeaveByTab(QWindow& viewer, const QKeyEvent& event)
{
    // A host that keeps the focus and passes on keys would get this one again.
    if (!viewer.parent() || QGuiApplication::focusWindow() != &viewer)
        return;
    QWindow* const host = topLevelOf(&viewer);
    if (QObject* container = containerOf(viewer))
        continueAt(container);
    const QScopedPointer<QKeyEvent> passedOn(event.clone());
    passedOn->accept();
    QCoreApplication::sendEvent(viewer.parent(), passedOn.data());
    if (passedOn->isAccepted())
        host->requestActivate(); // the widget gets keys only if its window has the focus
}
