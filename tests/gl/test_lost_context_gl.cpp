// SPDX-License-Identifier: Apache-2.0
#include "support/EveryMethod.h"
#include "support/FaultyDriver.h"
#include "support/MessageCheck.h"
#include "support/ShownViewer.h"

#include <KVGamutView.h>

#include <gtest/gtest.h>

#include <QtGui/QOpenGLContext>
#include <QtTest/QSignalSpy>

using kvtest::ShownViewer;
using kvtest::spinUntil;

// The context of a shown viewer is destroyed and made again, and the viewer continues in the new one.

namespace {

const QString g = QStringLiteral("g");

/// All kinds of objects, with looks that differ from the defaults.
void fill(ShownViewer& shown)
{
    KVGamut3DViewer& v = shown.viewer;
    kvtest::callEverything(v);
    v.load(g,
           {{QStringLiteral("ProfilePath"), QStringLiteral("/usr/share/color/icc/colord/AdobeRGB1998.icc")}},
           nullptr);
    v.changeGamutAlpha(g, 0.4f, 0);
    v.setClipping(60);
    ASSERT_TRUE(spinUntil([&] { return v.gamutAlpha(kvtest::everyGamut()) == 0.75f && v.isSettled(); }));
}

/// Destroys the context and makes another one, as Qt does when create() is called for an existing context.
void renewContext(ShownViewer& shown)
{
    ASSERT_TRUE(shown.widget().context()->create());
    EXPECT_FALSE(shown.viewer.isSettled());
    EXPECT_TRUE(shown.viewer.picture().isNull());
    EXPECT_TRUE(shown.viewer.picture(QSize(20, 20)).isNull());
}

/// Waits until the frame that replaces Qt's framebuffer is past.
QImage pictureAtRest(ShownViewer& shown)
{
    EXPECT_TRUE(
        spinUntil([&] { return shown.viewer.isSettled() && shown.widget().size() == shown.viewer.size(); }));
    EXPECT_TRUE(shown.comeToRest());
    EXPECT_EQ(shown.widget().size(), shown.viewer.size());
    return shown.viewer.picture();
}

} // namespace

TEST(LostContext, withoutAViewTheSceneIsEmpty)
{
    ShownViewer shown;
    fill(shown);
    renewContext(shown);
    EXPECT_TRUE(shown.root().children().isEmpty());
    const QImage picture = pictureAtRest(shown);
    ASSERT_EQ(picture.size(), QSize(200, 150));
    EXPECT_EQ(picture.pixelColor(100, 75), shown.viewer.background());
    EXPECT_TRUE(shown.viewer.gamuts().isEmpty());
    EXPECT_FALSE(shown.viewer.displayAxes());
}

TEST(LostContext, withAViewThePictureIsTheSame)
{
    ShownViewer shown;
    const KVGamutView view(&shown.viewer);
    fill(shown);
    const QImage before = pictureAtRest(shown);
    const KVViewState state = view.state();
    renewContext(shown);
    EXPECT_EQ(view.state(), state);
    EXPECT_EQ(pictureAtRest(shown), before);
    EXPECT_EQ(view.state(), state);
    EXPECT_TRUE(view.isDrawable());
}

TEST(LostContext, picturesOfAnySizeAreTheSame)
{
    ShownViewer shown;
    const KVGamutView view(&shown.viewer);
    fill(shown);
    const QImage before = shown.viewer.picture(QSize(300, 200));
    renewContext(shown);
    pictureAtRest(shown);
    EXPECT_EQ(shown.viewer.picture(QSize(300, 200)), before);
}

TEST(LostContext, aSceneIsFilledAgainInTheNewContext)
{
    ShownViewer shown;
    fill(shown);
    const QImage before = pictureAtRest(shown);
    renewContext(shown);
    fill(shown); // before the first frame of the new context
    EXPECT_EQ(pictureAtRest(shown), before);
    renewContext(shown);
    pictureAtRest(shown);
    fill(shown);
    EXPECT_EQ(pictureAtRest(shown), before);
}

TEST(LostContext, changesBetweenTheContextsAreShown)
{
    ShownViewer shown;
    const KVGamutView view(&shown.viewer);
    fill(shown);
    renewContext(shown);
    shown.viewer.removeGamut(g);
    shown.viewer.setDisplayGrid(false);
    const QImage after = pictureAtRest(shown);

    ShownViewer other;
    fill(other);
    other.viewer.removeGamut(g);
    other.viewer.setDisplayGrid(false);
    EXPECT_EQ(after, pictureAtRest(other));
}

