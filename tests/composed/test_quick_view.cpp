// SPDX-License-Identifier: Apache-2.0
// The viewer as an item of Qt Quick, through the module that QML loads.

#include "ComposedCase.h"

#include <KVGamutQuickView.h>

#include <gtest/gtest.h>

#include <QtCore/QTemporaryDir>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItemGrabResult>
#include <QtQuick/QQuickView>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <limits>

using namespace kvtest;

namespace {

/// A window with a piece of QML.
class Window
{
public:
    explicit Window(const QByteArray& qml, const QSize& size = {200, 150})
    {
        m_window.engine()->addImportPath(QStringLiteral(KV_QML_FOLDER));
        m_component.setData("import QtQuick\nimport KV3DViewer.Quick\n" + qml, QUrl());
        auto* root = qobject_cast<QQuickItem*>(m_component.create());
        EXPECT_TRUE(root) << qPrintable(m_component.errorString());
        if (!root)
            return;
        m_window.setColor(Qt::white);
        m_window.setResizeMode(QQuickView::SizeRootObjectToView);
        m_window.setContent({}, &m_component, root);
        m_window.resize(size);
        m_window.show();
        m_window.requestActivate();
        isShown = QTest::qWaitForWindowActive(&m_window, 60000);
    }
    QQuickView& window() { return m_window; }
    QQuickItem& root() { return *m_window.rootObject(); }
    KVGamutQuickView& view(const char* name = "view")
    {
        auto* item = qobject_cast<KVGamutQuickView*>(m_window.rootObject());
        return item ? *item : *m_window.rootObject()->findChild<KVGamutQuickView*>(QLatin1String(name));
    }
    bool settle(KVGamutQuickView& item)
    {
        return spinUntil([&] { return item.isSettled(); });
    }
    /// Of the window, with the last frame of its settled views.
    QImage picture()
    {
        for (auto* item : m_window.contentItem()->findChildren<KVGamutQuickView*>())
            EXPECT_TRUE(settle(*item));
        return m_window.grabWindow();
    }

    bool isShown = false;

private:
    QQuickView m_window;
    QQmlComponent m_component{m_window.engine()};
};

const char plain[] = "KVGamutQuickView { objectName: \"view\"; focus: true }";

QByteArray fileUrl(const QString& name)
{
    return QUrl::fromLocalFile(name).toEncoded();
}

} // namespace

TEST(QuickView, showsThePictureOfTheWindow)
{
    const QImage expected = windowPicture();
    Window shown(plain);
    ASSERT_TRUE(shown.isShown);
    fill(*shown.view().viewer());
    EXPECT_LE(difference(shown.picture(), expected), maxDifference);
    EXPECT_EQ(shown.view().viewer()->picture(), expected);
}

TEST(QuickView, isGrabbedLikeAnyItem)
{
    Window shown(plain);
    ASSERT_TRUE(shown.isShown);
    fill(*shown.view().viewer());
    ASSERT_TRUE(shown.settle(shown.view()));
    const auto grab = shown.view().grabToImage();
    ASSERT_TRUE(grab);
    const QSignalSpy ready(grab.data(), &QQuickItemGrabResult::ready);
    ASSERT_TRUE(spinUntil([&] { return !ready.isEmpty(); }));
    EXPECT_LE(difference(grab->image(), windowPicture()), maxDifference);
}

TEST(QuickView, liesBelowOtherItemsAndIsFadedWithItsParent)
{
    Window shown("Item { KVGamutQuickView { objectName: 'view'; anchors.fill: parent; background: 'black'; "
                 "axes: false; grid: false; opacity: 0.5 } "
                 "Rectangle { x: 10; y: 10; width: 50; height: 30; radius: 10; color: '#ff8000' } }");
    ASSERT_TRUE(shown.isShown);
    const QImage picture = shown.picture();
    EXPECT_EQ(picture.pixelColor(30, 25), QColor(0xff, 0x80, 0)) << "the item on top";
    EXPECT_NEAR(picture.pixelColor(11, 11).red(), 128, 2) << "its round corner shows the view";
    EXPECT_NEAR(picture.pixelColor(150, 100).red(), 128, 2) << "black, half over white";
}

