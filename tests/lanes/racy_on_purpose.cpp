// SPDX-License-Identifier: Apache-2.0
#include <gamut/KVBackgroundTask.h>

#include <QtCore/QCoreApplication>

#include <atomic>
#include <cstdio>

// A deliberate data race: a worker writes a variable that its owner reads, without synchronisation.

namespace {

volatile int shared = 0; // volatile, so that every write is made
// The worker writes at least once, and until its owner has read. So there is a race on every run, whichever
// comes first. Without order, so that this does not synchronise the accesses.
std::atomic<bool> hasBeenRead = false;

class RacyFunctor : public KVBackgroundTask<int>::Functor
{
public:
    int run() override
    {
        int i = 0;
        do {
            shared = ++i;
        } while (!hasBeenRead.load(std::memory_order_relaxed));
        return 0;
    }
    void cancel() override {}
};

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    KVBackgroundTask<int> task;
    bool finished = false;
    QObject::connect(&task, &KVBackgroundTaskBase::finished, &task, [&finished] { finished = true; });
    task.start(QSharedPointer<KVBackgroundTask<int>::Functor>(new RacyFunctor), 0);
    int seen = 0;
    while (!finished) {
        QCoreApplication::processEvents();
        seen = shared;
        hasBeenRead.store(true, std::memory_order_relaxed);
    }
    std::printf("%d\n", seen);
}
