// SPDX-License-Identifier: Apache-2.0
#include "Baseline.h"
#include "support/MessageCheck.h"
#include "support/ShownViewer.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>

#include <functional>

// Each case draws one feature and compares it with its baseline. Then it switches the feature off: the
// picture must now exceed the threshold, otherwise the baseline does not show the feature.

namespace {

using Step = std::function<void(KVGamut3DViewer&)>;

const QString a = QStringLiteral("a"), b = QStringLiteral("b");
const QVector3D middle(50, 0, 0);
const QVector3D oblique(210, -250, -330);

void load(KVGamut3DViewer& viewer, const QString& id, const char* file)
{
    const QString path = QStringLiteral("/usr/share/color/icc/") + QString::fromLatin1(file);
    ASSERT_TRUE(QFile::exists(path));
    viewer.load(id, {{QStringLiteral("ProfilePath"), path}}, nullptr);
    ASSERT_GT(viewer.volume(id), 0.0f);
    viewer.setGamutAmbientStrength(id, 0.5f);
}

void screen(KVGamut3DViewer& viewer)
{
    load(viewer, a, "colord/sRGB.icc");
}

void printer(KVGamut3DViewer& viewer)
{
    load(viewer, b, "ghostscript/default_cmyk.icc");
}

QList<KVGamut3DViewer::ColoredPosition> row(float bStar)
{
    QList<KVGamut3DViewer::ColoredPosition> items;
    const QColor colors[] = {Qt::red, Qt::yellow, Qt::green, Qt::cyan, Qt::blue};
    for (int i = 0; i < 5; ++i)
        items.append({colors[i], QVector3D(50 + (i % 2) * 20, -80 + i * 40, bStar)});
    return items;
}

/// Compares the picture after @p set with the baseline, and checks that @p off changes it.
void expectPicture(const QString& name, const Step& set, const Step& off)
{
    kvtest::ShownViewer shown(240, 180);
    ASSERT_TRUE(shown.shown);
    shown.viewer.setCamera(oblique, 0, middle);
    set(shown.viewer);
    if (testing::Test::HasFatalFailure())
        return;
    ASSERT_TRUE(shown.settle());
    const QImage actual = shown.viewer.picture();

    kvtest::expectBaseline(name, actual);

    off(shown.viewer);
    ASSERT_TRUE(shown.settle());
    EXPECT_FALSE(
        withinThreshold(comparePictures(shown.viewer.picture(), kvtest::baseline(name)), kvtest::edgesOnly))
        << qPrintable(name) << " does not show its feature";
}

} // namespace

TEST(Pictures, contextHasTheExpectedVersion)
{
    const kvtest::ShownViewer shown;
    const QString version = QStringLiteral("OpenGL ") + qEnvironmentVariable("KV_EXPECTED_GL");
    EXPECT_EQ(kvtest::messages().filter(version).size(), 1) << qPrintable(version);
}

TEST(Pictures, surface)
{
    expectPicture(QStringLiteral("surface"), screen, [](auto& v) { v.setDisplayGamut(a, false); });
}

TEST(Pictures, pureColours)
{
    expectPicture(
        QStringLiteral("pure-colours"),
        [](auto& v) {
            screen(v);
            v.setGamutAmbientStrength(a, 1.0f);
        },
        [](auto& v) { v.setGamutAmbientStrength(a, 0.0f); });
}

TEST(Pictures, wireframe)
{
    expectPicture(
        QStringLiteral("wireframe"),
        [](auto& v) {
            screen(v);
            v.setDisplayMode(a, KVGamut3DViewer::Wireframe);
        },
        [](auto& v) { v.setDisplayMode(a, KVGamut3DViewer::Smooth); });
}

TEST(Pictures, flatShadedInOneColour)
{
    expectPicture(
        QStringLiteral("flat"),
        [](auto& v) {
            screen(v);
            v.setDisplayMode(a, KVGamut3DViewer::Flat);
            v.changeGamutColor(a, QColor(40, 120, 220));
        },
        [](auto& v) { v.changeGamutColor(a, QColor(220, 120, 40)); });
}

TEST(Pictures, translucentOverOpaque)
{
    expectPicture(
        QStringLiteral("translucent-over-opaque"),
        [](auto& v) {
            printer(v);
            screen(v);
            v.changeGamutAlpha(a, 0.35f, 0);
        },
        [](auto& v) { v.setGamutVisible(b, false); });
}

TEST(Pictures, twoTranslucentGamuts)
{
    expectPicture(
        QStringLiteral("two-translucent"),
        [](auto& v) {
            printer(v);
            screen(v);
            v.changeGamutAlpha(a, 0.5f, 0);
            v.changeGamutAlpha(b, 0.5f, 0);
        },
        [](auto& v) { v.changeGamutAlpha(b, 0.0f, 0); });
}

TEST(Pictures, projection)
{
    expectPicture(
        QStringLiteral("projection"),
        [](auto& v) {
            screen(v);
            v.setDisplayGamut(a, false);
        },
        [](auto& v) { v.setDisplayProjection(a, false); });
}

TEST(Pictures, primaries)
{
    expectPicture(
        QStringLiteral("primaries"),
        [](auto& v) {
            screen(v);
            v.setDisplayGamut(a, false);
            v.setDisplayPrimaries(a, true);
        },
        [](auto& v) { v.setDisplayPrimaries(a, false); });
}

TEST(Pictures, sectionAtLightness50)
{
    expectPicture(
        QStringLiteral("section"),
        [](auto& v) {
            screen(v);
            v.setClipping(50);
        },
        [](auto& v) { v.setClipping(60); });
}

