// SPDX-License-Identifier: Apache-2.0
// Photos and colours against a gamut, compared with a search for each colour alone.

#include "app/support/BuiltInGamut.h"
#include "model/checks/ColorCheck.h"
#include "model/checks/PhotoCheck.h"
#include "model/checks/PhotoMarks.h"
#include "model/inputs/GamutSource.h"
#include "model/inputs/LittleCms.h"

#include <QtCore/QBuffer>
#include <QtGui/QColorSpace>
#include <QtGui/QImage>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

namespace kvtest {

/// Lab, absolute colorimetric, of inks in percent.
static KVGamut::LabPoint labOfInks(const std::array<double, 4>& inks)
{
    const LittleCms::Profile profile(cmsOpenProfileFromFile(KVGAMUT_CMYK_PROFILE, "r"));
    const LittleCms::Profile lab(cmsCreateLab4Profile(nullptr));
    const LittleCms::Transform transform(cmsCreateTransform(profile.get(), TYPE_CMYK_DBL, lab.get(),
                                                            TYPE_Lab_DBL, INTENT_ABSOLUTE_COLORIMETRIC,
                                                            cmsFLAGS_NOCACHE | cmsFLAGS_NOOPTIMIZE));
    cmsCIELab found{};
    cmsDoTransform(transform.get(), inks.data(), &found, 1);
    return {float(found.L), float(found.a), float(found.b)};
}

} // namespace kvtest

namespace {

/// Colours in and around sRGB, each for some pixels.
PhotoColors colours(unsigned seed, int count)
{
    std::mt19937 random(seed);
    const auto between = [&random](float min, float max) {
        return min + (max - min) * static_cast<float>(random() % 10000) / 10000.0f;
    };
    PhotoColors colors;
    for (int i = 0; i < count; ++i) {
        colors.cells.push_back({{between(5, 98), between(-70, 80), between(-70, 80)},
                                static_cast<std::uint32_t>(1 + random() % 50)});
        colors.pixels += colors.cells.back().count;
    }
    return colors;
}

class Checks : public testing::Test
{
protected:
    const KVGamut::GamutObject sRGB = kvtest::builtInGamut("sRGB", 17);
};

/// The value that 95 % of the pixels do not exceed, and the mean, of differences with their numbers.
std::pair<double, double> p95AndMean(std::vector<std::pair<double, std::uint32_t>> differences)
{
    std::sort(differences.begin(), differences.end());
    double all = 0, sum = 0;
    for (const auto& [value, count] : differences) {
        all += count;
        sum += value * count;
    }
    double below = 0;
    for (const auto& [value, count] : differences) {
        below += count;
        if (below >= 0.95 * all)
            return {value, sum / all};
    }
    return {0, 0};
}

} // namespace

TEST_F(Checks, countThePixelsOfEachZoneOfAPhoto)
{
    for (const float tolerance : {0.0f, 1.0f, 6.0f}) {
        const PhotoColors photo = colours(3, 4000);
        double inside = 0, edge = 0;
        for (const auto& [lab, count] : photo.cells) {
            const std::array<float, 3> values{lab.L, lab.a, lab.b};
            const float distance = sRGB.nearest(values.data()).distance;
            (std::abs(distance) <= tolerance ? edge : inside) +=
                std::abs(distance) <= tolerance || distance < 0 ? count : 0;
        }
        const auto check = checkPhoto(sRGB, photo, tolerance, nullptr);
        ASSERT_TRUE(check);
        EXPECT_NEAR(check->inside, inside / double(photo.pixels), 1e-9) << tolerance;
        EXPECT_NEAR(check->edge, edge / double(photo.pixels), 1e-9) << tolerance;
        EXPECT_NEAR(check->inside + check->edge + check->outside, 1.0, 1e-9);
    }
}

