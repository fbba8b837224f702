// SPDX-License-Identifier: Apache-2.0
#include "model/jobs/Jobs.h"

#include "support/RefusedThreads.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <mutex>
#include <new>
#include <set>
#include <thread>
#include <vector>

namespace {

class JobsTest : public testing::Test
{
protected:
    void SetUp() override { Jobs::setMaxThreads(4); }
    void TearDown() override
    {
        kvtest::refuseThreads(false);
        Jobs::setMaxThreads(m_threads);
    }

private:
    const int m_threads = Jobs::maxThreads();
};

TEST_F(JobsTest, doesEachJobOnce)
{
    std::vector<std::atomic<int>> done(1000);
    Jobs::run(1000, [&](qsizetype i) { ++done[static_cast<std::size_t>(i)]; });
    EXPECT_TRUE(std::all_of(done.begin(), done.end(), [](const auto& count) { return count == 1; }));
    Jobs::run(0, [](qsizetype) { FAIL(); });
}

TEST_F(JobsTest, usesAsManyThreadsAsAllowed)
{
    std::atomic<int> working{0};
    Jobs::setMaxThreads(3);
    Jobs::run(3, [&](qsizetype) { // ends only if three work at the same time
        ++working;
        while (working < 3)
            std::this_thread::yield();
    });
    EXPECT_EQ(working, 3);

    std::mutex mutex;
    std::set<std::thread::id> threads;
    Jobs::setMaxThreads(1);
    Jobs::run(100, [&](qsizetype) {
        const std::lock_guard lock(mutex);
        threads.insert(std::this_thread::get_id());
    });
    EXPECT_EQ(threads.size(), 1u);
}

TEST_F(JobsTest, coversAListWithParts)
{
    for (const qsizetype count : {0, 1, 9, 10, 11, 25}) {
        std::vector<std::atomic<int>> done(static_cast<std::size_t>(count));
        Jobs::runInParts(count, 10, [&](qsizetype first, qsizetype end) {
            EXPECT_LE(end - first, 10);
            for (qsizetype i = first; i < end; ++i)
                ++done[static_cast<std::size_t>(i)];
        });
        EXPECT_TRUE(std::all_of(done.begin(), done.end(), [](const auto& times) { return times == 1; }));
    }
}

TEST_F(JobsTest, throwsWhatAJobThrowsWhenTheOthersHaveEnded)
{
    std::atomic<int> done{0};
    EXPECT_THROW(Jobs::run(100,
                           [&](qsizetype i) {
                               if (i == 5)
                                   throw std::bad_alloc();
                               ++done;
                           }),
                 std::bad_alloc);
    EXPECT_EQ(done, 99);
}

TEST_F(JobsTest, givesPiecesInTheirOrder)
{
    QByteArray all;
    std::atomic<int> made{0};
    int taken = 0;
    const auto make = [&made](qsizetype i) {
        ++made;
        return QByteArray::number(i) + ' ';
    };
    const auto take = [&](const QByteArray& piece) {
        all += piece;
        EXPECT_LE(made - taken, 16); // waiting: four for each thread at most
        ++taken;
        return true;
    };
    EXPECT_TRUE(Jobs::inOrder(100, make, take));
    QByteArray expected;
    for (int i = 0; i < 100; ++i)
        expected += QByteArray::number(i) + ' ';
    EXPECT_EQ(all, expected);
}

TEST_F(JobsTest, makesNoMorePiecesWhenNoneIsTaken)
{
    std::atomic<int> made{0};
    const auto make = [&made](qsizetype) {
        ++made;
        return QByteArray();
    };
    EXPECT_FALSE(Jobs::inOrder(1000, make, [](const QByteArray&) { return false; }));
    EXPECT_LE(made, 16);
}

TEST_F(JobsTest, tellsTheCallerWhatIsDoneMeanwhile)
{
    std::atomic<bool> told{false};
    const auto caller = std::this_thread::get_id();
    Jobs::run(
        2,
        [&](qsizetype) {
            while (!told)
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
        },
        [&](qsizetype done) {
            EXPECT_EQ(done, 0);
            EXPECT_EQ(std::this_thread::get_id(), caller);
            told = true;
        });
    EXPECT_TRUE(told);
}

TEST_F(JobsTest, areDoneByTheCallerWithoutThreads)
{
    if (!kvtest::canRefuseThreads)
        GTEST_SKIP() << "a sanitizer replaces the function that starts threads";
    kvtest::refuseThreads(true);
    int done = 0; // on one thread only
    Jobs::run(50, [&](qsizetype) { ++done; });
    EXPECT_EQ(done, 50);
}

} // namespace
