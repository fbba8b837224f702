// SPDX-License-Identifier: Apache-2.0
#include "app/support/PointFileTest.h"

#include <array>

namespace {

// --- Device colours -----------------------------------------------------------------------------------

PointOptions inSpace(const char* space)
{
    PointOptions options;
    options.space = QLatin1String(space);
    return options;
}

const LabPoint srgbRed{54.29f, 80.80f, 69.89f}; // of IEC 61966-2-1, adapted to D50 with the Bradford matrix

TEST_F(PointFileTest, refusesRgbWithoutItsColourSpace)
{
    for (const char* table : {"R,G,B,name\n255,0,0,red\n", "hex\n#ff0000\n", "Red;Green;Blue\n1;0;0\n"})
        EXPECT_THAT(problem(table),
                    testing::StartsWith("RGB values without their colour space; declare it: "))
            << table;
    EXPECT_THAT(problem("C,M,Y,K\n100,0,0,0\n"),
                testing::StartsWith("CMYK values without their colour space"));
}

TEST_F(PointFileTest, readsRgbOfADeclaredSpace)
{
    const ProblemCode scale = ProblemCode::DeviceScaleTaken;
    for (const char* table : {"R,G,B,name\n255,0,0,red\n", "name,RGB_R,RGB_G,RGB_B\nred,1,0,0\n",
                              "Blue,Green,Red,name\n0,0,255,red\n"}) {
        const auto found = points(table, {scale}, inSpace("sRGB"));
        ASSERT_EQ(found.size(), 1) << table;
        expectNear(found[0].lab, srgbRed, 0.05f);
        EXPECT_EQ(found[0].name, QStringLiteral("red"));
        EXPECT_EQ(found[0].device, (std::array<float, 4>{1, 0, 0, 0}));
    }
    expectNear(points("# space: srgb\nR,G,B\n255,0,0\n", {scale}).value(0).lab, srgbRed, 0.05f);
    expectNear(points("sRGB_R,sRGB_G,sRGB_B\n255,0,0\n", {scale}).value(0).lab, srgbRed, 0.05f);
    EXPECT_GT(points("R,G,B\n0,255,0\n", {scale}, inSpace("AdobeRGB")).value(0).lab.a, -140.0f);
    EXPECT_LT(points("R,G,B\n0,255,0\n", {scale}, inSpace("AdobeRGB")).value(0).lab.a, -110.0f);
}

TEST_F(PointFileTest, readsHexadecimalColours)
{
    const auto found =
        points("hex,name\n#ff0000,red\n# a comment\nF00,short\n#f00,with\n", {}, inSpace("sRGB"));
    ASSERT_EQ(found.size(), 3);
    for (const MeasuredPoint& point : found)
        expectNear(point.lab, srgbRed, 0.05f);
    EXPECT_EQ(found[2].name, QStringLiteral("with"));
}

TEST_F(PointFileTest, saysHowDeviceValuesWereRead)
{
    const Result<PointSet> set = read("R,G,B\n255,0,0\n", inSpace("sRGB"));
    ASSERT_TRUE(set);
    EXPECT_EQ(set->reading.values, QStringLiteral("RGB"));
    EXPECT_EQ(set->reading.space, QStringLiteral("sRGB"));
    EXPECT_EQ(set->reading.intent, QStringLiteral("absolute"));
    EXPECT_EQ(ProblemText::english(set->notes.value(0).about({})),
              QStringLiteral("the RGB values are taken as numbers from 0 to 255"));
}

TEST_F(PointFileTest, refusesAProfileOfAnotherSpace)
{
    EXPECT_EQ(problem("C,M,Y,K\n100,0,0,0\n", inSpace("sRGB")), "'sRGB' is not a profile for CMYK values");
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("x.icc")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(200, 'x'));
    file.close();
    PointOptions options;
    options.space = file.fileName();
    const Result<PointSet> set = read("R,G,B\n1,0,0\n", options);
    ASSERT_FALSE(set);
    EXPECT_EQ(set.error().code, Problem::Code(ProblemCode::PointSpaceUnusable));
    EXPECT_TRUE(set.error().cause);
}

TEST_F(PointFileTest, refusesUnknownDeclarations)
{
    EXPECT_THAT(problem("# space: fRGB\nR,G,B\n1,0,0\n"),
                testing::StartsWith("line 1: 'fRGB' is not known; known are sRGB, AdobeRGB"));
    EXPECT_THAT(problem("# white: D40\nL,a,b\n1,0,0\n"), testing::StartsWith("line 1: 'D40' is not known"));
}

// --- White and scale ----------------------------------------------------------------------------------

TEST_F(PointFileTest, refusesXyzOfAnUnclearScale)
{
    EXPECT_THAT(
        problem("X,Y,Z\n0.4,0.5,0.3\n"),
        testing::StartsWith("the largest XYZ value is 0.5, so it is not clear whether white has Y 1"));
    EXPECT_EQ(points("# white-y: 1\nX,Y,Z\n0.9642,1,0.8249\n").size(), 1);
    PointOptions options;
    options.whiteY = 1.0;
    expectNear(points("X,Y,Z\n0.2,0.12,0.03\n", {}, options).value(0).lab, cieLab(20, 12, 3), 0.02f);
    options.whiteY = 100.0;
    expectNear(points("X,Y,Z\n0.2,0.12,0.03\n", {}, options).value(0).lab, cieLab(0.2, 0.12, 0.03), 0.02f);
}

