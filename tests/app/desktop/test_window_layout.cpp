// SPDX-License-Identifier: Apache-2.0
// The size of the window, the places of its panels, and what the next window takes over.

#include "WindowCase.h"

#include "desktop/files/FileDialogs.h"
#include "desktop/files/WindowMemory.h"

#include <QtGui/QScreen>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QDoubleSpinBox>

#include <cmath>

namespace {

class Layout : public kvtest::WindowCase
{
protected:
    QDockWidget& panel(const char* name) { return control<QDockWidget>(name); }
    QList<QDockWidget*> panels() { return window.findChildren<QDockWidget*>(); }

    void resizeTo(const QSize& size)
    {
        window.resize(size);
        ASSERT_TRUE(kvtest::spinUntil([&] { return window.size() == size; }))
            << window.width() << "x" << window.height();
    }
    /// The areas of the panels that are shown in the window.
    QMap<QString, Qt::DockWidgetArea> areas()
    {
        QMap<QString, Qt::DockWidgetArea> all;
        for (QDockWidget* dock : panels())
            if (dock->isVisible() && !dock->isFloating())
                all.insert(dock->objectName(), window.dockWidgetArea(dock));
        return all;
    }
    /// Whether any two of the panels that can be seen overlap, or reach out of the window.
    bool isTidy()
    {
        QList<QRect> places;
        for (const QDockWidget* dock : panels())
            if (dock->isVisible() && !dock->visibleRegion().isEmpty())
                places.append(dock->geometry());
        for (qsizetype i = 0; i < places.size(); ++i) {
            if (!window.rect().contains(places[i]))
                return false;
            for (qsizetype j = 0; j < i; ++j)
                if (places[i].intersects(places[j]))
                    return false;
        }
        return true;
    }
};

// A screen of 1280x720 pixels at a scale of 1.5.
constexpr QSize smallScreen(853, 480);

TEST_F(Layout, fitsASmallScreen)
{
    resizeTo(smallScreen);
    EXPECT_TRUE(isTidy());
    window.resetPanels();
    resizeTo(smallScreen);
    EXPECT_TRUE(isTidy());
    resizeTo({1024, 600});
    EXPECT_TRUE(isTidy());
}

TEST_F(Layout, isNeverLargerThanTheScreen)
{
    const QSize screen = window.screen()->availableSize();
    EXPECT_LT(window.fitting({100000, 100000}).width(), screen.width());
    EXPECT_LT(window.fitting({100000, 100000}).height(), screen.height());
    EXPECT_EQ(window.fitting({400, 300}), QSize(400, 300));
}

TEST_F(Layout, ofASmallWindowHasTabs)
{
    resizeTo(smallScreen);
    window.resetPanels();
    resizeTo(smallScreen);
    EXPECT_EQ(window.tabifiedDockWidgets(&panel("sectionDock")).size(), 4);
    EXPECT_FALSE(panel("sectionDock").visibleRegion().isEmpty()) << "the first tab";
    EXPECT_GT(control<QWidget>("view").height(), 300);
    EXPECT_GT(control<QWidget>("view").width(), 400);
    resizeTo({1024, 600});
    window.resetPanels();
    EXPECT_EQ(window.tabifiedDockWidgets(&panel("sectionDock")).size(), 3);
    EXPECT_TRUE(window.tabifiedDockWidgets(&panel("gamutsDock")).isEmpty()) << "there is room for it";
    resizeTo({1200, 800});
    window.resetPanels();
    EXPECT_TRUE(window.tabifiedDockWidgets(&panel("sectionDock")).isEmpty());
    EXPECT_TRUE(isTidy());
}

TEST_F(Layout, canBeReset)
{
    const QByteArray first = window.saveState();
    panel("sectionDock").setFloating(true);
    panel("gamutsDock").close();
    window.tabifyDockWidget(&panel("comparisonDock"), &panel("pointsDock"));
    EXPECT_TRUE(panel("sectionDock").isWindow());
    EXPECT_NE(window.saveState(), first);
    action("resetPanels").trigger();
    for (const QDockWidget* dock : panels()) {
        EXPECT_FALSE(dock->isFloating()) << dock->objectName().toStdString();
        EXPECT_TRUE(dock->isVisible()) << dock->objectName().toStdString();
        EXPECT_TRUE(window.tabifiedDockWidgets(const_cast<QDockWidget*>(dock)).isEmpty());
    }
    EXPECT_EQ(window.dockWidgetArea(&panel("pointsDock")), Qt::RightDockWidgetArea);
    EXPECT_EQ(window.dockWidgetArea(&panel("comparisonDock")), Qt::BottomDockWidgetArea);
}

TEST_F(Layout, isTakenOverByTheNextWindow)
{
    panel("findingDock").close();
    window.addDockWidget(Qt::LeftDockWidgetArea, &panel("sectionDock"));
    resizeTo({1111, 702});
    action("backgroundDark").trigger();
    action("annotate").trigger();
    FileDialogs::setFolder(path(QStringLiteral("folder")));
    window.memory().write();
    const QColor dark = window.viewer().background();
    FileDialogs::setFolder({});

    MainWindow next;
    next.recall(WindowMemory::read());
    next.show();
    EXPECT_EQ(next.size(), QSize(1111, 702));
    EXPECT_TRUE(next.findChild<QDockWidget*>(QStringLiteral("findingDock"))->isHidden());
    EXPECT_EQ(next.dockWidgetArea(next.findChild<QDockWidget*>(QStringLiteral("sectionDock"))),
              Qt::LeftDockWidgetArea);
    EXPECT_EQ(next.viewer().background(), dark);
    EXPECT_TRUE(next.findChild<QAction*>(QStringLiteral("backgroundDark"))->isChecked());
    EXPECT_FALSE(next.findChild<QAction*>(QStringLiteral("annotate"))->isChecked());
    EXPECT_EQ(FileDialogs::folder(), path(QStringLiteral("folder")));
}

TEST_F(Layout, ofUnreadableSettingsIsTheFirstOne)
{
    const QColor background = window.viewer().background();
    ASSERT_EQ(areas().size(), 5);
    const QMap<QString, Qt::DockWidgetArea> areasBefore = areas();
    for (const QByteArray& json :
         {QByteArray(), QByteArray("[1,"), QByteArray(R"({"geometry":5,"panels":"AAAA"})"),
          QByteArray(R"({"geometry":"%%","panels":[],"background":"red","folder":7})"),
          QByteArray(R"({"panels":"/////wAAAAD9AAAAAg==","background":"#12345"})")}) {
        window.recall(WindowMemory::fromJson(json));
        EXPECT_EQ(areas(), areasBefore) << json.constData();
        EXPECT_EQ(window.viewer().background(), background) << json.constData();
        EXPECT_TRUE(isTidy());
    }
}

// --- The wheel ------------------------------------------------------------------------------------------

class Wheel : public kvtest::WindowCase
{
protected:
    void roll(int angle, const QPoint& place)
    {
        QWheelEvent event(place, innerWindow().mapToGlobal(place), {}, {0, angle}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&innerWindow(), &event);
    }
    double distance()
    {
        const KVCamera camera = window.view().camera();
        return double((camera.position - camera.interestPoint).length());
    }
};

TEST_F(Wheel, comesNearerByAFactorForEachNotch)
{
    open({QStringLiteral("sRGB")});
    const double before = distance();
    for (int i = 0; i < 10; ++i)
        roll(120, {200, 150});
    EXPECT_NEAR(before / distance(), std::pow(1.15, 10), 0.01);
    for (int i = 0; i < 80; ++i)
        roll(-15, {200, 150}); // a wheel of high resolution
    EXPECT_NEAR(before / distance(), 1.0, 0.001);
    for (int i = 0; i < 1000; ++i)
        roll(120, {200, 150});
    EXPECT_NEAR(distance(), 5.0, 0.1);
    for (int i = 0; i < 1000; ++i)
        roll(-120, {200, 150});
    EXPECT_NEAR(distance(), 1300.0, 1.0);
}

TEST_F(Wheel, keepsThePlaceUnderThePointer)
{
    open({QStringLiteral("sRGB")});
    for (const bool orthogonal : {false, true}) {
        if (orthogonal)
            action("orthogonal").trigger();
        ASSERT_TRUE(settle());
        const QPoint pointer =
            QPoint(innerWindow().width() / 2, innerWindow().height() / 2) + QPoint(20, -15);
        const KVHit hit = window.view().hitAt(pointer);
        ASSERT_EQ(hit.kind, KVHit::Kind::Gamut);
        for (int i = 0; i < 3; ++i)
            roll(120, pointer);
        const KVHit after = window.view().hitAt(pointer);
        // The surface is not exactly as deep as the point of interest.
        EXPECT_LT((after.lab - hit.lab).length(), 5.0f);
        for (int i = 0; i < 3; ++i)
            roll(-120, pointer);
        EXPECT_LT((window.view().hitAt(pointer).lab - hit.lab).length(), 0.5f);
    }
}

// --- Keys of the view -----------------------------------------------------------------------------------

using ViewKeys = kvtest::WindowCase;

TEST_F(ViewKeys, workAgainAfterANumberWasTyped)
{
    open({QStringLiteral("sRGB")});
    for (const Qt::Key end : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
        auto& number = control<QDoubleSpinBox>("clipNumber");
        number.setFocus();
        number.selectAll();
        QTest::keyClicks(&number, QStringLiteral("40"));
        QTest::keyClick(&number, end);
        EXPECT_TRUE(kvtest::spinUntil([&] { return control<QWidget>("view").hasFocus(); })) << end;
        EXPECT_EQ(number.value(), 40.0);
        const bool axes = window.viewer().displayAxes();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_X);
        EXPECT_TRUE(kvtest::spinUntil([&] { return window.viewer().displayAxes() != axes; })) << end;
    }
}

} // namespace