TEST(QuickView, isScaledAndClippedWithItsParent)
{
    Window shown("Item { Item { width: 100; height: 150; clip: true; KVGamutQuickView { objectName: 'view'; "
                 "width: 100; "
                 "height: 75; scale: 2; transformOrigin: Item.TopLeft; background: 'red'; axes: false; grid: "
                 "false } } }");
    ASSERT_TRUE(shown.isShown);
    const QImage picture = shown.picture();
    EXPECT_EQ(picture.pixelColor(98, 148), QColor(Qt::red));
    EXPECT_EQ(picture.pixelColor(102, 75), QColor(Qt::white)) << "clipped";
}

TEST(QuickView, mayBeTwiceInAWindow)
{
    Window shown("Row { KVGamutQuickView { objectName: 'left'; width: 200; height: 150 } "
                 "KVGamutQuickView { objectName: 'right'; width: 200; height: 150; background: 'red' } }",
                 QSize(400, 150));
    ASSERT_TRUE(shown.isShown);
    fill(*shown.view("left").viewer());
    const QImage both = shown.picture();
    EXPECT_LE(difference(both.copy(0, 0, 200, 150), windowPicture()), maxDifference);
    EXPECT_EQ(both.pixelColor(205, 5), QColor(Qt::red));
}

TEST(QuickView, followsItsSize)
{
    Window shown(plain);
    ASSERT_TRUE(shown.isShown);
    fill(*shown.view().viewer());
    ASSERT_TRUE(shown.settle(shown.view()));
    shown.window().resize(260, 120);
    ASSERT_TRUE(spinUntil([&] { return shown.view().viewer()->picture().size() == QSize(260, 120); }));
    EXPECT_LE(difference(shown.picture(), windowPicture({260, 120})), maxDifference);
}

TEST(QuickView, drawsNothingWhileNothingChanges)
{
    Window shown(plain);
    ASSERT_TRUE(shown.isShown);
    fill(*shown.view().viewer());
    ASSERT_TRUE(shown.settle(shown.view()));
    spinFor(300);
    const QSignalSpy swapped(&shown.window(), &QQuickWindow::frameSwapped);
    spinFor(500);
    EXPECT_EQ(swapped.count(), 0);
    shown.view().setGrid(false);
    EXPECT_TRUE(spinUntil([&] { return swapped.count() > 0; }));
}

