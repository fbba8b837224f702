// SPDX-License-Identifier: Apache-2.0
#include <KVGamutView.h>

#include "support/ShownViewer.h"

#include <gtest/gtest.h>

#include <QtGui/QColorSpace>
#include <QtTest/QSignalSpy>

#include <cmath>

using kvtest::ShownViewer;
using kvtest::spinUntil;

namespace {

const QString id = QStringLiteral("sRGB");

KVGamut::GamutObject srgb()
{
    const QByteArray bytes = QColorSpace(QColorSpace::SRgb).iccProfile();
    const KVProfilePtr profile(KVProfileCreateWithData(bytes.constData(), static_cast<int>(bytes.size())),
                               KVProfileRelease);
    KVGamut::Settings settings;
    settings.intent = KVVMRenderRelativeColorimetric;
    KVGamut::GamutObject gamut;
    EXPECT_TRUE(gamut.init(profile, settings));
    return gamut;
}

/// A shown viewer with a view and a gamut, seen obliquely, in pure colours.
class GamutViewPictures : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(shown.shown);
        shown.viewer.setCamera({265, 160, -450}, 0, {40, 0, 0});
        KVGamutLook look;
        look.ambientStrength = 1.0f;
        view.setLook(id, look);
        view.show(id, srgb());
        ASSERT_TRUE(spinUntil([this] { return !view.isLoading(); }));
    }

    void hideSurroundings()
    {
        shown.viewer.setDisplayGrid(false);
        shown.viewer.setDisplayAxes(false);
        shown.viewer.setDisplayProjection(id, false);
    }

    ShownViewer shown;
    KVGamutView view{&shown.viewer};
};

int largestDifference(const QColor& a, const QColor& b)
{
    return std::max(
        {std::abs(a.red() - b.red()), std::abs(a.green() - b.green()), std::abs(a.blue() - b.blue())});
}

} // namespace

TEST_F(GamutViewPictures, anInvalidColourRestoresThePicture)
{
    const QImage before = shown.settledPicture();
    shown.viewer.changeGamutColor(id, QColor(200, 30, 30));
    EXPECT_NE(shown.settledPicture(), before);
    shown.viewer.changeGamutColor(id, QColor());
    EXPECT_EQ(shown.settledPicture(), before);
}

TEST_F(GamutViewPictures, theDefaultThemeRestoresThePicture)
{
    const QImage before = shown.settledPicture();
    KVViewTheme theme = view.theme();
    theme.grid = Qt::red;
    theme.background = Qt::white;
    view.setTheme(theme);
    const QImage themed = shown.settledPicture();
    EXPECT_EQ(themed.pixelColor(1, 1), QColor(Qt::white));
    EXPECT_NE(themed, before);
    view.setTheme(KVViewTheme());
    EXPECT_EQ(shown.settledPicture(), before);
}

TEST_F(GamutViewPictures, aHitIsThePointThatThePixelShows)
{
    hideSurroundings();
    const QImage picture = shown.settledPicture();
    const auto isInside = [this](int x, int y) { // not at the silhouette, whose pixels are mixed
        for (const QPoint& near : {QPoint(x - 2, y), QPoint(x + 2, y), QPoint(x, y - 2), QPoint(x, y + 2)}) {
            if (view.hitAt(near).kind != KVHit::Kind::Gamut)
                return false;
        }
        return true;
    };
    int checked = 0;
    for (int y = 10; y < picture.height(); y += 10) {
        for (int x = 10; x < picture.width(); x += 10) {
            if (!isInside(x, y))
                continue;
            const QVector3D lab = view.hitAt({x, y}).lab;
            const QList<float> rgb = KVColorConversionHelper::KVHLab2RGB({lab.x(), lab.y(), lab.z()});
            const QColor expected(static_cast<int>(rgb[0]), static_cast<int>(rgb[1]),
                                  static_cast<int>(rgb[2]));
            // a pixel covers one to two Lab units, and colours are interpolated between vertices
            EXPECT_LE(largestDifference(picture.pixelColor(x, y), expected), 24) << x << ", " << y;
            ++checked;
        }
    }
    EXPECT_GT(checked, 20);
}

TEST_F(GamutViewPictures, aFramedGamutFillsTheWindow)
{
    hideSurroundings();
    view.frame();
    const QImage picture = shown.settledPicture();
    const QColor background = picture.pixelColor(0, 0);
    int top = picture.height(), bottom = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const bool edge = x == 0 || y == 0 || x == picture.width() - 1 || y == picture.height() - 1;
            if (picture.pixelColor(x, y) == background)
                continue;
            EXPECT_FALSE(edge) << "the gamut reaches out of the window at " << x << ", " << y;
            top = std::min(top, y);
            bottom = std::max(bottom, y);
        }
    }
    EXPECT_GT(bottom - top, picture.height() / 2);
}

TEST_F(GamutViewPictures, settledIsEmittedAfterEachChangeAndOnlyThen)
{
    ASSERT_TRUE(shown.comeToRest());
    QSignalSpy settled(&view, &KVGamutView::settled);
    shown.viewer.setViewingAngle(40.0f, 0);
    EXPECT_TRUE(settled.isEmpty());
    ASSERT_TRUE(spinUntil([&] { return !settled.isEmpty(); }));
    EXPECT_TRUE(shown.viewer.isSettled());
    ASSERT_TRUE(shown.comeToRest());
    const auto before = settled.size();
    ASSERT_TRUE(shown.comeToRest());
    EXPECT_EQ(settled.size(), before) << "nothing changed";
}

TEST_F(GamutViewPictures, aMoveIsReportedUntilItEnds)
{
    ASSERT_TRUE(shown.comeToRest());
    QSignalSpy changed(&view, &KVGamutView::cameraChanged);
    QSignalSpy settled(&view, &KVGamutView::settled);
    KVCamera target = view.camera();
    target.position += QVector3D(0, 100, 0);
    target.viewingAngle = 40.0f;
    view.setCamera(target, 200);
    ASSERT_TRUE(spinUntil([&] { return !settled.isEmpty(); }));
    EXPECT_EQ(view.camera(), target);
    EXPECT_GE(changed.size(), 1);
}

TEST_F(GamutViewPictures, aSlotOfSettledMayDestroyTheViewer)
{
    auto* viewer = new KVGamut3DViewer;
    viewer->resize(100, 80);
    KVGamutView own(viewer);
    bool gone = false;
    QObject::connect(&own, &KVGamutView::settled, &own, [&] {
        delete own.viewer();
        gone = true;
    });
    viewer->show();
    EXPECT_TRUE(spinUntil([&] { return gone; }));
    EXPECT_EQ(own.viewer(), nullptr);
}
