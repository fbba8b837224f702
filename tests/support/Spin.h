// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QThread>

#include <functional>

namespace kvtest {

/// Processes what is waiting, and rests a little: workers, the display server and other tests need the
/// processor.
inline void processSomeEvents()
{
    QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    QThread::usleep(500);
}

/// Processes events until @p condition holds; false after @p timeoutMs, a timeout that only hangs exceed.
inline bool spinUntil(const std::function<bool()>& condition, int timeoutMs = 120000)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > timeoutMs)
            return false;
        processSomeEvents();
    }
    return true;
}

/// Processes events for @p ms milliseconds.
inline void spinFor(int ms)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < ms)
        processSomeEvents();
}

} // namespace kvtest