TEST(QuickView, turnsTheCameraByDragsKeysAndTheWheel)
{
    Window shown(plain);
    ASSERT_TRUE(shown.isShown);
    ASSERT_TRUE(shown.settle(shown.view()));
    QSignalSpy changed(&shown.view(), &KVGamutQuickView::cameraChanged);
    const auto moves = [&](const char* by) {
        EXPECT_TRUE(spinUntil([&] { return !changed.isEmpty(); })) << by;
        changed.clear();
    };
    QTest::mousePress(&shown.window(), Qt::LeftButton, Qt::NoModifier, QPoint(50, 50));
    QTest::mouseMove(&shown.window(), QPoint(80, 60));
    QTest::mouseRelease(&shown.window(), Qt::LeftButton, Qt::NoModifier, QPoint(80, 60));
    moves("a drag");
    EXPECT_TRUE(shown.view().hasActiveFocus());
    const QSignalSpy finished(&shown.view(), &KVGamutQuickView::moveFinished);
    QTest::keyClick(&shown.window(), Qt::Key_Left);
    EXPECT_TRUE(spinUntil([&] { return finished.count() == 1; }));
    moves("a key");
    const auto turnWheel = [&] {
        QWheelEvent wheel({50, 50}, shown.window().mapToGlobal(QPointF(50, 50)), {}, {0, 120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&shown.window(), &wheel);
    };
    turnWheel();
    moves("the wheel");

    shown.view().setInteractive(false);
    const QVector3D camera = shown.view().cameraPosition();
    turnWheel();
    QTest::keyClick(&shown.window(), Qt::Key_Left);
    spinFor(100);
    EXPECT_EQ(shown.view().cameraPosition(), camera);
}

TEST(QuickView, isDraggedAsFarAsThePointerWhenItIsScaled)
{
    const auto cameraAfterDrag = [](const QByteArray& scale, const QPoint& from, const QPoint& to) {
        Window shown("Item { KVGamutQuickView { objectName: 'view'; width: 100; height: 100; scale: " +
                         scale + "; transformOrigin: Item.TopLeft } }",
                     QSize(300, 300));
        EXPECT_TRUE(shown.isShown);
        QTest::mousePress(&shown.window(), Qt::LeftButton, Qt::NoModifier, from);
        QTest::mouseMove(&shown.window(), to);
        QTest::mouseRelease(&shown.window(), Qt::LeftButton, Qt::NoModifier, to);
        return shown.view().cameraPosition();
    };
    const QVector3D plainly = cameraAfterDrag("1", {20, 20}, {40, 50});
    const QVector3D scaled = cameraAfterDrag("3", {60, 60}, {120, 150});
    EXPECT_NEAR((plainly - scaled).length(), 0, 1e-2);
}

TEST(QuickView, leavesOtherKeysToItsParent)
{
    Window shown(
        "Item { property int keys: 0; Keys.onPressed: (event) => { if (event.key === Qt.Key_A || "
        "event.key === Qt.Key_Escape) keys += 1 } KVGamutQuickView { objectName: 'view'; anchors.fill: "
        "parent; focus: true } }");
    ASSERT_TRUE(shown.isShown);
    shown.view().forceActiveFocus();
    QTest::keyClick(&shown.window(), Qt::Key_A);
    QTest::keyClick(&shown.window(), Qt::Key_Escape);
    QTest::keyClick(&shown.window(), Qt::Key_Left);
    EXPECT_EQ(shown.root().property("keys").toInt(), 2);
}

TEST(QuickView, keepsADragThatAFlickableWouldTake)
{
    Window shown("Flickable { contentWidth: 200; contentHeight: 1000; KVGamutQuickView { objectName: 'view'; "
                 "width: 200; "
                 "height: 1000 } }");
    ASSERT_TRUE(shown.isShown);
    const QVector3D camera = shown.view().cameraPosition();
    QTest::mousePress(&shown.window(), Qt::LeftButton, Qt::NoModifier, QPoint(50, 120));
    for (int y = 110; y >= 20; y -= 10)
        QTest::mouseMove(&shown.window(), QPoint(50, y));
    QTest::mouseRelease(&shown.window(), Qt::LeftButton, Qt::NoModifier, QPoint(50, 20));
    EXPECT_EQ(shown.root().property("contentY").toReal(), 0.0);
    EXPECT_NE(shown.view().cameraPosition(), camera);
}

TEST(QuickView, reportsClicksAndHovering)
{
    Window shown(
        "KVGamutQuickView { property string clickedId; property string hoveredId; property vector3d lab; "
        "onClicked: (hit) => { clickedId = hit.id; lab = hit.lab } onHovered: (hit) => { hoveredId = hit.id "
        "} }");
    ASSERT_TRUE(shown.isShown);
    fill(*shown.view().viewer());
    ASSERT_TRUE(shown.settle(shown.view()));
    QTest::mouseMove(&shown.window(), QPoint(98, 75));
    QTest::mouseMove(&shown.window(), QPoint(100, 75));
    EXPECT_TRUE(spinUntil([&] { return shown.root().property("hoveredId").toString() == g; }));
    QTest::mouseClick(&shown.window(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 75));
    EXPECT_TRUE(spinUntil([&] { return shown.root().property("clickedId").toString() == g; }));
    EXPECT_EQ(shown.root().property("lab").value<QVector3D>(), shown.view().hitAt({100, 75}).lab);
    EXPECT_TRUE(shown.view().isInside(g, {50, 0, 0}));
    EXPECT_FALSE(shown.view().isInside(g, {50, 120, 120}));
}

TEST(QuickView, listsItsGamutsForDelegates)
{
    Window shown(
        QByteArray() + "Item { property alias texts: names; Component.onCompleted: { view.load('a', '" +
        fileUrl(profile) +
        "', {intent: KVGamutQuickView.Relative, gridPoints: 9}); view.load('b', 'file:///no/such.icc') } "
        "KVGamutQuickView { id: view; objectName: 'view'; anchors.fill: parent; property string failure; "
        "onFailed: (id, text) => { failure = id + ': ' + text } } "
        "Repeater { id: names; model: view.gamuts; delegate: Item { required property string gamutId; "
        "required property bool loaded; required property string errorText; required property real volume; "
        "required property real uncertainty; required property var model; "
        "function fade() { model.gamutOpacity = 0.25; model.displayMode = KVGamutQuickView.Wireframe } } } "
        "}");
    ASSERT_TRUE(shown.isShown);
    KVGamutQuickView& view = shown.view();
    KVGamutQuickModel& model = *view.gamuts();
    ASSERT_EQ(model.count(), 2);
    ASSERT_TRUE(
        spinUntil([&] { return !view.isLoading() && !view.property("failure").toString().isEmpty(); }));
    auto* repeater = shown.root().property("texts").value<QObject*>();
    const auto rowOf = [&](int index) {
        QQuickItem* item = nullptr;
        QMetaObject::invokeMethod(repeater, "itemAt", Q_RETURN_ARG(QQuickItem*, item), Q_ARG(int, index));
        return item;
    };
    QQuickItem* first = rowOf(0);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->property("gamutId").toString(), QStringLiteral("a"));
    EXPECT_TRUE(first->property("loaded").toBool());
    EXPECT_TRUE(first->property("errorText").toString().isEmpty());
    const KVGamut::Report report = view.view()->gamut(QStringLiteral("a")).report();
    EXPECT_EQ(report.gridPoints, 9);
    EXPECT_EQ(first->property("volume").toDouble(), report.volume);
    EXPECT_EQ(first->property("uncertainty").toDouble(), report.volumeUncertainty);
    EXPECT_NEAR(report.volume, 1.21e6, 2e4) << "Adobe RGB, relative";

    QQuickItem* second = rowOf(1);
    ASSERT_TRUE(second);
    EXPECT_FALSE(second->property("loaded").toBool());
    EXPECT_TRUE(second->property("errorText").toString().contains(QStringLiteral("/no/such.icc")));
    EXPECT_EQ(view.property("failure").toString(),
              QStringLiteral("b: ") + second->property("errorText").toString());

    QMetaObject::invokeMethod(first, "fade");
    EXPECT_EQ(view.view()->look(QStringLiteral("a")).opacity, 0.25f);
    EXPECT_EQ(view.view()->look(QStringLiteral("a")).mode, KVGamut3DViewer::Wireframe);

    view.remove(QStringLiteral("a"));
    EXPECT_EQ(model.count(), 1);
    EXPECT_FALSE(view.viewer()->exists(QStringLiteral("a")));
    EXPECT_EQ(model.rowOf(QStringLiteral("b")), 0);
}

