// SPDX-License-Identifier: Apache-2.0
#include <annotation/OverlayFont.h>
#include <annotation/OverlayPainter.h>

#include <QtGui/QImage>

#include <gtest/gtest.h>

namespace {

Overlay empty()
{
    Overlay overlay;
    overlay.textHeight = 20;
    overlay.ink = Qt::black;
    overlay.halo = Qt::white;
    return overlay;
}

QImage grey(int width = 100, int height = 60)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::gray);
    return image;
}

int count(const QImage& image, QRgb color)
{
    int found = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            found += image.pixel(x, y) == color;
    return found;
}

} // namespace

TEST(OverlayPainter, changesNothingWithoutContent)
{
    QImage image = grey();
    kvPaintOverlay(image, empty());
    EXPECT_EQ(image, grey());
}

TEST(OverlayPainter, fillsBoxesAndLines)
{
    Overlay overlay = empty();
    overlay.boxes = {{QRectF(10, 5, 20, 10), Qt::red}};
    overlay.lines = {{{50, 30}, {90, 30}, 4.0, Qt::blue}};
    QImage image = grey();
    kvPaintOverlay(image, overlay);
    EXPECT_EQ(count(image, qRgb(255, 0, 0)), 20 * 10);
    EXPECT_EQ(count(image, qRgb(0, 0, 255)), 40 * 4);
    EXPECT_EQ(image.pixel(10, 5), qRgb(255, 0, 0));
    EXPECT_EQ(image.pixel(50, 28), qRgb(0, 0, 255));
}

TEST(OverlayPainter, surroundsTextsWithTheirHalo)
{
    Overlay overlay = empty();
    overlay.texts = {{QStringLiteral("H"), QPointF(40, 20), true}};
    QImage image = grey();
    kvPaintOverlay(image, overlay);
    EXPECT_GT(count(image, qRgb(0, 0, 0)), 20);
    EXPECT_GT(count(image, qRgb(255, 255, 255)), 20);
    const QSizeF extent = kvTextExtent(overlay, QStringLiteral("H"), true);
    const int halo = kvHaloWidth(overlay);
    const QRect touched(40 - halo, 20 - halo, int(extent.width()) + 2 + 2 * halo,
                        int(extent.height()) + 2 + 2 * halo);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            EXPECT_TRUE(touched.contains(x, y) || QColor(image.pixel(x, y)) == QColor(Qt::gray))
                << x << ' ' << y;
}

TEST(OverlayPainter, drawsTextImagesUnchanged)
{
    Overlay overlay = empty();
    overlay.texts = {{QStringLiteral("a*"), QPointF(30, 20), false}};
    QImage image(100, 60, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    kvPaintOverlay(image, overlay);
    const QImage text = kvTextImage(overlay, overlay.texts.first());
    const int halo = kvHaloWidth(overlay);
    EXPECT_EQ(image.copy(QRect(QPoint(30 - halo, 20 - halo), text.size())), text);
}
