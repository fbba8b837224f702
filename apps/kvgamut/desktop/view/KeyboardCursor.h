// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>

#include <QtCore/QObject>

class QKeyEvent;
class ViewArea;

/// A place in Lab that keys move, so that a colour can be chosen without a pointer.
///
/// While it is on and the view has the keyboard focus: Left and Right along a*, Up and Down along b*, Page Up
/// and Page Down along L*, with Shift ten times as far; Enter picks, Esc ends. It is shown as a cross of long
/// lines along the three axes.
class KeyboardCursor : public QObject
{
    Q_OBJECT
public:
    explicit KeyboardCursor(ViewArea& area, QObject* parent = nullptr);

    bool isOn() const { return m_isOn; }
    void setOn(bool on);
    QVector3D place() const { return m_place; } ///< (L*, a*, b*); the middle of the L* axis at first
    void setPlace(const QVector3D& lab);

    static constexpr float step = 1.0f;
    static constexpr float largeStep = 10.0f;
    static constexpr float maxChroma = 200.0f; ///< the largest distance of a* and of b* from 0

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void switched(bool on);
    void moved(const QVector3D& lab);
    void picked(const QVector3D& lab);

private:
    bool handle(const QKeyEvent& event);
    void draw();

    ViewArea& m_area;
    QVector3D m_place{50.0f, 0.0f, 0.0f};
    bool m_isOn = false;
};
