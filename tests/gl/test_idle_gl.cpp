// SPDX-License-Identifier: Apache-2.0
#include "support/AllocationCount.h"
#include "support/ShownViewer.h"

#include <gtest/gtest.h>

using kvtest::spinUntil;

namespace {

/// A GL window that counts what its own part of a turn of the frame loop allocates.
class CountingWindow : public KVGLWidget
{
public:
    int turns = 0;
    std::uint64_t allocations = 0;

protected:
    void paintGL() override
    {
        const std::uint64_t before = kvtest::allocationsSoFar();
        KVGLWidget::paintGL();
        allocations += kvtest::allocationsSoFar() - before;
        ++turns;
    }
};

} // namespace

TEST(IdleViewer, neitherDrawsNorAllocates)
{
    CountingWindow window;
    // the scene of a viewer that shows gamuts and sets
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
        EXPECT_GT(window.allocations, 0u) << "the counter is not in the way of malloc";
    }

    // Late events of the window system may cause a frame or two: an idle viewer is one that then turns a
    // hundred times without any.
    bool idle = false;
    for (int attempt = 0; attempt < 10 && !idle; ++attempt) {
        const int drawn = window.drawnFrames();
        window.turns = 0;
        window.allocations = 0;
        ASSERT_TRUE(spinUntil([&window] { return window.turns >= 100; }));
        idle = window.drawnFrames() == drawn;
    }
    EXPECT_TRUE(idle);
    EXPECT_EQ(window.allocations, 0u);
}
