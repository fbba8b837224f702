// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QtGlobal>

#include <memory>
#include <system_error>
#include <thread>
#include <utility>

/// A pool of one thread: runs functions one after the other. Not a QThreadPool, because that never runs
/// anything if it cannot start its thread, and waits for it for ever.
///
/// The functions of this class are called on one thread, or one at a time.
class WorkerPool
{
public:
    WorkerPool() = default;
    ~WorkerPool() { waitForDone(); }
    Q_DISABLE_COPY_MOVE(WorkerPool)

    /// Runs @p work when all earlier functions have returned. It must not throw.
    /// @return false if no thread can be started. Throws std::bad_alloc if there is not enough memory.
    template <typename Work>
    [[nodiscard]] bool tryStart(Work work)
    {
        const auto next = std::make_shared<std::thread>();
        try {
            *next = std::thread([previous = m_last, work = std::move(work)]() mutable {
                if (previous)
                    previous->join();
                work();
            });
        } catch (const std::system_error&) {
            return false;
        }
        m_last = next;
        return true;
    }

    /// Waits until all functions have returned.
    void waitForDone()
    {
        if (m_last)
            m_last->join();
        m_last.reset();
    }

private:
    std::shared_ptr<std::thread> m_last; ///< each thread joins the one before it
};
