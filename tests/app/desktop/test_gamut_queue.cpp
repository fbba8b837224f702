// SPDX-License-Identifier: Apache-2.0
#include "desktop/models/GamutQueue.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QtTest/QSignalSpy>

namespace {

using kvtest::spinUntil;

const QString cmyk = QStringLiteral("/usr/share/color/icc/ghostscript/default_cmyk.icc");

class Loading : public testing::Test
{
protected:
    bool finish()
    {
        return spinUntil([this] { return !loader.isBusy(); });
    }

    GamutListModel model;
    GamutQueue loader{model};
    QSignalSpy failures{&loader, &GamutQueue::failed};
    QSignalSpy ends{&loader, &GamutQueue::idle};
};

TEST_F(Loading, computesWhatTheListAsksFor)
{
    model.add(QStringLiteral("sRGB"), {}, {});
    EXPECT_TRUE(loader.isBusy());
    ASSERT_TRUE(finish());
    // the volume of sRGB, computed elsewhere with other methods
    EXPECT_NEAR(model.at(0).gamut.volume(), 832781.0f, 1000.0f);
    EXPECT_EQ(failures.count(), 0);
    EXPECT_EQ(ends.count(), 1);
}

TEST_F(Loading, computesAgainWithOtherSettings)
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

TEST_F(Loading, endsWithTheLastOfManyWishes)
{
    model.add(cmyk, {}, {});
    ASSERT_TRUE(finish());
    for (const KVVMRenderType intent :
         {KVVMRenderPerceptual, KVVMRenderSaturation, KVVMRenderRelativeColorimetric})
        model.setSettings(0, {intent, false, 65});
    model.setSettings(0, {KVVMRenderRelativeColorimetric, false, 9});
    ASSERT_TRUE(finish());
    EXPECT_EQ(model.at(0).computedWith, (GamutSettings{KVVMRenderRelativeColorimetric, false, 9}));
    EXPECT_EQ(model.at(0).gamut.report().gridPoints, 9);
    EXPECT_EQ(model.at(0).revision, 2u); // those in between were never shown
}

TEST_F(Loading, saysWhyThereIsNoGamutAndDropsIt)
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

TEST_F(Loading, returnsToTheGamutThatIsThereWhenCancelled)
{
    model.add(cmyk, {}, {});
    ASSERT_TRUE(finish());
    const quint64 before = model.at(0).revision;
    model.setSettings(0, {KVVMRenderPerceptual, false, 129});
    loader.cancel(model.at(0).id);
    EXPECT_FALSE(loader.isBusy()); // at once: nobody waits for the worker
    EXPECT_FALSE(model.at(0).loading);
    EXPECT_EQ(model.at(0).settings, GamutSettings());
    kvtest::spinFor(300);
    EXPECT_EQ(model.at(0).revision, before); // what the worker still said was for nobody
    EXPECT_EQ(failures.count(), 0);
}

TEST_F(Loading, dropsAGamutWhoseFirstLoadIsCancelled)
{
    model.add(cmyk, {KVVMRenderPerceptual, false, 129}, {});
    model.add(cmyk, {KVVMRenderPerceptual, false, 129}, {});
    loader.cancelAll();
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_FALSE(loader.isBusy());
    EXPECT_EQ(failures.count(), 0);
}

TEST_F(Loading, forgetsAGamutThatIsRemovedMeanwhile)
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

TEST_F(Loading, reportsProgressThatOnlyGrows)
{
    model.add(cmyk, {KVVMRenderPerceptual, false, 65}, {});
    float last = 0.0f;
    bool grew = false;
    QObject::connect(&loader, &GamutQueue::progressed, &loader, [&] {
        if (!loader.isBusy())
            return;
        EXPECT_GE(loader.progress(), last);
        grew = grew || loader.progress() > 0.0f;
        last = loader.progress();
    });
    ASSERT_TRUE(finish());
    EXPECT_TRUE(grew);
}

TEST(LoadingEnds, whenTheLoaderIsDestroyedInTheMidst)
{
    const auto isRunning = [] { return !KVCompletionProtocol::runningTasks().isEmpty(); };
    GamutListModel model;
    bool wasLoading = false;
    {
        GamutQueue loader(model);
        model.add(cmyk, {KVVMRenderPerceptual, false, 129}, {});
        EXPECT_TRUE(kvtest::spinUntil(isRunning));
        wasLoading =
            model.at(0).loading; // it is, unless this thread slept while the whole gamut was computed
    }
    EXPECT_TRUE(kvtest::spinUntil([&] { return !isRunning(); }));
    EXPECT_EQ(model.at(0).loading, wasLoading);
    EXPECT_EQ(model.at(0).hasGamut(), !wasLoading);
}

} // namespace
