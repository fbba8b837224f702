// SPDX-License-Identifier: Apache-2.0
#include "support/AllocationCount.h"
#include "support/ShownViewer.h"

#include <gtest/gtest.h>

#include <QtTest/QSignalSpy>

using kvtest::spinUntil;

namespace {

/// A GL window that counts what it does, and the allocations in it.
class CountingWindow : public KVGLWidget
{
public:
    int paints = 0;
    int looks = 0; ///< turns of the frame loop without painting
    std::uint64_t paintAllocations = 0;
    std::uint64_t lookAllocations = 0;

    void reset() { paints = looks = 0, paintAllocations = lookAllocations = 0; }

protected:
    void paintGL() override
    {
        const std::uint64_t before = kvtest::allocationsSoFar();
        KVGLWidget::paintGL();
        paintAllocations += kvtest::allocationsSoFar() - before;
        ++paints;
    }

    void timerEvent(QTimerEvent* event) override
    {
        const std::uint64_t before = kvtest::allocationsSoFar();
        KVGLWidget::timerEvent(event);
        lookAllocations += kvtest::allocationsSoFar() - before;
        ++looks;
    }
};

} // namespace

TEST(IdleViewer, neitherPaintsNorSwapsNorAllocates)
{
    CountingWindow window;
    // translucent objects, as in a viewer with gamuts and sets
    window.resize(200, 150);
    window.show();
    for (const char* name : {"a", "b", "c"}) {
        const auto object = QSharedPointer<KV3DObject>::create(QLatin1String(name), QLatin1String(name));
        window.root().addChild(object);
        object->setMarkers(1, {{Qt::red, QVector3D(20, -60, 0)}, {Qt::blue, QVector3D(80, 60, 0)}}, 40, 0.5f);
        object->applyAlpha(0.5f);
    }
    window.setCamera(QVector3D(0, 0, -350), QVector3D(), 0);
    ASSERT_TRUE(spinUntil([&window] { return window.drawnFrames() > 0 && window.isSettled(); }));
    if (kvtest::countsAllocations()) {
        EXPECT_GT(window.paintAllocations, 0u) << "allocations are not counted";
    }

    // Late events of the window system may cause another frame. The viewer is idle if it then looks for
    // changes thirty times without painting.
    QSignalSpy swaps(&window, &QOpenGLWindow::frameSwapped);
    bool idle = false;
    for (int attempt = 0; attempt < 10 && !idle; ++attempt) {
        window.reset();
        swaps.clear();
        ASSERT_TRUE(spinUntil([&window] { return window.looks >= 30; }));
        idle = window.paints == 0;
    }
    EXPECT_TRUE(idle);
    EXPECT_EQ(swaps.count(), 0);
    EXPECT_LE(window.lookAllocations, 30u) << "only Qt's record of each timer";

    const int drawn = window.drawnFrames();
    window.setCamera(QVector3D(0, 10, -350), QVector3D(), 0);
    EXPECT_TRUE(spinUntil([&] { return window.drawnFrames() > drawn && swaps.count() > 0; }));
}

TEST(IdleViewer, paintsAgainInEveryPartOfAMove)
{
    CountingWindow window;
    window.resize(200, 150);
    window.show();
    ASSERT_TRUE(spinUntil([&window] { return window.drawnFrames() > 0 && window.isSettled(); }));
    QSignalSpy finished(&window, &KVGLWidget::moveFinised);
    window.setCamera(QVector3D(0, 10, -350), QVector3D(), 300);
    const int drawn = window.drawnFrames();
    ASSERT_TRUE(spinUntil([&] { return finished.count() == 1; }));
    EXPECT_GT(window.drawnFrames(), drawn);
    EXPECT_TRUE(spinUntil([&window] { return window.isSettled(); }));
    EXPECT_EQ(window.camera(), QVector3D(0, 10, -350));
}
