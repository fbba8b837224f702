// SPDX-License-Identifier: Apache-2.0
// A process that may not have more threads, such as one in a container with a limit.

#include <gamut/KV3DGamutObject.h>

#include "support/FakeVelmora.h"
#include "support/Watchdog.h"

#include <dlfcn.h>
#include <pthread.h>

#include <atomic>
#include <cerrno>

namespace {
std::atomic<bool> refuseThreads{false};
} // namespace

#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)

constexpr bool canRefuseThreads = false; // sanitizers replace this function, too

#else

constexpr bool canRefuseThreads = true;

// A definition in the program replaces that of the C library for all libraries in the process, if it is
// visible.
#pragma GCC visibility push(default)
extern "C" int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*run)(void*),
                              void* argument) noexcept
{
    if (refuseThreads)
        return EAGAIN;
    static const auto original =
        reinterpret_cast<decltype(&pthread_create)>(dlsym(RTLD_NEXT, "pthread_create"));
    return original(thread, attributes, run, argument);
}
#pragma GCC visibility pop

#endif

namespace {

class WithoutThreads : public fakevelmora::Case
{
protected:
    void SetUp() override
    {
        Case::SetUp();
        if (!canRefuseThreads)
            GTEST_SKIP() << "a sanitizer starts the threads";
    }
    void TearDown() override
    {
        refuseThreads = false;
        Case::TearDown();
    }

    bool load()
    {
        bool ended = false;
        bool succeeded = false;
        gamut.load({{QStringLiteral("ProfilePath"), QStringLiteral("missing.icc")},
                    {QStringLiteral("ProfileData"), QByteArray("profile A")}},
                   [&](const QString&, const QString&, bool ok) {
                       ended = true;
                       succeeded = ok;
                   },
                   {});
        EXPECT_FALSE(ended) << "from the event loop";
        EXPECT_TRUE(QTest::qWaitFor([&ended] { return ended; }, 60000));
        return succeeded;
    }

    QThread* engineThread() const { return fakevelmora::initCalls().last().thread; }

    const kvtest::Watchdog watchdog{120}; // a thread pool without its thread waits for ever
    KV3DGamutObject gamut{QStringLiteral("sRGB")};
};

} // namespace

TEST_F(WithoutThreads, aLoadRunsOnTheGuiThread)
{
    refuseThreads = true;
    EXPECT_TRUE(load());
    EXPECT_EQ(engineThread(), QThread::currentThread());
}

TEST_F(WithoutThreads, laterLoadsUseThreadsAgain)
{
    refuseThreads = true;
    EXPECT_TRUE(load());
    refuseThreads = false;
    EXPECT_TRUE(load());
    EXPECT_NE(engineThread(), QThread::currentThread());
}
