// SPDX-License-Identifier: Apache-2.0
#include "model/pictures/PictureFile.h"

#include "model/inputs/BuiltInProfiles.h"
#include "model/inputs/PictureProfile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QTemporaryDir>
#include <QtCore/QXmlStreamReader>
#include <QtGui/QColorSpace>
#include <QtGui/QPainter>

#include <tiffio.h>
#include <webp/decode.h>
#include <webp/mux.h>

namespace {

constexpr std::initializer_list<PictureFormat> all{PictureFormat::Png,  PictureFormat::Jpeg,
                                                   PictureFormat::Tiff, PictureFormat::WebP,
                                                   PictureFormat::Svg,  PictureFormat::Pdf};

/// Every step of the four channels, in squares of four pixels, which JPEG keeps nearly unchanged.
QImage colours(QImage::Format format)
{
    QImage image(64, 48, format);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgba(x / 8 * 36, y / 8 * 50, 255 - x / 8 * 30, 255 - y / 8 * 40));
    return image;
}

const PictureNote note{
    QStringLiteral("kvgamut render 'a <b> & é' --size 64x48"), {QStringLiteral("00ff  a <b> & é")}, 300};

QByteArray bytesOf(const QImage& picture, PictureFormat format)
{
    const Result<QByteArray> bytes = PictureFile::bytes(picture, format, note);
    EXPECT_TRUE(bytes.has_value());
    return bytes.value_or(QByteArray());
}

/// The pixels of a TIFF, which libtiff gives premultiplied, from the bottom upwards.
QImage tiffPixels(const QByteArray& bytes)
{
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("a.tif"));
    QFile file(name);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    file.close();
    TIFF* tiff = TIFFOpen(name.toUtf8().constData(), "r");
    QImage image(64, 48, QImage::Format_RGBA8888_Premultiplied);
    EXPECT_NE(TIFFReadRGBAImageOriented(tiff, 64, 48, reinterpret_cast<uint32_t*>(image.bits()),
                                        ORIENTATION_TOPLEFT, 0),
              0);
    TIFFClose(tiff);
    return image;
}

QImage webPPixels(const QByteArray& bytes)
{
    int width = 0;
    int height = 0;
    uint8_t* pixels = WebPDecodeRGBA(reinterpret_cast<const uint8_t*>(bytes.constData()),
                                     static_cast<size_t>(bytes.size()), &width, &height);
    const QImage image = QImage(pixels, width, height, QImage::Format_RGBA8888).copy();
    WebPFree(pixels);
    return image;
}

TEST(PictureFile, keepsEveryPixelInPngTiffAndWebP)
{
    for (const QImage::Format format : {QImage::Format_RGB32, QImage::Format_ARGB32}) {
        const QImage picture = colours(format);
        const QImage straight = picture.convertToFormat(QImage::Format_RGBA8888);
        QImage read =
            QImage::fromData(bytesOf(picture, PictureFormat::Png)).convertToFormat(straight.format());
        read.setColorSpace({}); // comparisons include it
        EXPECT_EQ(read, straight);
        EXPECT_EQ(webPPixels(bytesOf(picture, PictureFormat::WebP)), straight);
    }
    const QImage opaque = colours(QImage::Format_RGB32);
    EXPECT_EQ(tiffPixels(bytesOf(opaque, PictureFormat::Tiff)).convertToFormat(QImage::Format_RGB32), opaque);
}

TEST(PictureFile, keepsTransparencyInTiff)
{
    const QImage picture = colours(QImage::Format_ARGB32);
    const QImage read = tiffPixels(bytesOf(picture, PictureFormat::Tiff));
    const QImage expected = picture.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    for (int y = 0; y < picture.height(); ++y)
        for (int i = 0; i < 4 * picture.width(); ++i)
            EXPECT_LE(std::abs(read.constScanLine(y)[i] - expected.constScanLine(y)[i]), 1);
}

TEST(PictureFile, changesColoursInJpegByAFewSteps)
{
    const QImage picture = colours(QImage::Format_RGB32);
    const QImage read =
        QImage::fromData(bytesOf(picture, PictureFormat::Jpeg)).convertToFormat(picture.format());
    ASSERT_EQ(read.size(), picture.size());
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const QColor a = picture.pixelColor(x, y), b = read.pixelColor(x, y);
            EXPECT_LE(std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
                                std::abs(a.blue() - b.blue())}),
                      6);
        }
}

TEST(PictureFile, statesTheResolution)
{
    for (const PictureFormat format : {PictureFormat::Png, PictureFormat::Jpeg}) {
        const QImage read = QImage::fromData(bytesOf(colours(QImage::Format_RGB32), format));
        EXPECT_NEAR(read.dotsPerMeterX() * 0.0254, 300.0, 0.02);
        EXPECT_NEAR(read.dotsPerMeterY() * 0.0254, 300.0, 0.02);
    }
    const QByteArray pdf = bytesOf(QImage(600, 300, QImage::Format_RGB32), PictureFormat::Pdf);
    EXPECT_TRUE(pdf.contains("/MediaBox [0 0 144.000000 72.000000]")) << "2 by 1 inches";
}