TEST_F(Checks, stateTheDifferencesOfAllPixelsOfAPhoto)
{
    const PhotoColors photo = colours(5, 3000);
    std::vector<std::pair<double, std::uint32_t>> de76, de00;
    for (const auto& [lab, count] : photo.cells) {
        const std::array<float, 3> values{lab.L, lab.a, lab.b};
        const bool isInside = sRGB.isInside(values.data());
        de76.push_back({isInside ? 0.0 : double(sRGB.nearest(values.data()).distance), count});
        de00.push_back({isInside ? 0.0 : double(sRGB.nearestByCiede2000(values.data()).distance), count});
    }
    const auto check = checkPhoto(sRGB, photo, 1.0f, nullptr);
    ASSERT_TRUE(check);
    for (const auto& [found, expected] : {std::pair{check->de76, de76}, std::pair{check->de00, de00}}) {
        const auto [p95, mean] = p95AndMean(expected);
        EXPECT_NEAR(found.mean, mean, 0.05);
        EXPECT_NEAR(found.p95, p95, 0.3);
        EXPECT_NEAR(found.max, std::max_element(expected.begin(), expected.end())->first, 0.01);
    }
    EXPECT_FALSE(check->made);
}

TEST_F(Checks, ofAPhotoInsideHaveNoDifferences)
{
    PhotoColors photo;
    photo.cells = {{{50, 0, 0}, 10}, {{60, 5, 5}, 30}};
    photo.pixels = 40;
    const auto check = checkPhoto(sRGB, photo, 1.0f, nullptr);
    ASSERT_TRUE(check);
    EXPECT_EQ(check->inside, 1.0);
    EXPECT_EQ(check->de00.max, 0.0);
    EXPECT_EQ(check->de76.p95, 0.0);
}

TEST_F(Checks, stateTheShareAtWhich95PercentAreReached)
{
    PhotoColors photo;
    photo.cells = {{{50, 0, 0}, 94}, {{50, 100, 90}, 6}}; // 6 % far outside
    photo.pixels = 100;
    EXPECT_GT(checkPhoto(sRGB, photo, 1.0f, nullptr)->de76.p95, 10.0);
    photo.cells[0].count = 96;
    photo.cells[1].count = 4;
    EXPECT_EQ(checkPhoto(sRGB, photo, 1.0f, nullptr)->de76.p95, 0.0);
}

TEST_F(Checks, ofAPhotoCanBeCancelled)
{
    const auto task = KVCompletionProtocol::createTask(QStringLiteral("check"));
    task->cancel();
    EXPECT_TRUE(checkPhoto(sRGB, colours(1, 100), 1.0f, nullptr, task).error().isCancelled());
}

TEST_F(Checks, ofAColourGiveItsDeviceValues)
{
    const QByteArray bytes = BuiltInProfiles::profile(QStringLiteral("sRGB"));
    const KVProfilePtr profile(KVProfileCreateWithData(bytes.constData(), int(bytes.size())),
                               KVProfileRelease);
    const ColorChecker checker(sRGB, profile);
    const ColorCheck grey = checker.check({53.585f, 0, 0}, 1.0); // sRGB 128 128 128
    EXPECT_EQ(grey.zone, Side::Inside);
    EXPECT_EQ(grey.de00, 0.0);
    ASSERT_EQ(grey.device.size(), 3u);
    for (const double value : grey.device)
        EXPECT_NEAR(value, 100.0 * 128 / 255, 0.1);
    EXPECT_LT(grey.madeDe00, 0.05);

    const KVGamut::LabPoint orange{70, 60, 120}; // outside
    const ColorCheck outside = checker.check(orange, 1.0);
    EXPECT_EQ(outside.zone, Side::Outside);
    EXPECT_LT(outside.de00, outside.de76);
    EXPECT_NEAR(outside.de00, KVGamut::ciede2000(orange, outside.nearest), 0.01);
    EXPECT_NEAR(std::atan2(outside.nearestAtHue.b, outside.nearestAtHue.a), std::atan2(120.0f, 60.0f), 1e-3f);
    EXPECT_GE(outside.de00AtHue, outside.de00 - 0.01);
    EXPECT_GE(outside.madeDe00, outside.de00 - 0.05); // no device value gives a nearer colour
    for (const double value : outside.device)
        EXPECT_TRUE(value >= 0.0 && value <= 100.0) << value;
    EXPECT_EQ(checker.check(orange, 100.0).zone, Side::Edge);
}

TEST_F(Checks, ofAColourWithoutAProfileHaveNoDeviceValues)
{
    const ColorCheck check = ColorChecker(sRGB, {}).check({50, 0, 0}, 1.0);
    EXPECT_TRUE(check.device.empty());
    EXPECT_TRUE(std::isnan(check.made.L));
}

