// SPDX-License-Identifier: Apache-2.0
// Scales and legend in the window.

#include "WindowCase.h"

namespace {

class WindowAnnotations : public kvtest::WindowCase
{
protected:
    KVAnnotations shown() { return window.view().annotations(); }
};

} // namespace

TEST_F(WindowAnnotations, nameTheVisibleGamutsWithTheirVolumes)
{
    EXPECT_EQ(shown(), KVAnnotations());
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    ASSERT_EQ(shown().legend.size(), 2);
    EXPECT_TRUE(shown().scales);
    EXPECT_EQ(shown().legend[0].name, QStringLiteral("sRGB"));
    EXPECT_TRUE(shown().legend[0].details.startsWith(QStringLiteral("Absolute colorimetric, 833")))
        << qPrintable(shown().legend[0].details);
    EXPECT_TRUE(shown().legend[0].details.endsWith(QString::fromUtf8(" ΔE³")));
    EXPECT_EQ(shown().legend[1].key, window.gamuts().signColor(1));

    KVGamutLook hidden;
    hidden.visible = false;
    window.gamuts().setLook(0, hidden);
    ASSERT_EQ(shown().legend.size(), 1);
    EXPECT_EQ(shown().legend[0].name, QStringLiteral("DisplayP3"));
    window.gamuts().clear();
    EXPECT_EQ(shown(), KVAnnotations());
}

TEST_F(WindowAnnotations, drawEachOutlineInTheColourOfTheLegend)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    for (int row = 0; row < 2; ++row)
        EXPECT_EQ(window.view().look(window.gamuts().at(row).id).outlineColor, shown().legend[row].key);
    window.gamuts().changeActiveLook([](KVGamutLook& look) { look.color = QColor(12, 200, 34); });
    const KVGamutLook coloured = window.view().look(window.gamuts().at(0).id);
    EXPECT_EQ(coloured.color, QColor(12, 200, 34));
    EXPECT_EQ(coloured.outlineColor, QColor()); // as the surface
}

TEST_F(WindowAnnotations, emphasiseTheActiveGamut)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    window.gamuts().setActiveRow(0);
    EXPECT_EQ(shown().highlight, window.gamuts().at(0).id);
    window.gamuts().setActiveRow(1);
    EXPECT_EQ(shown().highlight, window.gamuts().at(1).id);
    window.gamuts().remove(0);
    EXPECT_EQ(shown().highlight, QString()); // only one is left
}

TEST_F(WindowAnnotations, areSwitchedInTheMenu)
{
    open({QStringLiteral("sRGB")});
    ASSERT_TRUE(action("annotate").isChecked());
    action("annotate").trigger();
    EXPECT_EQ(shown(), KVAnnotations());
    action("annotate").trigger();
    EXPECT_EQ(shown().legend.size(), 1);
}

TEST_F(WindowAnnotations, scalesFollowTheAxes)
{
    open({QStringLiteral("sRGB")});
    action("axes").trigger();
    EXPECT_FALSE(shown().scales);
    EXPECT_EQ(shown().legend.size(), 1);
    action("axes").trigger();
    EXPECT_TRUE(shown().scales);
}
