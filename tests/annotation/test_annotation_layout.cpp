// SPDX-License-Identifier: Apache-2.0
#include "OverlayProbe.h"

#include <annotation/AnnotationLayout.h>
#include <annotation/OverlayFont.h>
#include <glwindow/CameraState.h>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace {

using kvtest::rectOf;

const LabBox box{{0.0f, -100.0f, -120.0f}, {100.0f, 80.0f, 100.0f}};

/// Sees the box from a direction given by two angles in degrees, from far enough away.
CameraState cameraAt(double azimuth, double elevation, const QSize& size, bool orthogonal = false)
{
    const double h = azimuth * std::numbers::pi / 180.0, e = elevation * std::numbers::pi / 180.0;
    const double distance = 900.0 * std::max(1.0, double(size.height()) / size.width());
    const QVector3D centre(0.0f, 50.0f, 0.0f);
    const QVector3D towards(float(std::cos(e) * std::cos(h)), float(std::sin(e)),
                            float(std::cos(e) * std::sin(h)));
    CameraState camera(centre + float(distance) * towards, centre);
    camera.setAspect(size.width(), size.height());
    camera.setOrthogonal(orthogonal);
    return camera;
}

Overlay layout(const KVAnnotations& annotations, const CameraState& camera, const QSize& size,
               const QColor& background = Qt::gray)
{
    return kvAnnotationOverlay(annotations,
                               {box, camera.projectionMatrix() * camera.viewMatrix(), background}, size);
}

KVAnnotations scales()
{
    KVAnnotations annotations;
    annotations.scales = true;
    return annotations;
}

QStringList textsOf(const Overlay& overlay)
{
    QStringList texts;
    for (const OverlayText& text : overlay.texts)
        texts.append(text.text);
    return texts;
}

/// By the definition of clip coordinates.
QPointF pixelOf(const CameraState& camera, const QSize& size, double L, double a, double b)
{
    const QVector4D clip =
        camera.projectionMatrix() * camera.viewMatrix() * QVector4D(float(-a), float(L), float(b), 1);
    return {(clip.x() / clip.w() + 1) * size.width() / 2, (1 - clip.y() / clip.w()) * size.height() / 2};
}

bool startsAt(const Overlay& overlay, const QPointF& pixel)
{
    return std::any_of(overlay.lines.begin(), overlay.lines.end(), [&](const OverlayLine& line) {
        return std::hypot(line.from.x() - pixel.x(), line.from.y() - pixel.y()) < 0.1;
    });
}

} // namespace

TEST(Annotations, areNoneByDefault)
{
    const QSize size(800, 600);
    EXPECT_TRUE(layout({}, cameraAt(30, 30, size), size).isEmpty());
    EXPECT_TRUE(layout(scales(), cameraAt(30, 30, size), {}).isEmpty());
}

TEST(Annotations, textIsTwoPercentOfTheShorterSide)
{
    EXPECT_EQ(kvAnnotationTextHeight({1600, 1000}, 1.0f), 20);
    EXPECT_EQ(kvAnnotationTextHeight({3000, 8000}, 1.0f), 60);
    EXPECT_EQ(kvAnnotationTextHeight({1600, 1000}, 1.5f), 30);
    EXPECT_EQ(kvAnnotationTextHeight({200, 200}, 1.0f), 10);
    EXPECT_EQ(kvAnnotationTextHeight({200, 200}, std::nanf("")), 10);
    EXPECT_GE(kvAnnotationTextHeight({200, 200}, -1.0f), 1);
}