namespace {

QByteArray pngOf(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    EXPECT_TRUE(image.save(&buffer, "PNG"));
    return bytes;
}

PhotoFile photoOf(const QImage& image)
{
    Result<PhotoFile> photo = PhotoFile::ofContent(pngOf(image));
    EXPECT_TRUE(photo);
    return *std::move(photo);
}

/// A photo in Display P3, of which sRGB cannot make a part.
QImage colorfulPhoto()
{
    QImage image(160, 100, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(255 - y * 2, 40 + x, (x * y) % 256));
    image.setColorSpace(QColorSpace(QColorSpace::DisplayP3));
    return image;
}

bool isGrey(QRgb color)
{
    return std::abs(qRed(color) - qGreen(color)) <= 1 && std::abs(qGreen(color) - qBlue(color)) <= 1;
}

} // namespace

TEST_F(Checks, findTheDeviceValuesOfPrintableColours)
{
    const auto source = GamutSource::open(QStringLiteral(KVGAMUT_CMYK_PROFILE));
    ASSERT_TRUE(source);
    const auto gamut = source->compute({});
    ASSERT_TRUE(gamut);
    const ColorChecker checker(*gamut, source->profile());
    std::mt19937 random(9);
    double worstMade = 0.0, worstInverted = 0.0;
    for (int i = 0; i < 200; ++i) {
        // a colour of the device, by Little CMS
        const std::array ink{double(random() % 90 + 5), double(random() % 90 + 5), double(random() % 90 + 5),
                             double(random() % 50)};
        const KVGamut::LabPoint lab = kvtest::labOfInks(ink);
        const ColorCheck check = checker.check(lab, 1.0);
        ASSERT_EQ(check.inverted.size(), 4u);
        EXPECT_EQ(check.inverted[3], check.device[3]); // black
        for (const double value : check.inverted)
            EXPECT_TRUE(value >= 0.0 && value <= 100.0);
        // the stated difference is that of the colour that the values give
        const std::array found{check.inverted[0], check.inverted[1], check.inverted[2], check.inverted[3]};
        EXPECT_NEAR(KVGamut::ciede2000(kvtest::labOfInks(found), lab), check.invertedDe00, 0.02);
        EXPECT_LE(check.invertedDe00, check.madeDe00 + 0.3);
        worstMade = std::max(worstMade, check.madeDe00);
        worstInverted += check.invertedDe00 > 0.1;
    }
    EXPECT_GT(worstMade, 0.3); // the table from Lab is coarse
    EXPECT_LT(worstInverted,
              20.0); // nearly all are exact; where black is too high for the colour none can be
}

TEST_F(Checks, maskMarksAsManyPixelsAsAreOutside)
{
    const KVGamut::GamutObject gamut = kvtest::builtInGamut("sRGB", 33);
    const QImage image = colorfulPhoto();
    PhotoFile counted = photoOf(image), drawn = photoOf(image);
    const auto colors = photoColors(counted, {});
    ASSERT_TRUE(colors);
    const auto check = checkPhoto(gamut, *colors, 1.0f, nullptr);
    const auto mask = PhotoMarks::mask(drawn, {}, gamut, 1.0f);
    ASSERT_TRUE(check && mask);
    ASSERT_EQ(mask->size(), image.size());
    int marked = 0;
    for (int y = 0; y < mask->height(); ++y)
        for (int x = 0; x < mask->width(); ++x)
            if (mask->pixel(x, y) == sideColor(Side::Outside).rgb())
                ++marked;
            else
                ASSERT_TRUE(isGrey(mask->pixel(x, y)));
    EXPECT_GT(marked, 1000);
    // colours are counted in cells of a quarter of a dE
    EXPECT_NEAR(double(marked) / (image.width() * image.height()), check->outside, 0.002);
}

TEST_F(Checks, maskIsLighterWhereThePhotoIs)
{
    QImage image(3, 1, QImage::Format_RGB32);
    image.setPixel(0, 0, qRgb(0, 0, 0));
    image.setPixel(1, 0, qRgb(128, 128, 128));
    image.setPixel(2, 0, qRgb(255, 255, 255));
    PhotoFile photo = photoOf(image);
    const auto mask = PhotoMarks::mask(photo, {}, sRGB, 1.0f);
    ASSERT_TRUE(mask);
    EXPECT_LT(qGreen(mask->pixel(0, 0)) + 40, qGreen(mask->pixel(1, 0)));
    EXPECT_LT(qGreen(mask->pixel(1, 0)) + 40, qGreen(mask->pixel(2, 0)));
}

