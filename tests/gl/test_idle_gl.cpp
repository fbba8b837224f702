// SPDX-License-Identifier: Apache-2.0
#include "support/AllocationCount.h"
#include "support/ShownViewer.h"

#include <gtest/gtest.h>

using kvtest::spinUntil;

namespace {

/// A GL window that counts the allocations in its paintGL().
class CountingWindow : public KVGLWidget
{
public:
    int paints = 0;
    std::uint64_t allocations = 0;

protected:
    void paintGL() override
    {
        const std::uint64_t before = kvtest::allocationsSoFar();
        KVGLWidget::paintGL();
        allocations += kvtest::allocationsSoFar() - before;
        ++paints;
    }
};

} // namespace

TEST(IdleViewer, neitherDrawsNorAllocates)
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
        EXPECT_GT(window.allocations, 0u) << "allocations are not counted";
    }

    // Late events of the window system may cause another frame. The viewer is idle if it then paints a
    // hundred times without drawing one.
    bool idle = false;
    for (int attempt = 0; attempt < 10 && !idle; ++attempt) {
        const int drawn = window.drawnFrames();
        window.paints = 0;
        window.allocations = 0;
        ASSERT_TRUE(spinUntil([&window] { return window.paints >= 100; }));
        idle = window.drawnFrames() == drawn;
    }
    EXPECT_TRUE(idle);
    EXPECT_EQ(window.allocations, 0u);
}