TEST(LostContext, aLoadInProgressEndsAndIsShown)
{
    ShownViewer shown;
    KVGamutView view(&shown.viewer);
    QSignalSpy loaded(&view, &KVGamutView::loaded);
    view.load(g, KVLoadRequest::fromFile(QStringLiteral("/usr/share/color/icc/colord/sRGB.icc")));
    renewContext(shown);
    ASSERT_TRUE(spinUntil([&] { return loaded.count() == 1; }));
    EXPECT_FALSE(view.isLoading());
    const QImage picture = pictureAtRest(shown);
    EXPECT_NE(picture.pixelColor(100, 75), shown.viewer.background().toRgb());
}

TEST(LostContext, aViewThatIsGoneKeepsNothing)
{
    ShownViewer shown;
    {
        const KVGamutView first(&shown.viewer);
        const KVGamutView second(&shown.viewer);
    }
    renewContext(shown);
    EXPECT_TRUE(shown.root().children().isEmpty());
}

TEST(LostContext, theViewerMayBeDestroyedBeforeTheNextFrame)
{
    ShownViewer shown;
    const KVGamutView view(&shown.viewer);
    fill(shown);
    renewContext(shown);
}

TEST(LostContext, aHiddenViewerContinuesWhenItIsShown)
{
    ShownViewer shown;
    const KVGamutView view(&shown.viewer);
    fill(shown);
    const QImage before = pictureAtRest(shown);
    shown.viewer.hide();
    kvtest::spinFor(50);
    renewContext(shown);
    kvtest::spinFor(50);
    shown.viewer.show();
    EXPECT_EQ(pictureAtRest(shown), before);
}

TEST(LostContext, theSceneSurvivesATeardownOfTheSameContext)
{
    ShownViewer shown;
    const KVGamutView view(&shown.viewer);
    fill(shown);
    const QImage before = pictureAtRest(shown);
    QMetaObject::invokeMethod(&shown.widget(), "teardownGL", Qt::DirectConnection);
    EXPECT_FALSE(shown.root().hasProgram());
    EXPECT_EQ(pictureAtRest(shown), before);
}

TEST(LostContext, aNativeWindowThatIsMadeAgainShowsTheSamePicture)
{
    ShownViewer shown;
    fill(shown);
    const QImage before = pictureAtRest(shown);
    shown.viewer.destroy();
    kvtest::spinFor(20);
    kvtest::callEverything(shown.viewer);
    shown.viewer.setClipping(60);
    shown.viewer.show();
    ASSERT_TRUE(spinUntil([&] { return shown.viewer.gamutAlpha(kvtest::everyGamut()) == 0.75f; }));
    EXPECT_EQ(pictureAtRest(shown), before);
}

namespace {

/// A viewer whose context is told of resets.
class ResettableViewer
{
public:
    ResettableViewer()
    {
        QSurfaceFormat format = widget().requestedFormat();
        format.setVersion(2, 1); // Qt passes options on for versions from 2.0 on only
        format.setOption(QSurfaceFormat::ResetNotification);
        widget().setFormat(format);
        viewer.resize(200, 150);
        viewer.show();
        EXPECT_TRUE(spinUntil([this] { return viewer.isSettled(); }));
    }
    ~ResettableViewer() { kvtest::driverFaults() = {}; }

    KVGLWidget& widget() { return *viewer.findChild<KVGLWidget*>(); }
    QImage settledPicture()
    {
        EXPECT_TRUE(spinUntil([this] { return viewer.isSettled() && widget().size() == viewer.size(); }));
        return viewer.picture();
    }
    void reset()
    {
        kvtest::driverFaults().wasReset = true;
        viewer.setBackground(viewer.background()); // the next frame notices it
        EXPECT_TRUE(spinUntil([] { return !kvtest::driverFaults().wasReset; }));
    }

    KVGamut3DViewer viewer;
};

} // namespace

TEST(LostContext, aResetOfTheDriverGivesANewContext)
{
    ResettableViewer shown;
    const KVGamutView view(&shown.viewer);
    kvtest::callEverything(shown.viewer);
    const QImage before = shown.settledPicture();
    for (int i = 0; i < 3; ++i) {
        shown.reset();
        EXPECT_EQ(shown.settledPicture(), before);
        EXPECT_EQ(shown.viewer.picture(QSize(200, 150)), before);
    }
    EXPECT_TRUE(view.isDrawable());
}

TEST(LostContext, aResetWithoutAViewEmptiesTheScene)
{
    ResettableViewer shown;
    shown.reset();
    EXPECT_EQ(shown.settledPicture().pixelColor(100, 75), shown.viewer.background().toRgb());
    EXPECT_FALSE(shown.viewer.displayAxes());
}

