// SPDX-License-Identifier: Apache-2.0
// Photos: every pixel counted, checked against a conversion of each pixel by Little CMS.

#include "model/inputs/BuiltInProfiles.h"
#include "model/inputs/GamutSource.h"
#include "model/photos/PhotoColors.h"

#include <gtest/gtest.h>

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <lcms2.h>
#include <limits>
#include <random>
#include <sys/stat.h>
#include <thread>
#include <tiffio.h>
#include <type_traits>
#include <vector>
#include <webp/encode.h>

namespace {

constexpr int width = 160, height = 120;

QByteArray profileFile(const char* path)
{
    QFile file(QString::fromLatin1(path));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}
const char* const cmykFile = "/usr/share/color/icc/ghostscript/default_cmyk.icc";

/// Device values 0..1 of a picture: smooth gradients with noise, some of them at the limits.
std::vector<double> pixels(int channels, unsigned seed)
{
    std::mt19937 random(seed);
    std::vector<double> values;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int c = 0; c < channels; ++c) {
                const double noise = double(random() % 1000) / 10000.0;
                const double wave = 0.5 + 0.55 * std::sin(0.02 * (c + 1) * x + 0.03 * (3 - c) * y + c);
                values.push_back(std::clamp(wave + noise, 0.0, 1.0));
            }
    return values;
}

template <typename Sample>
std::vector<Sample> samples(const std::vector<double>& values)
{
    std::vector<Sample> result;
    for (const double value : values)
        result.push_back(static_cast<Sample>(std::lround(value * std::numeric_limits<Sample>::max())));
    return result;
}
template <>
std::vector<float> samples(const std::vector<double>& values)
{
    return {values.begin(), values.end()};
}

struct TiffKind
{
    int channels = 3;
    int bits = 8;
    int photometric = PHOTOMETRIC_RGB;
    bool isTiled = false;
    bool isPlanar = false;
    const char* mode = "w";
};

void writeTiff(const QString& path, const TiffKind& kind, const void* data, const QByteArray& icc)
{
    TIFF* tiff = TIFFOpen(QFile::encodeName(path).constData(), kind.mode);
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, height);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, kind.bits);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, kind.channels);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, kind.photometric);
    TIFFSetField(tiff, TIFFTAG_SAMPLEFORMAT, kind.bits == 32 ? SAMPLEFORMAT_IEEEFP : SAMPLEFORMAT_UINT);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, kind.isPlanar ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_ADOBE_DEFLATE);
    if (!icc.isEmpty())
        TIFFSetField(tiff, TIFFTAG_ICCPROFILE, static_cast<std::uint32_t>(icc.size()), icc.constData());
    const int bytes = kind.bits / 8;
    const auto* all = static_cast<const char*>(data);
    if (kind.isTiled) {
        constexpr int side = 64;
        TIFFSetField(tiff, TIFFTAG_TILEWIDTH, side);
        TIFFSetField(tiff, TIFFTAG_TILELENGTH, side);
        for (int y = 0; y < height; y += side)
            for (int x = 0; x < width; x += side) {
                QByteArray tile(side * side * kind.channels * bytes, '\0');
                for (int row = 0; row < std::min(side, height - y); ++row)
                    std::memcpy(tile.data() + row * side * kind.channels * bytes,
                                all + ((y + row) * width + x) * kind.channels * bytes,
                                static_cast<std::size_t>(std::min(side, width - x) * kind.channels * bytes));
                TIFFWriteTile(tiff, tile.data(), static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y),
                              0, 0);
            }
    } else if (kind.isPlanar) {
        for (int c = 0; c < kind.channels; ++c)
            for (int y = 0; y < height; ++y) {
                QByteArray row;
                for (int x = 0; x < width; ++x)
                    row.append(all + ((y * width + x) * kind.channels + c) * bytes, bytes);
                TIFFWriteScanline(tiff, row.data(), static_cast<std::uint32_t>(y),
                                  static_cast<std::uint16_t>(c));
            }
    } else {
        for (int y = 0; y < height; ++y)
            TIFFWriteScanline(tiff, const_cast<char*>(all + y * width * kind.channels * bytes),
                              static_cast<std::uint32_t>(y));
    }
    TIFFClose(tiff);
}

