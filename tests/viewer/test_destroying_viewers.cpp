// SPDX-License-Identifier: Apache-2.0
// A host destroys the viewer with `delete` in slots and callbacks. Use of destroyed objects is seen by the
// sanitizers.

#include "GamutViewCase.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QMouseEvent>

namespace {

using Viewer = KVGamut3DViewer;
using View = KVGamutView;

using kvtest::id;

class DestroyingViewers : public GamutViewCase
{
protected:
    void SetUp() override
    {
        GamutViewCase::SetUp();
        viewer->resize(300, 200);
        widget().resize(300, 200);
    }

    void destroyViewer()
    {
        delete viewer.release();
        ++destroyed;
    }

    void destroyBoth()
    {
        delete viewer.release();
        delete view.release();
        ++destroyed;
    }

    /// For each way of destroying: connects it to a signal, calls @p cause and waits until it has happened.
    template <typename Signal, typename Cause>
    void expectAllowedIn(Signal signal, const Cause& cause)
    {
        for (const auto destroy : {&DestroyingViewers::destroyViewer, &DestroyingViewers::destroyBoth}) {
            destroyed = 0;
            QObject::connect(sender<Signal>(), signal, qGuiApp, [this, destroy] { // the view may be gone
                if (viewer)
                    (this->*destroy)();
            });
            cause();
            EXPECT_TRUE(eventually([this] { return destroyed == 1; }));
            settle();
            view.reset();
            viewer = std::make_unique<Viewer>();
            view = std::make_unique<View>(viewer.get());
            viewer->resize(300, 200);
            widget().resize(300, 200);
        }
    }

    template <typename Signal>
    auto* sender() const
    {
        if constexpr (std::is_invocable_v<Signal, Viewer&, QPoint, QVector3D, QVector3D>)
            return viewer.get();
        else
            return view.get();
    }

    /// @param window null for the viewer, otherwise its child window
    void sendTo(bool child, QEvent::Type type)
    {
        const bool release = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, QPointF(150, 100), QPointF(150, 100), Qt::LeftButton,
                          release ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(child ? static_cast<QObject*>(&widget()) : viewer.get(), &event);
    }

    int destroyed = 0;
};

} // namespace

TEST_F(DestroyingViewers, isAllowedInSlotsOfClicks)
{
    for (const bool child : {false, true})
        expectAllowedIn(&Viewer::click, [&] { sendTo(child, QEvent::MouseButtonRelease); });
}

TEST_F(DestroyingViewers, isAllowedInSlotsOfDoubleClicks)
{
    for (const bool child : {false, true})
        expectAllowedIn(&Viewer::doubleClick, [&] { sendTo(child, QEvent::MouseButtonDblClick); });
}

TEST_F(DestroyingViewers, isAllowedWhileTheSystemDeliversAnEvent)
{
    for (const bool child : {false, true}) {
        expectAllowedIn(&Viewer::click, [&] {
            QWindow* const window = child ? static_cast<QWindow*>(&widget()) : viewer.get();
            QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
        });
    }
}

TEST_F(DestroyingViewers, isAllowedInTheCallbackOfALoad)
{
    for (const char* profile : {"profile A", "text"}) {
        viewer->load(id, {{QStringLiteral("ProfileData"), QByteArray(profile)}},
                     [this](const QString&, bool) { destroyViewer(); });
        ASSERT_TRUE(eventually([this] { return destroyed == 1; }));
        settle();
        destroyed = 0;
        viewer = std::make_unique<Viewer>();
    }
}

TEST_F(DestroyingViewers, isAllowedInDone)
{
    view->show(id, computed(), view.get(), [this](const std::optional<KVProblem>&) { destroyBoth(); });
    ASSERT_TRUE(eventually([this] { return destroyed == 1; }));
    settle();
}

TEST_F(DestroyingViewers, isAllowedInDoneOfAReplacedLoad)
{
    view->show(id, computed(), view.get(), [this](const std::optional<KVProblem>&) { destroyBoth(); });
    view->show(id, computed());
    ASSERT_TRUE(eventually([this] { return destroyed == 1; }));
    settle();
}

TEST_F(DestroyingViewers, isAllowedInSlotsOfLoads)
{
    expectAllowedIn(&View::loaded, [this] { view->show(id, computed()); });
    expectAllowedIn(&View::failed, [this] { view->show(id, {}); });
    expectAllowedIn(&View::progressChanged, [this] { view->show(id, computed()); });
}

TEST_F(DestroyingViewers, isAllowedInSlotsOfLoadingChanged)
{
    expectAllowedIn(&View::loadingChanged, [this] { view->show(id, computed()); });
    expectAllowedIn(&View::loadingChanged, [this] {
        viewer->load(id, {{QStringLiteral("ProfileData"), QByteArray("text")}}, [](const QString&, bool) {});
    });
}

TEST_F(DestroyingViewers, isAllowedInTheLastLoadingChanged)
{
    for (const bool remove : {true, false}) {
        view->show(id, computed());
        QObject::connect(view.get(), &View::loadingChanged, qGuiApp, [this] { destroyBoth(); });
        if (remove)
            viewer->removeGamut(id);
        ASSERT_TRUE(eventually([this] { return destroyed == 1; }));
        settle();
        destroyed = 0;
        viewer = std::make_unique<Viewer>();
        view = std::make_unique<View>(viewer.get());
    }
}

TEST_F(DestroyingViewers, isAllowedInSlotsOfTheCamera)
{
    expectAllowedIn(&View::cameraChanged, [this] { view->setCamera({{1, 2, 3}, {4, 5, 6}, 20.0f, true}); });
}

TEST_F(DestroyingViewers, isAllowedInSlotsOfTheTheme)
{
    KVViewTheme theme;
    theme.grid = Qt::red;
    theme.background = Qt::blue;
    KVViewState state;
    state.theme = theme;
    expectAllowedIn(&View::themeChanged, [&] { view->setTheme(theme); });
    expectAllowedIn(&View::themeChanged, [&] { view->setState(state); });
    expectAllowedIn(&View::themeChanged, [&] { viewer->setBackground(Qt::green); });
    expectAllowedIn(&View::themeChanged, [&] { view->setThemeFollowsPalette(true); });
    expectAllowedIn(&View::themeFollowsPaletteChanged, [&] { view->setThemeFollowsPalette(true); });
}

TEST_F(DestroyingViewers, isAllowedWhenThePaletteChanges)
{
    expectAllowedIn(&View::themeChanged, [this] {
        {
            const QSignalBlocker quiet(view.get());
            view->setThemeFollowsPalette(true);
        }
        QEvent change(QEvent::ApplicationPaletteChange);
        QCoreApplication::sendEvent(qGuiApp, &change);
    });
}

TEST_F(DestroyingViewers, isAllowedInSlotsOfPicking)
{
    expectAllowedIn(&View::clicked, [this] { sendTo(false, QEvent::MouseButtonRelease); });
    expectAllowedIn(&View::hovered, [this] {
        QMouseEvent move(QEvent::MouseMove, QPointF(9, 9), QPointF(9, 9), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(viewer.get(), &move);
    });
}
