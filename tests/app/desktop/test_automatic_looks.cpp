// SPDX-License-Identifier: Apache-2.0
#include "desktop/models/AutomaticLooks.h"
#include "model/inputs/GamutSource.h"

#include <gtest/gtest.h>

#include <QtTest/QTest>

namespace {

class AutomaticLooksTest : public testing::Test
{
protected:
    /// Adds a computed gamut whose opacity is automatic.
    void add(const QString& name)
    {
        const auto source = GamutSource::open(name);
        const auto gamut = source->compute({KVVMRenderAbsoluteColorimetric, false, 17});
        ASSERT_TRUE(gamut);
        gamuts.add(name, {}, {});
        const int row = gamuts.rowCount() - 1;
        gamuts.setAutomaticOpacity(row, 1.0f);
        gamuts.setGamut(row, *gamut);
    }

    float opacity(int row)
    {
        EXPECT_TRUE(QTest::qWaitFor([this] { return looks.isComplete(); }, 60000));
        return gamuts.at(row).look.opacity;
    }

    GamutListModel gamuts;
    AutomaticLooks looks{gamuts};
    const float solid = 1.0f;
    const float translucent = KVGamutLook::translucentOpacity;
};

} // namespace

TEST_F(AutomaticLooksTest, showTheInnerGamutThroughTheOuterOne)
{
    add(QStringLiteral("ProPhoto"));
    EXPECT_FLOAT_EQ(opacity(0), solid);
    add(QStringLiteral("sRGB"));
    EXPECT_FLOAT_EQ(opacity(1), solid);
    EXPECT_FLOAT_EQ(opacity(0), translucent);
    add(QStringLiteral("DisplayP3"));
    EXPECT_FLOAT_EQ(opacity(2), translucent);
    EXPECT_LT(opacity(0), translucent); // it contains a translucent one
    EXPECT_GT(opacity(0), 0.0f);
}

TEST_F(AutomaticLooksTest, followRemovedAndHiddenGamuts)
{
    add(QStringLiteral("sRGB"));
    add(QStringLiteral("DisplayP3"));
    ASSERT_FLOAT_EQ(opacity(1), translucent);
    gamuts.setData(gamuts.index(0), Qt::Unchecked, Qt::CheckStateRole);
    EXPECT_FLOAT_EQ(opacity(1), solid);
    gamuts.setData(gamuts.index(0), Qt::Checked, Qt::CheckStateRole);
    EXPECT_FLOAT_EQ(opacity(1), translucent);
    gamuts.remove(0);
    EXPECT_FLOAT_EQ(opacity(0), solid);
}

TEST_F(AutomaticLooksTest, leaveAnOpacityThatTheUserChose)
{
    add(QStringLiteral("DisplayP3"));
    gamuts.changeActiveLook([](KVGamutLook& look) { look.opacity = 0.8f; });
    add(QStringLiteral("sRGB"));
    EXPECT_FLOAT_EQ(opacity(0), 0.8f);
    EXPECT_FLOAT_EQ(opacity(1), solid);
}

TEST_F(AutomaticLooksTest, endWhileTheyAreComputed)
{
    GamutListModel other;
    auto ended = std::make_unique<AutomaticLooks>(other);
    const auto source = GamutSource::open(QStringLiteral("sRGB"));
    const auto gamut = source->compute({KVVMRenderAbsoluteColorimetric, false, 9});
    for (int row = 0; row < 2; ++row) {
        other.add(QStringLiteral("sRGB"), {}, {});
        other.setAutomaticOpacity(row, 0.5f);
        other.setGamut(row, *gamut);
    }
    EXPECT_FALSE(ended->isComplete());
    ended.reset();
    QTest::qWait(1);
    EXPECT_FLOAT_EQ(other.at(0).look.opacity, 0.5f);
}
