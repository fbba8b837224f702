// SPDX-License-Identifier: Apache-2.0
#include "model/text/NearWord.h"

#include "model/inputs/BuiltInNames.h"

#include <gtest/gtest.h>

namespace {

const QStringList intents{QStringLiteral("absolute"), QStringLiteral("perceptual"),
                          QStringLiteral("relative"), QStringLiteral("saturation")};

TEST(NearWord, findsAWordWithOneMistake)
{
    for (const char* word : {"relativ", "rellative", "relatvie", "relbtive", "RELATIVES", "re-lative"})
        EXPECT_EQ(nearWord(QLatin1String(word), intents), QStringLiteral("relative")) << word;
}

TEST(NearWord, findsAWordByItsBeginningOrItsEnd)
{
    EXPECT_EQ(nearWord(QStringLiteral("abs"), intents), QStringLiteral("absolute"));
    EXPECT_EQ(nearWord(QStringLiteral("ration"), intents), QStringLiteral("saturation"));
    EXPECT_EQ(nearWord(QStringLiteral("absolute-colorimetric"), intents), QString());
    EXPECT_EQ(nearWord(QStringLiteral("absolutely"), intents), QStringLiteral("absolute"));
}

TEST(NearWord, findsNothingFarAway)
{
    for (const char* word : {"", "-", "x", "wild", "abcdefgh", "lute is an instrument of the middle ages"})
        EXPECT_EQ(nearWord(QLatin1String(word), intents), QString()) << word;
    EXPECT_EQ(nearWord(QString(100000, QLatin1Char('a')), intents), QString());
    EXPECT_EQ(nearWord(QStringLiteral("relative"), {}), QString());
}

TEST(NearWord, prefersTheNearest)
{
    const QStringList options{QStringLiteral("--points-white-y"), QStringLiteral("--points-white"),
                              QStringLiteral("--points")};
    EXPECT_EQ(nearWord(QStringLiteral("--point-white"), options), QStringLiteral("--points-white"));
    EXPECT_EQ(nearWord(QStringLiteral("--point"), options), QStringLiteral("--points"));
}

TEST(NearWord, findsBuiltInNames)
{
    const std::pair<const char*, const char*> names[] = {{"P3", "DisplayP3"},
                                                         {"display-p3", "DisplayP3"},
                                                         {"rgb", "sRGB"},
                                                         {"AdobeRGB1998", "AdobeRGB"},
                                                         {"2020", "Rec2020"},
                                                         {"srbg.icc", "sRGB"},
                                                         {"prophot@relative", "ProPhoto"},
                                                         {"optimalcolours", "OptimalColors"}};
    for (const auto& [written, meant] : names)
        EXPECT_EQ(BuiltInNames::near(QLatin1String(written)), QLatin1String(meant)) << written;
    for (const char* file : {"printer.icc", "folder/P3", "paper.tif", "colors.csv", "sRGB@pixels"})
        EXPECT_EQ(BuiltInNames::near(QLatin1String(file)), QString()) << file;
}

} // namespace