TEST(Pictures, sphereMarkers)
{
    expectPicture(
        QStringLiteral("markers-sphere"),
        [](auto& v) { v.addMarkerSet(QStringLiteral("m"), KVGamut3DViewer::Sphere, row(0), 20, 0.4f); },
        [](auto& v) { v.addMarkerSet(QStringLiteral("m"), KVGamut3DViewer::Sphere, row(0), 14, 0.4f); });
}

TEST(Pictures, bracketedCubeMarkers)
{
    expectPicture(
        QStringLiteral("markers-cube"),
        [](auto& v) {
            v.addMarkerSet(QStringLiteral("m"), KVGamut3DViewer::BracketedCube, row(0), 20, 0.4f);
        },
        [](auto& v) { v.addMarkerSet(QStringLiteral("m"), KVGamut3DViewer::Star, row(0), 20, 0.4f); });
}

TEST(Pictures, starMarkers)
{
    expectPicture(
        QStringLiteral("markers-star"),
        [](auto& v) { v.addMarkerSet(QStringLiteral("m"), KVGamut3DViewer::Star, row(0), 20, 0.4f); },
        [](auto& v) { v.addMarkerSet(QStringLiteral("m"), KVGamut3DViewer::Sphere, row(0), 20, 0.4f); });
}

TEST(Pictures, points)
{
    expectPicture(
        QStringLiteral("points"),
        [](auto& v) {
            v.setPointSize(10);
            v.addPointSet(QStringLiteral("p"), row(-40));
        },
        [](auto& v) { v.clearPointSet(); });
}

TEST(Pictures, segments)
{
    expectPicture(
        QStringLiteral("segments"),
        [](auto& v) {
            const auto items = row(-40);
            QList<std::pair<KVGamut3DViewer::ColoredPosition, KVGamut3DViewer::ColoredPosition>> segments;
            for (int i = 0; i + 1 < items.size(); ++i)
                segments.append({items[i], items[i + 1]});
            v.addSegmentSet(QStringLiteral("s"), segments);
            v.setSegmentSetWidth(QStringLiteral("s"), 8);
            v.addSegmentSet(QStringLiteral("s"), segments);
        },
        [](auto& v) { v.removeSegmentSet(QStringLiteral("s")); });
}

TEST(Pictures, abPlane)
{
    expectPicture(
        QStringLiteral("ab-plane"), [](auto& v) { v.setabPlane(true); },
        [](auto& v) { v.setabPlane(false); });
}

TEST(Pictures, axesAndGridFromTheTop)
{
    expectPicture(
        QStringLiteral("top"), [](auto& v) { v.resetCamera(KVGamut3DViewer::Top, 0); },
        [](auto& v) { v.setDisplayGrid(false); });
}

TEST(Pictures, axesAlone)
{
    expectPicture(
        QStringLiteral("axes"), [](auto& v) { v.setDisplayGrid(false); },
        [](auto& v) { v.setDisplayAxes(false); });
}

TEST(Pictures, fromTheBottom)
{
    expectPicture(
        QStringLiteral("bottom"),
        [](auto& v) {
            screen(v);
            v.resetCamera(KVGamut3DViewer::Bottom, 0);
        },
        [](auto& v) { v.resetCamera(KVGamut3DViewer::Top, 0); });
}

TEST(Pictures, orthogonal)
{
    expectPicture(
        QStringLiteral("orthogonal"),
        [](auto& v) {
            screen(v);
            v.setOrthogonalProjection(true, 0);
        },
        [](auto& v) { v.setOrthogonalProjection(false, 0); });
}

// The threshold would not detect a wrong colour in a small area, so the colours of a few pixels are tested.
TEST(Pictures, probedPixelsHaveTheirColours)
{
    // Seen from the top. The red corner of sRGB is (53.2, 80.1, 67.2) for D65 and about (54.3, 80.8, 69.9)
    // for D50. Just inside it the surface is almost pure red.
    kvtest::ShownViewer shown(240, 180);
    ASSERT_TRUE(shown.shown);
    screen(shown.viewer);
    shown.viewer.setGamutAmbientStrength(a, 1.0f);
    shown.viewer.setDisplayAxes(false);
    shown.viewer.setDisplayGrid(false);
    const QImage picture = shown.settledPicture();
    const double pixelsPerUnit = 90 / ((522.48712 - 54.3) * std::tan(3.14159265358979 / 12));
    const auto at = [&](double aStar, double bStar) {
        return picture.pixelColor(static_cast<int>(120 + aStar * pixelsPerUnit),
                                  static_cast<int>(90 - bStar * pixelsPerUnit));
    };
    const QColor red = at(78, 67.5);
    EXPECT_GT(red.red(), 240);
    EXPECT_LT(red.green(), 60);
    EXPECT_LT(red.blue(), 60);
    EXPECT_EQ(picture.pixelColor(2, 2), QColor(Qt::gray).toRgb());
    // white, L* 100, is in the middle of the picture
    const QColor white = picture.pixelColor(120, 90);
    EXPECT_GT(white.red(), 245);
    EXPECT_GT(white.green(), 245);
    EXPECT_GT(white.blue(), 240);
}

TEST(Pictures, differentBaselinesDiffer)
{
    EXPECT_FALSE(withinThreshold(comparePictures(kvtest::baseline(QStringLiteral("markers-sphere")),
                                                 kvtest::baseline(QStringLiteral("markers-star"))),
                                 kvtest::edgesOnly));
}