/// Each pixel converted by Little CMS with the relative colorimetric intent.
std::vector<KVGamut::LabPoint> converted(const std::vector<double>& device, const QByteArray& icc,
                                         int channels)
{
    const cmsHPROFILE profile =
        cmsOpenProfileFromMem(icc.constData(), static_cast<cmsUInt32Number>(icc.size()));
    const cmsHPROFILE lab = cmsCreateLab4Profile(nullptr);
    const cmsUInt32Number format = channels == 1   ? TYPE_GRAY_DBL
                                   : channels == 3 ? TYPE_RGB_DBL
                                                   : TYPE_CMYK_DBL;
    const cmsHTRANSFORM transform = cmsCreateTransform(profile, format, lab, TYPE_Lab_DBL,
                                                       INTENT_RELATIVE_COLORIMETRIC, cmsFLAGS_NOOPTIMIZE);
    std::vector<double> scaled(device);
    for (double& value : scaled)
        value *= channels == 4 ? 100.0 : 1.0;
    std::vector<cmsCIELab> labs(device.size() / static_cast<std::size_t>(channels));
    cmsDoTransform(transform, scaled.data(), labs.data(), static_cast<cmsUInt32Number>(labs.size()));
    cmsDeleteTransform(transform);
    cmsCloseProfile(lab);
    cmsCloseProfile(profile);
    std::vector<KVGamut::LabPoint> points;
    for (const cmsCIELab& value : labs)
        points.push_back({float(value.L), float(value.a), float(value.b)});
    return points;
}

double shareInside(const KVGamut::GamutObject& gamut, const std::vector<LabCells::Cell>& cells)
{
    double inside = 0, all = 0;
    for (const auto& [lab, count] : cells) {
        const float values[3]{lab.L, lab.a, lab.b};
        inside += gamut.isInside(values) ? count : 0;
        all += count;
    }
    return inside / all;
}

class Photos : public testing::Test
{
protected:
    QString path(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }

    PhotoColors read(const QString& file)
    {
        auto photo = PhotoFile::open(file);
        EXPECT_TRUE(photo);
        const auto colors = photo ? photoColors(*photo, {}) : failure(photo.error());
        EXPECT_TRUE(colors);
        return colors.value_or(PhotoColors());
    }

    ProblemCode problemOf(const QString& file)
    {
        auto photo = PhotoFile::open(file);
        const auto colors = photo ? photoColors(*photo, {}) : failure(photo.error());
        EXPECT_FALSE(colors);
        const auto* code = colors ? nullptr : std::get_if<ProblemCode>(&colors.error().code);
        return code ? *code : ProblemCode::OtherReason;
    }

    /// Not the gamut of a profile of the photos: their colours at its limits would be on its surface.
    static const KVGamut::GamutObject& screen()
    {
        static const KVGamut::GamutObject gamut = *GamutSource::open(QStringLiteral("AdobeRGB"))
                                                       ->compute({KVVMRenderRelativeColorimetric, false, 17});
        return gamut;
    }

    /// Compares the photo with each of its pixels converted alone: their number, mean, and the share inside a
    /// gamut.
    void expectSame(const PhotoColors& colors, const std::vector<KVGamut::LabPoint>& expected)
    {
        ASSERT_EQ(colors.pixels, qint64(expected.size()));
        ASSERT_FALSE(colors.cells.empty());
        std::vector<LabCells::Cell> single;
        std::array<double, 3> mean{}, meanExpected{};
        for (const auto& lab : expected) {
            single.push_back({lab, 1});
            meanExpected[0] += double(lab.L) / double(expected.size());
            meanExpected[1] += double(lab.a) / double(expected.size());
            meanExpected[2] += double(lab.b) / double(expected.size());
        }
        for (const auto& [lab, count] : colors.cells) {
            mean[0] += double(lab.L) * count / double(colors.pixels);
            mean[1] += double(lab.a) * count / double(colors.pixels);
            mean[2] += double(lab.b) * count / double(colors.pixels);
        }
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_NEAR(mean[i], meanExpected[i], 0.05) << i;
        const auto& gamut = colors.facts.space == PhotoFacts::Space::Cmyk ? screen() : printer();
        EXPECT_NEAR(shareInside(gamut, colors.cells), shareInside(gamut, single), 0.001);
    }