TEST(Scales, neverOverlapOrLeaveThePicture)
{
    std::mt19937 random(1);
    const auto number = [&random](int low, int high) {
        return low + int(random() % unsigned(high - low + 1));
    };
    int titles = 0;
    for (int i = 0; i < 300; ++i) {
        const QSize size(number(100, 2000), number(100, 2000));
        const CameraState camera = cameraAt(number(0, 359), number(-80, 80), size, i % 2);
        const Overlay overlay = layout(scales(), camera, size);
        const QPointF centre = pixelOf(camera, size, 50, -10, -10); // of the box
        for (const OverlayText& text : overlay.texts) {
            const QRectF rect = rectOf(overlay, text);
            titles += text.bold;
            EXPECT_TRUE(QRectF(QPointF(0.0, 0.0), QSizeF(size)).contains(rect)) << i;
            EXPECT_FALSE(rect.contains(centre)) << i << ' ' << qPrintable(text.text);
            for (const OverlayText& other : overlay.texts)
                EXPECT_TRUE(&other == &text || !rectOf(overlay, other).intersects(rect)) << i;
        }
    }
    EXPECT_GT(titles, 2 * 300); // nearly all: axes that are seen end-on have none
}

TEST(Scales, nameAllThreeAxesInAnObliqueView)
{
    const QSize size(900, 700);
    for (int azimuth : {30, 120, 210, 300}) {
        const QStringList texts = textsOf(layout(scales(), cameraAt(azimuth, 25, size), size));
        for (const char* title : {"L*", "a*", "b*"})
            EXPECT_EQ(texts.count(QLatin1String(title)), 1) << azimuth << title;
        EXPECT_TRUE(texts.contains(QStringLiteral("100"))) << azimuth;
    }
}

TEST(Scales, haveTicksAtTheProjectedNumbers)
{
    const QSize size(900, 700);
    const CameraState camera = cameraAt(300, 25, size);
    const Overlay overlay = layout(scales(), camera, size);
    const auto anyCorner = [&](auto pixelAt) {
        for (double u : {double(box.low.y()), double(box.high.y())})
            for (double v : {double(box.low.z()), double(box.high.z())})
                if (startsAt(overlay, pixelAt(u, v)))
                    return true;
        return false;
    };
    for (double L : {0.0, 40.0, 100.0})
        EXPECT_TRUE(anyCorner([&](double a, double b) { return pixelOf(camera, size, L, a, b); })) << L;
    EXPECT_TRUE(anyCorner([&](double, double b) { return pixelOf(camera, size, 0, 50, b); }));
    EXPECT_TRUE(anyCorner([&](double a, double) { return pixelOf(camera, size, 0, a, -50); }));
}

TEST(Scales, ofAnAxisThatIsSeenEndOnAreLeftOut)
{
    const QSize size(800, 800);
    const QStringList fromAbove = textsOf(layout(scales(), cameraAt(270, 89.9, size, true), size));
    EXPECT_FALSE(fromAbove.contains(QStringLiteral("L*")));
    EXPECT_TRUE(fromAbove.contains(QStringLiteral("a*")));
    EXPECT_TRUE(fromAbove.contains(QStringLiteral("b*")));
    const QStringList fromTheFront = textsOf(layout(scales(), cameraAt(270, 0, size, true), size));
    EXPECT_TRUE(fromTheFront.contains(QStringLiteral("L*")));
    EXPECT_TRUE(fromTheFront.contains(QStringLiteral("a*")));
    EXPECT_FALSE(fromTheFront.contains(QStringLiteral("b*")));
}

TEST(Scales, haveFewerNumbersInSmallPictures)
{
    const QSize large(1200, 1200), small(160, 160);
    const auto many = layout(scales(), cameraAt(300, 25, large), large).texts.size();
    const auto few = layout(scales(), cameraAt(300, 25, small), small).texts.size();
    EXPECT_GT(many, few);
    EXPECT_GE(few, 5);
}

TEST(Scales, ofAnEyeInsideTheBoxDoNoHarm)
{
    const QSize size(300, 300);
    CameraState camera(QVector3D(0, 50, 10), QVector3D(0, 50, 0));
    camera.setAspect(300, 300);
    const Overlay overlay = layout(scales(), camera, size);
    for (const OverlayText& text : overlay.texts)
        EXPECT_TRUE(QRectF(0, 0, 300, 300).contains(rectOf(overlay, text)));
}

