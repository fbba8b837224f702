// SPDX-License-Identifier: Apache-2.0
#include <gamut/KVBackgroundTask.h>

#include "support/Watchdog.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QSemaphore>
#include <QtCore/QThread>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <atomic>
#include <functional>
#include <memory>
#include <stdexcept>

namespace {

using Task = KVBackgroundTask<int>;
using kvtest::Watchdog;

/// A unit of work that counts its calls and runs the functions that the case sets.
struct Work : Task::Functor
{
    bool prepare() override
    {
        ++prepares;
        prepareThread = QThread::currentThread();
        return !onPrepare || onPrepare();
    }

    int run() override
    {
        ++runs;
        runThread = QThread::currentThread();
        started.release();
        const int value = onRun ? onRun() : 0;
        ended = true;
        return value;
    }

    void cancel() override
    {
        ++cancels;
        cancelThread = QThread::currentThread();
        cancelled.release();
        if (onCancel)
            onCancel();
    }

    std::function<bool()> onPrepare;
    std::function<int()> onRun;
    std::function<void()> onCancel;

    std::atomic<int> prepares{0};
    std::atomic<int> runs{0};
    std::atomic<int> cancels{0};
    std::atomic<bool> ended{false};
    std::atomic<QThread*> prepareThread{nullptr};
    std::atomic<QThread*> runThread{nullptr};
    std::atomic<QThread*> cancelThread{nullptr};
    QSemaphore started;
    QSemaphore cancelled;
    QSemaphore mayEnd;
};

QSharedPointer<Work> returning(int value)
{
    const auto work = QSharedPointer<Work>::create();
    work->onRun = [value] { return value; };
    return work;
}

/// Runs until mayEnd is released, whether it is cancelled or not.
QSharedPointer<Work> stubborn(int value)
{
    const auto work = QSharedPointer<Work>::create();
    work->onRun = [w = work.data(), value] {
        w->mayEnd.acquire();
        return value;
    };
    return work;
}

/// Runs until it is cancelled.
QSharedPointer<Work> obedient(int value)
{
    const auto work = QSharedPointer<Work>::create();
    work->onRun = [w = work.data(), value] {
        w->cancelled.acquire();
        return value;
    };
    return work;
}

/// Runs the event loop until @p condition holds; false after a timeout that only a defect exceeds.
template <typename Condition>
bool eventually(Condition condition)
{
    return QTest::qWaitFor(condition, 120000);
}

/// Delivers all pending events. After it, a test can check that something did not happen.
void settle()
{
    for (int turn = 0; turn < 5; ++turn) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

} // namespace

TEST(BackgroundTask, isIdleWithADefaultResultAtFirst)
{
    const Task task;
    EXPECT_FALSE(task.isBusy());
    EXPECT_EQ(task.result(), 0);
}

TEST(BackgroundTask, submitsInTheNextTurnOfTheEventLoop)
{
    Task task;
    QSignalSpy finished(&task, SIGNAL(finished()));
    const auto work = returning(7);
    task.start(work, 0);
    EXPECT_TRUE(task.isBusy());
    EXPECT_EQ(work->prepares, 0);
    EXPECT_EQ(work->runs, 0);
    EXPECT_EQ(finished.count(), 0);

    ASSERT_TRUE(eventually([&] { return finished.count() > 0; }));
    settle();
    EXPECT_EQ(finished.count(), 1);
    EXPECT_EQ(work->prepares, 1);
    EXPECT_EQ(work->runs, 1);
    EXPECT_EQ(work->cancels, 0);
    EXPECT_EQ(task.result(), 7);
}

TEST(BackgroundTask, runsOnAWorkerThread)
{
    Task task;
    const auto work = returning(1);
    QThread* reportedOn = nullptr;
    QObject::connect(&task, &Task::finished, [&] { reportedOn = QThread::currentThread(); });
    task.start(work, 0);
    ASSERT_TRUE(eventually([&] { return reportedOn; }));
    EXPECT_EQ(work->prepareThread, QThread::currentThread());
    EXPECT_EQ(reportedOn, QThread::currentThread());
    EXPECT_TRUE(work->runThread);
    EXPECT_NE(work->runThread, QThread::currentThread());
}

TEST(BackgroundTask, belongsToTheThreadThatCreatedIt)
{
    QThread owner;
    QObject onOwner;
    onOwner.moveToThread(&owner);
    owner.start();

    Task* task = nullptr;
    const auto work = returning(5);
    QSemaphore reported;
    QThread* reportedOn = nullptr;
    int result = 0;
    QMetaObject::invokeMethod(&onOwner, [&] {
        task = new Task;
        QObject::connect(task, &Task::finished, task, [&] {
            reportedOn = QThread::currentThread();
            result = task->result();
            reported.release();
        });
        task->start(work, 0);
    });
    EXPECT_TRUE(reported.tryAcquire(1, 120000));
    EXPECT_EQ(reportedOn, &owner);
    EXPECT_EQ(work->prepareThread, &owner);
    EXPECT_EQ(result, 5);
    QMetaObject::invokeMethod(
        &onOwner, [&] { delete task; }, Qt::BlockingQueuedConnection);
    owner.quit();
    owner.wait();
}

TEST(BackgroundTask, isIdleAndHoldsTheResultWhenItReports)
{
    Task task;
    bool busyInSlot = true;
    int resultInSlot = -1;
    QObject::connect(&task, &Task::finished, [&] {
        busyInSlot = task.isBusy();
        resultInSlot = task.result();
    });
    task.start(returning(3), 0);
    ASSERT_TRUE(eventually([&] { return resultInSlot != -1; }));
    EXPECT_FALSE(busyInSlot);
    EXPECT_EQ(resultInSlot, 3);
    EXPECT_FALSE(task.isBusy());
}

TEST(BackgroundTask, staysBusyAsLongAsTheRunLasts)
{
    Task task;
    QSignalSpy finished(&task, SIGNAL(finished()));
    const auto work = stubborn(1);
    task.start(work, 0);
    ASSERT_TRUE(eventually([&] { return work->runs > 0; }));
    settle();
    EXPECT_TRUE(task.isBusy());
    EXPECT_EQ(finished.count(), 0);
    work->mayEnd.release();
    ASSERT_TRUE(eventually([&] { return !task.isBusy(); }));
    EXPECT_EQ(finished.count(), 1);
}

TEST(BackgroundTask, runsOnlyTheLastOfSeveralStartsInOneTurn)
{
    Task task;
    QSignalSpy finished(&task, SIGNAL(finished()));
    const auto first = returning(1);
    const auto second = returning(2);
    const auto third = returning(3);
    task.start(first, 0);
    task.start(second, 0);
    task.start(third, 0);
    ASSERT_TRUE(eventually([&] { return finished.count() > 0; }));
    settle();
    EXPECT_EQ(finished.count(), 1);
    EXPECT_EQ(task.result(), 3);
    for (const auto& dropped : {first, second}) {
        EXPECT_EQ(dropped->prepares, 0);
        EXPECT_EQ(dropped->runs, 0);
        EXPECT_EQ(dropped->cancels, 0);
    }
    EXPECT_EQ(third->runs, 1);
}

TEST(BackgroundTask, destroysAFunctorThatWasReplacedBeforeItRan)
{
    Task task;
    auto first = returning(1);
    const QWeakPointer<Work> watch = first;
    task.start(first, 0);
    first.reset();
    EXPECT_TRUE(watch);
    task.start(returning(2), 0);
    EXPECT_FALSE(watch);
}

TEST(BackgroundTask, aStartDuringARunCancelsTheRun)
{
    Task task;
    QSignalSpy finished(&task, SIGNAL(finished()));
    std::atomic<int> running{0};
    std::atomic<int> mostRunning{0};
    const auto first = QSharedPointer<Work>::create();
    const auto second = QSharedPointer<Work>::create();
    first->onRun = [&, w = first.data()] {
        mostRunning = std::max(mostRunning.load(), ++running);
        w->mayEnd.acquire();
        --running;
        return 1;
    };
    second->onRun = [&] {
        mostRunning = std::max(mostRunning.load(), ++running);
        --running;
        return 2;
    };
    task.start(first, 0);
    ASSERT_TRUE(eventually([&] { return first->runs > 0; }));

    task.start(second, 0);
    EXPECT_EQ(first->cancels, 1);
    EXPECT_EQ(first->cancelThread, QThread::currentThread());
    EXPECT_FALSE(first->ended) << "a start must not wait for the run that it replaces";
    // The timer fires during the old run: the new run is prepared and waits for the only thread.
    ASSERT_TRUE(eventually([&] { return second->prepares > 0; }));
    settle();
    EXPECT_EQ(second->runs, 0);
    EXPECT_EQ(finished.count(), 0);
    EXPECT_TRUE(task.isBusy());

    first->mayEnd.release();
    ASSERT_TRUE(eventually([&] { return finished.count() > 0; }));
    settle();
    EXPECT_EQ(finished.count(), 1);
    EXPECT_EQ(task.result(), 2);
    EXPECT_FALSE(task.isBusy());
    EXPECT_EQ(mostRunning, 1);
    EXPECT_EQ(second->cancels, 0);
}

TEST(BackgroundTask, startsTheNextWhenTheCancelledRunEndsEarly)
{
    Task task;
    QSignalSpy finished(&task, SIGNAL(finished()));
    const auto first = obedient(1);
    const auto second = returning(2);
    task.start(first, 0);
    ASSERT_TRUE(eventually([&] { return first->runs > 0; }));
    task.start(second, 600000); // ten minutes, but the end of the first run starts it earlier
    ASSERT_TRUE(eventually([&] { return finished.count() > 0; }));
    EXPECT_EQ(finished.count(), 1);
    EXPECT_EQ(task.result(), 2);
    EXPECT_EQ(first->cancels, 1);
    EXPECT_EQ(second->runs, 1);
}

TEST(BackgroundTask, aReplacedTimerDoesNotFire)
{
    Task task;
    QSignalSpy finished(&task, SIGNAL(finished()));
    const auto first = obedient(1);
    const auto second = returning(2);
    task.start(first, 0);
    ASSERT_TRUE(eventually([&] { return first->runs > 0; }));
    task.start(second, 100);
    ASSERT_TRUE(eventually([&] { return finished.count() > 0; }));
    QElapsedTimer later;
    later.start();
    EXPECT_TRUE(eventually([&] { return later.hasExpired(250); }));
    EXPECT_EQ(finished.count(), 1) << "a time-out that finds nothing to run reports once more";
    EXPECT_EQ(second->runs, 1);
}

TEST(BackgroundTask, reportsOnceIfAStartCoincidesWithAnEnd)
{
    const Watchdog watchdog(300);
    for (int round = 0; round < 300; ++round) {
        Task task;
        QSignalSpy finished(&task, SIGNAL(finished()));
        const auto first = returning(1);
        const auto second = returning(2);
        task.start(first, 0);
        while (first->prepares == 0)
            QCoreApplication::processEvents();
        // No event is delivered from here to the second start, so the first start cannot be reported.
        QElapsedTimer spin;
        for (spin.start(); spin.nsecsElapsed() < round * 1000;) {
        }
        const bool alreadyReported = finished.count() > 0;
        task.start(second, 0);
        ASSERT_TRUE(eventually([&] { return second->ended && !task.isBusy(); }));
        settle();
        EXPECT_EQ(finished.count(), alreadyReported ? 2 : 1) << "round " << round;
        EXPECT_EQ(task.result(), 2);
    }
}

TEST(BackgroundTask, aStartThatReplacesAQueuedRunSkipsIt)
{
    Task task;
    QSignalSpy finished(&task, SIGNAL(finished()));
    const auto inFlight = stubborn(1);
    const auto queued = returning(2);
    const auto newest = returning(3);
    task.start(inFlight, 0);
    ASSERT_TRUE(eventually([&] { return inFlight->runs > 0; }));
    task.start(queued, 0);
    ASSERT_TRUE(eventually([&] { return queued->prepares > 0; }));
    task.start(newest, 0);
    ASSERT_TRUE(eventually([&] { return newest->prepares > 0; }));
    inFlight->mayEnd.release();
    ASSERT_TRUE(eventually([&] { return !task.isBusy(); }));
    settle();
    EXPECT_EQ(finished.count(), 1);
    EXPECT_EQ(task.result(), 3);
    EXPECT_EQ(queued->runs, 0);
    EXPECT_EQ(queued->cancels, 1);
}

TEST(BackgroundTask, aCancelledRunWithoutASuccessorLeavesNoResult)
{
    // The replacement is refused in one case and null in the other. The result of the old run is discarded.
    const auto refusing = returning(2);
    refusing->onPrepare = [] { return false; };
    for (const auto& replacement : {refusing, QSharedPointer<Work>()}) {
        Task task;
        QSignalSpy finished(&task, SIGNAL(finished()));
        const auto inFlight = stubborn(1);
        task.start(inFlight, 0);
        ASSERT_TRUE(eventually([&] { return inFlight->runs > 0; }));
        task.start(replacement, 0);
        ASSERT_TRUE(eventually([&] { return finished.count() > 0; }));
        EXPECT_EQ(inFlight->cancels, 1);
        inFlight->mayEnd.release();
        ASSERT_TRUE(eventually([&] { return inFlight->ended.load(); }));
        task.start(replacement, 0); // the task can still be used
        ASSERT_TRUE(eventually([&] { return !task.isBusy(); }));
        settle();
        EXPECT_EQ(task.result(), 0);
        EXPECT_FALSE(task.isBusy());
        task.start(returning(5), 0);
        ASSERT_TRUE(eventually([&] { return task.result() == 5; }));
    }
}

TEST(BackgroundTask, manyRestartsNeverOverlapAndEndWithTheLast)
{
    Task task;
    QSignalSpy finished(&task, SIGNAL(finished()));
    std::atomic<int> running{0};
    std::atomic<bool> overlapped{false};
    QList<QSharedPointer<Work>> all;
    for (int i = 1; i <= 50; ++i) {
        const auto work = QSharedPointer<Work>::create();
        work->onRun = [&, w = work.data(), i] {
            if (++running > 1)
                overlapped = true;
            if (i < 50)
                w->cancelled.acquire();
            --running;
            return i;
        };
        all.append(work);
        task.start(work, 0);
        ASSERT_TRUE(eventually([&] { return work->prepares > 0; }));
    }
    ASSERT_TRUE(eventually([&] { return !task.isBusy(); }));
    settle();
    EXPECT_FALSE(overlapped);
    EXPECT_EQ(finished.count(), 1);
    EXPECT_EQ(task.result(), 50);
    for (int i = 0; i < 49; ++i)
        EXPECT_EQ(all[i]->cancels, 1) << i;
}

TEST(BackgroundTask, waitsForTheDelayBeforeItPrepares)
{
    Task task;
    const auto work = returning(1);
    QElapsedTimer timer;
    qint64 preparedAfter = -1;
    work->onPrepare = [&] {
        preparedAfter = timer.elapsed();
        return true;
    };
    timer.start();
    task.start(work, 100);
    ASSERT_TRUE(eventually([&] { return preparedAfter >= 0; }));
    EXPECT_GE(preparedAfter, 90); // Qt's coarse timers may come 5 % early
}

TEST(BackgroundTask, aRunThatThrowsReportsWithADefaultResult)
{
    Task task;
    QSignalSpy finished(&task, SIGNAL(finished()));
    task.start(returning(9), 0);
    ASSERT_TRUE(eventually([&] { return finished.count() == 1; }));
    ASSERT_EQ(task.result(), 9);

    const auto throwing = QSharedPointer<Work>::create();
    throwing->onRun = []() -> int { throw std::runtime_error("no memory"); };
    task.start(throwing, 0);
    ASSERT_TRUE(eventually([&] { return finished.count() == 2; }));
    EXPECT_EQ(task.result(), 0);
    EXPECT_FALSE(task.isBusy());

    const auto throwingAnything = QSharedPointer<Work>::create();
    throwingAnything->onRun = []() -> int { throw 42; };
    task.start(throwingAnything, 0);
    ASSERT_TRUE(eventually([&] { return finished.count() == 3; }));
    EXPECT_EQ(task.result(), 0);

    task.start(returning(4), 0);
    ASSERT_TRUE(eventually([&] { return finished.count() == 4; }));
    EXPECT_EQ(task.result(), 4);
}

TEST(BackgroundTask, withoutPreparationThereIsNoRun)
{
    Task task;
    QSignalSpy finished(&task, SIGNAL(finished()));
    task.start(returning(6), 0);
    ASSERT_TRUE(eventually([&] { return finished.count() == 1; }));

    const auto refusing = returning(8);
    refusing->onPrepare = [] { return false; };
    bool busyInSlot = true;
    QObject::connect(&task, &Task::finished, [&] { busyInSlot = task.isBusy(); });
    task.start(refusing, 0);
    EXPECT_TRUE(task.isBusy());
    ASSERT_TRUE(eventually([&] { return finished.count() == 2; }));
    settle();
    EXPECT_EQ(finished.count(), 2);
    EXPECT_FALSE(busyInSlot);
    EXPECT_EQ(refusing->prepares, 1);
    EXPECT_EQ(refusing->runs, 0);
    EXPECT_EQ(task.result(), 6);

    // The refused functor is released, and the next start works.
    const QWeakPointer<Work> watch = refusing;
    task.start(returning(10), 0);
    ASSERT_TRUE(eventually([&] { return finished.count() == 3; }));
    EXPECT_EQ(task.result(), 10);
    EXPECT_EQ(refusing->prepares, 1);
}

TEST(BackgroundTask, startingANullFunctorKeepsTheResult)
{
    Task task;
    QSignalSpy finished(&task, SIGNAL(finished()));
    task.start(returning(6), 0);
    ASSERT_TRUE(eventually([&] { return finished.count() == 1; }));
    task.start({}, 0);
    EXPECT_TRUE(task.isBusy());
    ASSERT_TRUE(eventually([&] { return finished.count() == 2; }));
    settle();
    EXPECT_EQ(finished.count(), 2);
    EXPECT_FALSE(task.isBusy());
    EXPECT_EQ(task.result(), 6);
}

TEST(BackgroundTask, canBeStartedAgainInASlotOfFinished)
{
    Task task;
    int reports = 0;
    const auto second = returning(2);
    QObject::connect(&task, &Task::finished, [&] {
        if (++reports == 1)
            task.start(second, 0);
    });
    task.start(returning(1), 0);
    ASSERT_TRUE(eventually([&] { return reports == 2; }));
    settle();
    EXPECT_EQ(reports, 2);
    EXPECT_EQ(second->runs, 1);
    EXPECT_EQ(task.result(), 2);
    EXPECT_FALSE(task.isBusy());
}

TEST(BackgroundTask, canBeStartedAgainAfterARefusal)
{
    Task task;
    int reports = 0;
    const auto refusing = returning(1);
    refusing->onPrepare = [] { return false; };
    QObject::connect(&task, &Task::finished, [&] {
        if (++reports == 1)
            task.start(returning(2), 0);
    });
    task.start(refusing, 0);
    ASSERT_TRUE(eventually([&] { return reports == 2; }));
    EXPECT_EQ(task.result(), 2);
}

TEST(BackgroundTask, releasesAFunctorAfterItsRunWasReported)
{
    Task task;
    auto work = returning(1);
    const QWeakPointer<Work> watch = work;
    task.start(work, 0);
    work.reset();
    QSignalSpy finished(&task, SIGNAL(finished()));
    ASSERT_TRUE(eventually([&] { return finished.count() > 0; }));
    EXPECT_TRUE(eventually([&] { return watch.isNull(); }));
}

TEST(BackgroundTask, theDestructorOfAnIdleTaskDoesNotWait)
{
    const Watchdog watchdog(300);
    {
        const Task neverStarted;
    }
    auto task = std::make_unique<Task>();
    const auto work = returning(1);
    task->start(work, 0);
    ASSERT_TRUE(eventually([&] { return !task->isBusy(); }));
    task.reset();
    EXPECT_EQ(work->cancels, 0);
}

TEST(BackgroundTask, theDestructorCancelsTheRunAndWaits)
{
    const Watchdog watchdog(300);
    auto task = std::make_unique<Task>();
    int reports = 0;
    QObject::connect(task.get(), &Task::finished, [&] { ++reports; });
    const auto work = QSharedPointer<Work>::create();
    std::atomic<bool> mayReturn{false};
    work->onCancel = [&] { mayReturn = true; };
    work->onRun = [&] {
        while (!mayReturn)
            QThread::yieldCurrentThread();
        QThread::msleep(50); // the computation notices the cancellation late; the destructor must wait for it
        return 1;
    };
    task->start(work, 0);
    ASSERT_TRUE(eventually([&] { return work->runs > 0; }));
    task.reset();
    EXPECT_TRUE(work->ended);
    EXPECT_EQ(work->cancels, 1);
    settle();
    EXPECT_EQ(reports, 0);
}

TEST(BackgroundTask, anUndeliveredResultIsDroppedByTheDestructor)
{
    const Watchdog watchdog(300);
    for (int round = 0; round < 100; ++round) {
        auto task = std::make_unique<Task>();
        int reports = 0;
        QObject::connect(task.get(), &Task::finished, [&] { ++reports; });
        const auto work = returning(1);
        task->start(work, 0);
        while (work->prepares == 0)
            QCoreApplication::processEvents();
        if (reports > 0)
            continue; // it ended in the same iteration of the event loop
        while (!work->ended)
            QThread::yieldCurrentThread();
        task.reset();
        settle();
        EXPECT_EQ(reports, 0);
    }
}

TEST(BackgroundTask, theDestructorCancelsAScheduledFunctor)
{
    const Watchdog watchdog(300);
    auto task = std::make_unique<Task>();
    int reports = 0;
    QObject::connect(task.get(), &Task::finished, [&] { ++reports; });
    const auto work = returning(1);
    task->start(work, 0);
    task.reset();
    settle();
    EXPECT_EQ(work->cancels, 1);
    EXPECT_EQ(work->prepares, 0);
    EXPECT_EQ(work->runs, 0);
    EXPECT_EQ(reports, 0);
}

TEST(BackgroundTask, theDestructorDoesNotWaitForAQueuedRun)
{
    const Watchdog watchdog(300);
    auto task = std::make_unique<Task>();
    int reports = 0;
    QObject::connect(task.get(), &Task::finished, [&] { ++reports; });
    const auto inFlight = stubborn(1);
    const auto queued = returning(2);
    // The old run ends only after the destructor has started.
    queued->onCancel = [&] { inFlight->mayEnd.release(); };

    task->start(inFlight, 0);
    ASSERT_TRUE(eventually([&] { return inFlight->runs > 0; }));
    task->start(queued, 0);
    ASSERT_TRUE(eventually([&] { return queued->prepares > 0; }));
    ASSERT_EQ(queued->runs, 0);

    task.reset();
    EXPECT_TRUE(inFlight->ended);
    EXPECT_EQ(inFlight->cancels, 1);
    EXPECT_EQ(queued->cancels, 1);
    EXPECT_EQ(queued->runs, 0) << "a cancelled run that waits in the queue must be skipped";
    settle();
    EXPECT_EQ(reports, 0);
}

TEST(BackgroundTask, theDestructorCancelsRunningAndScheduledFunctors)
{
    const Watchdog watchdog(300);
    auto task = std::make_unique<Task>();
    int reports = 0;
    QObject::connect(task.get(), &Task::finished, [&] { ++reports; });
    const auto inFlight = stubborn(1);
    const auto scheduled = returning(2);
    scheduled->onCancel = [&] { inFlight->mayEnd.release(); };
    task->start(inFlight, 0);
    ASSERT_TRUE(eventually([&] { return inFlight->runs > 0; }));
    task->start(scheduled, 0);

    task.reset();
    EXPECT_TRUE(inFlight->ended);
    EXPECT_GE(inFlight->cancels, 1);
    EXPECT_EQ(scheduled->cancels, 1);
    EXPECT_EQ(scheduled->prepares, 0);
    EXPECT_EQ(scheduled->runs, 0);
    settle();
    EXPECT_EQ(reports, 0);
}

TEST(BackgroundTask, twoTasksRunInParallel)
{
    const Watchdog watchdog(300);
    Task first;
    Task second;
    const auto a = stubborn(1);
    const auto b = stubborn(2);
    first.start(a, 0);
    second.start(b, 0);
    // Both runs must start before either may end. With one shared thread this would never happen.
    EXPECT_TRUE(eventually([&] { return a->runs > 0 && b->runs > 0; }));
    b->mayEnd.release();
    EXPECT_TRUE(eventually([&] { return !second.isBusy(); }));
    EXPECT_TRUE(first.isBusy());
    a->mayEnd.release();
    EXPECT_TRUE(eventually([&] { return !first.isBusy(); }));
}

TEST(BackgroundTask, resultsMayBePointers)
{
    struct Nothing : KVBackgroundTask<void*>::Functor
    {
        void* run() override { return nullptr; }
        void cancel() override {}
    };
    KVBackgroundTask<void*> task;
    QSignalSpy finished(&task, SIGNAL(finished()));
    task.start(QSharedPointer<Nothing>::create(), 0);
    ASSERT_TRUE(eventually([&] { return finished.count() > 0; }));
    EXPECT_EQ(task.result(), nullptr);
}