TEST_F(PointFileTest, adaptsValuesForADeclaredWhite)
{
    // the white of the values becomes that of D50
    expectNear(points("# white: D65\nX,Y,Z\n95.047,100,108.883\n", {ProblemCode::PointsAdapted}).value(0).lab,
               LabPoint{100, 0, 0}, 0.02f);
    // sRGB red: XYZ of IEC 61966-2-1 for D65
    expectNear(points("# white: D65\nX,Y,Z\n41.24,21.26,1.93\n", {ProblemCode::PointsAdapted}).value(0).lab,
               srgbRed, 0.05f);
    PointOptions options;
    options.white = QStringLiteral("D65");
    // its Lab for D65, by the formulas of CIE 15
    expectNear(points("L,a,b\n53.24,80.09,67.20\n", {ProblemCode::PointsAdapted}, options).value(0).lab,
               srgbRed, 0.1f);
}

TEST_F(PointFileTest, readsTheWhiteThatCgatsStates)
{
    const QByteArray sheet = "CGATS.17\nWEIGHTING_FUNCTION \"ILLUMINANT, D65\"\nWEIGHTING_FUNCTION "
                             "\"OBSERVER, 10 degree\"\nBEGIN_DATA_FORMAT\nXYZ_X XYZ_Y XYZ_Z\n"
                             "END_DATA_FORMAT\nBEGIN_DATA\n41.24 21.26 1.93\nEND_DATA\n";
    expectNear(points(sheet, {ProblemCode::ObserverDiffers, ProblemCode::PointsAdapted}).value(0).lab,
               srgbRed, 0.05f);
}

// --- Spectra ------------------------------------------------------------------------------------------

/// A table with one spectrum: @p reflectance for each wavelength.
template <typename Reflectance>
QByteArray spectrumTable(int first, int last, int step, Reflectance reflectance,
                         const QByteArray& prefix = {})
{
    QByteArray heading = "name", row = "x";
    for (int wavelength = first; wavelength <= last; wavelength += step) {
        heading += ',' + prefix + QByteArray::number(wavelength);
        row += ',' + QByteArray::number(reflectance(wavelength), 'f', 6);
    }
    return heading + '\n' + row + '\n';
}

TEST_F(PointFileTest, aConstantReflectanceIsGrey)
{
    for (const int step : {1, 5, 10, 20})
        for (const char* prefix : {"", "nm", "SPECTRAL_NM", "SPEC_", "R_"}) {
            const auto found = points(spectrumTable(
                                          380, 720, step, [](int) { return 0.5; }, prefix),
                                      {ProblemCode::SpectraComputed});
            ASSERT_EQ(found.size(), 1) << step << prefix;
            expectNear(found[0].lab, LabPoint{76.0693f, 0, 0}, 0.002f); // 116 cbrt(0.5) - 16
        }
}

TEST_F(PointFileTest, percentagesAndFractionsAreTheSameSpectrum)
{
    const auto slope = [](int wavelength) { return (wavelength - 300) / 500.0; };
    const auto fractions = points(spectrumTable(380, 730, 10, slope), {ProblemCode::SpectraComputed});
    const auto percentages = points(spectrumTable(380, 730, 10, [&](int w) { return 100 * slope(w); }),
                                    {ProblemCode::SpectraComputed});
    expectNear(fractions.value(0).lab, percentages.value(0).lab, 0.01f);
}

TEST_F(PointFileTest, refusesSpectraThatDoNotSuffice)
{
    for (const auto& [first, last, step] : {std::array{420, 700, 10}, {400, 680, 10}, {380, 740, 40}})
        EXPECT_THAT(problem(spectrumTable(
                        first, last, step, [](int) { return 0.5; }, "nm")),
                    HasSubstr("are not enough; needed are equal steps of at most 20 nm from 400 to 700 nm"));
}

TEST_F(PointFileTest, readsSpectraFromCgats)
{
    QByteArray columns = "SAMPLE_ID", row = "1";
    for (int wavelength = 380; wavelength <= 730; wavelength += 10) {
        columns += " SPECTRAL_NM" + QByteArray::number(wavelength);
        row += " 0.5";
    }
    expectNear(points(sheet(columns, {row}), {ProblemCode::SpectraComputed}).value(0).lab,
               LabPoint{76.0693f, 0, 0}, 0.002f);
}

TEST_F(PointFileTest, readsRgbOfAChartInPercent)
{
    const auto found =
        points(sheet("SAMPLE_ID RGB_R RGB_G RGB_B", {"1 100 0 0"}, "CTI1"), {}, inSpace("sRGB"));
    expectNear(found.value(0).lab, srgbRed, 0.05f);
}

} // namespace
