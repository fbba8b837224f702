// SPDX-License-Identifier: Apache-2.0
#include "desktop/models/GamutQueue.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>

#include <sys/stat.h>
#include <thread>

namespace {

using kvtest::spinUntil;

const QString cmyk = QStringLiteral("/usr/share/color/icc/ghostscript/default_cmyk.icc");

class Queue : public testing::Test
{
protected:
    bool finish()
    {
        return spinUntil([this] { return !queue.isBusy(); });
    }

    GamutListModel model;
    GamutQueue queue{model};
    QSignalSpy failures{&queue, &GamutQueue::failed};
    QSignalSpy ends{&queue, &GamutQueue::idle};
};

TEST_F(Queue, computesAGamutThatIsAdded)
{
    model.add(QStringLiteral("sRGB"), {}, {});
    EXPECT_TRUE(queue.isBusy());
    ASSERT_TRUE(finish());
    // volume of sRGB from an independent computation
    EXPECT_NEAR(model.at(0).gamut.volume(), 832781.0f, 1000.0f);
    EXPECT_EQ(failures.count(), 0);
    EXPECT_EQ(ends.count(), 1);
}

TEST_F(Queue, computesAgainWithOtherSettings)
{
    model.add(cmyk, {}, {});
    ASSERT_TRUE(finish());
    const float absolute = model.at(0).gamut.volume();
    model.setSettings(0, {KVVMRenderRelativeColorimetric, false, -1});
    ASSERT_TRUE(finish());
    EXPECT_EQ(model.at(0).computedWith.intent, KVVMRenderRelativeColorimetric);
    EXPECT_NEAR(absolute, 296508.0f, 600.0f);
    EXPECT_NEAR(model.at(0).gamut.volume(), 411424.0f, 800.0f);
}

TEST_F(Queue, readsAFileAgainThatHasChanged)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("a.icc"));
    ASSERT_TRUE(QFile::copy(QStringLiteral("/usr/share/color/icc/ghostscript/srgb.icc"), file));
    model.add(file, {KVVMRenderRelativeColorimetric, false, -1}, {});
    ASSERT_TRUE(finish());
    EXPECT_NEAR(model.at(0).gamut.volume(), 832781.0f, 5000.0f);
    ASSERT_TRUE(QFile::remove(file));
    ASSERT_TRUE(QFile::copy(cmyk, file));
    model.computeAgain(0);
    EXPECT_TRUE(model.at(0).loading);
    ASSERT_TRUE(finish());
    EXPECT_NEAR(model.at(0).gamut.volume(), 411424.0f, 800.0f);
}

TEST_F(Queue, keepsTheGamutOfAFileThatIsGone)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("a.icc"));
    ASSERT_TRUE(QFile::copy(cmyk, file));
    model.add(file, {}, {});
    ASSERT_TRUE(finish());
    const quint64 revision = model.at(0).revision;
    ASSERT_TRUE(QFile::remove(file));
    model.setSettings(0, {KVVMRenderRelativeColorimetric, false, -1});
    ASSERT_TRUE(finish());
    ASSERT_EQ(failures.count(), 1);
    EXPECT_EQ(failures[0][0].value<Problem>().subject, file);
    ASSERT_EQ(model.rowCount(), 1);
    EXPECT_EQ(model.at(0).revision, revision);
    EXPECT_EQ(model.at(0).settings, KVGamut::Settings());
}