    static const KVGamut::GamutObject& printer()
    {
        static const KVGamut::GamutObject gamut = *GamutSource::open(QString::fromLatin1(cmykFile))
                                                       ->compute({KVVMRenderRelativeColorimetric, false, 17});
        return gamut;
    }

    template <typename Sample>
    void expectTiff(const TiffKind& kind, const QByteArray& icc)
    {
        const auto device = pixels(kind.channels, 7);
        const auto written = samples<Sample>(device);
        const QString file = path("photo.tif");
        writeTiff(file, kind, written.data(), icc);
        std::vector<double> stored;
        for (const Sample sample : written)
            stored.push_back(std::is_integral_v<Sample>
                                 ? double(sample) / double(std::numeric_limits<Sample>::max())
                                 : double(sample));
        expectSame(read(file), converted(stored, icc, kind.channels));
    }

    QTemporaryDir folder;
    const QByteArray sRGB = BuiltInProfiles::profile(QStringLiteral("sRGB"));
    const QByteArray proPhoto = BuiltInProfiles::profile(QStringLiteral("ProPhoto"));
    const QByteArray cmyk = profileFile(cmykFile);
};

} // namespace

TEST_F(Photos, countEveryPixelOfATiffInStrips)
{
    expectTiff<quint8>({}, sRGB);
    expectTiff<quint16>({.bits = 16}, proPhoto);
}

TEST_F(Photos, countEveryPixelOfATiffInTilesOrPlanes)
{
    expectTiff<quint8>({.isTiled = true}, sRGB);
    expectTiff<quint16>({.bits = 16, .isPlanar = true}, sRGB);
    expectTiff<quint16>({.bits = 16, .isTiled = true, .mode = "wb"}, sRGB);
    expectTiff<quint8>({.mode = "w8"}, sRGB);
}

TEST_F(Photos, countEveryPixelOfFloatingPoint)
{
    expectTiff<float>({.bits = 32}, proPhoto);
}

TEST_F(Photos, countEveryPixelInCmyk)
{
    expectTiff<quint8>({.channels = 4, .photometric = PHOTOMETRIC_SEPARATED}, cmyk);
    expectTiff<quint16>({.channels = 4, .bits = 16, .photometric = PHOTOMETRIC_SEPARATED}, cmyk);
}

TEST_F(Photos, countEveryPixelOfAGreyTiff)
{
    const QByteArray grey = profileFile("/usr/share/color/icc/ghostscript/default_gray.icc");
    expectTiff<quint8>({.channels = 1, .photometric = PHOTOMETRIC_MINISBLACK}, grey);
}

TEST_F(Photos, readLabWithoutAProfile)
{
    // 16 bits: L* 0..100 as 0..65535, a* and b* as signed 1/256
    std::vector<quint16> words;
    std::vector<KVGamut::LabPoint> expected;
    for (int i = 0; i < width * height; ++i) {
        const double L = 100.0 * (i % width) / (width - 1), a = -60.0 + i % 120, b = 50.0 - i % 90;
        words.push_back(static_cast<quint16>(std::lround(L * 655.35)));
        words.push_back(static_cast<quint16>(static_cast<qint16>(a * 256)));
        words.push_back(static_cast<quint16>(static_cast<qint16>(b * 256)));
        expected.push_back({float(L), float(a), float(b)});
    }
    writeTiff(path("lab.tif"), {.bits = 16, .photometric = PHOTOMETRIC_CIELAB}, words.data(), {});
    expectSame(read(path("lab.tif")), expected);
}

