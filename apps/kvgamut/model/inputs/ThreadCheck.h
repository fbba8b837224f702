// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

/// Whether @p count more threads can live at the same time now. There may be a limit of processes, or not
/// enough memory. Starts them, and waits until they have ended.
inline bool threadsAreAvailable(std::size_t count = 1)
{
    std::mutex mutex;
    std::condition_variable changed;
    bool tried = false;
    std::vector<std::thread> threads;
    try {
        threads.reserve(count);
        while (threads.size() < count) {
            threads.emplace_back([&] {
                std::unique_lock lock(mutex);
                changed.wait(lock, [&] { return tried; });
            });
        }
    } catch (const std::exception&) { // std::system_error or std::bad_alloc
    }
    {
        const std::lock_guard lock(mutex);
        tried = true;
    }
    changed.notify_all();
    for (std::thread& thread : threads)
        thread.join();
    return threads.size() == count;
}