TEST_F(Queue, readsAPipeOnlyOnce)
{
    const QTemporaryDir folder;
    const QString pipe = folder.filePath(QStringLiteral("pipe.icc"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    model.add(pipe, {}, {});
    QFile profile(cmyk);
    ASSERT_TRUE(profile.open(QIODevice::ReadOnly));
    const QByteArray bytes = profile.readAll();
    std::thread writer([&] {
        QFile out(pipe);
        if (out.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            out.write(bytes);
    });
    EXPECT_TRUE(finish());
    writer.join();
    model.setSettings(0, {KVVMRenderRelativeColorimetric, false, -1});
    ASSERT_TRUE(finish());
    EXPECT_NEAR(model.at(0).gamut.volume(), 411424.0f, 800.0f);
}

TEST_F(Queue, computesTheLastOfSeveralSettings)
{
    model.add(cmyk, {}, {});
    ASSERT_TRUE(finish());
    for (const KVVMRenderType intent :
         {KVVMRenderPerceptual, KVVMRenderSaturation, KVVMRenderRelativeColorimetric})
        model.setSettings(0, {intent, false, 65});
    model.setSettings(0, {KVVMRenderRelativeColorimetric, false, 9});
    ASSERT_TRUE(finish());
    EXPECT_EQ(model.at(0).computedWith, (KVGamut::Settings{KVVMRenderRelativeColorimetric, false, 9}));
    EXPECT_EQ(model.at(0).gamut.report().gridPoints, 9);
    EXPECT_EQ(model.at(0).revision, 2u); // no gamut was computed for the settings in between
}

TEST_F(Queue, reportsAProblemAndRemovesTheGamut)
{
    model.add(QStringLiteral("missing.icc"), {}, {});
    model.add(QStringLiteral("sRGB"), {}, {});
    ASSERT_TRUE(finish());
    ASSERT_EQ(failures.count(), 1);
    const auto problem = failures[0][0].value<Problem>();
    EXPECT_EQ(problem.code, Problem::Code(KVProblemCode::FileNotFound));
    EXPECT_EQ(problem.subject, QStringLiteral("missing.icc"));
    ASSERT_EQ(model.rowCount(), 1);
    EXPECT_EQ(model.at(0).input, QStringLiteral("sRGB"));
}

TEST_F(Queue, keepsThePresentGamutWhenCancelled)
{
    model.add(cmyk, {}, {});
    ASSERT_TRUE(finish());
    const quint64 before = model.at(0).revision;
    model.setSettings(0, {KVVMRenderPerceptual, false, 129});
    queue.cancel(model.at(0).id);
    EXPECT_FALSE(queue.isBusy()); // immediately, before the worker has ended
    EXPECT_FALSE(model.at(0).loading);
    EXPECT_EQ(model.at(0).settings, KVGamut::Settings());
    kvtest::spinFor(300);
    EXPECT_EQ(model.at(0).revision, before); // the result of the worker was ignored
    EXPECT_EQ(failures.count(), 0);
}

TEST_F(Queue, removesAGamutWhoseFirstLoadIsCancelled)
{
    model.add(cmyk, {KVVMRenderPerceptual, false, 129}, {});
    model.add(cmyk, {KVVMRenderPerceptual, false, 129}, {});
    queue.cancelAll();
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_FALSE(queue.isBusy());
    EXPECT_EQ(failures.count(), 0);
}

TEST_F(Queue, ignoresAGamutThatIsRemovedWhileLoading)
{
    model.add(cmyk, {KVVMRenderPerceptual, false, 65}, {});
    model.add(QStringLiteral("sRGB"), {}, {});
    model.remove(0);
    ASSERT_TRUE(finish());
    kvtest::spinFor(100);
    ASSERT_EQ(model.rowCount(), 1);
    EXPECT_TRUE(model.at(0).hasGamut());
    EXPECT_EQ(failures.count(), 0);
}

TEST_F(Queue, reportsProgressThatNeverDecreases)
{
    model.add(cmyk, {KVVMRenderPerceptual, false, 65}, {});
    float last = 0.0f;
    bool grew = false;
    QObject::connect(&queue, &GamutQueue::progressed, &queue, [&] {
        if (!queue.isBusy())
            return;
        EXPECT_GE(queue.progress(), last);
        grew = grew || queue.progress() > 0.0f;
        last = queue.progress();
    });
    ASSERT_TRUE(finish());
    EXPECT_TRUE(grew);
}

TEST(QueueDestructor, cancelsLoadsInProgress)
{
    const auto isRunning = [] { return !KVCompletionProtocol::runningTasks().isEmpty(); };
    GamutListModel model;
    bool wasLoading = false;
    {
        GamutQueue queue(model);
        model.add(cmyk, {KVVMRenderPerceptual, false, 129}, {});
        EXPECT_TRUE(kvtest::spinUntil(isRunning));
        wasLoading =
            model.at(0).loading; // false only if this thread slept during the whole computation of the gamut
    }
    EXPECT_TRUE(kvtest::spinUntil([&] { return !isRunning(); }));
    EXPECT_EQ(model.at(0).loading, wasLoading);
    EXPECT_EQ(model.at(0).hasGamut(), !wasLoading);
}

} // namespace