/// Whether the scale has @p color between two differences.
static bool isOnScale(QRgb color, const LossScale& scale, float first, float last)
{
    for (float difference = first; difference <= last; difference += 0.02f) {
        const QRgb there = scale.colorOf(difference).rgb();
        if (std::abs(qRed(there) - qRed(color)) <= 1 && std::abs(qGreen(there) - qGreen(color)) <= 1 &&
            std::abs(qBlue(there) - qBlue(color)) <= 1)
            return true;
    }
    return false;
}

TEST_F(Checks, mapColoursEachPixelByItsDifference)
{
    const KVGamut::GamutObject gamut = kvtest::builtInGamut("sRGB", 33);
    const QImage image = colorfulPhoto();
    const LossScale scale{1.0f, 15.0f};
    PhotoFile photo = photoOf(image);
    const auto map = PhotoMarks::map(photo, {}, gamut, scale);
    ASSERT_TRUE(map);
    const auto space = PhotoSpace::open(image.colorSpace().iccProfile(), PhotoFacts::Space::Rgb, false);
    ASSERT_TRUE(space);
    int lost = 0;
    for (int y = 0; y < image.height(); y += 3)
        for (int x = 0; x < image.width(); x += 3) {
            const QRgb color = image.pixel(x, y);
            const std::array device{qRed(color) / 255.0, qGreen(color) / 255.0, qBlue(color) / 255.0};
            KVGamut::LabPoint lab;
            space->convert(device, std::span(&lab, 1));
            const float distance = gamut.nearestByCiede2000(std::array{lab.L, lab.a, lab.b}.data()).distance;
            constexpr float cell = 0.9f; // a colour and the middle of its cell differ by no more
            const QRgb shown = map->pixel(x, y);
            if (distance < scale.threshold - cell) {
                EXPECT_TRUE(isGrey(shown));
            } else if (distance > scale.threshold + cell) {
                ++lost;
                EXPECT_TRUE(isOnScale(shown, scale, distance - cell, distance + cell)) << distance;
            }
        }
    EXPECT_GT(lost, 100);
}

TEST_F(Checks, maskOfALargePhotoIsSmallerAndHidesNothing)
{
    QImage image(7001, 5000, QImage::Format_RGB32); // 35 megapixels: a half along each side
    image.fill(qRgb(120, 120, 120));
    image.setColorSpace(QColorSpace(QColorSpace::ProPhotoRgb));
    image.setPixel(4321, 1235, qRgb(0, 255, 0));
    image.setPixel(7000, 4999, qRgb(0, 255, 0));
    PhotoFile photo = photoOf(image);
    const auto mask = PhotoMarks::mask(photo, {}, sRGB, 1.0f);
    ASSERT_TRUE(mask);
    ASSERT_EQ(mask->size(), QSize(3501, 2500));
    const QRgb lost = sideColor(Side::Outside).rgb();
    EXPECT_EQ(mask->pixel(2160, 617), lost);
    EXPECT_EQ(mask->pixel(3500, 2499), lost);
    EXPECT_TRUE(isGrey(mask->pixel(2161, 617)));
    EXPECT_TRUE(isGrey(mask->pixel(2160, 618)));
}

TEST_F(Checks, maskKeepsTransparentPixels)
{
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixel(0, 0, qRgba(255, 0, 0, 0));
    image.setPixel(1, 0, qRgba(90, 90, 90, 128));
    PhotoFile photo = photoOf(image);
    const auto mask = PhotoMarks::mask(photo, {}, sRGB, 1.0f);
    ASSERT_TRUE(mask);
    EXPECT_EQ(qAlpha(mask->pixel(0, 0)), 0);
    EXPECT_EQ(qAlpha(mask->pixel(1, 0)), 255);
}

TEST_F(Checks, maskCanBeCancelled)
{
    PhotoFile photo = photoOf(colorfulPhoto());
    const auto task = KVCompletionProtocol::createTask(QString());
    task->cancel();
    const auto mask = PhotoMarks::mask(photo, {}, sRGB, 1.0f, task);
    ASSERT_FALSE(mask);
    EXPECT_EQ(mask.error().code, Problem::Code(KVProblemCode::Cancelled));
}