TEST(QuickView, refusesUnknownSettingsAndTheNetwork)
{
    Window shown(plain);
    ASSERT_TRUE(shown.isShown);
    QSignalSpy failed(&shown.view(), &KVGamutQuickView::failed);
    const auto textOf = [&](const QUrl& url, const QVariantMap& settings) {
        failed.clear();
        shown.view().load(g, url, settings);
        EXPECT_TRUE(failed.isEmpty()) << "reported later, like every end of a load";
        EXPECT_TRUE(spinUntil([&] { return !failed.isEmpty(); }));
        EXPECT_EQ(shown.view().gamuts()->errorOf(g), failed[0][1].toString());
        return failed[0][1].toString();
    };
    EXPECT_TRUE(textOf(QUrl::fromLocalFile(profile), {{QStringLiteral("intend"), 1}})
                    .contains(QStringLiteral("intend")));
    EXPECT_TRUE(textOf(QUrl(QStringLiteral("https://example.com/p.icc")), {})
                    .contains(QStringLiteral("https://example.com/p.icc")));
    EXPECT_TRUE(textOf(QUrl::fromLocalFile(profile), {{QStringLiteral("intent"), 17}})
                    .contains(QStringLiteral("17")));
    EXPECT_TRUE(textOf(QUrl(QStringLiteral("qrc:/none.icc")), {}).contains(QStringLiteral("none.icc")));
    shown.view().load(g, QUrl::fromLocalFile(profile));
    EXPECT_TRUE(spinUntil([&] { return !shown.view().isLoading(); }));
    EXPECT_TRUE(shown.view().gamuts()->errorOf(g).isEmpty());
}