TEST(Annotations, contrastWithTheBackground)
{
    const QSize size(300, 300);
    EXPECT_EQ(layout(scales(), cameraAt(300, 25, size), size, Qt::black).ink, QColor(Qt::white));
    EXPECT_EQ(layout(scales(), cameraAt(300, 25, size), size, Qt::white).ink, QColor(Qt::black));
    EXPECT_EQ(layout(scales(), cameraAt(300, 25, size), size, Qt::black).halo, QColor(Qt::black));
}

TEST(Legend, hasARowForEachEntry)
{
    KVAnnotations annotations;
    annotations.legend = {{QStringLiteral("a"), QStringLiteral("First"), QStringLiteral("relative"), Qt::red},
                          {QStringLiteral("b"), QStringLiteral("Second"), QString(), Qt::blue}};
    annotations.highlight = QStringLiteral("b");
    const QSize size(800, 600);
    const Overlay overlay = layout(annotations, cameraAt(300, 25, size), size);
    EXPECT_EQ(textsOf(overlay), QStringLiteral("First,relative,Second").split(QLatin1Char(',')));
    EXPECT_FALSE(overlay.texts[0].bold);
    EXPECT_TRUE(overlay.texts[2].bold);
    EXPECT_GT(overlay.texts[2].topLeft.y(), overlay.texts[0].topLeft.y() + overlay.textHeight);
    QList<QColor> swatches;
    for (const OverlayBox& swatch : overlay.boxes)
        swatches.append(swatch.color);
    EXPECT_TRUE(swatches.contains(QColor(Qt::red)));
    EXPECT_TRUE(swatches.contains(QColor(Qt::blue)));
    EXPECT_EQ(overlay.lines.size(), 1); // under the row that is emphasised
}

TEST(Legend, saysHowManyRowsAreLeftOut)
{
    KVAnnotations annotations;
    for (int i = 0; i < 50; ++i)
        annotations.legend.append({QString::number(i), QStringLiteral("name %1").arg(i), {}, Qt::red});
    const QSize size(400, 300);
    const Overlay overlay = layout(annotations, cameraAt(300, 25, size), size);
    const auto shown = overlay.texts.size() - 1;
    EXPECT_GT(shown, 3);
    EXPECT_EQ(overlay.texts.last().text, QStringLiteral("+%1").arg(50 - shown));
    EXPECT_LE(rectOf(overlay, overlay.texts.last()).bottom(), 0.6 * size.height());
}

TEST(Legend, shortensLongNamesInTheMiddle)
{
    KVAnnotations annotations;
    annotations.legend = {{{}, QString(300, QLatin1Char('x')) + QStringLiteral("end"), {}, Qt::red}};
    const QSize size(800, 600);
    const Overlay overlay = layout(annotations, cameraAt(300, 25, size), size);
    ASSERT_EQ(overlay.texts.size(), 1);
    EXPECT_LE(rectOf(overlay, overlay.texts[0]).right(), 0.65 * size.width());
    EXPECT_TRUE(overlay.texts[0].text.endsWith(QStringLiteral("xend")));
}

TEST(Caption, isCentredAtTheBottom)
{
    KVAnnotations annotations;
    annotations.caption = QStringLiteral("Relative colorimetric");
    const QSize size(800, 600);
    const Overlay overlay = layout(annotations, cameraAt(300, 25, size), size);
    ASSERT_EQ(overlay.texts.size(), 1);
    const QRectF rect = rectOf(overlay, overlay.texts[0]);
    EXPECT_NEAR(rect.center().x(), 400.0, 1.0);
    EXPECT_GT(rect.top(), 0.9 * size.height());
    EXPECT_LT(rect.bottom(), size.height());
}
