// SPDX-License-Identifier: Apache-2.0
#include <glwindow/MotionDetail.h>

#include <gtest/gtest.h>

using Move = MotionDetail::Move;

namespace {

/// A view whose last frame was exact and took @p tookMs, at the time 1000, at rest.
MotionDetail after(qint64 tookMs)
{
    MotionDetail detail;
    detail.noteFrame(1000, Move::None, false, tookMs);
    return detail;
}

} // namespace

TEST(MotionDetail, isExactWhileFramesTakeUpTo40Milliseconds)
{
    const MotionDetail detail = after(40);
    EXPECT_FALSE(detail.isSlow());
    EXPECT_FALSE(detail.isCoarse(5000, Move::Ongoing));
    EXPECT_FALSE(MotionDetail().isCoarse(0, Move::Ongoing)) << "before the first frame";
}

TEST(MotionDetail, isCoarseAtOnceWhenTheUserMovesASlowView)
{
    const MotionDetail detail = after(41);
    EXPECT_TRUE(detail.isSlow());
    EXPECT_TRUE(detail.isCoarse(5000, Move::Ongoing));
    EXPECT_FALSE(detail.isCoarse(5000, Move::None));
}

TEST(MotionDetail, isCoarseFromTheSecondOfSeveralCallsOn)
{
    MotionDetail detail = after(400);
    EXPECT_FALSE(detail.isCoarse(5000, Move::Set)) << "one call moves nothing";
    detail.noteFrame(5400, Move::Set, false, 400);
    EXPECT_TRUE(detail.isCoarse(5549, Move::Set)) << "149 ms after the end of the frame";
    EXPECT_FALSE(detail.isCoarse(5550, Move::Set));
}

TEST(MotionDetail, staysCoarseFor150MillisecondsAndRefinesThen)
{
    MotionDetail detail = after(100);
    detail.noteFrame(2000, Move::Ongoing, true, 20);
    EXPECT_TRUE(detail.showsCoarse());
    EXPECT_FALSE(detail.mustRefine(2149));
    EXPECT_TRUE(detail.isCoarse(2149, Move::None)) << "a frame for another reason";
    EXPECT_TRUE(detail.mustRefine(2150));
    EXPECT_FALSE(detail.isCoarse(2150, Move::None));
    detail.noteFrame(2250, Move::None, false, 100);
    EXPECT_FALSE(detail.showsCoarse());
    EXPECT_FALSE(detail.mustRefine(9999));
}

TEST(MotionDetail, eachMovementDefersTheExactFrame)
{
    MotionDetail detail = after(100);
    detail.noteFrame(2000, Move::Ongoing, true, 20);
    detail.noteFrame(2120, Move::Ongoing, true, 20);
    EXPECT_FALSE(detail.mustRefine(2269));
    EXPECT_TRUE(detail.mustRefine(2270));
}

TEST(MotionDetail, coarseFramesDoNotMakeAViewFast)
{
    MotionDetail detail = after(100);
    detail.noteFrame(2000, Move::Ongoing, true, 5);
    EXPECT_TRUE(detail.isCoarse(2010, Move::Ongoing));
    detail.noteFrame(2500, Move::None, false, 30); // gamuts were removed meanwhile
    EXPECT_FALSE(detail.isCoarse(2510, Move::Ongoing));
}

TEST(MotionDetail, aFrameWithoutCoarseSurfacesIsNotRefined)
{
    MotionDetail detail = after(100);
    detail.noteFrame(2000, Move::Ongoing, false, 100); // they are not made yet
    EXPECT_FALSE(detail.mustRefine(9999));
}
