// SPDX-License-Identifier: Apache-2.0
#include "DropFrame.h"

#include <QtCore/QEvent>
#include <QtCore/QObject>

DropFrame::DropFrame(QWidget& target) : QObject(&target), m_target(target)
{
    target.installEventFilter(this);
}

void DropFrame::setShown(bool shown)
{
    if (shown && m_sides.isEmpty()) {
        for (int i = 0; i < 4; ++i) {
            auto* side = new QWidget(&m_target);
            side->setObjectName(QStringLiteral("dropFrame"));
            // a native window: others would be below the window of the view
            side->setAttribute(Qt::WA_DontCreateNativeAncestors);
            side->setAttribute(Qt::WA_NativeWindow);
            side->setAttribute(Qt::WA_TransparentForMouseEvents);
            side->setAutoFillBackground(true);
            side->setBackgroundRole(QPalette::Highlight);
            m_sides.append(side);
        }
    }
    place();
    for (QWidget* side : std::as_const(m_sides)) {
        side->setVisible(shown);
        side->raise();
    }
}

void DropFrame::place()
{
    if (m_sides.isEmpty())
        return;
    const int width = m_target.width(), height = m_target.height();
    m_sides[0]->setGeometry(0, 0, width, thickness);
    m_sides[1]->setGeometry(0, height - thickness, width, thickness);
    m_sides[2]->setGeometry(0, 0, thickness, height);
    m_sides[3]->setGeometry(width - thickness, 0, thickness, height);
}

bool DropFrame::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        place();
    return QObject::eventFilter(watched, event);
}
