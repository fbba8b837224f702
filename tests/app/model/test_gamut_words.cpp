// SPDX-License-Identifier: Apache-2.0
#include "model/reports/GamutWords.h"

#include <gtest/gtest.h>

TEST(GamutWords, sayThatColoursOfMoreThanTwelveInksAreNotLookedFor)
{
    KVGamut::Report report;
    report.channels = 12;
    EXPECT_TRUE(GamutWords::notes(report).isEmpty());
    report.channels = 13;
    const QStringList notes = GamutWords::notes(report);
    ASSERT_EQ(notes.size(), 1);
    EXPECT_TRUE(notes.front().contains(QStringLiteral("more than 12 channels"))) << qPrintable(notes.front());
    report.problem.emplace();
    EXPECT_TRUE(GamutWords::notes(report).isEmpty()); // no gamut, nothing to say about its uncertainty
}
