// SPDX-License-Identifier: Apache-2.0
#include "Presentation.h"

#include "AnnotationBinding.h"

#include <QtWidgets/QDockWidget>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QToolBar>

Presentation::Presentation(QMainWindow& window, AnnotationBinding& annotations, QList<QWidget*> controls)
    : QObject(&window), m_window(window), m_annotations(annotations), m_controls(std::move(controls))
{
    window.installEventFilter(this);
}

void Presentation::setOn(bool on)
{
    if (on == m_isOn)
        return;
    m_isOn = on;
    if (on)
        start();
    else
        end();
    m_annotations.setPresenting(on);
    Q_EMIT switched(on);
}

void Presentation::start()
{
    m_panels = m_window.saveState();
    m_wasFullScreen = m_window.isFullScreen();
    QList<QWidget*> parts = m_controls;
    parts.append(m_window.statusBar());
    for (QDockWidget* panel : m_window.findChildren<QDockWidget*>())
        parts.append(panel);
    for (QToolBar* tools : m_window.findChildren<QToolBar*>())
        parts.append(tools);
    m_hidden.clear();
    for (QWidget* part : std::as_const(parts)) {
        if (part->isHidden())
            continue;
        part->hide();
        m_hidden.append(part);
    }
    // the keys of a hidden menu bar would not work
    m_window.menuBar()->setMaximumHeight(0);
    m_window.setWindowState(m_window.windowState() | Qt::WindowFullScreen);
}

void Presentation::end()
{
    m_window.menuBar()->setMaximumHeight(QWIDGETSIZE_MAX);
    if (!m_wasFullScreen)
        m_window.setWindowState(m_window.windowState() & ~Qt::WindowFullScreen);
    for (const QPointer<QWidget>& part : std::as_const(m_hidden))
        if (part)
            part->show();
    m_hidden.clear();
    m_isReturning = !m_wasFullScreen;
    m_window.restoreState(m_panels);
}

/// The sizes of the panels belong to the size of the window before.
bool Presentation::eventFilter(QObject* watched, QEvent* event)
{
    if (m_isReturning && event->type() == QEvent::Resize && !m_window.isFullScreen()) {
        m_isReturning = false;
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (!m_isOn)
                    m_window.restoreState(m_panels);
            },
            Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}