TEST_F(Photos, countEveryPixelOfPngAndWebP)
{
    const auto bytes = samples<quint8>(pixels(3, 3));
    const QImage picture(bytes.data(), width, height, width * 3, QImage::Format_RGB888);
    ASSERT_TRUE(picture.save(path("photo.png")));
    std::vector<double> device;
    for (const quint8 byte : bytes)
        device.push_back(byte / 255.0);
    const auto expected = converted(device, sRGB, 3);
    const PhotoColors colors = read(path("photo.png"));
    expectSame(colors, expected);
    EXPECT_EQ(colors.facts.format, QStringLiteral("PNG"));

    uint8_t* encoded = nullptr;
    const std::size_t size = WebPEncodeLosslessRGB(bytes.data(), width, height, width * 3, &encoded);
    QFile file(path("photo.webp"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(reinterpret_cast<const char*>(encoded), static_cast<qint64>(size));
    file.close();
    WebPFree(encoded);
    expectSame(read(path("photo.webp")), expected);
}

TEST_F(Photos, countEveryPixelOfAJpeg)
{
    const auto bytes = samples<quint8>(pixels(3, 5));
    const QImage picture(bytes.data(), width, height, width * 3, QImage::Format_RGB888);
    ASSERT_TRUE(picture.save(path("photo.jpg"), nullptr, 90));
    const QImage decoded = QImage(path("photo.jpg")).convertToFormat(QImage::Format_RGB888);
    std::vector<double> device;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width * 3; ++x)
            device.push_back(decoded.constScanLine(y)[x] / 255.0);
    const PhotoColors colors = read(path("photo.jpg"));
    expectSame(colors, converted(device, sRGB, 3));
    ASSERT_EQ(colors.notes.size(), 1);
    EXPECT_EQ(colors.notes[0].code, Problem::Code(ProblemCode::PictureTakenAsSrgb));
}

// 64x64 pixels of the colour 48, 112, 192, written by the encoders of libjxl (lossless) and libheif.
TEST_F(Photos, countEveryPixelOfJpegXlAndHeif)
{
    const auto written = [this](const char* name, const char* base64) {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray::fromBase64(base64));
        return path(name);
    };
    const QString jpegXl = written("photo.jxl", "/wpPQEBxIQgCAQBgAEsYixUAlB9j0P4FIgAAHNAvACAAATlbIA==");
    const QString heif =
        written("photo.heic",
                "AAAAHGZ0eXBoZWljAAAAAG1pZjFoZWljbWlhZgAAAUJtZXRhAAAAAAAAACFoZGxyAAAAAAAAAABwaWN0AAAAAAAAAAAA"
                "AAAAAAAAAA5waXRtAAAAAAABAAAAImlsb2MAAAAAREAAAQABAAAAAAFmAAEAAAAAAAAAHgAAACNpaW5mAAAAAAABAAAA"
                "FWluZmUCAAAAAAEAAGh2YzEAAAAAwmlwcnAAAACkaXBjbwAAAHhodmNDAQNwAAAAAAAAAAAAHvAA/P34+AAADwMgAAEA"
                "GEABDAH//wNwAAADAJAAAAMAAAMAHroCQCEAAQArQgEBA3AAAAMAkAAAAwAAAwAeoCCBBZbqSSmubgQEDAgAAAMACAAA"
                "AwAIQCIAAQAHRAHBcrAiQAAAABRpc3BlAAAAAAAAAEAAAABAAAAAEHBpeGkAAAAAAwgICAAAABZpcG1hAAAAAAAAAAEA"
                "AQOBAoMAAAAmbWRhdAAAABooAa8GOFr8/TfzOB/kf0Hc///OPKq8QmP1+A==");
    const std::vector<double> pixel{48 / 255.0, 112 / 255.0, 192 / 255.0};
    std::vector<double> device;
    for (int i = 0; i < 64 * 64; ++i)
        device.insert(device.end(), pixel.begin(), pixel.end());
    const auto expected = converted(device, sRGB, 3);
    expectSame(read(jpegXl), expected);
    const PhotoColors colors = read(heif);
    EXPECT_EQ(colors.pixels, 64 * 64);
    ASSERT_FALSE(colors.cells.empty());
    const KVGamut::LabPoint& lab = colors.cells.front().lab;
    EXPECT_NEAR(lab.L, expected[0].L, 1.0f); // compressed with loss
    EXPECT_NEAR(lab.a, expected[0].a, 2.0f);
    EXPECT_NEAR(lab.b, expected[0].b, 2.0f);
}

