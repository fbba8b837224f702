// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QtGlobal>

#include <memory>
#include <system_error>
#include <thread>
#include <utility>

/// Runs functions one after the other on threads of its own. Not a QThreadPool, because a pool that cannot
/// start its thread never runs anything, and waits for it for ever.
///
/// The functions of this class are called on one thread, or one at a time.
class WorkerThread
{
public:
    WorkerThread() = default;
    ~WorkerThread() { wait(); }
    Q_DISABLE_COPY_MOVE(WorkerThread)

    /// Runs @p work when all earlier functions have returned. It must not throw.
    /// @return false if no thread can be started. Throws std::bad_alloc if there is not enough memory.
    template <typename Work>
    [[nodiscard]] bool run(Work work)
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
    void wait()
    {
        if (m_last)
            m_last->join();
        m_last.reset();
    }

private:
    std::shared_ptr<std::thread> m_last; ///< each thread joins the one before it
};