TEST(LostContext, withoutANewContextTheViewerIsEmptyUntilItIsShownAnew)
{
    ResettableViewer shown;
    const KVGamutView view(&shown.viewer);
    kvtest::callEverything(shown.viewer);
    const QImage before = shown.settledPicture();
    QSignalSpy changed(&view, &KVGamutView::drawableChanged);
    kvtest::driverFaults().createsNoContext = true;
    shown.reset();
    ASSERT_TRUE(spinUntil([&] { return changed.count() == 1; }));
    EXPECT_EQ(view.drawingProblem()->code, KVProblemCode::NoOpenGL);
    EXPECT_TRUE(shown.viewer.picture().isNull());
    EXPECT_TRUE(shown.viewer.picture(QSize(20, 20)).isNull());
    EXPECT_FALSE(shown.viewer.isSettled());
    shown.viewer.hide();
    kvtest::spinFor(20);
    shown.viewer.show();
    kvtest::spinFor(50);
    EXPECT_FALSE(view.isDrawable());

    kvtest::driverFaults().createsNoContext = false;
    shown.viewer.hide();
    kvtest::spinFor(20);
    shown.viewer.show();
    ASSERT_TRUE(spinUntil([&] { return view.isDrawable(); }));
    EXPECT_EQ(shown.settledPicture(), before);
}

TEST(LostContext, aViewerWithALostContextMayBeUsedAndDestroyed)
{
    kvtest::toleratePlatformMessage(QStringLiteral("failed to make VAO's context current"));
    ResettableViewer shown;
    const KVGamutView view(&shown.viewer);
    kvtest::callEverything(shown.viewer);
    shown.settledPicture();
    kvtest::driverFaults().createsNoContext = true;
    shown.reset();
    kvtest::callEverything(shown.viewer);
    kvtest::spinFor(20);
    kvtest::callEverything(shown.viewer);
}

TEST(LostContext, aContextThatAppearsLaterIsUsed)
{
    kvtest::driverFaults().createsNoContext = true;
    KVGamut3DViewer viewer;
    const KVGamutView view(&viewer);
    viewer.resize(120, 90);
    EXPECT_FALSE(view.isDrawable());
    viewer.show();
    kvtest::spinFor(50);
    EXPECT_FALSE(view.isDrawable());
    kvtest::driverFaults().createsNoContext = false;
    viewer.hide();
    kvtest::spinFor(20);
    viewer.show();
    EXPECT_TRUE(spinUntil([&] { return viewer.isSettled(); }));
    EXPECT_TRUE(view.isDrawable());
    EXPECT_EQ(viewer.picture().size(), QSize(120, 90));
}

TEST(LostContext, aWindowWithoutAUsableSurfaceIsEmpty)
{
    kvtest::toleratePlatformMessage(QStringLiteral("Failed to make context current"));
    KVGamut3DViewer viewer;
    const KVGamutView view(&viewer);
    viewer.resize(120, 90);
    viewer.create();
    kvtest::driverFaults().refusedWindow = viewer.findChild<KVGLWidget*>()->winId();
    kvtest::driverFaults().currentAttempts = 0;
    EXPECT_TRUE(view.isDrawable()) << "contexts can be made current elsewhere";
    viewer.show();
    ASSERT_TRUE(spinUntil([&] { return !view.isDrawable(); }));
    EXPECT_GE(kvtest::driverFaults().currentAttempts, 1);
    EXPECT_EQ(view.drawingProblem()->code, KVProblemCode::OpenGLNotUsable);
    EXPECT_TRUE(viewer.picture().isNull());
    kvtest::callEverything(viewer);

    kvtest::driverFaults().refusedWindow = 0;
    viewer.hide();
    kvtest::spinFor(20);
    viewer.show();
    EXPECT_TRUE(spinUntil([&] { return viewer.isSettled() && viewer.picture().size() == viewer.size(); }));
    EXPECT_TRUE(view.isDrawable());
}

TEST(LostContext, aSurfaceThatIsMissingForAWhileDoesNotStopTheViewer)
{
    ShownViewer shown;
    fill(shown);
    const QImage before = pictureAtRest(shown);
    kvtest::driverFaults().refusesCurrent = true;
    kvtest::driverFaults().currentAttempts = 0;
    shown.viewer.setBackground(Qt::black);
    kvtest::spinFor(1200);
    EXPECT_GE(kvtest::driverFaults().currentAttempts, 1);
    EXPECT_LE(kvtest::driverFaults().currentAttempts, 4) << "a loop would keep a core busy";
    kvtest::driverFaults().refusesCurrent = false;
    shown.viewer.setBackground(QColor(60, 60, 70));
    EXPECT_EQ(pictureAtRest(shown), before);
}
