// SPDX-License-Identifier: Apache-2.0
#include "GamutBatch.h"

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

float meanProgress(const QList<KVCompletionProtocolPtr>& tasks)
{
    float sum = 0.0f;
    for (const auto& task : tasks)
        sum += task->progress();
    return sum / static_cast<float>(std::max<qsizetype>(1, tasks.size()));
}

/// Jobs with the numbers 0 to @p count - 1, on as many threads as the machine has cores.
class Crew
{
public:
    Crew(qsizetype count, const std::function<void(qsizetype)>& job) : m_count(count), m_job(job)
    {
        const auto cores = static_cast<qsizetype>(std::max(1u, std::thread::hardware_concurrency()));
        m_threads.reserve(static_cast<size_t>(std::min(count, cores)));
        try {
            while (m_threads.size() < m_threads.capacity())
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

    /// Waits for the end of all jobs, and calls @p whileWaiting now and then. Throws what a job has thrown.
    void wait(const std::function<void()>& whileWaiting)
    {
        if (m_threads.empty())
            work();
        std::unique_lock lock(m_mutex);
        while (m_done < m_count) {
            if (m_changed.wait_for(lock, progressEvery) == std::cv_status::timeout) {
                lock.unlock();
                whileWaiting();
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

QList<Result<KVGamut::GamutObject>> GamutBatch::compute(const QList<Result<GamutSource>>& sources,
                                                        const KVGamut::Settings& settings,
                                                        const std::function<void(float)>& progress,
                                                        KVGamut::Construction construction)
{
    QList<Result<KVGamut::GamutObject>> gamuts(sources.size());
    QList<KVCompletionProtocolPtr> tasks;
    for (const auto& source : sources)
        tasks.append(KVCompletionProtocol::createTask(source ? source->name() : QString()));

    Result<KVGamut::GamutObject>* results = gamuts.data(); // a list that is shared would be copied
    const std::function<void(qsizetype)> job = [&, results](qsizetype i) {
        KVCompletionProtocolPtr task = tasks.at(i);
        results[i] = sources.at(i).and_then(
            [&](const GamutSource& opened) { return opened.compute(settings, &task, construction); });
        task->setProgress(1.0f);
    };
    Crew(sources.size(), job).wait([&] { progress(meanProgress(tasks)); });
    return gamuts;
}
