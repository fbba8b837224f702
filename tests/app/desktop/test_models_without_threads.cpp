// SPDX-License-Identifier: Apache-2.0
// The window in a process that may not have more threads: everything is computed, on the GUI thread.
#include "desktop/models/ComparisonModel.h"
#include "desktop/models/GamutQueue.h"
#include "desktop/models/PointLayer.h"
#include "model/inputs/GamutBatch.h"
#include "support/RefusedThreads.h"
#include "support/Spin.h"
#include "support/Watchdog.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>

namespace {

using kvtest::spinUntil;

class WithoutThreads : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!kvtest::canRefuseThreads)
            GTEST_SKIP() << "a sanitizer starts the threads";
        kvtest::refuseThreads(true);
    }
    void TearDown() override { kvtest::refuseThreads(false); }

    const kvtest::Watchdog watchdog{120}; // a thread pool without its thread waits for ever
    GamutListModel gamuts;
    GamutQueue queue{gamuts};
};

TEST_F(WithoutThreads, gamutsAndComparisonsAreComputed)
{
    ComparisonModel comparison(gamuts);
    gamuts.add(QStringLiteral("sRGB"), {}, {});
    gamuts.add(QStringLiteral("DisplayP3"), {}, {});
    ASSERT_TRUE(spinUntil([&] { return !queue.isBusy() && comparison.isComplete(); }));
    // volume of sRGB, which DisplayP3 contains, from an independent computation
    EXPECT_NEAR(gamuts.at(0).gamut.volume(), 832781.0f, 1000.0f);
    const QModelIndex common = comparison.index(1, ComparisonModel::Intersection);
    EXPECT_NEAR(comparison.data(common, ComparisonModel::PlainRole).toString().toDouble(), 832781.0, 2000.0);
}

TEST_F(WithoutThreads, pointsAreReadAndJudged)
{
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("points.csv")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("name,L,a,b\ngrey,50,0,0\nlaser,60,-120,90\n");
    file.close();
    KVGamut3DViewer viewer; // never shown
    PointLayer points(gamuts, viewer);
    gamuts.add(QStringLiteral("sRGB"), {}, {});
    points.open(file.fileName());
    ASSERT_TRUE(spinUntil([&] { return !queue.isBusy() && points.isComplete(); }));
    EXPECT_EQ(points.share(0, Side::Inside), 0.5);
    EXPECT_EQ(points.share(0, Side::Outside), 0.5);
}

TEST_F(WithoutThreads, aBatchIsComputedByTheCaller)
{
    const QList<Result<GamutSource>> sources{GamutSource::open(QStringLiteral("sRGB")),
                                             GamutSource::open(QStringLiteral("missing.icc")),
                                             GamutSource::open(QStringLiteral("AdobeRGB"))};
    const auto found = GamutBatch::compute(sources, {}, [](float) {});
    ASSERT_EQ(found.size(), 3);
    EXPECT_TRUE(found.at(0) && found.at(2));
    EXPECT_FALSE(found.at(1));
    EXPECT_NEAR(found.at(0)->volume(), 832781.0f, 1000.0f);
}

} // namespace
