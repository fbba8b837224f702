// SPDX-License-Identifier: Apache-2.0
#include "Jobs.h"

#include <QtCore/QList>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace {

constexpr std::chrono::milliseconds progressEvery{100};

std::atomic<int> limitOfThreads{0}; // 0: the number of cores

/// Threads that take the next job until all are taken.
class Crew
{
public:
    Crew(qsizetype count, const std::function<void(qsizetype)>& job) : m_count(count), m_job(job)
    {
        const auto threads = static_cast<std::size_t>(std::min<qsizetype>(count, Jobs::maxThreads()));
        m_threads.reserve(threads);
        try {
            while (m_threads.size() < threads)
                m_threads.emplace_back([this] { work(); });
        } catch (const std::system_error&) { // no more threads: fewer do the work, or the caller does
        }
    }

    ~Crew()
    {
        for (std::thread& thread : m_threads)
            thread.join();
    }
    Q_DISABLE_COPY_MOVE(Crew)

    void wait(const std::function<void(qsizetype)>& whileWaiting)
    {
        if (m_threads.empty())
            work();
        std::unique_lock lock(m_mutex);
        while (m_done < m_count) {
            if (m_changed.wait_for(lock, progressEvery) == std::cv_status::timeout && whileWaiting) {
                const qsizetype done = m_done;
                lock.unlock();
                whileWaiting(done);
                lock.lock();
            }
        }
        if (m_thrown)
            std::rethrow_exception(m_thrown);
    }

private:
    void work()
    {
        for (qsizetype number = m_next++; number < m_count; number = m_next++) {
            std::exception_ptr thrown;
            try {
                m_job(number);
            } catch (...) { // not enough memory
                thrown = std::current_exception();
            }
            const std::lock_guard lock(m_mutex);
            if (thrown)
                m_thrown = thrown;
            if (++m_done == m_count)
                m_changed.notify_all();
        }
    }

    const qsizetype m_count;
    const std::function<void(qsizetype)>& m_job;
    std::atomic<qsizetype> m_next{0};
    std::mutex m_mutex;
    std::condition_variable m_changed;
    qsizetype m_done = 0;
    std::exception_ptr m_thrown;
    std::vector<std::thread> m_threads;
};

} // namespace

int Jobs::maxThreads()
{
    const int limit = limitOfThreads;
    return limit > 0 ? limit : static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
}

void Jobs::setMaxThreads(int count)
{
    limitOfThreads = std::max(1, count);
}

void Jobs::run(qsizetype count, const std::function<void(qsizetype)>& job,
               const std::function<void(qsizetype)>& whileWaiting)
{
    if (count > 0)
        Crew(count, job).wait(whileWaiting);
}

void Jobs::runInParts(qsizetype count, qsizetype partSize,
                      const std::function<void(qsizetype, qsizetype)>& part,
                      const std::function<void(float)>& progress)
{
    const qsizetype parts = (count + partSize - 1) / partSize;
    const auto job = [&](qsizetype i) { part(i * partSize, std::min(count, (i + 1) * partSize)); };
    std::function<void(qsizetype)> whileWaiting;
    if (progress)
        whileWaiting = [&](qsizetype done) {
            progress(static_cast<float>(done) / static_cast<float>(parts));
        };
    run(parts, job, whileWaiting);
}

bool Jobs::inOrder(qsizetype count, const std::function<QByteArray(qsizetype)>& make,
                   const std::function<bool(const QByteArray&)>& take)
{
    constexpr qsizetype piecesOfThread = 4; // a batch ends when its slowest piece does
    const qsizetype batch = piecesOfThread * maxThreads();
    for (qsizetype first = 0; first < count; first += batch) {
        QList<QByteArray> pieces(std::min(batch, count - first));
        QByteArray* const to = pieces.data(); // a list that is shared would be copied
        run(pieces.size(), [&](qsizetype i) { to[i] = make(first + i); });
        for (const QByteArray& piece : pieces)
            if (!take(piece))
                return false;
    }
    return true;
}