TEST(QuickView, hasTheSettingsOfTheViewAsProperties)
{
    Window shown(
        "KVGamutQuickView { cameraPosition: Qt.vector3d(150, 300, 260); interestPoint: Qt.vector3d(40, 0, "
        "0); "
        "viewingAngle: 40; background: '#202020'; grid: false; axes: false; abPlane: true; scales: true; "
        "clipping: 60; coarseWhileMoving: true }");
    ASSERT_TRUE(shown.isShown);
    KVGamutQuickView& view = shown.view();
    KVGamut3DViewer& viewer = *view.viewer();
    EXPECT_LT((viewer.camera() - QVector3D(150, 300, 260)).length(), 1e-2f);
    EXPECT_LT((viewer.interestPt() - QVector3D(40, 0, 0)).length(), 1e-2f);
    EXPECT_EQ(viewer.viewingAngle(), 40.0f);
    EXPECT_EQ(viewer.background(), QColor(0x20, 0x20, 0x20));
    EXPECT_FALSE(viewer.displayGrid());
    EXPECT_FALSE(viewer.displayAxes());
    EXPECT_TRUE(viewer.abPlane());
    EXPECT_TRUE(view.view()->annotations().scales);
    EXPECT_EQ(view.view()->clipping(), 60.0f);
    EXPECT_TRUE(view.view()->coarseWhileMoving());
    view.setClipping(std::numeric_limits<float>::quiet_NaN());
    EXPECT_FALSE(view.view()->clipping());
    view.setOrthogonal(true);
    EXPECT_TRUE(viewer.orthogonalProjection());
    view.setLook(g, {{QStringLiteral("opacity"), 0.5},
                     {QStringLiteral("mode"), KVGamutQuickView::Wireframe},
                     {QStringLiteral("color"), QStringLiteral("red")},
                     {QStringLiteral("nothing"), 1}});
    EXPECT_EQ(view.look(g).value(QStringLiteral("opacity")).toFloat(), 0.5f);
    EXPECT_EQ(view.look(g).value(QStringLiteral("mode")).toInt(), KVGamutQuickView::Wireframe);
    EXPECT_EQ(view.view()->look(g).color, QColor(Qt::red));
}

TEST(QuickView, keepsItsSceneInAnotherWindow)
{
    Window first("Item { KVGamutQuickView { objectName: 'view'; width: 200; height: 150 } }");
    Window second("Item {}");
    ASSERT_TRUE(first.isShown && second.isShown);
    KVGamutQuickView& view = first.view();
    fill(*view.viewer());
    ASSERT_TRUE(first.settle(view));
    view.setParentItem(&second.root());
    EXPECT_TRUE(spinUntil(
        [&] { return difference(second.window().grabWindow(), windowPicture()) <= maxDifference; }));
    view.setParentItem(&first.root());
    EXPECT_TRUE(
        spinUntil([&] { return difference(first.window().grabWindow(), windowPicture()) <= maxDifference; }));
}

TEST(QuickView, showsNothingWhileItIsHidden)
{
    Window shown(plain);
    ASSERT_TRUE(shown.isShown);
    ASSERT_TRUE(shown.settle(shown.view()));
    shown.view().setVisible(false);
    const QSignalSpy finished(&shown.view(), &KVGamutQuickView::moveFinished);
    shown.view().setCamera({50, 400, 0}, {50, 0, 0}, 30);
    spinFor(200);
    EXPECT_TRUE(finished.isEmpty());
    shown.view().setVisible(true);
    EXPECT_TRUE(spinUntil([&] { return finished.count() == 1; }));
    EXPECT_TRUE(shown.settle(shown.view()));
}

TEST(QuickView, savesPicturesOfAnySize)
{
    const QTemporaryDir folder;
    Window shown(plain);
    ASSERT_TRUE(shown.isShown);
    fill(*shown.view().viewer());
    ASSERT_TRUE(shown.settle(shown.view()));
    const QString name = folder.filePath(QStringLiteral("large.png"));
    EXPECT_TRUE(shown.view().savePicture(QUrl::fromLocalFile(name), QSize(500, 400)));
    EXPECT_EQ(QImage(name).size(), QSize(500, 400));
    EXPECT_FALSE(shown.view().savePicture(
        QUrl::fromLocalFile(folder.filePath(QStringLiteral("no/large.png"))), QSize(50, 40)));
}

TEST(QuickView, followsThePixelRatio) // run once more with QT_SCALE_FACTOR=2
{
    Window shown(plain, QSize(101, 75));
    ASSERT_TRUE(shown.isShown);
    fill(*shown.view().viewer());
    const qreal ratio = shown.window().effectiveDevicePixelRatio();
    const QImage picture = shown.picture();
    EXPECT_EQ(picture.size(), QSize(101, 75) * ratio);
    const QImage own = shown.view().viewer()->picture();
    EXPECT_EQ(own.size(), picture.size());
    EXPECT_EQ(own.devicePixelRatio(), ratio);
    EXPECT_LE(difference(picture, own), maxDifference);
}
