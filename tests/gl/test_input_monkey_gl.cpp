// SPDX-License-Identifier: Apache-2.0
#include "support/ShownViewer.h"
#include "support/Watchdog.h"

#include <gtest/gtest.h>

#include <QtGui/QExposeEvent>
#include <QtGui/QFocusEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>
#include <QtTest/QSignalSpy>

#include <cmath>
#include <random>

using kvtest::ShownViewer;
using kvtest::spinFor;
using kvtest::spinUntil;

// Random sequences of events: releases without a press, modifiers that change during a drag, repeated key
// presses and resizes.

namespace {

const QVector3D eye(210, -250, -330), interest(50, 0, 0);

class Monkey
{
public:
    Monkey(KVGamut3DViewer& viewer, quint32 seed)
        : m_viewer(viewer), m_child(*viewer.findChild<KVGLWidget*>()), m_random(seed)
    {
    }

    void act()
    {
        QWindow& to = below(2) ? static_cast<QWindow&>(m_viewer) : m_child;
        switch (below(12)) {
        case 0:
        case 1:
        case 2:
            mouse(to, QEvent::MouseMove);
            break;
        case 3:
            mouse(to, QEvent::MouseButtonPress);
            break;
        case 4:
            mouse(to, QEvent::MouseButtonRelease);
            ++releases;
            break;
        case 5:
            mouse(to, QEvent::MouseButtonDblClick);
            ++doubleClicks;
            break;
        case 6: {
            QWheelEvent e(place(), place(), QPoint(), QPoint(below(2000) - 1000, below(2000) - 1000),
                          buttons(), modifiers(), Qt::NoScrollPhase, below(2));
            QCoreApplication::sendEvent(&to, &e);
            break;
        }
        case 7:
        case 8: {
            const int keys[] = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up,    Qt::Key_Down,
                                Qt::Key_Plus, Qt::Key_Minus, Qt::Key_Shift, Qt::Key_A};
            const bool press = below(2);
            QKeyEvent e(press ? QEvent::KeyPress : QEvent::KeyRelease, keys[below(8)], modifiers(), QString(),
                        below(2), static_cast<quint16>(1 + below(3)));
            QCoreApplication::sendEvent(&to, &e);
            presses += press;
            break;
        }
        case 9: {
            QFocusEvent e(below(2) ? QEvent::FocusIn : QEvent::FocusOut);
            QCoreApplication::sendEvent(&to, &e);
            break;
        }
        case 10:
            m_viewer.resize(50 + below(200), 50 + below(150));
            break;
        default:
            spinFor(below(20));
        }
    }

    int releases = 0, doubleClicks = 0, presses = 0;

private:
    int below(int bound) { return static_cast<int>(m_random() % static_cast<quint32>(bound)); }
    QPointF place() { return {below(4000) - 2000.5, below(4000) - 2000.5}; }
    Qt::MouseButtons buttons() { return static_cast<Qt::MouseButtons>(below(8)); }
    Qt::KeyboardModifiers modifiers() { return static_cast<Qt::KeyboardModifiers>(below(16) << 25); }

    void mouse(QWindow& to, QEvent::Type type)
    {
        const QPointF local = place(), global = place();
        QMouseEvent e(type, local, global, static_cast<Qt::MouseButton>(1 << below(3)), buttons(),
                      modifiers());
        QCoreApplication::sendEvent(&to, &e);
    }

    KVGamut3DViewer& m_viewer;
    KVGLWidget& m_child;
    std::mt19937 m_random;
};

bool isFinite(const QVector3D& v)
{
    return std::isfinite(v.x()) && std::isfinite(v.y()) && std::isfinite(v.z());
}

class InputMonkey : public testing::TestWithParam<int>
{
};

} // namespace

