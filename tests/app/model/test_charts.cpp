// SPDX-License-Identifier: Apache-2.0
// Charts are made of devices whose gamut is known: an affine device, and profiles of a press and of displays.

#include "app/support/AffineProfile.h"
#include "model/charts/ChartComparison.h"
#include "model/charts/ChartProfile.h"
#include "model/inputs/GamutSource.h"
#include "model/problems/ProblemText.h"

#include <gmock/gmock.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <cmath>
#include <functional>

namespace {

using Colors = std::vector<std::array<double, 4>>;
using Device = std::array<double, 4>;
using Measure = std::function<cmsCIELab(const Device&)>;

/// All combinations of @p levels, 0..1, in three channels.
Colors gridOf(const std::vector<double>& levels, double key = 0.0)
{
    Colors colors;
    for (const double c : levels)
        for (const double m : levels)
            for (const double y : levels)
                colors.push_back({c, m, y, key});
    return colors;
}

std::vector<double> evenLevels(int count)
{
    std::vector<double> levels;
    for (int i = 0; i < count; ++i)
        levels.push_back(double(i) / (count - 1));
    return levels;
}

/// Irregular as in IT8.7/4: fewer levels of the other inks with more black, and ramps of each ink.
Colors inkCombinations()
{
    Colors colors = gridOf({0, 0.1, 0.2, 0.4, 0.7, 1}, 0);
    const auto add = [&colors](const Colors& more) { colors.insert(colors.end(), more.begin(), more.end()); };
    add(gridOf({0, 0.1, 0.2, 0.4, 0.7, 1}, 0.2));
    add(gridOf({0, 0.2, 0.4, 0.7, 1}, 0.4));
    add(gridOf({0, 0.2, 0.4, 0.7, 1}, 0.6));
    add(gridOf({0, 0.4, 0.7, 1}, 0.8));
    add(gridOf({0, 0.4, 1}, 1));
    for (std::size_t ink = 0; ink < 4; ++ink)
        for (const double level : {0.02, 0.03, 0.05, 0.07, 0.15, 0.25, 0.3, 0.5, 0.6, 0.8, 0.9}) {
            Device ramp{};
            ramp[ink] = level;
            colors.push_back(ramp);
        }
    return colors;
}

cmsCIELab affine(const Device& d)
{
    return kvtest::AffineDevice::lab(d[0], d[1], d[2]);
}

/// What the profile @p file says about device colours, absolute.
Measure profileOf(const QString& file, cmsUInt32Number format, double scale)
{
    const std::shared_ptr<void> device(cmsOpenProfileFromFile(file.toLocal8Bit().constData(), "r"),
                                       cmsCloseProfile);
    const std::shared_ptr<void> lab(cmsCreateLab4Profile(nullptr), cmsCloseProfile);
    const std::shared_ptr<void> transform(cmsCreateTransform(device.get(), format, lab.get(), TYPE_Lab_DBL,
                                                             INTENT_ABSOLUTE_COLORIMETRIC, cmsFLAGS_NOCACHE),
                                          cmsDeleteTransform);
    EXPECT_TRUE(transform);
    return [transform, scale](Device d) {
        for (double& value : d)
            value *= scale;
        cmsCIELab result;
        cmsDoTransform(transform.get(), d.data(), &result, 1);
        return result;
    };
}

const QString cmykFile = QStringLiteral("/usr/share/color/icc/ghostscript/default_cmyk.icc");
const QString srgbFile = QStringLiteral("/usr/share/color/icc/colord/sRGB.icc");

/// A print chart in CGATS: Lab, relative to D50.
QByteArray printChart(const Colors& colors, int channels, const Measure& measure, double scale = 100.0)
{
    QByteArray text = "CGATS.17\nBEGIN_DATA_FORMAT\n";
    text += channels == 4 ? "CMYK_C CMYK_M CMYK_Y CMYK_K" : "RGB_R RGB_G RGB_B";
    text += " LAB_L LAB_A LAB_B\nEND_DATA_FORMAT\nBEGIN_DATA\n";
    for (const Device& color : colors) {
        for (std::size_t i = 0; i < std::size_t(channels); ++i)
            text += QByteArray::number(color[i] * scale, 'g', 8) + ' ';
        const cmsCIELab lab = measure(color);
        for (const double value : {lab.L, lab.a, lab.b})
            text += QByteArray::number(value, 'f', 4) + ' ';
        text += '\n';
    }
    return text + "END_DATA\n";
}

/// A display chart in TI3: XYZ under the white of sRGB, D65, computed from its primaries.
QByteArray displayChart(const Colors& colors)
{
    const auto linear = [](double v) {
        return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    constexpr double matrix[3][3] = {{0.4123908, 0.3575843, 0.1804808},
                                     {0.2126390, 0.7151687, 0.0721923},
                                     {0.0193308, 0.1191948, 0.9505322}}; // IEC 61966-2-1
    QByteArray text =
        "CTI3\nDEVICE_CLASS \"DISPLAY\"\nBEGIN_DATA_FORMAT\nRGB_R RGB_G RGB_B XYZ_X XYZ_Y XYZ_Z\n"
        "END_DATA_FORMAT\nBEGIN_DATA\n";
    for (const Device& color : colors) {
        for (std::size_t i = 0; i < 3; ++i)
            text += QByteArray::number(100.0 * color[i], 'g', 8) + ' ';
        for (const auto& row : matrix) {
            double sum = 0.0;
            for (std::size_t i = 0; i < 3; ++i)
                sum += row[i] * linear(color[i]);
            text += QByteArray::number(100.0 * sum, 'f', 6) + ' ';
        }
        text += '\n';
    }
    return text + "END_DATA\n";
}

class ChartTest : public testing::Test
{
protected:
    Result<GamutSource> open(const QByteArray& text, const char* setting = "")
    {
        QFile file(m_folder.filePath(QStringLiteral("chart.txt")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        return GamutSource::open(file.fileName() + QLatin1String(setting));
    }

    GamutSource opened(const QByteArray& text, const char* setting = "")
    {
        return open(text, setting)
            .or_else([](const Problem& problem) { // or_else keeps the problem
                ADD_FAILURE() << ProblemText::english(problem).toStdString();
            })
            .value();
    }

    static double volumeOf(const GamutSource& source, KVGamut::Settings settings = {})
    {
        return source.compute(settings).value().report().volume;
    }

    static double volumeOfProfile(const QString& name) { return volumeOf(GamutSource::open(name).value()); }

private:
    QTemporaryDir m_folder;
};

// --- Against devices that are known ------------------------------------------------------------------

TEST_F(ChartTest, ofAnAffineDeviceIsExact)
{
    for (const int levels : {2, 3, 5, 9}) {
        const GamutSource source = opened(printChart(gridOf(evenLevels(levels)), 3, affine));
        EXPECT_NEAR(volumeOf(source), kvtest::AffineDevice::volume, 2e-3 * kvtest::AffineDevice::volume)
            << levels;
        EXPECT_LT(source.chart()->errorP95, 0.2) << levels;
    }
}

TEST_F(ChartTest, ofAPressHasTheVolumeOfItsProfile)
{
    const QByteArray chart = printChart(inkCombinations(), 4, profileOf(cmykFile, TYPE_CMYK_DBL, 100.0));
    const double absolute = volumeOfProfile(cmykFile);
    EXPECT_NEAR(volumeOf(opened(chart)), absolute, 0.005 * absolute);
    const double relative = volumeOfProfile(cmykFile + QStringLiteral("@relative"));
    EXPECT_NEAR(volumeOf(opened(chart, "@relative")), relative, 0.005 * relative);
}

TEST_F(ChartTest, ofADisplayHasTheVolumeOfItsSpace)
{
    const double whole = volumeOfProfile(QStringLiteral("sRGB"));
    EXPECT_NEAR(volumeOf(opened(displayChart(gridOf(evenLevels(9))))), whole, 0.006 * whole);
    EXPECT_NEAR(volumeOf(opened(displayChart(gridOf(evenLevels(5))))), whole, 0.02 * whole);
}

TEST_F(ChartTest, ofADisplayKeepsItsWhite)
{
    const GamutSource source = opened(displayChart(gridOf(evenLevels(5))));
    const KVGamut::GamutObject adapted = source.compute({}).value();
    EXPECT_NEAR(double(adapted.whitePoint().L), 100.0, 0.02);
    EXPECT_NEAR(double(adapted.whitePoint().b), 0.0, 0.05);
    KVGamut::Settings settings;
    settings.adaptation = KVGamut::Adaptation::None;
    // D65 relative to D50, by CIE 15
    EXPECT_NEAR(double(source.compute(settings).value().whitePoint().b), -19.4, 0.1);
}

TEST_F(ChartTest, keepsItsPaperWithTheAbsoluteIntent)
{
    const Measure press = profileOf(cmykFile, TYPE_CMYK_DBL, 100.0);
    const cmsCIELab paper = press({});
    const KVGamut::LabPoint white =
        opened(printChart(inkCombinations(), 4, press)).compute({}).value().whitePoint();
    EXPECT_NEAR(double(white.L), paper.L, 0.05);
    EXPECT_NEAR(double(white.a), paper.a, 0.05);
    EXPECT_NEAR(double(white.b), paper.b, 0.05);
}

// --- Device values -----------------------------------------------------------------------------------

TEST_F(ChartTest, isTheSameInEveryScaleOfDeviceValues)
{
    for (const double scale : {1.0, 100.0, 255.0})
        EXPECT_NEAR(volumeOf(opened(printChart(gridOf(evenLevels(3)), 3, affine, scale))),
                    kvtest::AffineDevice::volume, 2e-3 * kvtest::AffineDevice::volume)
            << scale;
}

TEST_F(ChartTest, averagesPatchesWithEqualDeviceValues)
{
    Colors colors = gridOf(evenLevels(3));
    colors.push_back({0.5, 0.5, 0.5, 0.0});
    int count = 0;
    const Measure noisy = [&count](const Device& d) { // the middle is measured twice: 4 too light, 4 too dark
        cmsCIELab lab = affine(d);
        if (d == Device{0.5, 0.5, 0.5, 0.0})
            lab.L += count++ == 0 ? 4.0 : -4.0;
        return lab;
    };
    const GamutSource source = opened(printChart(colors, 3, noisy));
    EXPECT_EQ(source.chart()->measured, 28);
    EXPECT_EQ(source.chart()->different, 27);
    EXPECT_LT(source.chart()->errorP95, 0.5);
}

TEST_F(ChartTest, readsDeviceValuesOfCxf)
{
    QByteArray text = "<?xml version=\"1.0\"?><CxF><Resources><ObjectCollection>";
    for (const Device& color : gridOf(evenLevels(3))) {
        const cmsCIELab lab = affine(color);
        const auto tag = [&text](const char* name, double value) {
            text += QByteArray("<") + name + ">" + QByteArray::number(value) + "</" + name + ">";
        };
        text += "<Object Name=\"p\"><ColorValues><ColorCIELab>";
        tag("L", lab.L);
        tag("A", lab.a);
        tag("B", lab.b);
        text += "</ColorCIELab></ColorValues><DeviceColorValues><ColorRGB>";
        tag("R", 255 * color[0]);
        tag("G", 255 * color[1]);
        tag("B", 255 * color[2]);
        text += "</ColorRGB></DeviceColorValues></Object>";
    }
    const GamutSource source = opened(text + "</ObjectCollection></Resources></CxF>");
    EXPECT_NEAR(volumeOf(source), kvtest::AffineDevice::volume, 2e-3 * kvtest::AffineDevice::volume);
}

// --- What is missing ---------------------------------------------------------------------------------

TEST_F(ChartTest, ofAWholeGridHasNoHoles)
{
    const ChartFacts facts = *opened(printChart(gridOf(evenLevels(3)), 3, affine)).chart();
    EXPECT_EQ(facts.missingCorners, 0);
    EXPECT_EQ(facts.uncoveredShare, 0.0);
    EXPECT_NEAR(facts.largestGap, 0.25, 1e-9); // half of the step
    EXPECT_EQ(facts.levels, (QList<int>{3, 3, 3}));
    EXPECT_EQ(facts.notes().size(), 1);
}

TEST_F(ChartTest, warnsOfAMissingCorner)
{
    Colors colors = gridOf(evenLevels(3));
    std::erase(colors, Device{0.0, 0.0, 0.0, 0.0});
    const ChartFacts facts = *opened(printChart(colors, 3, affine)).chart();
    EXPECT_EQ(facts.missingCorners, 1);
    // the eighth of the device space in which every channel is below one half
    EXPECT_NEAR(facts.uncoveredShare, 0.125, 0.03);
    EXPECT_NEAR(facts.largestGap, 0.5, 1e-9);
    EXPECT_THAT(facts.notes().value(1).toStdString(),
                testing::HasSubstr("1 of the 8 combinations of 0 and 100 % are not in the chart"));
}

TEST_F(ChartTest, saysTheErrorOfItsInterpolation)
{
    const Measure curved = [](const Device& d) {
        cmsCIELab lab = affine(d);
        lab.L += 8.0 * std::sin(2.0 * M_PI * 4.0 * d[0]); // unseen between five levels
        return lab;
    };
    const double coarse = opened(printChart(gridOf(evenLevels(8)), 3, curved)).chart()->errorMedian;
    const double fine = opened(printChart(gridOf(evenLevels(17)), 3, curved)).chart()->errorMedian;
    EXPECT_GT(coarse, 0.5);
    EXPECT_LT(fine, coarse);
}

TEST_F(ChartTest, isRefusedIfAChannelHardlyVaries)
{
    Colors colors = gridOf(evenLevels(3));
    for (Device& color : colors)
        color[2] *= 0.1;
    EXPECT_EQ(open(printChart(colors, 3, affine, 255.0)).error().code,
              Problem::Code(ProblemCode::ChartTooSmall));
    EXPECT_EQ(open(printChart({{0, 0, 0, 0}, {1, 1, 1, 0}}, 3, affine)).error().code,
              Problem::Code(ProblemCode::ChartTooSmall));
}

TEST_F(ChartTest, isAListOfColoursWithoutDeviceValues)
{
    const GamutSource source =
        opened("CGATS.17\nBEGIN_DATA_FORMAT\nLAB_L LAB_A LAB_B\nEND_DATA_FORMAT\nBEGIN_DATA\n"
               "50 0 0\n60 0 0\n50 10 0\n50 0 10\nEND_DATA\n");
    EXPECT_FALSE(source.chart());
    EXPECT_EQ(source.kind(), QStringLiteral("hull of 4 colours"));
}

// --- Against a profile -------------------------------------------------------------------------------

TEST_F(ChartTest, isPredictedByTheProfileOfItsDevice)
{
    const KVProfilePtr press = GamutSource::open(cmykFile).value().profile();
    const Measure exact = profileOf(cmykFile, TYPE_CMYK_DBL, 100.0);
    const GamutSource same = opened(printChart(inkCombinations(), 4, exact));
    EXPECT_LT(ChartComparison::of(*same.measured(), press, cmykFile).value().max, 0.01);

    const Measure redder = [&exact](const Device& d) { // one patch, the paper, differs
        cmsCIELab lab = exact(d);
        lab.a += d == Device{} ? 4.0 : 0.0;
        return lab;
    };
    const GamutSource other = opened(printChart(inkCombinations(), 4, redder));
    const ChartComparison found = ChartComparison::of(*other.measured(), press, cmykFile).value();
    const cmsCIELab paper = exact({}), measured = redder({});
    EXPECT_NEAR(found.max, cmsCIE2000DeltaE(&paper, &measured, 1, 1, 1), 0.01);
    EXPECT_NEAR(double(found.worst.a), measured.a, 0.01);
    EXPECT_LT(found.p95, 0.01);
}

TEST_F(ChartTest, isNotPredictedByAProfileWithOtherChannels)
{
    const GamutSource chart = opened(printChart(gridOf(evenLevels(3)), 3, affine));
    EXPECT_EQ(ChartComparison::of(*chart.measured(), GamutSource::open(cmykFile).value().profile(), cmykFile)
                  .error()
                  .code,
              Problem::Code(ProblemCode::PointSpaceDiffers));
}

TEST_F(ChartTest, findsTheColourFarthestOutsideAnotherGamut)
{
    const Measure lighter = [](const Device& d) {
        cmsCIELab lab = affine(d);
        lab.L = 10.0 + 0.8 * lab.L;
        return lab;
    };
    const Measure shifted = [&lighter](const Device& d) {
        cmsCIELab lab = lighter(d);
        lab.L += 6.0;
        return lab;
    };
    const auto low = opened(printChart(gridOf(evenLevels(3)), 3, lighter)).compute({}).value();
    const auto high = opened(printChart(gridOf(evenLevels(3)), 3, shifted)).compute({}).value();
    EXPECT_LT(Farthest::of(low, low).distance, 0.01f);
    const Farthest farthest = Farthest::of(high, low); // its white, the top of the solid
    EXPECT_NEAR(farthest.distance, 6.0f, 0.1f);
    EXPECT_NEAR(farthest.place.L, 96.0f, 0.1f);
}

TEST_F(ChartTest, findsTheFarthestColourOfEachSectorOfHue)
{
    // a* 4 higher where it is positive: red is farther out, green is not
    const Measure redder = [](const Device& d) {
        cmsCIELab lab = affine(d);
        lab.a += 4.0;
        return lab;
    };
    const auto first = opened(printChart(gridOf(evenLevels(3)), 3, affine)).compute({}).value();
    const auto second = opened(printChart(gridOf(evenLevels(3)), 3, redder)).compute({}).value();
    const auto sectors = Farthest::byHue(second, first);
    ASSERT_EQ(sectors.size(), 12u);
    float largest = 0.0f;
    for (std::size_t i = 0; i < sectors.size(); ++i) {
        largest = std::max(largest, sectors[i].distance);
        if (sectors[i].distance == 0.0f)
            continue;
        double hue = std::atan2(double(sectors[i].place.b), double(sectors[i].place.a)) * 180.0 / M_PI;
        hue += hue < 0.0 ? 360.0 : 0.0;
        EXPECT_GE(hue, 30.0 * double(i));
        EXPECT_LT(hue, 30.0 * double(i + 1));
    }
    EXPECT_EQ(largest, Farthest::of(second, first).distance);
    EXPECT_GT(sectors[0].distance, 1.0f);
    EXPECT_LT(sectors[6].distance, 0.05f); // green, 180 to 210 degrees, moved inwards
    EXPECT_GT(Farthest::byHue(first, second)[6].distance, 1.0f);
}

TEST_F(ChartTest, canBeCancelled)
{
    const KVCompletionProtocolPtr task = KVCompletionProtocol::createTask(QString());
    PointSet set;
    for (const Device& color : gridOf(evenLevels(3))) {
        MeasuredPoint point;
        const cmsCIELab lab = affine(color);
        point.lab = {float(lab.L), float(lab.a), float(lab.b)};
        std::copy(color.begin(), color.end(), point.device.begin());
        point.deviceChannels = 3;
        set.points.append(point);
    }
    ASSERT_TRUE(ChartProfile::of(set, task));
    task->cancel();
    const Result<ChartProfile> cancelled = ChartProfile::of(set, task);
    ASSERT_FALSE(cancelled);
    EXPECT_TRUE(cancelled.error().isCancelled());
}

} // namespace
