// SPDX-License-Identifier: Apache-2.0
#include "Cancelling.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <ctime>
#include <thread>

#include <pthread.h>

namespace cancelling {
namespace {

// Processor time of one thread: what other programs take does not count.
double secondsOf(clockid_t clock)
{
    timespec now;
    clock_gettime(clock, &now);
    return double(now.tv_sec) + 1e-9 * double(now.tv_nsec);
}

} // namespace

Runs cancelledAfter(const std::vector<double>& shares, const KVProfilePtr& profile, int gridPoints,
                    float maxEdge)
{
    clockid_t clock;
    EXPECT_EQ(pthread_getcpuclockid(pthread_self(), &clock), 0);
    const auto compute = [&](KVCompletionProtocolPtr protocol) {
        KVGamut::GamutObject gamut;
        const bool done = gamut.init(profile, KVVMRenderRelativeColorimetric, false, true, maxEdge,
                                     gridPoints, 2, &protocol);
        EXPECT_EQ(done, gamut.reason().isEmpty());
        EXPECT_TRUE(done || gamut.reason().contains(QLatin1String("cancelled")))
            << qPrintable(gamut.reason());
        return done;
    };
    const double start = secondsOf(clock);
    EXPECT_TRUE(compute({}));
    const double whole = secondsOf(clock) - start;
    Runs runs;
    for (double share : shares) {
        const auto protocol = KVCompletionProtocol::createTask(QStringLiteral("GamutLoader"));
        const double begin = secondsOf(clock);
        std::atomic<double> cancelledAt{0.0};
        std::atomic<bool> ended{false};
        std::thread canceller([&] {
            while (!ended && secondsOf(clock) < begin + share * whole)
                std::this_thread::sleep_for(std::chrono::microseconds(100));
            protocol->cancel();
            cancelledAt = secondsOf(clock);
        });
        const bool done = compute(protocol);
        const double end = secondsOf(clock);
        ended = true;
        canceller.join();
        if (done)
            continue;
        ++runs.cancelled;
        runs.longest = std::max(runs.longest, end - cancelledAt);
    }
    return runs;
}

} // namespace cancelling
