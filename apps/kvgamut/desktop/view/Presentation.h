// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>

class AnnotationBinding;
class QMainWindow;
class QWidget;

/// Shows the view alone, on the full screen, with the legend in large type: for a projector. Everything
/// returns when it ends.
class Presentation : public QObject
{
    Q_OBJECT
public:
    /// @param controls that are hidden meanwhile, in addition to menus, panels, tools and status bar
    Presentation(QMainWindow& window, AnnotationBinding& annotations, QList<QWidget*> controls);

    bool isOn() const { return m_isOn; }
    void setOn(bool on);

Q_SIGNALS:
    void switched(bool on);

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void start();
    void end();

    QMainWindow& m_window;
    AnnotationBinding& m_annotations;
    const QList<QWidget*> m_controls;
    QList<QPointer<QWidget>> m_hidden;
    QByteArray m_panels; ///< places of the panels before
    bool m_wasFullScreen = false;
    bool m_isReturning = false; ///< the window gets its former size
    bool m_isOn = false;
};
