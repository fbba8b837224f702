// SPDX-License-Identifier: Apache-2.0
#include "support/MessageCheck.h"
#include "support/ShownViewer.h"

#include <gtest/gtest.h>

#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtGui/QWindow>

#include <functional>

using kvtest::ShownViewer;
using kvtest::spinFor;
using kvtest::spinUntil;

// A host may hide, close, move and recreate its windows. The viewer shows its picture whenever it is shown.

namespace {

const QSize size(200, 150);

void fill(KVGamut3DViewer& viewer)
{
    viewer.addMarkerSet(QStringLiteral("set"), KVGamut3DViewer::Sphere,
                        {{Qt::red, QVector3D(20, -60, 0)}, {Qt::blue, QVector3D(80, 60, 0)}}, 40, 0.5f);
    viewer.setCamera(QVector3D(210, -250, -330), 0, QVector3D(50, 0, 0));
}

bool showsItsPicture(ShownViewer& shown, const QImage& expected)
{
    return spinUntil([&] { return shown.viewer.isSettled() && shown.viewer.picture() == expected; });
}

/// Waits for the frames that were scheduled before the viewer was hidden.
bool finishesScheduledFrames(ShownViewer& shown)
{
    int frames = 0;
    const auto connection = QObject::connect(&shown.widget(), &QOpenGLWindow::frameSwapped, &shown.viewer,
                                             [&frames] { ++frames; });
    const bool finished = spinUntil([&frames] {
        frames = 0;
        spinFor(100);
        return frames == 0;
    });
    QObject::disconnect(connection);
    return finished;
}

struct Event
{
    const char* name;
    std::function<void(KVGamut3DViewer&, QWindow& other)> happens;
};

class WindowLife : public testing::TestWithParam<Event>
{
};

} // namespace

TEST_P(WindowLife, viewerShowsItsPictureAndChangesAfterwards)
{
    QWindow other; // declared first, so that it is destroyed last
    other.resize(300, 250);
    other.show();
    ShownViewer shown(size.width(), size.height());
    ASSERT_TRUE(shown.shown);
    fill(shown.viewer);
    const QImage before = shown.settledPicture();
    shown.viewer.setBackground(Qt::darkCyan);
    const QImage changed = shown.settledPicture();
    ASSERT_NE(changed, before);
    shown.viewer.setBackground(Qt::gray);

    GetParam().happens(shown.viewer, other);
    EXPECT_TRUE(showsItsPicture(shown, before)) << "the picture is missing";
    shown.viewer.setBackground(Qt::darkCyan);
    EXPECT_TRUE(showsItsPicture(shown, changed)) << "changes are not displayed";
    shown.viewer.setParent(nullptr); // otherwise the other window would delete it
}

