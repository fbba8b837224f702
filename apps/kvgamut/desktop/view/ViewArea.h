// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>

#include <QtWidgets/QWidget>

/// A widget that contains the viewer, has the keyboard focus for it and passes key events on.
class ViewArea : public QWidget
{
    Q_OBJECT
public:
    explicit ViewArea(QWidget* parent = nullptr);

    KVGamut3DViewer& viewer() { return *m_viewer; }
    const KVGamut3DViewer& viewer() const { return *m_viewer; }
    KVGamutView& view() { return *m_view; }
    float aspect() const; ///< width by height
    QSize pixels() const; ///< device pixels of the view

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void passOn(QKeyEvent* event);
    bool passOnAsPan(QObject& target, const QMouseEvent& event);
    void zoom(double factor, const QPointF& place);

    KVGamut3DViewer* m_viewer; ///< owned by its container
    KVGamutView* m_view;
    QWidget* m_container;
    bool m_shiftKnown = false; ///< the viewer knows that Shift is held
};
