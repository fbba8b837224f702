// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "support/Spin.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QObject>

namespace kvtest {

/// Counts how often events were processed since a widget of the program was last arranged.
class CalmLayout : public QObject
{
public:
    CalmLayout() { QCoreApplication::instance()->installEventFilter(this); }

    /// Processes events until nothing was arranged for a while; false after two minutes.
    bool wait()
    {
        m_rounds = 0;
        return spinUntil([this] { return ++m_rounds > minRounds; });
    }

protected:
    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::LayoutRequest:
        case QEvent::Resize:
        case QEvent::Move:
        case QEvent::Show:
        case QEvent::Hide:
        case QEvent::FontChange:
        case QEvent::StyleChange:
        case QEvent::UpdateRequest:
            m_rounds = 0;
            break;
        default:
            break;
        }
        return QObject::eventFilter(receiver, event);
    }

private:
    static constexpr int minRounds = 40; ///< of at least half a millisecond; longer on a busy machine
    int m_rounds = 0;
};

/// Waits until the layout of the panels is final.
inline bool layoutIsFinal()
{
    return CalmLayout().wait();
}

} // namespace kvtest
