// SPDX-License-Identifier: Apache-2.0
// The functions that a host passes to load() and show(): on which thread they are copied and destroyed.

#include "GamutViewCase.h"

#include "support/Watchdog.h"

#include <QtCore/QThread>

#include <atomic>
#include <functional>

namespace {

using fakevelmora::InitCall;
using kvtest::Watchdog;

using kvtest::id;

/// A capture that belongs to the GUI thread, such as a reference to an object of an interpreter.
class Capture
{
public:
    explicit Capture(std::atomic<int>& elsewhere, int& alive) : m_elsewhere(&elsewhere), m_alive(&alive)
    {
        ++*m_alive;
    }
    Capture(const Capture& other) : m_elsewhere(other.m_elsewhere), m_alive(other.m_alive)
    {
        note();
        ++*m_alive;
    }
    Capture& operator=(const Capture&) = delete;
    ~Capture()
    {
        note();
        --*m_alive;
    }

private:
    void note() const
    {
        if (QThread::currentThread() != QCoreApplication::instance()->thread())
            ++*m_elsewhere;
    }

    std::atomic<int>* m_elsewhere;
    int* m_alive;
};

/// One load by either class, and how it ends.
class HostFunctions : public GamutViewCase, public testing::WithParamInterface<bool>
{
protected:
    void load(const QByteArray& profile)
    {
        const Capture capture(elsewhere, alive);
        if (GetParam()) {
            viewer->load(id, {{QStringLiteral("ProfileData"), profile}},
                         [this, capture](const QString&, bool) { ++calls; });
        } else {
            view->load(id, KVLoadRequest::fromData(profile), view.get(),
                       [this, capture](const std::optional<KVProblem>&) { ++calls; });
        }
    }

    void loadUntilStarted()
    {
        fakevelmora::onInit([this](const InitCall& call) {
            ++started;
            call.waitForCancel();
            return std::nullopt;
        });
        load("profile A");
        ASSERT_TRUE(eventually([this] { return started == 1; }));
    }

    void expectOnTheGuiThreadOnly(int expectedCalls)
    {
        EXPECT_TRUE(eventually([&] { return calls == expectedCalls && alive == 0; }));
        settle();
        EXPECT_EQ(calls, expectedCalls);
        EXPECT_EQ(alive, 0) << "a capture is still held";
        EXPECT_EQ(elsewhere, 0) << "a capture was copied or destroyed on another thread";
    }

    const Watchdog watchdog{300};
    std::atomic<int> elsewhere{0};
    std::atomic<int> started{0};
    int alive = 0;
    int calls = 0;
};

} // namespace

TEST_P(HostFunctions, ofALoadThatSucceeds)
{
    load("profile A");
    expectOnTheGuiThreadOnly(1);
}

TEST_P(HostFunctions, ofALoadThatFails)
{
    load("text");
    expectOnTheGuiThreadOnly(1);
}

TEST_P(HostFunctions, ofALoadThatIsCancelled)
{
    loadUntilStarted();
    view->cancel(id);
    expectOnTheGuiThreadOnly(1);
}

TEST_P(HostFunctions, ofALoadThatIsReplaced)
{
    loadUntilStarted();
    fakevelmora::onInit({});
    load("profile B");
    expectOnTheGuiThreadOnly(GetParam() ? 1 : 2);
}

TEST_P(HostFunctions, ofALoadWhoseGamutIsRemoved)
{
    loadUntilStarted();
    viewer->removeGamut(id);
    expectOnTheGuiThreadOnly(0);
}

TEST_P(HostFunctions, ofALoadWhoseViewerIsDestroyed)
{
    loadUntilStarted();
    viewer.reset();
    expectOnTheGuiThreadOnly(0);
}

TEST_P(HostFunctions, ofALoadThatIsReplacedAndRemoved)
{
    loadUntilStarted();
    load("profile B");
    viewer->removeGamut(id);
    expectOnTheGuiThreadOnly(0);
}

INSTANTIATE_TEST_SUITE_P(EachClass, HostFunctions, testing::Bool(),
                         [](const auto& which) { return which.param ? "ofTheViewer" : "ofTheView"; });

namespace {

/// A profile handle whose deleter belongs to the host.
KVProfilePtr hostProfile(std::atomic<int>& elsewhere)
{
    return {KVProfileCreateWithData("profile C", 9), [&elsewhere](KVProfile* profile) {
                if (QThread::currentThread() != QCoreApplication::instance()->thread())
                    ++elsewhere;
                KVProfileRelease(profile);
            }};
}

} // namespace

TEST_P(HostFunctions, aProfileOfTheHostIsReleasedOnTheGuiThread)
{
    for (int round = 0; round < 50; ++round) {
        calls = 0;
        view->load(id, KVLoadRequest::fromProfile(hostProfile(elsewhere)), view.get(),
                   [this](const std::optional<KVProblem>&) {
                       ++calls;
                       viewer->removeGamut(id); // its parameters hold the handle
                   });
        ASSERT_TRUE(eventually([this] { return calls == 1; }));
    }
    EXPECT_EQ(elsewhere, 0);
}
