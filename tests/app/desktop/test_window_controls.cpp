// SPDX-License-Identifier: Apache-2.0
#include "WindowCase.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListView>
#include <QtWidgets/QSlider>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QToolButton>

// Every control changes the picture, and setting it back restores the picture.

namespace {

using kvtest::cmyk;

class Controls : public kvtest::WindowCase
{
protected:
    /// Expects that @p change changes the picture and that @p back restores it.
    void expectSeen(const char* what, const std::function<void()>& change, const std::function<void()>& back)
    {
        const QImage before = settledPicture();
        change();
        EXPECT_NE(settledPicture(), before) << what;
        back();
        EXPECT_EQ(settledPicture(), before) << what;
    }

    void expectSwitchSeen(const char* name)
    {
        expectSeen(
            name, [&] { action(name).trigger(); }, [&] { action(name).trigger(); });
    }
};

TEST_F(Controls, changeTheLookOfTheActiveGamut)
{
    open({QStringLiteral("sRGB")});
    for (const char* name : {"surface", "projection", "primaries"})
        expectSeen(
            name, [&] { control<QCheckBox>(name).click(); }, [&] { control<QCheckBox>(name).click(); });
    for (const char* name : {"opacity", "ambient"}) {
        auto& slider = control<QSlider>(name);
        const int before = slider.value();
        expectSeen(
            name, [&] { slider.setValue(20); }, [&] { slider.setValue(before); });
    }
    auto& mode = control<QComboBox>("mode");
    for (const char* name : {"Wireframe"})
        expectSeen(
            name, [&] { mode.setCurrentText(QLatin1String(name)); },
            [&] { mode.setCurrentText(QStringLiteral("Smooth")); });
    expectSeen(
        "colour",
        [&] {
            KVGamutLook look = entry().look;
            look.color = Qt::red;
            window.gamuts().setLook(0, look);
        },
        [&] { control<QToolButton>("ownColors").click(); });
}

TEST_F(Controls, showFlatFacesInASingleColour)
{
    open({QStringLiteral("sRGB")});
    KVGamutLook look = entry().look;
    look.color = Qt::red;
    window.gamuts().setLook(0, look);
    auto& mode = control<QComboBox>("mode");
    expectSeen(
        "flat", [&] { mode.setCurrentText(QStringLiteral("Flat")); },
        [&] { mode.setCurrentText(QStringLiteral("Smooth")); });
}

TEST_F(Controls, haveActionsWithTheSameEffect)
{
    open({QStringLiteral("sRGB")});
    for (const char* name : {"activeVisible", "activeSurface", "activeProjection", "activePrimaries"})
        expectSwitchSeen(name);
    expectSeen(
        "opacity", [&] { action("lessOpaque").trigger(); }, [&] { action("moreOpaque").trigger(); });
    expectSeen(
        "mode",
        [&] {
            action("nextMode").trigger();
            action("nextMode").trigger();
        },
        [&] { action("nextMode").trigger(); });
}

TEST_F(Controls, changeTheSurroundings)
{
    open({QStringLiteral("sRGB")});
    for (const char* name : {"axes", "gridLines", "plane", "orthogonal", "cut", "showSection"})
        expectSwitchSeen(name);
    for (const char* name : {"backgroundDark", "backgroundLight"})
        expectSeen(
            name, [&] { action(name).trigger(); }, [&] { action("backgroundNeutral").trigger(); });
    for (const char* name : {"lightLeft", "lightRight"})
        expectSeen(
            name, [&] { action(name).trigger(); }, [&] { action("lightAbove").trigger(); });
    expectSeen(
        "angle", [&] { action("wider").trigger(); }, [&] { action("narrower").trigger(); });
}

TEST_F(Controls, moveTheCamera)
{
    open({QStringLiteral("sRGB")});
    for (const char* name :
         {"fromTop", "fromBottom", "fromFront", "fromBack", "fromLeft", "fromRight", "frame"}) {
        const QVector3D before = window.viewer().camera();
        action(name).trigger();
        ASSERT_TRUE(settle()) << name;
        EXPECT_NE(window.viewer().camera(), before) << name;
    }
    action("reset").trigger();
    ASSERT_TRUE(settle());
    const QVector3D home = window.viewer().camera();
    action("fromTop").trigger();
    ASSERT_TRUE(settle());
    action("reset").trigger();
    ASSERT_TRUE(settle());
    EXPECT_LT((window.viewer().camera() - home).length(), 0.01f);
}

TEST_F(Controls, computeTheGamutAgain)
{
    open({cmyk});
    const double absolute = entry().gamut.report().volume;
    auto& intent = control<QComboBox>("intent");
    intent.setCurrentIndex(KVVMRenderRelativeColorimetric);
    ASSERT_TRUE(settle());
    const double relative = entry().gamut.report().volume;
    EXPECT_GT(relative, absolute * 1.2); // paper white becomes L* 100
    control<QCheckBox>("blackPoint").click();
    ASSERT_TRUE(settle());
    EXPECT_NE(entry().gamut.report().volume, relative);
    EXPECT_TRUE(entry().gamut.report().blackPointCompensation);
    control<QSpinBox>("grid").setValue(9);
    ASSERT_TRUE(settle());
    EXPECT_EQ(entry().gamut.report().gridPoints, 9);
    action("intent0").trigger();
    ASSERT_TRUE(settle());
    EXPECT_EQ(entry().computedWith.intent, KVVMRenderPerceptual);
    EXPECT_EQ(intent.currentIndex(), KVVMRenderPerceptual);
}

TEST_F(Controls, undoTheAdaptationOfADisplay)
{
    const QString display = QStringLiteral("/usr/share/color/icc/colord/sRGB.icc");
    open({display});
    auto& adaptation = control<QComboBox>("adaptation");
    const auto& conversion = control<QLabel>("conversion");
    EXPECT_TRUE(conversion.text().contains(QStringLiteral("Table: matrix")));
    EXPECT_TRUE(conversion.text().contains(QStringLiteral("Adapted to D50 by the profile")));
    adaptation.setCurrentIndex(1);
    ASSERT_TRUE(settle());
    EXPECT_EQ(entry().computedWith.adaptation, KVGamut::Adaptation::None);
    EXPECT_LT(entry().gamut.whitePoint().b, -15.0f);
    EXPECT_TRUE(conversion.text().contains(QStringLiteral("The profile's adaptation to D50 is undone")));
    EXPECT_TRUE(adaptation.isEnabled());
    control<QComboBox>("intent").setCurrentIndex(KVVMRenderRelativeColorimetric);
    ASSERT_TRUE(settle());
    EXPECT_FALSE(adaptation.isEnabled());
    EXPECT_NEAR(entry().gamut.whitePoint().b, 0.0f, 0.1f);
}

TEST_F(Controls, cutAtTheLightnessOfTheSlider)
{
    open({QStringLiteral("sRGB")});
    auto& slider = control<QSlider>("clipSlider");
    auto& number = control<QDoubleSpinBox>("clipNumber");
    const QImage whole = settledPicture();
    slider.setFocus();
    QTest::keyClick(&slider, Qt::Key_PageUp);
    EXPECT_DOUBLE_EQ(number.value(), 55.0);
    EXPECT_EQ(settledPicture(), whole); // nothing is cut while the box is unchecked
    control<QCheckBox>("clipCut").click();
    const QImage high = settledPicture();
    EXPECT_FLOAT_EQ(window.viewer().clipping(), 55.0f);
    EXPECT_NE(high, whole);
    number.setValue(30.0);
    EXPECT_FLOAT_EQ(window.viewer().clipping(), 30.0f);
    EXPECT_EQ(slider.value(), 30);
    EXPECT_NE(settledPicture(), high);
    action("raiseCut").trigger();
    EXPECT_FLOAT_EQ(window.viewer().clipping(), 31.0f);
    EXPECT_TRUE(action("cut").isChecked());
    control<QCheckBox>("clipCut").click();
    EXPECT_EQ(settledPicture(), whole);
}

TEST_F(Controls, showTheSectionWithoutCutting)
{
    open({QStringLiteral("sRGB")});
    const QImage whole = settledPicture();
    action("showSection").trigger();
    EXPECT_EQ(window.view().clipping(), std::nullopt);
    EXPECT_EQ(window.view().section().plane, 50.0f);
    const QImage middle = settledPicture();
    EXPECT_NE(middle, whole);
    control<QSlider>("clipSlider").setValue(70);
    EXPECT_EQ(window.view().section().plane, 70.0f);
    EXPECT_NE(settledPicture(), middle);
    action("showSection").trigger();
    EXPECT_EQ(window.view().section().plane, std::nullopt);
    EXPECT_EQ(settledPicture(), whole);
}

TEST_F(Controls, closeTheGamutsThatAreCut)
{
    open({QStringLiteral("sRGB")});
    action("cut").trigger();
    EXPECT_TRUE(window.view().section().lids);
    const QImage closed = settledPicture();
    window.view().setSection({});
    EXPECT_NE(settledPicture(), closed);
}

TEST_F(Controls, fillTheSectionWithItsColours)
{
    open({QStringLiteral("sRGB")});
    action("sectionColors").trigger();
    auto& section = control<QWidget>("slice");
    const auto reds = [&] { // saturated colours; the outlines of the first gamut are blue
        const QImage picture = section.grab().toImage();
        int count = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x) {
                const QColor color = picture.pixelColor(x, y);
                count += color.red() > 150 && color.green() < 80 && color.blue() < 150 ? 1 : 0;
            }
        return count;
    };
    EXPECT_TRUE(kvtest::spinUntil([&] { return reds() > 100; }));
    action("sectionColors").trigger();
    EXPECT_TRUE(kvtest::spinUntil([&] { return reds() == 0; }));
}

