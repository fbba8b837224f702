// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <thread>

namespace kvtest {

/// Aborts the test if it is not destroyed in time, so that a hang becomes a failure.
class Watchdog
{
public:
    explicit Watchdog(int seconds)
        : m_thread([this, seconds] {
              std::unique_lock lock(m_mutex);
              if (m_done.wait_for(lock, std::chrono::seconds(seconds), [this] { return m_isDone; }))
                  return;
              std::fprintf(stderr, "watchdog: the test hangs\n");
              std::abort();
          })
    {
    }

    ~Watchdog()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_isDone = true;
        }
        m_done.notify_all();
        m_thread.join();
    }

    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

private:
    std::mutex m_mutex;
    std::condition_variable m_done;
    bool m_isDone = false;
    std::thread m_thread; // declared last, because it uses the other members
};

} // namespace kvtest
