// SPDX-License-Identifier: Apache-2.0
// Scales, legend and caption in the window and in pictures.

#include <KVGamutView.h>

#include "support/ShownViewer.h"

#include <annotation/Contrast.h>

#include <gtest/gtest.h>

#include <QtGui/QPainter>

using kvtest::ShownViewer;

namespace {

class AnnotationPictures : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(shown.shown);
        shown.viewer.setDisplayGrid(false);
        KVCamera camera;
        camera.interestPoint = {50, 0, 0};
        camera.position = {200, -250, -350};
        view.setCamera(camera);
    }

    QImage annotated(const KVAnnotations& annotations)
    {
        view.setAnnotations(annotations);
        return shown.settledPicture();
    }

    static KVAnnotations all()
    {
        KVAnnotations annotations;
        annotations.scales = true;
        annotations.legend = {
            {QStringLiteral("p"), QStringLiteral("Printer"), QStringLiteral("relative"), Qt::red}};
        annotations.caption = QStringLiteral("D50");
        return annotations;
    }

    ShownViewer shown{300, 240};
    KVGamutView view{&shown.viewer};
};

int largestDifference(QRgb p, QRgb q)
{
    return std::max(
        {std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)), std::abs(qBlue(p) - qBlue(q))});
}

/// Number of pixels that differ by more than @p tolerance.
int differing(const QImage& p, const QImage& q, int tolerance)
{
    if (p.size() != q.size())
        return INT_MAX;
    int count = 0;
    for (int y = 0; y < p.height(); ++y)
        for (int x = 0; x < p.width(); ++x)
            count += largestDifference(p.pixel(x, y), q.pixel(x, y)) > tolerance;
    return count;
}

QImage plain(QImage picture)
{
    picture.setDevicePixelRatio(1.0);
    return picture;
}

} // namespace

TEST_F(AnnotationPictures, areTheSameInTheWindowAndInAPictureOfItsSize)
{
    const QImage window = plain(annotated(all()));
    const QImage picture = shown.viewer.picture(window.size());
    // The same images of texts; only the edges of lines are smoothed differently.
    EXPECT_LE(differing(window, picture, 8), window.width() * window.height() / 50);
    EXPECT_LE(differing(window, picture, 160), window.width() * window.height() / 500);
    EXPECT_GT(differing(window, plain(annotated({})), 8), window.width() * window.height() / 50);
}

TEST_F(AnnotationPictures, leaveNothingBehindWhenSwitchedOff)
{
    const QImage before = shown.settledPicture();
    EXPECT_NE(annotated(all()), before);
    EXPECT_EQ(annotated({}), before);
}

TEST_F(AnnotationPictures, withScalesReplaceTheAxes)
{
    KVAnnotations scales;
    scales.scales = true;
    const QImage withAxes = annotated(scales);
    shown.viewer.setDisplayAxes(false);
    EXPECT_EQ(shown.settledPicture(), withAxes);
    EXPECT_FALSE(shown.viewer.displayAxes());
}

TEST_F(AnnotationPictures, withoutScalesKeepTheAxes)
{
    KVAnnotations caption;
    caption.caption = QStringLiteral("D50");
    const QImage withAxes = annotated(caption);
    shown.viewer.setDisplayAxes(false);
    EXPECT_NE(shown.settledPicture(), withAxes);
}

TEST_F(AnnotationPictures, showTheKeyColours)
{
    const QImage picture = plain(annotated(all()));
    EXPECT_LE(largestDifference(picture.pixel(15, 16), qRgb(255, 0, 0)), 1);
}

TEST_F(AnnotationPictures, contrastWithLightAndDarkGrounds)
{
    for (const QColor& ground :
         {QColor(Qt::white), QColor(Qt::black), QColor(20, 30, 60), QColor(200, 200, 120)}) {
        KVViewTheme theme;
        theme.background = ground;
        view.setTheme(theme);
        KVAnnotations caption;
        caption.caption = QStringLiteral("HHH");
        shown.viewer.setDisplayAxes(false);
        const QImage picture = plain(annotated(caption));
        double contrast = 1.0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                contrast = std::max(contrast, kvContrast(QColor(picture.pixel(x, y)), ground));
        EXPECT_GE(contrast, 4.5) << qPrintable(ground.name());
    }
}

TEST_F(AnnotationPictures, surviveTheLossOfTheContext)
{
    const QImage before = annotated(all());
    shown.viewer.destroy();
    shown.viewer.show();
    EXPECT_EQ(shown.settledPicture(), before);
}

TEST_F(AnnotationPictures, ofManyTextsReplaceEachOther)
{
    // more texts than the texture has room for
    for (int i = 0; i < 40; ++i) {
        KVAnnotations annotations;
        annotations.textScale = 6.0f;
        for (int row = 0; row < 2; ++row)
            annotations.legend.append({{}, QString(12, QChar('A' + i)) + QString::number(row), {}, Qt::red});
        view.setAnnotations(annotations);
        shown.settle();
    }
    const QImage window = plain(shown.settledPicture());
    EXPECT_LE(differing(window, shown.viewer.picture(window.size()), 8),
              window.width() * window.height() / 50);
}

TEST_F(AnnotationPictures, areLeftOutIfThereIsNotEnoughMemory)
{
    const QImage before = shown.settledPicture();
    shown.widget().setOverlaySource(
        [](const QMatrix4x4&, const QSize&) -> Overlay { throw std::bad_alloc(); });
    EXPECT_EQ(shown.settledPicture(), before);
    EXPECT_TRUE(shown.viewer.picture(QSize(50, 40)).isNull());
}

TEST_F(AnnotationPictures, canBeDrawnAsVectors)
{
    view.setAnnotations(all());
    QImage vectors(300, 240, QImage::Format_ARGB32_Premultiplied);
    vectors.fill(Qt::transparent);
    {
        QPainter painter(&vectors);
        painter.setRenderHint(QPainter::Antialiasing);
        view.paintAnnotations(painter, vectors.size());
    }
    EXPECT_EQ(vectors.pixel(15, 16), qRgb(255, 0, 0));
    int drawn = 0;
    for (int y = 0; y < vectors.height(); ++y)
        for (int x = 0; x < vectors.width(); ++x)
            drawn += qAlpha(vectors.pixel(x, y)) > 0;
    EXPECT_GT(drawn, 1000);
    EXPECT_LT(drawn, 300 * 240 / 2);
}

TEST(Annotations, withoutAViewerAreIgnored)
{
    auto viewer = std::make_unique<KVGamut3DViewer>();
    KVGamutView view(viewer.get());
    KVAnnotations annotations;
    annotations.scales = true;
    view.setAnnotations(annotations);
    EXPECT_EQ(view.annotations(), annotations);
    viewer.reset();
    view.setAnnotations(annotations);
    EXPECT_EQ(view.annotations(), KVAnnotations());
}
