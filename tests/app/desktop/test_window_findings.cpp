// SPDX-License-Identifier: Apache-2.0
// The clicked colour follows the gamuts, and the keyboard chooses colours.

#include "WindowCase.h"

#include "desktop/view/KeyboardCursor.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QClipboard>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStatusBar>

#include <array>

namespace {

using kvtest::cmyk;

class Findings : public kvtest::WindowCase
{
protected:
    QString finding() { return control<QLabel>("finding").text(); }
    /// The colour that the panel states, with one decimal.
    QVector3D foundLab()
    {
        static const QRegularExpression numbers(
            QStringLiteral("L\\* (-?[0-9.]+)   a\\* (-?[0-9.]+)   b\\* (-?[0-9.]+)"));
        const auto match = numbers.match(finding());
        EXPECT_TRUE(match.hasMatch()) << finding().toStdString();
        return {match.captured(1).toFloat(), match.captured(2).toFloat(), match.captured(3).toFloat()};
    }
    bool hasFinding() { return action("copyFinding").isEnabled(); }
    /// Clicks the colour in the middle of the view, seen from the top.
    void clickWhite()
    {
        action("fromTop").trigger();
        ASSERT_TRUE(settle());
        QTest::mouseClick(&innerWindow(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(innerWindow().width() / 2, innerWindow().height() / 2));
        ASSERT_TRUE(hasFinding());
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&control<QWidget>("view"), key, modifiers);
    }
};

// --- The clicked colour ---------------------------------------------------------------------------------

TEST_F(Findings, endWithTheirGamut)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    clickWhite();
    const QString owner = finding().contains(QStringLiteral("Surface of sRGB")) ? QStringLiteral("sRGB")
                                                                                : QStringLiteral("DisplayP3");
    ASSERT_TRUE(finding().startsWith(QStringLiteral("Surface of ") + owner)) << finding().toStdString();
    window.gamuts().remove(entry(0).title == owner ? 0 : 1);
    ASSERT_TRUE(settle());
    EXPECT_FALSE(hasFinding());
    EXPECT_TRUE(window.viewer().markerSet().isEmpty());
    EXPECT_FALSE(finding().contains(owner)) << finding().toStdString();
}

TEST_F(Findings, doNotNameOtherGamutsThatAreGone)
{
    open({QStringLiteral("sRGB"), QStringLiteral("ProPhoto")});
    window.gamuts().setSolo(true);
    clickWhite();
    ASSERT_TRUE(finding().startsWith(QStringLiteral("Surface of sRGB"))) << finding().toStdString();
    ASSERT_TRUE(finding().contains(QStringLiteral("ProPhoto")));
    window.gamuts().remove(1);
    ASSERT_TRUE(settle());
    EXPECT_TRUE(hasFinding());
    EXPECT_FALSE(finding().contains(QStringLiteral("ProPhoto"))) << finding().toStdString();
}

TEST_F(Findings, areOfThePresentSurfaceAfterAnotherIntent)
{
    open({cmyk});
    clickWhite();
    const QVector3D absolute = foundLab();
    QTest::keyClick(&window, Qt::Key_F6); // relative: the paper becomes L* 100
    ASSERT_TRUE(settle());
    ASSERT_TRUE(hasFinding());
    EXPECT_GT((foundLab() - absolute).length(), 1.0f);
    action("copyFinding").trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), finding());
    const std::array<float, 3> lab{foundLab().x(), foundLab().y(), foundLab().z()};
    EXPECT_NEAR(entry().gamut.nearest(lab.data()).distance, 0.0f, 0.1f);
}

TEST_F(Findings, endWithThePointsOfTheirFile)
{
    open({QStringLiteral("sRGB"), write(QStringLiteral("p.csv"), "name,L,a,b\nabove,120,0,0\n")});
    clickWhite();
    ASSERT_TRUE(finding().startsWith(QStringLiteral("above"))) << finding().toStdString();
    window.points().remove(0);
    ASSERT_TRUE(settle());
    EXPECT_FALSE(finding().contains(QStringLiteral("above"))) << finding().toStdString();
}

// --- The cursor -----------------------------------------------------------------------------------------

