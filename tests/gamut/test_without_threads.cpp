// SPDX-License-Identifier: Apache-2.0
// A process that may not have more threads, such as one in a container with a limit.

#include <gamut/KV3DGamutObject.h>

#include "support/FakeVelmora.h"
#include "support/RefusedThreads.h"
#include "support/Watchdog.h"

using kvtest::refuseThreads;

namespace {

class WithoutThreads : public fakevelmora::Case
{
protected:
    void SetUp() override
    {
        Case::SetUp();
        if (!kvtest::canRefuseThreads)
            GTEST_SKIP() << "a sanitizer starts the threads";
    }
    void TearDown() override
    {
        refuseThreads(false);
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
    refuseThreads(true);
    EXPECT_TRUE(load());
    EXPECT_EQ(engineThread(), QThread::currentThread());
}

TEST_F(WithoutThreads, laterLoadsUseThreadsAgain)
{
    refuseThreads(true);
    EXPECT_TRUE(load());
    refuseThreads(false);
    EXPECT_TRUE(load());
    EXPECT_NE(engineThread(), QThread::currentThread());
}

TEST_F(WithoutThreads, aLoadEndsWhicheverThreadIsRefused)
{
    for (int number = 1; number <= 8; ++number) {
        kvtest::refuseThread(number);
        EXPECT_TRUE(load()) << number;
    }
}
