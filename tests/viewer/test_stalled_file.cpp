// SPDX-License-Identifier: Apache-2.0
// A profile on a drive that does not answer: the host is not blocked, and nothing goes wrong later.

#include <KVGamutView.h>

#include "support/StalledFile.h"
#include "support/Watchdog.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QColorSpace>
#include <QtTest/QTest>

#include <sys/stat.h>

#include <memory>
#include <optional>

namespace {

using kvtest::StalledCall;

const QString id = QStringLiteral("sRGB");

QByteArray profile()
{
    return QColorSpace(QColorSpace::SRgb).iccProfile();
}

class StalledFile : public testing::TestWithParam<StalledCall>
{
protected:
    void SetUp() override
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(profile());
        file.close();
        settings.gridPoints = 5;
    }

    void TearDown() override { kvtest::releaseStalled(); }

    void loadUntilItStalls()
    {
        kvtest::stallIn(GetParam());
        view->load(id, KVLoadRequest::fromFile(path, settings), view.get(),
                   [this](const std::optional<KVProblem>& problem) {
                       ends.append(problem ? static_cast<int>(problem->code) : -1);
                   });
        ASSERT_TRUE(QTest::qWaitFor([] { return kvtest::isStalled(); }, 60000));
    }

    /// Lets the abandoned thread go on, and time for what it should not do.
    void goOn()
    {
        kvtest::releaseStalled();
        ASSERT_TRUE(QTest::qWaitFor([] { return !kvtest::isStalled(); }, 60000));
        QTest::qWait(20);
    }

    const kvtest::Watchdog watchdog{120}; // a blocked call never ends
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("stalled.icc"));
    KVGamut::Settings settings;
    std::unique_ptr<KVGamut3DViewer> viewer = std::make_unique<KVGamut3DViewer>();
    std::unique_ptr<KVGamutView> view = std::make_unique<KVGamutView>(viewer.get());
    QList<int> ends; ///< codes, -1 for success
};

} // namespace

TEST_P(StalledFile, doesNotBlockTheRemovalOfItsGamut)
{
    loadUntilItStalls();
    viewer->removeGamut(id);
    EXPECT_FALSE(view->isLoading());
    goOn();
    EXPECT_TRUE(ends.isEmpty());
    EXPECT_FALSE(viewer->exists(id));
}

TEST_P(StalledFile, doesNotBlockALoadThatReplacesIt)
{
    loadUntilItStalls();
    bool loaded = false;
    view->load(id, KVLoadRequest::fromData(profile(), settings), view.get(),
               [&loaded](const std::optional<KVProblem>& problem) { loaded = !problem; });
    ASSERT_TRUE(QTest::qWaitFor([&loaded] { return loaded; }, 60000));
    EXPECT_EQ(ends, QList<int>{static_cast<int>(KVProblemCode::Cancelled)});
    goOn();
    EXPECT_GT(viewer->volume(id), 0.0f);
}

TEST_P(StalledFile, doesNotBlockTheEndOfTheViewer)
{
    loadUntilItStalls();
    viewer.reset();
    goOn();
    EXPECT_TRUE(ends.isEmpty());
}

TEST_P(StalledFile, mayBeCancelled)
{
    loadUntilItStalls();
    view->cancel(id);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !ends.isEmpty(); }, 60000));
    EXPECT_EQ(ends, QList<int>{static_cast<int>(KVProblemCode::Cancelled)});
    goOn();
    EXPECT_EQ(ends.size(), 1);
}

TEST_P(StalledFile, isLoadedOnceItAnswers)
{
    loadUntilItStalls();
    goOn();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !ends.isEmpty(); }, 60000));
    EXPECT_EQ(ends, QList<int>{-1});
    EXPECT_GT(viewer->volume(id), 0.0f);
}

TEST_P(StalledFile, isReadWholeIfItGrowsMeanwhile)
{
    const QByteArray whole = profile();
    const auto half = whole.size() / 2;
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    ASSERT_EQ(file.write(whole.left(half)), half);
    loadUntilItStalls();
    ASSERT_EQ(file.write(whole.mid(half)), whole.size() - half);
    goOn();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !ends.isEmpty(); }, 60000));
    EXPECT_EQ(ends, QList<int>{-1});
    EXPECT_GT(viewer->volume(id), 0.0f);
}

TEST(Pipe, asAProfileIsRefused)
{
    const kvtest::Watchdog watchdog(120); // to open it would block for ever
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("pipe.icc"));
    ASSERT_EQ(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    KVGamut3DViewer viewer;
    KVGamutView view(&viewer);
    std::optional<std::optional<KVProblem>> end;
    view.load(id, KVLoadRequest::fromFile(path), &view,
              [&end](const std::optional<KVProblem>& problem) { end = problem; });
    ASSERT_TRUE(QTest::qWaitFor([&end] { return end.has_value(); }, 60000));
    ASSERT_TRUE(*end);
    EXPECT_EQ((*end)->code, KVProblemCode::NotAFile);
    viewer.load(id, {{QStringLiteral("ProfilePath"), path}}, {}); // returns, too
    EXPECT_FALSE(viewer.volume(id) > 0.0f);
}

INSTANTIATE_TEST_SUITE_P(EachCall, StalledFile,
                         testing::Values(StalledCall::Status, StalledCall::Open, StalledCall::Read));

// The last case of this program: its thread is blocked until the program ends, and goes on during that. A
// crash is seen by the exit code.
class StalledFileAtTheEnd : public StalledFile
{
protected:
    void TearDown() override {}
};

TEST_P(StalledFileAtTheEnd, mayOutliveTheProgram)
{
    loadUntilItStalls();
    viewer.reset();
    EXPECT_TRUE(kvtest::isStalled());
}

INSTANTIATE_TEST_SUITE_P(Last, StalledFileAtTheEnd, testing::Values(StalledCall::Read));
