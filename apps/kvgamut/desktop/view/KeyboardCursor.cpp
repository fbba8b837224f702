// SPDX-License-Identifier: Apache-2.0
#include "KeyboardCursor.h"

#include "ViewArea.h"

#include <QtGui/QKeyEvent>

#include <algorithm>
#include <optional>

namespace {

constexpr float armLength = 150.0f; // out of the gamuts, which hide what is inside them

QString setName()
{
    return QStringLiteral("cursor");
}

/// Where a key leads, in steps along L*, a* and b*.
std::optional<QVector3D> directionOf(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return QVector3D(0, -1, 0);
    case Qt::Key_Right:
        return QVector3D(0, 1, 0);
    case Qt::Key_Up:
        return QVector3D(0, 0, 1);
    case Qt::Key_Down:
        return QVector3D(0, 0, -1);
    case Qt::Key_PageUp:
        return QVector3D(1, 0, 0);
    case Qt::Key_PageDown:
        return QVector3D(-1, 0, 0);
    default:
        return {};
    }
}

} // namespace

KeyboardCursor::KeyboardCursor(ViewArea& area, QObject* parent) : QObject(parent), m_area(area)
{
    area.installEventFilter(this);
}

void KeyboardCursor::setOn(bool on)
{
    if (on == m_isOn)
        return;
    m_isOn = on;
    draw();
    if (on)
        m_area.setFocus(Qt::ShortcutFocusReason);
    Q_EMIT switched(on);
    if (on)
        Q_EMIT moved(m_place);
}

void KeyboardCursor::setPlace(const QVector3D& lab)
{
    m_place = {std::clamp(lab.x(), 0.0f, 100.0f), std::clamp(lab.y(), -maxChroma, maxChroma),
               std::clamp(lab.z(), -maxChroma, maxChroma)};
    draw();
    if (m_isOn)
        Q_EMIT moved(m_place);
}

bool KeyboardCursor::eventFilter(QObject* watched, QEvent* event)
{
    if (!m_isOn || (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride))
        return QObject::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool isOurs = directionOf(key->key()) || key->key() == Qt::Key_Return ||
                        key->key() == Qt::Key_Enter || key->key() == Qt::Key_Escape;
    const bool isPlain = !(key->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
    if (!isOurs || !isPlain)
        return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::ShortcutOverride) // otherwise Esc would be the shortcut of the window
        event->accept();
    else
        return handle(*key);
    return true;
}

bool KeyboardCursor::handle(const QKeyEvent& event)
{
    if (event.key() == Qt::Key_Escape)
        setOn(false);
    else if (const auto direction = directionOf(event.key()))
        setPlace(m_place + *direction * (event.modifiers().testFlag(Qt::ShiftModifier) ? largeStep : step));
    else
        Q_EMIT picked(m_place);
    return true;
}

/// In black or white, whichever differs more from the background.
void KeyboardCursor::draw()
{
    KVGamut3DViewer& viewer = m_area.viewer();
    if (!m_isOn) {
        viewer.removeSegmentSet(setName());
        return;
    }
    const QColor ink = qGray(viewer.background().rgb()) > 127 ? Qt::black : Qt::white;
    QList<std::pair<std::pair<QColor, QVector3D>, std::pair<QColor, QVector3D>>> arms;
    const QVector3D foot(0.0f, m_place.y(), m_place.z());
    arms.append({{ink, foot}, {ink, foot + QVector3D(100, 0, 0)}});
    for (const QVector3D& axis : {QVector3D(0, 1, 0), QVector3D(0, 0, 1)})
        arms.append({{ink, m_place - axis * armLength}, {ink, m_place + axis * armLength}});
    viewer.addSegmentSet(setName(), arms);
}
