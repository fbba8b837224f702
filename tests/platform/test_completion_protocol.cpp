// SPDX-License-Identifier: Apache-2.0
#include <platform/KVCoreCommon.h>

#include "support/MessageCheck.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <thread>

TEST(CompletionProtocol, startsAtZeroAndNotCancelled)
{
    const auto task = KVCompletionProtocol::createTask(QStringLiteral("GamutLoader"));
    EXPECT_EQ(task->name(), QStringLiteral("GamutLoader"));
    EXPECT_EQ(task->progress(), 0.0f);
    EXPECT_FALSE(task->isCancelled());
}

TEST(CompletionProtocol, progressIsMonotonicAndWithin0And1)
{
    const auto task = KVCompletionProtocol::createTask({});
    task->setProgress(0.5f);
    task->setProgress(0.25f);
    EXPECT_EQ(task->progress(), 0.5f);
    task->setProgress(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(task->progress(), 0.5f);
    task->setProgress(-3.0f);
    EXPECT_EQ(task->progress(), 0.5f);
    task->setProgress(7.0f);
    EXPECT_EQ(task->progress(), 1.0f);
}

TEST(CompletionProtocol, cancelReachesOtherThreads)
{
    const auto task = KVCompletionProtocol::createTask({});
    std::thread worker([task] {
        while (!task->isCancelled())
            std::this_thread::yield();
    });
    task->cancel();
    task->cancel();
    worker.join();
    EXPECT_TRUE(task->isCancelled());
}

TEST(CompletionProtocol, listsRunningTasksOldestFirst)
{
    auto first = KVCompletionProtocol::createTask(QStringLiteral("first"));
    auto second = KVCompletionProtocol::createTask(QStringLiteral("second"));
    QStringList names;
    std::thread other([&names] { // on another thread
        for (const auto& task : KVCompletionProtocol::runningTasks())
            names.append(task->name());
    });
    other.join();
    EXPECT_EQ(names, (QStringList{QStringLiteral("first"), QStringLiteral("second")}));

    first.reset();
    ASSERT_EQ(KVCompletionProtocol::runningTasks().size(), 1);
    EXPECT_EQ(KVCompletionProtocol::runningTasks().first()->name(), QStringLiteral("second"));
    second.reset();
    EXPECT_TRUE(KVCompletionProtocol::runningTasks().isEmpty());
}

TEST(CompletionProtocol, progressMayBeReportedFromManyThreads)
{
    const auto task = KVCompletionProtocol::createTask({});
    std::vector<std::thread> workers;
    for (int w = 0; w < 4; ++w)
        workers.emplace_back([task, w] {
            for (int i = 0; i <= 1000; ++i)
                task->setProgress(static_cast<float>(i) / static_cast<float>(1000 + w));
        });
    float last = 0.0f;
    for (int i = 0; i < 1000; ++i) {
        const float now = task->progress();
        EXPECT_GE(now, last);
        last = now;
    }
    for (auto& worker : workers)
        worker.join();
    EXPECT_EQ(task->progress(), 1.0f);
}

TEST(LogDebug, writesTheMessageUnchanged)
{
    KVLogDebug(QStringLiteral("OpenGL 4.5 (\"quoted\")"));
    EXPECT_EQ(kvtest::messages(), QStringList{QStringLiteral("OpenGL 4.5 (\"quoted\")")});
}
