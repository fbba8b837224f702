// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamut3DViewer.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QVBoxLayout>
#include <QtWidgets/QWidget>

/// A widget that shows a viewer and takes part in the focus chain.
///
/// Without it, a click gives the keyboard focus to the native window of the viewer, and shortcuts of the main
/// window do not work then. Here the widget keeps the focus and passes keys on.
class ViewerArea : public QWidget
{
public:
    /// The area owns @p viewer.
    explicit ViewerArea(KVGamut3DViewer* viewer, QWidget* parent = nullptr)
        : QWidget(parent), m_viewer(viewer)
    {
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(createWindowContainer(viewer, this));
        setFocusPolicy(Qt::StrongFocus);

        // The viewer has a child window, which gets the events of the pointer on some platforms.
        QList<QWindow*> windows = viewer->findChildren<QWindow*>();
        windows.append(viewer);
        for (QWindow* window : std::as_const(windows)) {
            window->setFlag(Qt::WindowDoesNotAcceptFocus);
            window->installEventFilter(this);
        }
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::MouseButtonPress) {
            activateWindow();
            setFocus(Qt::MouseFocusReason);
        }
        return QWidget::eventFilter(watched, event);
    }

protected:
    void keyPressEvent(QKeyEvent* event) override { passOn(event); }
    void keyReleaseEvent(QKeyEvent* event) override { passOn(event); }

    /// The viewer does not see a key release without the focus. Shift is the only key whose state it stores.
    void focusOutEvent(QFocusEvent* event) override
    {
        QKeyEvent release(QEvent::KeyRelease, Qt::Key_Shift, Qt::NoModifier);
        QCoreApplication::sendEvent(m_viewer, &release);
        QWidget::focusOutEvent(event);
    }

private:
    /// Only keys that the viewer uses: any other one would end a camera move.
    void passOn(QKeyEvent* event)
    {
        switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_Plus:
        case Qt::Key_Minus:
        case Qt::Key_Shift:
            QCoreApplication::sendEvent(m_viewer, event);
            break;
        default:
            event->ignore();
        }
    }

    KVGamut3DViewer* m_viewer;
};
