// SPDX-License-Identifier: Apache-2.0
#include "OverlayProbe.h"

#include <annotation/AnnotationLayout.h>
#include <annotation/OverlayFont.h>
#include <annotation/ScaleBar.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using kvtest::rectOf;

KVAnnotations withBar(float low = 0.0f, float high = 20.0f)
{
    KVAnnotations annotations;
    annotations.scaleBar = {
        QStringLiteral("Distance"), {Qt::white, Qt::yellow, Qt::red, Qt::black}, low, high};
    return annotations;
}

Overlay layout(const KVAnnotations& annotations, const QSize& size)
{
    return kvAnnotationOverlay(annotations, {{}, {}, Qt::gray}, size);
}

} // namespace

TEST(ScaleBar, isNotDrawnByDefault)
{
    EXPECT_TRUE(layout({}, {800, 600}).isEmpty());
    KVAnnotations withoutColors = withBar();
    withoutColors.scaleBar.colors.clear();
    EXPECT_TRUE(layout(withoutColors, {800, 600}).isEmpty());
}

TEST(ScaleBar, hasAColourForEachPartFromTheBottom)
{
    const Overlay overlay = layout(withBar(), {800, 600});
    ASSERT_EQ(overlay.boxes.size(), 5); // the frame, and four colours
    for (qsizetype i = 1; i < 5; ++i) {
        EXPECT_EQ(overlay.boxes[i].color, withBar().scaleBar.colors[i - 1]);
        EXPECT_EQ(overlay.boxes[i].rect.height(), 60.0); // 40 % of 600, in four
        EXPECT_TRUE(overlay.boxes[0].rect.contains(overlay.boxes[i].rect));
        const QRectF& below = overlay.boxes[std::max<qsizetype>(1, i - 1)].rect;
        EXPECT_EQ(overlay.boxes[i].rect.bottom(), i > 1 ? below.top() : below.bottom());
    }
}

TEST(ScaleBar, hasNumbersBesideTheirValues)
{
    const Overlay overlay = layout(withBar(), {800, 600});
    const QRectF lowest = overlay.boxes[1].rect, highest = overlay.boxes[4].rect;
    ASSERT_GE(overlay.texts.size(), 4); // three numbers and the title
    for (qsizetype i = 0; i + 1 < overlay.texts.size(); ++i) {
        const double value = overlay.texts[i].text.toDouble();
        const double y = lowest.bottom() - value / 20.0 * (lowest.bottom() - highest.top());
        EXPECT_NEAR(rectOf(overlay, overlay.texts[i]).center().y(), y, 1.0);
        EXPECT_GT(overlay.texts[i].topLeft.x(), lowest.right());
    }
    EXPECT_EQ(overlay.texts.front().text, QStringLiteral("0"));
    EXPECT_EQ(overlay.texts[overlay.texts.size() - 2].text, QStringLiteral("20"));
    EXPECT_EQ(overlay.texts.back().text, QStringLiteral("Distance"));
    EXPECT_LT(rectOf(overlay, overlay.texts.back()).bottom(), highest.top());
}

TEST(ScaleBar, isBesideTheLegendAndAboveTheMiddle)
{
    KVAnnotations annotations = withBar();
    annotations.scaleBar.title = QString(300, QLatin1Char('W'));
    annotations.legend = {{QStringLiteral("a"), QString(300, QLatin1Char('W')), {}, Qt::red}};
    const QSize size(800, 600);
    const Overlay overlay = layout(annotations, size);
    const auto rectsOf = [&overlay](bool ofLegend) {
        QList<QRectF> rects;
        for (const OverlayText& text : overlay.texts)
            if ((text.topLeft.x() < 100.0) == ofLegend)
                rects.append(rectOf(overlay, text));
        return rects;
    };
    ASSERT_EQ(rectsOf(true).size(), 1);
    ASSERT_GE(rectsOf(false).size(), 4);
    for (const QRectF& rect : rectsOf(false)) {
        EXPECT_FALSE(rect.intersects(rectsOf(true)[0]));
        EXPECT_LT(rect.bottom(), 0.55 * size.height());
    }
}

TEST(ScaleBar, isInsideThePictureAtEverySize)
{
    for (const QSize size :
         {QSize(200, 150), QSize(800, 600), QSize(3000, 2000), QSize(300, 2000), QSize(2000, 300)}) {
        KVAnnotations annotations = withBar(0.0f, 123.456f);
        annotations.scaleBar.title = QString(300, QLatin1Char('W'));
        const Overlay overlay = layout(annotations, size);
        const QRectF picture(QPointF(), size);
        for (const OverlayBox& box : overlay.boxes)
            EXPECT_TRUE(picture.contains(box.rect)) << size.width();
        for (qsizetype i = 0; i < overlay.texts.size(); ++i) {
            EXPECT_TRUE(picture.contains(rectOf(overlay, overlay.texts[i]))) << size.width();
            for (qsizetype k = 0; k < i; ++k)
                EXPECT_FALSE(rectOf(overlay, overlay.texts[i]).intersects(rectOf(overlay, overlay.texts[k])));
        }
    }
    EXPECT_FALSE(layout(withBar(), {800, 600}).isEmpty());
    EXPECT_TRUE(layout(withBar(), {20, 20}).isEmpty()) << "there is no room";
}

TEST(ScaleBar, numbersAreRoundAndEndAtTheLargestValue)
{
    EXPECT_EQ(kvScaleBarNumbers(0, 20, 5), (std::vector<double>{0, 5, 10, 15, 20}));
    EXPECT_EQ(kvScaleBarNumbers(0, 23, 5), (std::vector<double>{0, 5, 10, 15, 23}));
    EXPECT_EQ(kvScaleBarNumbers(-1, 1, 2), (std::vector<double>{-1, 0, 1}));
    EXPECT_EQ(kvScaleBarNumbers(0, 0.3, 3).size(), 4u);
}

TEST(ScaleBar, withoutARangeThereAreNoNumbers)
{
    const double nan = std::numeric_limits<double>::quiet_NaN(),
                 inf = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(kvScaleBarNumbers(1, 1, 5).empty());
    EXPECT_TRUE(kvScaleBarNumbers(2, 1, 5).empty());
    EXPECT_TRUE(kvScaleBarNumbers(nan, 1, 5).empty());
    EXPECT_TRUE(kvScaleBarNumbers(0, inf, 5).empty());
    EXPECT_LE(kvScaleBarNumbers(1e15, std::nextafter(1e15, 1e16), 5).size(), 7u);
    EXPECT_TRUE(layout(withBar(1.0f, 1.0f), {800, 600}).isEmpty());
    EXPECT_TRUE(layout(withBar(0.0f, std::nanf("")), {800, 600}).isEmpty());
}
