// SPDX-License-Identifier: Apache-2.0
#include "support/EveryMethod.h"
#include "support/MessageCheck.h"
#include "support/Spin.h"

#include <KVGamutView.h>

#include <gtest/gtest.h>

#include <QtCore/QMetaEnum>
#include <QtCore/QPointer>
#include <QtGui/QImage>
#include <QtGui/QWindow>
#include <QtTest/QSignalSpy>

#include <memory>

// A host on a platform that ctest chooses (see CMakeLists.txt). KV_EXPECTED_PROBLEM names the reason why the
// viewer cannot draw there; without it the viewer must draw. KV_PLATFORM_MESSAGES are parts of messages that
// the platform itself logs, separated by "|".

using kvtest::spinFor;
using kvtest::spinUntil;

namespace {

std::optional<KVProblemCode> expectedProblem()
{
    const QByteArray name = qgetenv("KV_EXPECTED_PROBLEM");
    bool known = false;
    const int value = QMetaEnum::fromType<KVProblemCode>().keyToValue(name.constData(), &known);
    return known ? std::optional(static_cast<KVProblemCode>(value)) : std::nullopt;
}

bool mustDraw()
{
    return qEnvironmentVariableIsEmpty("KV_EXPECTED_PROBLEM");
}

/// Waits until a drawable viewer has drawn everything, or gives another one the time to crash.
void spin(const KVGamut3DViewer& viewer)
{
    if (mustDraw())
        EXPECT_TRUE(spinUntil([&] { return viewer.isSettled(); }));
    else
        spinFor(50);
}

class Platform : public testing::Test
{
protected:
    void SetUp() override
    {
        const auto parts =
            qEnvironmentVariable("KV_PLATFORM_MESSAGES").split(QLatin1Char('|'), Qt::SkipEmptyParts);
        for (const QString& part : parts)
            kvtest::toleratePlatformMessage(part);
        ASSERT_EQ(mustDraw(), !expectedProblem()) << "unknown problem";
    }
};

/// Pictures are null without OpenGL. With it they show the scene on the background.
void checkPictures(const KVGamut3DViewer& viewer)
{
    const QImage shown = viewer.picture();
    const QImage rendered = viewer.picture(QSize(120, 90));
    ASSERT_EQ(shown.isNull(), !mustDraw());
    ASSERT_EQ(rendered.isNull(), !mustDraw());
    EXPECT_EQ(viewer.isSettled(), mustDraw());
    if (!mustDraw())
        return;
    EXPECT_EQ(rendered.size(), QSize(120, 90));
    EXPECT_EQ(shown.pixelColor(0, 0), viewer.background().toRgb());
    const auto isTinted = [&](const QPoint& at) {
        return shown.pixelColor(at) != viewer.background().toRgb();
    };
    EXPECT_TRUE(isTinted({shown.width() / 2, shown.height() / 2})) << "the gamut is not drawn";
}

void useAsHost(KVGamut3DViewer& viewer, QWindow& shownWindow)
{
    kvtest::callEverything(viewer);
    viewer.resize(160, 120);
    shownWindow.show();
    spin(viewer);
    viewer.resize(200, 150);
    spin(viewer);
    checkPictures(viewer);
    viewer.hide();
    spinFor(20);
    kvtest::callEverything(viewer);
    viewer.show();
    spin(viewer);
    checkPictures(viewer);
}

} // namespace

TEST_F(Platform, runsAHostWithATopLevelViewer)
{
    KVGamut3DViewer viewer;
    useAsHost(viewer, viewer);
}

TEST_F(Platform, runsAHostWithAChildViewer)
{
    QWindow host;
    host.resize(200, 150);
    auto* viewer = new KVGamut3DViewer(&host);
    viewer->setVisible(true);
    useAsHost(*viewer, host);
    delete viewer;
    spinFor(20);
}

TEST_F(Platform, survivesCreationWithoutAShow)
{
    KVGamut3DViewer viewer;
    viewer.create();
    spinFor(20);
    // From Qt 6.8 on, the window inside is exposed before the viewer is shown, and has a picture then.
    EXPECT_EQ(viewer.picture().isNull(), !viewer.isSettled());
    EXPECT_EQ(viewer.picture(QSize(50, 50)).isNull(), !viewer.isSettled());
    viewer.destroy();
    viewer.show();
    spin(viewer);
}

TEST_F(Platform, survivesChangesOfTheParent)
{
    QWindow first, second;
    first.resize(200, 150);
    second.resize(200, 150);
    first.show();
    second.show();
    auto viewer = std::make_unique<KVGamut3DViewer>();
    viewer->resize(200, 150);
    viewer->show();
    spin(*viewer);
    viewer->setParent(&first);
    viewer->show();
    spin(*viewer);
    first.destroy();
    viewer->setParent(&second);
    viewer->show();
    spin(*viewer);
}

TEST_F(Platform, saysWhetherItCanDrawBeforeTheWindowIsShown)
{
    KVGamut3DViewer viewer;
    const KVGamutView view(&viewer);
    EXPECT_EQ(view.isDrawable(), mustDraw());
    ASSERT_EQ(view.drawingProblem().has_value(), !mustDraw());
    if (mustDraw())
        return;
    EXPECT_EQ(view.drawingProblem()->code, *expectedProblem()) << qPrintable(view.drawingProblem()->text());
    EXPECT_FALSE(view.drawingProblem()->text().contains(QLatin1Char('%')));
}

TEST_F(Platform, reportsThatItCannotDrawOnce)
{
    KVGamut3DViewer viewer;
    const KVGamutView view(&viewer);
    QSignalSpy changed(&view, &KVGamutView::drawableChanged);
    viewer.resize(200, 150);
    viewer.show();
    spin(viewer);
    EXPECT_EQ(view.isDrawable(), mustDraw());
    EXPECT_TRUE(spinUntil([&] { return changed.count() == (mustDraw() ? 0 : 1); }));
    viewer.hide();
    viewer.show();
    spin(viewer);
    EXPECT_EQ(changed.count(), mustDraw() ? 0 : 1);
}

TEST_F(Platform, loadsInTheBackgroundAndPicks)
{
    KVGamut3DViewer viewer;
    KVGamutView view(&viewer);
    viewer.resize(200, 150);
    viewer.show();
    QSignalSpy loaded(&view, &KVGamutView::loaded);
    view.load(QStringLiteral("g"),
              KVLoadRequest::fromFile(QStringLiteral("/usr/share/color/icc/colord/sRGB.icc")));
    ASSERT_TRUE(spinUntil([&] { return loaded.count() == 1; }));
    spin(viewer);
    EXPECT_EQ(view.hitAt(QPoint(100, 75)).kind, KVHit::Kind::Gamut);
    EXPECT_NEAR(view.gamut(QStringLiteral("g")).volume(), 832781, 420);
}