INSTANTIATE_TEST_SUITE_P(, WindowLife,
                         testing::Values(Event{"hiddenAndShown",
                                               [](KVGamut3DViewer& v, QWindow&) {
                                                   v.hide();
                                                   v.show();
                                               }},
                                         Event{"hiddenForAWhile",
                                               [](KVGamut3DViewer& v, QWindow&) {
                                                   v.hide();
                                                   spinFor(50);
                                                   v.show();
                                               }},
                                         Event{"closedAndShown",
                                               [](KVGamut3DViewer& v, QWindow&) {
                                                   v.close();
                                                   v.show();
                                               }},
                                         Event{"closedForAWhile",
                                               [](KVGamut3DViewer& v, QWindow&) {
                                                   v.close();
                                                   spinFor(50);
                                                   v.show();
                                               }},
                                         Event{"destroyedAndShown",
                                               [](KVGamut3DViewer& v, QWindow&) {
                                                   v.destroy();
                                                   v.show();
                                               }},
                                         Event{"destroyedCreatedAndShown",
                                               [](KVGamut3DViewer& v, QWindow&) {
                                                   v.destroy();
                                                   v.create();
                                                   v.show();
                                               }},
                                         Event{"intoAnotherWindow",
                                               [](KVGamut3DViewer& v, QWindow& other) {
                                                   v.setParent(&other);
                                                   v.show();
                                               }},
                                         Event{"intoAnotherWindowAndBack",
                                               [](KVGamut3DViewer& v, QWindow& other) {
                                                   v.setParent(&other);
                                                   spinFor(50);
                                                   v.setParent(nullptr);
                                                   v.show();
                                               }},
                                         Event{"intoAHiddenWindowThatIsShownLater",
                                               [](KVGamut3DViewer& v, QWindow& other) {
                                                   other.hide();
                                                   v.setParent(&other);
                                                   spinFor(50);
                                                   other.show();
                                               }},
                                         Event{"theOtherWindowIsDestroyedAndMadeAgain",
                                               [](KVGamut3DViewer& v, QWindow& other) {
                                                   v.setParent(&other);
                                                   spinFor(50);
                                                   other.destroy();
                                                   spinFor(20);
                                                   other.show();
                                                   v.show();
                                               }},
                                         Event{"minimisedAndBack",
                                               [](KVGamut3DViewer& v, QWindow&) {
                                                   v.showMinimized();
                                                   spinFor(50);
                                                   v.showNormal();
                                                   v.resize(size);
                                               }}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(ViewerWithoutASize, drawsAfterAResize)
{
    QWindow parent;
    parent.resize(300, 250);
    parent.show();
    for (const bool hasParent : {false, true}) {
        KVGamut3DViewer viewer;
        viewer.setParent(hasParent ? &parent : nullptr);
        viewer.setGeometry(0, 0, 0, 0);
        viewer.show();
        spinFor(200);
        viewer.resize(size);
        EXPECT_TRUE(spinUntil([&] { return viewer.isSettled() && viewer.picture().size() == size; }));
        viewer.setParent(nullptr); // otherwise the other window would delete it
    }
}

TEST(ViewerWithoutASize, drawsNothingWhileItIsEmpty)
{
    ShownViewer shown(size.width(), size.height());
    ASSERT_TRUE(shown.shown);
    fill(shown.viewer);
    const QImage before = shown.settledPicture();
    shown.widget().update();
    shown.widget().resize(0, 0); // the window system later makes it one pixel
    QEvent update(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(&shown.widget(), &update);
    spinFor(100);
    shown.widget().resize(size);
    EXPECT_TRUE(showsItsPicture(shown, before));
    // Qt reports it in debug messages, which do not fail a test
    EXPECT_TRUE(kvtest::messages().filter(QStringLiteral("Framebuffer incomplete")).isEmpty());
}

TEST(ViewerLargerThanOpenGLAllows, drawsAgainAfterAResize)
{
    ShownViewer shown(size.width(), size.height());
    ASSERT_TRUE(shown.shown);
    fill(shown.viewer);
    const QImage before = shown.settledPicture();
    GLint maxSide = 0;
    shown.widget().makeCurrent();
    shown.widget().context()->functions()->glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &maxSide);
    shown.widget().doneCurrent();
    ASSERT_GT(maxSide, 0);
    shown.widget().resize(maxSide + 1, 16);
    spinFor(300);
    EXPECT_EQ(shown.viewer.picture(), before);
    EXPECT_EQ(shown.viewer.picture(size).size(), size);
    shown.widget().resize(size);
    EXPECT_TRUE(showsItsPicture(shown, before));
    EXPECT_TRUE(kvtest::messages().filter(QStringLiteral("Framebuffer incomplete")).isEmpty());
}

TEST(HiddenViewer, swapsNoFrames)
{
    ShownViewer shown(size.width(), size.height());
    ASSERT_TRUE(shown.shown);
    int frames = 0;
    QObject::connect(&shown.widget(), &QOpenGLWindow::frameSwapped, &shown.viewer, [&frames] { ++frames; });
    shown.viewer.hide();
    ASSERT_TRUE(finishesScheduledFrames(shown));
    frames = 0;
    shown.viewer.setBackground(Qt::darkCyan);
    spinFor(300);
    EXPECT_EQ(frames, 0);
    shown.viewer.show();
    EXPECT_TRUE(spinUntil([&] { return frames > 0 && shown.viewer.isSettled(); }));
    EXPECT_EQ(shown.viewer.picture().pixelColor(1, 1), QColor(Qt::darkCyan).toRgb());
}

TEST(HiddenViewer, finishesItsMovesWhenShown)
{
    ShownViewer shown(size.width(), size.height());
    ASSERT_TRUE(shown.shown);
    int finished = 0;
    QObject::connect(&shown.viewer, &KVGamut3DViewer::moveFinished, &shown.viewer,
                     [&finished] { ++finished; });
    shown.viewer.hide();
    ASSERT_TRUE(finishesScheduledFrames(shown));
    const QVector3D target(210, -250, -330);
    shown.viewer.setCamera(target, 30, QVector3D(50, 0, 0));
    spinFor(200);
    EXPECT_EQ(finished, 0);
    shown.viewer.show();
    ASSERT_TRUE(spinUntil([&finished] { return finished > 0; }));
    EXPECT_EQ(shown.viewer.camera(), target);
    EXPECT_TRUE(shown.settle());
    EXPECT_EQ(finished, 1);
}