TEST(PictureFile, aPngHasTheTagOfSrgb)
{
    const QByteArray bytes = bytesOf(colours(QImage::Format_RGB32), PictureFormat::Png);
    EXPECT_TRUE(bytes.left(200).contains(QByteArray("\0\0\0\1sRGB", 8)));
    EXPECT_EQ(QImage::fromData(bytes).colorSpace(), QColorSpace(QColorSpace::SRgb));
}

TEST(PictureFile, theOthersHaveTheProfileOfSrgb)
{
    const QByteArray srgb = BuiltInProfiles::profile(QStringLiteral("sRGB"));
    for (const PictureFormat format : {PictureFormat::Jpeg, PictureFormat::Tiff})
        EXPECT_EQ(PictureProfile::read(bytesOf(colours(QImage::Format_ARGB32), format)).value(), srgb);
    const QByteArray webp = bytesOf(colours(QImage::Format_RGB32), PictureFormat::WebP);
    EXPECT_TRUE(webp.contains(srgb));
}

TEST(PictureFile, aPngSaysHowItWasMade)
{
    const QImage read = QImage::fromData(bytesOf(colours(QImage::Format_RGB32), PictureFormat::Png));
    EXPECT_EQ(read.text(QStringLiteral("Software")), PictureNote::software());
    EXPECT_EQ(read.text(QStringLiteral("Command")), note.command);
    EXPECT_EQ(read.text(QStringLiteral("Profiles")), note.profiles.first());
}

TEST(PictureFile, eachOtherFormatSaysHowItWasMade)
{
    const QByteArray text = (PictureNote::software() + QLatin1Char('\n') + note.command + QLatin1Char('\n') +
                             note.profiles.first())
                                .toUtf8();
    for (const PictureFormat format : {PictureFormat::Jpeg, PictureFormat::Tiff})
        EXPECT_TRUE(bytesOf(colours(QImage::Format_RGB32), format).contains(text));
    for (const PictureFormat format : {PictureFormat::WebP, PictureFormat::Svg})
        EXPECT_TRUE(bytesOf(colours(QImage::Format_RGB32), format)
                        .contains(QString::fromUtf8(text).toHtmlEscaped().toUtf8()));
}

TEST(PictureFile, hostileNamesAreTextInAnSvg)
{
    QXmlStreamReader xml(bytesOf(colours(QImage::Format_RGB32), PictureFormat::Svg));
    QString description;
    while (!xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("desc"))
            description = xml.readElementText();
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    EXPECT_TRUE(description.contains(note.command)) << description.toStdString();
}

TEST(PictureFile, hasTheSameBytesEachTime)
{
    for (const PictureFormat format : all) {
        const QImage picture = colours(QImage::Format_RGB32);
        EXPECT_EQ(bytesOf(picture, format), bytesOf(picture, format));
    }
}

TEST(PictureFile, drawsTheOverlayOverThePicture)
{
    QImage white(64, 48, QImage::Format_RGB32);
    white.fill(Qt::white);
    const PictureOverlay square = [](QPainter& painter, const QRectF& area) {
        EXPECT_EQ(area, QRectF(0, 0, 64, 48));
        painter.fillRect(QRectF(16, 12, 8, 8), Qt::red);
    };
    const QByteArray png = PictureFile::bytes(white, PictureFormat::Png, note, square).value();
    EXPECT_EQ(QImage::fromData(png).pixelColor(20, 16), QColor(Qt::red));
    EXPECT_EQ(QImage::fromData(png).pixelColor(30, 16), QColor(Qt::white));
    const QByteArray svg = PictureFile::bytes(white, PictureFormat::Svg, note, square).value();
    EXPECT_TRUE(svg.contains("<rect x=\"16\" y=\"12\" width=\"8\" height=\"8\""))
        << svg.right(600).toStdString();
}

TEST(PictureFile, knowsTheFormatsBySuffixInAnyCase)
{
    for (const QString& suffix : PictureFile::suffixes()) {
        EXPECT_TRUE(PictureFile::formatOf(QStringLiteral("a b/c.d.") + suffix));
        EXPECT_EQ(PictureFile::formatOf(QStringLiteral("x.") + suffix.toUpper()),
                  PictureFile::formatNamed(suffix));
    }
    for (const char* name : {"x", "x.txt", "x.icc", "png", ".gif", "x.png.bak", ""})
        EXPECT_FALSE(PictureFile::formatOf(QLatin1String(name))) << name;
}

TEST(PictureFile, refusesANullPicture)
{
    for (const PictureFormat format : all)
        EXPECT_EQ(PictureFile::bytes({}, format, note).error().code,
                  Problem::Code(ProblemCode::NoPictureToSave));
}

} // namespace
