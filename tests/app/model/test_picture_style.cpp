// SPDX-License-Identifier: Apache-2.0
#include "model/pictures/PictureStyle.h"

#include "../support/ColourVision.h"

#include <gtest/gtest.h>

using kvtest::colourVisions;
using kvtest::seenDifference;

TEST(PictureStyle, keyColoursAreDistinctInEveryColourVision)
{
    for (const PictureStyle& style : PictureStyle::all())
        for (const auto& vision : colourVisions())
            for (qsizetype i = 0; i < 6; ++i) {
                EXPECT_GT(seenDifference(style.key(i), style.background, vision), 15.0)
                    << qPrintable(style.name) << ' ' << vision.name << ' ' << i;
                for (qsizetype j = 0; j < i; ++j)
                    EXPECT_GT(seenDifference(style.key(i), style.key(j), vision), 15.0)
                        << qPrintable(style.name) << ' ' << vision.name << ' ' << i << ' ' << j;
            }
}

// The simulation itself: red and green are confused without long- or middle-wavelength cones.
TEST(ColourVision, confusesRedAndGreenWithoutTheirCones)
{
    const QColor red(200, 80, 60), green(120, 125, 55);
    const auto difference = [&](std::size_t vision) {
        return seenDifference(red, green, colourVisions()[vision]);
    };
    EXPECT_GT(difference(0), 35.0);
    EXPECT_LT(difference(2), 0.5 * difference(0));
}

TEST(PictureStyle, theFirstHasTheGroundOfTheViewer)
{
    const PictureStyle screen = PictureStyle::named(QStringLiteral("screen"));
    EXPECT_EQ(screen.background, QColor(Qt::gray));
    EXPECT_EQ(screen.grid, QColor(180, 180, 180));
    EXPECT_EQ(screen.ink, QColor(Qt::black));
}

TEST(PictureStyle, anUnknownNameIsTheFirst)
{
    EXPECT_EQ(PictureStyle::named(QStringLiteral("neon")).name, QStringLiteral("screen"));
    EXPECT_EQ(PictureStyle::named(QStringLiteral("dark")).name, QStringLiteral("dark"));
}

TEST(PictureStyle, keyColoursRepeatAfterTheLast)
{
    const PictureStyle paper = PictureStyle::named(QStringLiteral("paper"));
    EXPECT_EQ(paper.key(6), paper.key(0));
    EXPECT_NE(paper.key(1), paper.key(0));
}

TEST(PictureStyle, axesContrastWithTheGround)
{
    for (const PictureStyle& style : PictureStyle::all())
        EXPECT_GT(seenDifference(style.ink, style.background, colourVisions()[0]), 40.0)
            << qPrintable(style.name);
}