TEST_F(Photos, leaveOutTransparentPixels)
{
    QImage picture(20, 10, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    ASSERT_TRUE(picture.save(path("clear.png")));
    EXPECT_EQ(problemOf(path("clear.png")), ProblemCode::PictureTransparent);
    for (int x = 0; x < 5; ++x)
        picture.setPixelColor(x, 3, QColor(255, 0, 0, 1));
    ASSERT_TRUE(picture.save(path("clear.png")));
    EXPECT_EQ(read(path("clear.png")).pixels, 5);
}

TEST_F(Photos, sayWhyTheyAreNotRead)
{
    const auto bytes = samples<quint8>(pixels(4, 1));
    writeTiff(path("inks.tif"), {.channels = 4, .photometric = PHOTOMETRIC_SEPARATED}, bytes.data(), {});
    EXPECT_EQ(problemOf(path("inks.tif")), ProblemCode::PictureNeedsProfile);
    writeTiff(path("inks.tif"), {.channels = 4, .photometric = PHOTOMETRIC_SEPARATED}, bytes.data(), sRGB);
    EXPECT_EQ(problemOf(path("inks.tif")), ProblemCode::PictureSpaceDiffers);
    writeTiff(path("bad.tif"), {}, bytes.data(), "no profile");
    EXPECT_EQ(problemOf(path("bad.tif")), ProblemCode::PictureProfileInvalid);
    EXPECT_EQ(problemOf(path("missing.tif")), ProblemCode::CannotRead);
    EXPECT_EQ(problemOf(folder.path()), ProblemCode::CannotRead);
    EXPECT_EQ(problemOf(QStringLiteral("/dev/zero")), ProblemCode::NotAFileOrPipe);
    EXPECT_EQ(problemOf(QString::fromLatin1(cmykFile)), ProblemCode::PictureFormatUnknown);
}

TEST_F(Photos, areRefusedIfTheyAreCutShort)
{
    const auto bytes = samples<quint8>(pixels(3, 3));
    const QImage picture(bytes.data(), width, height, width * 3, QImage::Format_RGB888);
    for (const char* name : {"cut.png", "cut.jpg"}) {
        ASSERT_TRUE(picture.save(path(name)));
        ASSERT_TRUE(QFile::resize(path(name), QFileInfo(path(name)).size() / 2));
        EXPECT_EQ(problemOf(path(name)), ProblemCode::PictureDataInvalid) << name;
    }
}

/// The start of a PNG with 8 bits of grey: its header, and pixels that are missing.
QByteArray pngHeader(quint32 side, bool isInterlaced)
{
    const auto append32 = [](QByteArray& bytes, quint32 value) {
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes.append(static_cast<char>(value >> shift));
    };
    QByteArray header("IHDR");
    append32(header, side);
    append32(header, side);
    header += QByteArray("\x08\0\0\0", 4);
    header.append(isInterlaced ? '\1' : '\0');
    quint32 crc = 0xffffffffu;
    for (const char byte : header) {
        crc ^= static_cast<quint8>(byte);
        for (int k = 0; k < 8; ++k)
            crc = (crc & 1) != 0 ? 0xedb88320u ^ (crc >> 1) : crc >> 1;
    }
    QByteArray png("\x89PNG\r\n\x1A\n\0\0\0\x0D", 12);
    png += header;
    append32(png, ~crc);
    return png + QByteArray("\0\0\0\0IDAT\x35\xAF\x06\x1E", 12);
}

TEST_F(Photos, areRefusedAboveTheLimitOfPixels)
{
    const auto problemWith = [this](quint32 side, bool isInterlaced) {
        QFile file(path("huge.png"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(pngHeader(side, isInterlaced)) > 0);
        file.close();
        return problemOf(file.fileName());
    };
    EXPECT_EQ(problemWith(40'000, false), ProblemCode::TooManyPixels);
    EXPECT_EQ(problemWith(9'000, true), ProblemCode::TooManyPixelsAtOnce); // more than 64 million
    EXPECT_EQ(problemWith(9'000, false), ProblemCode::PictureDataInvalid); // without pixels
}

TEST_F(Photos, stopWhenCancelled)
{
    const auto bytes = samples<quint8>(pixels(3, 3));
    writeTiff(path("photo.tif"), {}, bytes.data(), sRGB);
    auto photo = PhotoFile::open(path("photo.tif"));
    ASSERT_TRUE(photo);
    const auto task = KVCompletionProtocol::createTask(QStringLiteral("reading"));
    task->cancel();
    EXPECT_TRUE(photoColors(*photo, {}, task).error().isCancelled());
}

TEST_F(Photos, areReadFromAPipe)
{
    const QImage picture(8, 8, QImage::Format_RGB888);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    ASSERT_TRUE(buffer.open(QIODevice::WriteOnly) && picture.save(&buffer, "PNG"));
    const auto colors =
        PhotoFile::ofContent(bytes).and_then([](PhotoFile photo) { return photoColors(photo, {}); });
    ASSERT_TRUE(colors);
    EXPECT_EQ(colors->pixels, 64);
}

TEST_F(Photos, areReadFromANamedPipe)
{
    const QImage picture(300, 300, QImage::Format_RGB888);
    ASSERT_TRUE(picture.save(path("p.png")));
    const QByteArray pipe = QFile::encodeName(path("pipe"));
    ASSERT_EQ(mkfifo(pipe.constData(), 0600), 0);
    bool isWritten = false;
    std::thread writer([&] {
        QFile source(path("p.png"));
        std::FILE* file = source.open(QIODevice::ReadOnly) ? std::fopen(pipe.constData(), "wb") : nullptr;
        const QByteArray png = source.readAll();
        isWritten =
            file && std::fwrite(png.constData(), 1, std::size_t(png.size()), file) == std::size_t(png.size());
        isWritten = file && std::fclose(file) == 0 && isWritten;
    });
    const PhotoColors colors = read(path("pipe"));
    writer.join();
    EXPECT_TRUE(isWritten);
    EXPECT_EQ(colors.pixels, 90'000);
}

TEST(LabCells, doNotDependOnTheOrderOfColours)
{
    LabCells forwards, backwards;
    for (int i = 0; i < 5000; ++i) {
        const auto at = [](int k) { return KVGamut::LabPoint{float(k % 100), float(k % 37), float(k % 11)}; };
        forwards.add(at(i), 1);
        backwards.add(at(4999 - i), 1);
    }
    const auto one = forwards.cells(), other = backwards.cells();
    ASSERT_EQ(one.size(), other.size());
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < one.size(); ++i) {
        EXPECT_EQ(one[i].count, other[i].count);
        EXPECT_EQ(one[i].lab.L, other[i].lab.L);
        sum += one[i].count;
    }
    EXPECT_EQ(sum, 5000u);
}

TEST(LabCells, becomeWiderWhenThereAreTooMany)
{
    LabCells cells;
    // four million colours, 0.25 apart
    for (int L = 0; L < 400; ++L)
        for (int a = 0; a < 100; ++a)
            for (int b = 0; b < 100; ++b)
                cells.add({0.125f + 0.25f * float(L), 0.125f + 0.25f * float(a), 0.125f + 0.25f * float(b)},
                          2);
    EXPECT_EQ(cells.edge(), 0.5f);
    const auto all = cells.cells();
    EXPECT_EQ(all.size(), 500'000u);
    EXPECT_TRUE(std::all_of(all.begin(), all.end(), [](const auto& cell) { return cell.count == 16; }));
    EXPECT_FLOAT_EQ(all[0].lab.L, 0.25f);
}