TEST_F(Controls, moveTheSectionWithTheSlider)
{
    open({QStringLiteral("sRGB")});
    auto& section = control<QWidget>("slice");
    const QImage before = section.grab().toImage();
    const auto comesToEqual = [&](bool equal) {
        return kvtest::spinUntil([&] { return (section.grab().toImage() == before) == equal; });
    };
    control<QSlider>("clipSlider").setValue(80);
    EXPECT_TRUE(comesToEqual(false));
    control<QSlider>("clipSlider").setValue(50);
    EXPECT_TRUE(comesToEqual(true));
    QTest::keyClick(&window, Qt::Key_V); // a hidden gamut has no section
    EXPECT_TRUE(comesToEqual(false));
}

TEST_F(Controls, hideAndRemoveGamutsFromTheKeyboard)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    auto& list = control<QListView>("gamutList");
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(window.gamuts().activeRow(), 1);
    QTest::keyClick(&list, Qt::Key_Space);
    EXPECT_FALSE(entry(1).look.visible);
    EXPECT_FALSE(window.viewer().gamutVisible(entry(1).id));
    QTest::keyClick(&list, Qt::Key_Delete);
    ASSERT_EQ(window.gamuts().rowCount(), 1);
    EXPECT_EQ(entry().input, QStringLiteral("sRGB"));
    EXPECT_EQ(window.viewer().gamuts().size(), 1);
}

TEST_F(Controls, showTheGamutThatBecomesActive)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    EXPECT_EQ(control<QSlider>("opacity").value(), 100);
    QTest::keyClick(&window, Qt::Key_N);
    EXPECT_EQ(window.gamuts().activeRow(), 1);
    EXPECT_EQ(control<QSlider>("opacity").value(), 35);
    EXPECT_FLOAT_EQ(entry(1).look.opacity, 0.35f); // updating the controls changes nothing
}

} // namespace
