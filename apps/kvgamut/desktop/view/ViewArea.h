// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamut3DViewer.h>

#include <QtWidgets/QWidget>

/// The viewer as a part of a window of widgets: the widget that has the keyboard for it and hands the keys
/// on, its container, and clicks told from drags.
class ViewArea : public QWidget
{
    Q_OBJECT
public:
    explicit ViewArea(QWidget* parent = nullptr);

    KVGamut3DViewer& viewer() { return *m_viewer; }
    const KVGamut3DViewer& viewer() const { return *m_viewer; }
    float aspect() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// The scene was clicked, not dragged: the ray under the pointer, as KVGamut3DViewer::click() has it.
    void clicked(QVector3D origin, QVector3D direction);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void handOn(QKeyEvent* event);

    KVGamut3DViewer* m_viewer; ///< owned by its container
    QWidget* m_container;
    QPoint m_pressed;
};