TEST_F(Findings, comeFromAColourCursorThatKeysMove)
{
    open({QStringLiteral("sRGB")});
    const QImage before = settledPicture();
    press(Qt::Key_K);
    EXPECT_TRUE(action("cursor").isChecked());
    EXPECT_NE(settledPicture(), before);
    auto* cursor = window.findChild<KeyboardCursor*>();
    const QVector3D start = cursor->place();
    const QVector3D camera = window.viewer().camera();
    press(Qt::Key_Right);
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    press(Qt::Key_PageUp, Qt::ShiftModifier);
    EXPECT_EQ(cursor->place(), start + QVector3D(10, 1, 2));
    EXPECT_EQ(window.viewer().camera(), camera) << "the arrows do not turn the view meanwhile";
    EXPECT_TRUE(finding().contains(QStringLiteral("L* 60.0   a* 1.0   b* 2.0"))) << finding().toStdString();
    EXPECT_TRUE(finding().contains(QStringLiteral("inside sRGB"))) << finding().toStdString();
    EXPECT_TRUE(window.statusBar()->currentMessage().contains(QStringLiteral("L* 60.0")));
    EXPECT_TRUE(control<QWidget>("view").accessibleDescription().contains(QStringLiteral("L* 60.0")));
    press(Qt::Key_Escape);
    EXPECT_FALSE(action("cursor").isChecked());
    EXPECT_FALSE(hasFinding());
    EXPECT_EQ(settledPicture(), before);
    press(Qt::Key_Right);
    ASSERT_TRUE(settle());
    EXPECT_NE(window.viewer().camera(), camera);
}

TEST_F(Findings, areTheNearestColourOfTheSurfaceAfterEnterAtTheCursor)
{
    open({QStringLiteral("sRGB")});
    press(Qt::Key_K);
    window.findChild<KeyboardCursor*>()->setPlace({50.0f, 150.0f, 0.0f});
    EXPECT_TRUE(finding().contains(QStringLiteral("outside sRGB"))) << finding().toStdString();
    press(Qt::Key_Return);
    EXPECT_TRUE(finding().startsWith(QStringLiteral("Surface of sRGB"))) << finding().toStdString();
    const std::array<float, 3> lab{50.0f, 150.0f, 0.0f};
    const KVGamut::LabPoint nearest = entry().gamut.nearest(lab.data()).point;
    EXPECT_LT((foundLab() - QVector3D(nearest.L, nearest.a, nearest.b)).length(), 0.1f);
}

TEST_F(Findings, areThePointThatIsCloseToTheCursorAfterEnter)
{
    open({QStringLiteral("sRGB"), write(QStringLiteral("p.csv"), "name,L,a,b\nink,52,0,0\nfar,20,0,0\n")});
    press(Qt::Key_K);
    window.findChild<KeyboardCursor*>()->setPlace({50.0f, 0.0f, 0.0f});
    press(Qt::Key_Enter);
    EXPECT_TRUE(finding().startsWith(QStringLiteral("ink"))) << finding().toStdString();
}

TEST_F(Findings, staysWithinItsBoundsAtTheCursor)
{
    press(Qt::Key_K);
    auto* cursor = window.findChild<KeyboardCursor*>();
    cursor->setPlace({500.0f, -5000.0f, 5000.0f});
    EXPECT_EQ(cursor->place(), QVector3D(100.0f, -KeyboardCursor::maxChroma, KeyboardCursor::maxChroma));
}

// --- Moving the scene -----------------------------------------------------------------------------------

TEST_F(Findings, letShiftAndDragMoveTheSceneWhateverHasTheFocus)
{
    open({QStringLiteral("sRGB")});
    const auto drag = [this](Qt::KeyboardModifiers held) {
        control<QWidget>("gamutList").setFocus();
        const QVector3D center = window.view().camera().interestPoint;
        const QPoint from(innerWindow().width() / 2, innerWindow().height() / 2);
        QTest::mousePress(&innerWindow(), Qt::LeftButton, held, from);
        QMouseEvent move(QEvent::MouseMove, from + QPoint(60, 0),
                         innerWindow().mapToGlobal(from + QPoint(60, 0)), Qt::NoButton, Qt::LeftButton, held);
        QCoreApplication::sendEvent(&innerWindow(), &move);
        QTest::mouseRelease(&innerWindow(), Qt::LeftButton, held, from + QPoint(60, 0));
        EXPECT_TRUE(settle());
        return (window.view().camera().interestPoint - center).length();
    };
    EXPECT_GT(drag(Qt::ShiftModifier), 5.0f);
    EXPECT_LT(drag(Qt::NoModifier), 0.01f) << "turns";
    EXPECT_GT(drag(Qt::ShiftModifier), 5.0f);
}

} // namespace