TEST_P(InputMonkey, everyReleaseIsAClickAndTheCameraStaysFinite)
{
    const kvtest::Watchdog watchdog(300);
    ShownViewer shown(200, 150);
    ASSERT_TRUE(shown.shown);
    shown.viewer.setCamera(eye, 0, interest);
    const QImage before = shown.settledPicture();
    QSignalSpy clicks(&shown.viewer, &KVGamut3DViewer::click);
    QSignalSpy doubleClicks(&shown.viewer, &KVGamut3DViewer::doubleClick);
    QSignalSpy moves(&shown.viewer, &KVGamut3DViewer::moveFinished);

    Monkey monkey(shown.viewer, static_cast<quint32>(GetParam()));
    for (int i = 0; i < 1500; ++i) {
        monkey.act();
        if (i % 100 == 0)
            shown.viewer.setCamera(eye, 40, interest); // moves started by the host
        const QVector3D at = shown.viewer.camera(), to = shown.viewer.interestPt();
        ASSERT_TRUE(isFinite(at) && isFinite(to)) << i;
        ASSERT_EQ(clicks.count(), monkey.releases) << i;
        ASSERT_EQ(doubleClicks.count(), monkey.doubleClicks) << i;
    }
    EXPECT_TRUE(spinUntil([&] { return !shown.widget().isMoving(); }));
    EXPECT_GT(moves.count(), 0);
    EXPECT_LE(moves.count(), monkey.presses + 15); // each move ends at most once

    // No state is left over: after a release of Shift a drag has the same effect as in a new viewer.
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Shift, Qt::NoModifier);
    QCoreApplication::sendEvent(&shown.viewer, &release);
    const auto drag = [](ShownViewer& s) {
        s.viewer.resize(200, 150);
        EXPECT_TRUE(spinUntil([&s] { return s.widget().size() == QSize(200, 150); }));
        EXPECT_TRUE(s.comeToRest()); // late events of the window system about earlier sizes
        s.viewer.setCamera(eye, 0, interest);
        for (const auto& [x, held] : {std::pair(10, Qt::NoButton), std::pair(30, Qt::LeftButton)}) {
            QMouseEvent e(QEvent::MouseMove, QPointF(x, 20), QPointF(x, 20), Qt::NoButton, held,
                          Qt::NoModifier);
            QCoreApplication::sendEvent(&s.viewer, &e);
        }
        return s.settledPicture();
    };
    ShownViewer fresh(200, 150);
    ASSERT_TRUE(fresh.shown);
    EXPECT_EQ(drag(shown), drag(fresh));
    EXPECT_EQ(shown.viewer.camera(), fresh.viewer.camera());
}

TEST_P(InputMonkey, withoutInteractionTheCameraDoesNotMove)
{
    const kvtest::Watchdog watchdog(300);
    ShownViewer shown(200, 150);
    ASSERT_TRUE(shown.shown);
    shown.viewer.setCamera(eye, 0, interest);
    shown.viewer.setEnableInteraction(false);
    QSignalSpy moves(&shown.viewer, &KVGamut3DViewer::moveFinished);
    QSignalSpy clicks(&shown.viewer, &KVGamut3DViewer::click);
    Monkey monkey(shown.viewer, static_cast<quint32>(GetParam()));
    for (int i = 0; i < 500; ++i)
        monkey.act();
    EXPECT_EQ(shown.viewer.camera(), eye);
    EXPECT_EQ(shown.viewer.interestPt(), interest);
    EXPECT_EQ(moves.count(), 0);
    EXPECT_EQ(clicks.count(), monkey.releases);
}

INSTANTIATE_TEST_SUITE_P(Seed, InputMonkey, testing::Values(1, 2, 3));

TEST(DeletedViewer, mayBeDeletedDuringMoveDragAndLoad)
{
    const kvtest::Watchdog watchdog(300);
    for (int i = 0; i < 5; ++i) {
        auto* viewer = new KVGamut3DViewer;
        viewer->resize(200, 150);
        viewer->show();
        ASSERT_TRUE(spinUntil([viewer] { return !viewer->picture().isNull(); }));
        bool reported = false;
        viewer->load(QStringLiteral("g"),
                     {{QStringLiteral("ProfilePath"),
                       QStringLiteral("/usr/share/color/icc/ghostscript/default_cmyk.icc")}},
                     [&reported](QString, bool) { reported = true; });
        viewer->setCamera(eye, 500, interest);
        QMouseEvent move(QEvent::MouseMove, QPointF(20, 20), QPointF(20, 20), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(viewer, &move);
        spinFor(5 * i);
        const bool before = reported;
        delete viewer;
        spinFor(50);
        EXPECT_EQ(reported, before);
    }
}

TEST(DeletedViewer, slotsAndLoadCallbacksMayCallDeleteLater)
{
    const kvtest::Watchdog watchdog(300);
    const QHash<QString, QVariant> srgb{
        {QStringLiteral("ProfilePath"), QStringLiteral("/usr/share/color/icc/colord/sRGB.icc")}};
    for (int way = 0; way < 3; ++way) {
        QPointer<KVGamut3DViewer> viewer = new KVGamut3DViewer;
        viewer->resize(200, 150);
        viewer->show();
        ASSERT_TRUE(spinUntil([viewer] { return !viewer->picture().isNull(); }));
        const auto go = [viewer] { viewer->deleteLater(); };
        QObject::connect(viewer, &KVGamut3DViewer::moveFinished, viewer, go);
        QObject::connect(viewer, &KVGamut3DViewer::click, viewer, go);
        int reports = 0;
        if (way == 0)
            viewer->load(QStringLiteral("g"), srgb, [&reports, go](QString, bool) {
                ++reports;
                go();
            });
        if (way == 1)
            viewer->setCamera(eye, 10, interest);
        if (way == 2) {
            QMouseEvent release(QEvent::MouseButtonRelease, QPointF(20, 20), QPointF(20, 20), Qt::LeftButton,
                                Qt::NoButton, Qt::NoModifier);
            QCoreApplication::sendEvent(viewer, &release);
        }
        EXPECT_TRUE(spinUntil([&viewer] { return viewer.isNull(); }));
        spinFor(30);
        EXPECT_EQ(reports, way == 0);
    }
}
