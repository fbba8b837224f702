// SPDX-License-Identifier: Apache-2.0
#include "support/EveryMethod.h"
#include "support/ShownViewer.h"

#include <glwindow/ContextScope.h>

#include <gtest/gtest.h>

#include <QtGui/QOpenGLContext>
#include <QtTest/QSignalSpy>

using kvtest::callEverything;
using kvtest::ShownViewer;
using kvtest::spinUntil;
using kvtest::srgb;

// A host may call every method at any time: before and after the window is shown, in load callbacks and in
// slots of all signals.

namespace {

const QString g = QStringLiteral("g"), h = kvtest::everyGamut();

/// The picture of an ordinary shown viewer after callEverything().
QImage expectedPicture()
{
    ShownViewer shown;
    callEverything(shown.viewer);
    EXPECT_TRUE(spinUntil([&] { return shown.viewer.gamutAlpha(h) == 0.75f; }));
    return shown.settledPicture();
}

void expectTheSamePicture(ShownViewer& shown)
{
    EXPECT_TRUE(spinUntil([&] { return shown.viewer.gamutAlpha(h) == 0.75f; }));
    EXPECT_EQ(shown.settledPicture(), expectedPicture());
}

} // namespace

TEST(Reentrancy, allMethodsWorkBeforeTheWindowIsShown)
{
    KVGamut3DViewer viewer;
    viewer.resize(200, 150);
    callEverything(viewer);
    EXPECT_TRUE(viewer.picture().isNull());
    viewer.show();
    ASSERT_TRUE(spinUntil([&] { return viewer.gamutAlpha(h) == 0.75f && viewer.isSettled(); }));
    EXPECT_EQ(viewer.picture(), expectedPicture());
}

TEST(Reentrancy, allMethodsWorkInALoadCallback)
{
    ShownViewer shown;
    int calls = 0;
    shown.viewer.load(g, srgb(), [&](QString, bool) {
        callEverything(shown.viewer);
        shown.viewer.removeGamut(g);
        ++calls;
    });
    ASSERT_TRUE(spinUntil([&] { return calls == 1; }));
    expectTheSamePicture(shown);
}

TEST(Reentrancy, allMethodsWorkInSlotsOfMoveFinished)
{
    ShownViewer shown;
    int calls = 0;
    QObject::connect(&shown.viewer, &KVGamut3DViewer::moveFinished, &shown.viewer, [&] {
        callEverything(shown.viewer);
        ++calls;
    });
    shown.viewer.resetCamera(KVGamut3DViewer::Bottom, 30);
    ASSERT_TRUE(spinUntil([&] { return calls == 1; }));
    expectTheSamePicture(shown);
}

TEST(Reentrancy, allMethodsWorkInSlotsOfClicks)
{
    ShownViewer shown;
    int clicks = 0, doubleClicks = 0;
    QObject::connect(&shown.viewer, &KVGamut3DViewer::click, &shown.viewer, [&] {
        callEverything(shown.viewer);
        ++clicks;
    });
    QObject::connect(&shown.viewer, &KVGamut3DViewer::doubleClick, &shown.viewer, [&] {
        callEverything(shown.viewer);
        ++doubleClicks;
    });
    QTest::mouseDClick(&shown.widget(), Qt::LeftButton, Qt::NoModifier, QPoint(50, 50));
    ASSERT_TRUE(spinUntil([&] { return clicks >= 1 && doubleClicks == 1; }));
    expectTheSamePicture(shown);
}

TEST(Reentrancy, allMethodsWorkAfterTheContextWasRecreated)
{
    ShownViewer shown;
    QMetaObject::invokeMethod(&shown.widget(), "teardownGL", Qt::DirectConnection);
    callEverything(shown.viewer); // between teardown and initialisation
    {
        const ContextScope scope(&shown.widget());
        shown.root().initializeGL(shown.widget().context()); // as for a new context
    }
    expectTheSamePicture(shown);
}

TEST(Reentrancy, callsRestoreTheContextOfTheHost)
{
    ShownViewer host, shown;
    host.widget().makeCurrent();
    callEverything(shown.viewer);
    EXPECT_EQ(QOpenGLContext::currentContext(), host.widget().context());
    host.widget().doneCurrent();
    expectTheSamePicture(shown);
}
