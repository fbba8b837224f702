// SPDX-License-Identifier: Apache-2.0
// Where colours come from and what they are relative to: tables and their fallbacks, black-point
// compensation, media white and chromatic adaptation.
#include "Problems.h"
#include "TestProfiles.h"

#include <engine/mesh/MeshVolume.h>
#include <engine/profile/DeviceTransform.h>

#include <gtest/gtest.h>

#include <QtCore/QFile>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <random>
#include <vector>

using namespace testprofiles;
using KVGamut::Adaptation;
using KVGamut::AdaptationSource;
using KVGamut::Settings;

namespace {

constexpr auto perceptual = KVVMRenderPerceptual;
constexpr auto relative = KVVMRenderRelativeColorimetric;
constexpr auto saturation = KVVMRenderSaturation;
constexpr auto absolute = KVVMRenderAbsoluteColorimetric;

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
}

KVGamut::GamutObject computed(const QByteArray& bytes, const Settings& settings)
{
    KVGamut::GamutObject gamut;
    gamut.init(opened(bytes), settings);
    return gamut;
}

Settings with(KVVMRenderType intent, bool blackPoint = false, Adaptation adaptation = Adaptation::Full,
              int gridPoints = -1)
{
    return {intent, blackPoint, gridPoints, adaptation};
}

std::vector<double> randomDevice(std::size_t channels, std::size_t colours, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> any(-0.3, 1.3); // many are on faces and edges
    std::vector<double> device(channels * colours);
    for (double& value : device)
        value = std::round(65535.0 * std::clamp(any(random), 0.0, 1.0)) / 65535.0;
    return device;
}

/// The bytes of a profile to which edit() has been applied by Little CMS.
QByteArray edited(const QByteArray& bytes, const std::function<void(cmsHPROFILE)>& edit)
{
    const cmsHPROFILE profile =
        cmsOpenProfileFromMem(bytes.constData(), static_cast<cmsUInt32Number>(bytes.size()));
    EXPECT_TRUE(profile);
    edit(profile);
    const QByteArray result = saved(profile);
    cmsCloseProfile(profile);
    return result;
}

/// A table of 16-bit numbers with 4 inputs and 255 nodes each, in 100 bytes.
QByteArray brokenTable()
{
    return QByteArray("mft2\0\0\0\0\4\3\xff\0", 12) + QByteArray(88, '\0');
}

QByteArray withRawTag(const QByteArray& bytes, cmsTagSignature tag, const QByteArray& content)
{
    return edited(bytes, [&](cmsHPROFILE profile) {
        cmsWriteTag(profile, tag, nullptr); // removes it
        EXPECT_TRUE(
            cmsWriteRawTag(profile, tag, content.constData(), static_cast<cmsUInt32Number>(content.size())));
    });
}

/// A box whose lightness ends at @p top, which tells tables apart.
DeviceMap boxTo(double top)
{
    return [top](const std::vector<double>& d) { return Lab{top * d[0], -40 + 80 * d[1], -40 + 80 * d[2]}; };
}

using Tables = std::vector<std::pair<const char*, double>>;

/// An RGB profile with the given tables; each is a box up to the given lightness. The signatures of the other
/// tables are changed to unknown ones.
QByteArray boxProfile(const Tables& tables)
{
    static constexpr std::array names{"A2B0", "A2B1", "A2B2"};
    std::array<double, 3> tops{11, 12, 13};
    for (std::size_t i = 0; i < tables.size(); ++i)
        tops[i] = tables[i].second;
    QByteArray bytes = intentProfile(cmsSigRgbData, 3, boxTo(tops[0]), boxTo(tops[1]), boxTo(tops[2]));
    for (std::size_t i = 0; i < names.size(); ++i) {
        const char digit = static_cast<char>('0' + i);
        bytes.replace(bytes.indexOf(QByteArray(names[i], 4), 128), 4, QByteArray("new") + digit);
    }
    for (std::size_t i = 0; i < tables.size(); ++i)
        bytes.replace(bytes.indexOf(QByteArray("new") + static_cast<char>('0' + i), 128), 4, tables[i].first);
    return bytes;
}

struct Used
{
    QString table;
    bool isFallback;
    double top; ///< lightness of the box

    bool operator==(const Used& other) const
    {
        return table == other.table && isFallback == other.isFallback && std::abs(top - other.top) < 0.01;
    }
};
void PrintTo(const Used& used, std::ostream* out)
{
    *out << qPrintable(used.table) << (used.isFallback ? " (fallback)" : "") << " L* " << used.top;
}

/// A table of floating-point numbers: L* is 80 times the first channel, a* and b* are 40 times the others.
void writeFloatTable(cmsHPROFILE profile, cmsTagSignature tag)
{
    const std::array<cmsFloat64Number, 9> scale{80, 0, 0, 0, 40, 0, 0, 0, 40};
    cmsPipeline* pipeline = cmsPipelineAlloc(nullptr, 3, 3);
    cmsPipelineInsertStage(pipeline, cmsAT_END, cmsStageAllocMatrix(nullptr, 3, 3, scale.data(), nullptr));
    EXPECT_TRUE(cmsWriteTag(profile, tag, pipeline));
    cmsPipelineFree(pipeline);
}

Used usedBy(const QByteArray& bytes, KVVMRenderType intent)
{
    const KVGamut::GamutObject gamut = computed(bytes, with(intent, false, Adaptation::Full, 5));
    EXPECT_EQ(gamut.problem(), std::nullopt);
    const KVGamut::Report report = gamut.report();
    return {report.conversion.table, report.conversion.tableIsFallback, double(report.white.L)};
}

Used used(const char* table, bool isFallback, double top)
{
    return {QLatin1String(table), isFallback, top};
}

} // namespace

// --- Black point -----------------------------------------------------------------------------------

TEST(BlackPoint, nothingIsBelowZeroAfterCompensation)
{
    for (const auto intent : {perceptual, relative, saturation}) {
        const KVGamut::GamutObject gamut = computed(bytesOf(printerCmyk()), with(intent, true));
        ASSERT_GT(gamut.faceCount(), 0);
        for (const KVGamut::LabPoint& vertex : gamut.mesh().lab)
            ASSERT_GE(vertex.L, 0.0f);
        EXPECT_GE(gamut.blackPoint().L, 0.0f);
    }
}

// The reference is the conversion of Little CMS to Lab with 16 bits. Its steps are 0.0015 in L* and 0.004 in
// a* and b*.
TEST(BlackPoint, isClippedAsIntegerConversionsDo)
{
    const QByteArray bytes = bytesOf(printerCmyk());
    const cmsHPROFILE profile =
        cmsOpenProfileFromMem(bytes.constData(), static_cast<cmsUInt32Number>(bytes.size()));
    const cmsHPROFILE lab = cmsCreateLab2Profile(nullptr);
    const cmsHTRANSFORM integers =
        cmsCreateTransform(profile, TYPE_CMYK_16, lab, TYPE_LabV2_16, INTENT_RELATIVE_COLORIMETRIC,
                           cmsFLAGS_NOOPTIMIZE | cmsFLAGS_NOCACHE | cmsFLAGS_BLACKPOINTCOMPENSATION);
    ASSERT_TRUE(integers);
    const auto transform = velmora::DeviceTransform::create(bytes, relative, true).value();
    const std::vector<double> device = randomDevice(4, 4000, 1);
    const auto found =
        transform->toLab(std::vector<float>(device.begin(), device.end()), velmora::Task()).value();
    int clipped = 0;
    for (std::size_t i = 0; i < found.size(); ++i) {
        std::array<cmsUInt16Number, 4> inks{};
        for (std::size_t c = 0; c < 4; ++c)
            inks[c] = static_cast<cmsUInt16Number>(std::lround(65535.0 * device[4 * i + c]));
        std::array<cmsUInt16Number, 3> encoded{};
        cmsDoTransform(integers, inks.data(), encoded.data(), 1);
        cmsCIELab expected;
        cmsLabEncoded2FloatV2(&expected, encoded.data());
        ASSERT_NEAR(found[i].L, expected.L, 0.01);
        ASSERT_NEAR(found[i].a, expected.a, 0.01);
        ASSERT_NEAR(found[i].b, expected.b, 0.01);
        clipped += found[i].L == 0.0 && std::hypot(found[i].a, found[i].b) > 1.0;
    }
    EXPECT_GT(clipped, 100);
    cmsDeleteTransform(integers);
    cmsCloseProfile(lab);
    cmsCloseProfile(profile);
}

TEST(BlackPoint, thatWasMappedIsReported)
{
    const QByteArray bytes = bytesOf(printerCmyk());
    const cmsHPROFILE profile =
        cmsOpenProfileFromMem(bytes.constData(), static_cast<cmsUInt32Number>(bytes.size()));
    for (const auto intent : {perceptual, relative, saturation}) {
        cmsCIEXYZ black;
        ASSERT_TRUE(cmsDetectBlackPoint(&black, profile, static_cast<cmsUInt32Number>(intent), 0));
        cmsCIELab expected;
        cmsXYZ2Lab(nullptr, &expected, &black);
        ASSERT_GT(expected.L, 5.0);
        const auto report = computed(bytes, with(intent, true, Adaptation::Full, 5)).report();
        ASSERT_TRUE(report.conversion.mappedBlack);
        EXPECT_NEAR(report.conversion.mappedBlack->L, expected.L, 0.001);
        EXPECT_NEAR(report.conversion.mappedBlack->a, expected.a, 0.001);
        EXPECT_NEAR(report.conversion.mappedBlack->b, expected.b, 0.001);
    }
    cmsCloseProfile(profile);
}

TEST(BlackPoint, isNotReportedWithoutCompensation)
{
    const QByteArray bytes = bytesOf(printerCmyk());
    EXPECT_FALSE(computed(bytes, with(relative, false, Adaptation::Full, 5)).report().conversion.mappedBlack);
    EXPECT_FALSE(computed(bytes, with(absolute, true, Adaptation::Full, 5)).report().conversion.mappedBlack);
}

TEST(BlackPoint, clippedColoursAreInsideTheGamut)
{
    const QByteArray bytes = bytesOf(printerCmyk());
    const KVGamut::GamutObject gamut = computed(bytes, with(relative, true));
    const auto transform = velmora::DeviceTransform::create(bytes, relative, true).value();
    const std::vector<double> device = randomDevice(4, 20'000, 2);
    const auto colours =
        transform->toLab(std::vector<float>(device.begin(), device.end()), velmora::Task()).value();
    int outside = 0;
    for (const velmora::Vec3& colour : colours) {
        const std::array<float, 3> lab{float(colour.L), float(colour.a), float(colour.b)};
        const float distance = gamut.nearest(lab.data()).distance;
        outside += distance > 0.5f;
        ASSERT_LT(distance, 1.5f);
    }
    EXPECT_LE(outside, 20);
}

namespace {

using Vec = std::array<double, 3>;

double determinant(const Vec& p, const Vec& q, const Vec& r)
{
    return p[0] * (q[1] * r[2] - q[2] * r[1]) - p[1] * (q[0] * r[2] - q[2] * r[0]) +
           p[2] * (q[0] * r[1] - q[1] * r[0]);
}

/// The volume that the image of the surface of the unit cube encloses, with @p steps on each edge.
double cubeImageVolume(const std::function<Vec(const Vec&)>& map, int steps)
{
    double sum = 0.0;
    for (std::size_t axis = 0; axis < 3; ++axis)
        for (const double side : {0.0, 1.0}) {
            std::vector<Vec> images;
            for (int i = 0; i <= steps; ++i)
                for (int j = 0; j <= steps; ++j) {
                    Vec device{};
                    device[axis] = side;
                    device[(axis + 1) % 3] = double(i) / steps;
                    device[(axis + 2) % 3] = double(j) / steps;
                    images.push_back(map(device));
                }
            const auto at = [&](int i, int j) {
                return images[static_cast<std::size_t>(i * (steps + 1) + j)];
            };
            const double sign = side > 0.5 ? 1.0 : -1.0;
            for (int i = 0; i < steps; ++i)
                for (int j = 0; j < steps; ++j)
                    sum += sign * (determinant(at(i, j), at(i + 1, j), at(i + 1, j + 1)) +
                                   determinant(at(i, j), at(i + 1, j + 1), at(i, j + 1)));
        }
    return std::abs(sum) / 6.0;
}

/// The limit for small steps, if the error falls with the square of the step.
double extrapolatedVolume(const std::function<Vec(const Vec&)>& map)
{
    const double coarse = cubeImageVolume(map, 96), fine = cubeImageVolume(map, 192);
    return fine + (fine - coarse) / 3.0;
}

Vec labOf(const cmsCIEXYZ& xyz, const cmsCIEXYZ& white)
{
    cmsCIELab lab;
    cmsXYZ2Lab(&white, &lab, &xyz);
    return {lab.L, lab.a, lab.b};
}

} // namespace

// A device whose black, L* 30 without colorant, is not its darkest colour, L* 10. The reference maps black to
// 0 as documented for black-point compensation, a linear map of X, Y and Z, and clips.
TEST(BlackPoint, clippedSolidHasTheVolumeOfTheMappedColours)
{
    const DeviceMap device = [](const std::vector<double>& d) {
        return Lab{30 + 70 * d[0] - 20 * (1 - d[0]) * d[1], 40 * d[1] - 20, 60 * d[2] - 30};
    };
    const cmsCIEXYZ white = *cmsD50_XYZ();
    const cmsCIELab blackLab{30, 0, 0};
    cmsCIEXYZ black;
    cmsLab2XYZ(nullptr, &black, &blackLab);
    const auto compensated = [&](const Vec& d) {
        const Lab lab = device({d[0], d[1], d[2]});
        const cmsCIELab before{lab[0], lab[1], lab[2]};
        cmsCIEXYZ xyz;
        cmsLab2XYZ(nullptr, &xyz, &before);
        const auto mapped = [](double value, double blackValue, double whiteValue) {
            return whiteValue * (value - blackValue) / (whiteValue - blackValue);
        };
        Vec result = labOf({mapped(xyz.X, black.X, white.X), mapped(xyz.Y, black.Y, white.Y),
                            mapped(xyz.Z, black.Z, white.Z)},
                           white);
        result[0] = std::max(result[0], 0.0);
        return result;
    };
    const double expected = extrapolatedVolume(compensated);
    const QByteArray bytes = tableProfile(cmsSigRgbData, 33, device);
    const KVGamut::Report report =
        gamutOf(opened(edited(bytes, [](cmsHPROFILE profile) { cmsSetProfileVersion(profile, 2.4); })), 65,
                perceptual, true)
            .report();
    ASSERT_EQ(report.problem, std::nullopt);
    EXPECT_NEAR(report.conversion.mappedBlack->L, 30.0, 0.01);
    EXPECT_NEAR(report.volume, expected, 0.002 * expected);
}

// --- Tables ----------------------------------------------------------------------------------------

TEST(ColorTable, ofTheIntentIsUsed)
{
    const QByteArray bytes = boxProfile({{"A2B0", 50}, {"A2B1", 60}, {"A2B2", 70}});
    EXPECT_EQ(usedBy(bytes, perceptual), used("A2B0", false, 50));
    EXPECT_EQ(usedBy(bytes, relative), used("A2B1", false, 60));
    EXPECT_EQ(usedBy(bytes, saturation), used("A2B2", false, 70));
    EXPECT_EQ(usedBy(bytes, absolute), used("A2B1", false, 60));
}

TEST(ColorTable, ofThePerceptualIntentReplacesMissingOnes)
{
    const QByteArray two = boxProfile({{"A2B0", 50}, {"A2B1", 60}});
    EXPECT_EQ(usedBy(two, saturation), used("A2B0", true, 50));
    EXPECT_EQ(usedBy(two, relative), used("A2B1", false, 60));
    const QByteArray one = boxProfile({{"A2B0", 50}});
    EXPECT_EQ(usedBy(one, perceptual), used("A2B0", false, 50));
    for (const auto intent : {relative, saturation, absolute})
        EXPECT_EQ(usedBy(one, intent), used("A2B0", true, 50));
}

TEST(ColorTable, ofAnotherIntentReplacesThePerceptualOne)
{
    const QByteArray relativeOnly = boxProfile({{"A2B1", 60}});
    EXPECT_EQ(usedBy(relativeOnly, perceptual), used("A2B1", true, 60));
    EXPECT_EQ(usedBy(relativeOnly, saturation), used("A2B1", true, 60));
    EXPECT_EQ(usedBy(relativeOnly, absolute), used("A2B1", false, 60));
    const QByteArray saturationOnly = boxProfile({{"A2B2", 70}});
    for (const auto intent : {perceptual, relative, absolute})
        EXPECT_EQ(usedBy(saturationOnly, intent), used("A2B2", true, 70));
    const QByteArray both = boxProfile({{"A2B2", 70}, {"A2B1", 60}});
    EXPECT_EQ(usedBy(both, perceptual), used("A2B1", true, 60));
}

TEST(ColorTable, ofAnotherIntentIsScaledToTheMediaWhite)
{
    const auto withPaper = [](const QByteArray& bytes) {
        return edited(bytes, [](cmsHPROFILE profile) {
            const cmsCIEXYZ paper{0.72, 0.75, 0.56};
            EXPECT_TRUE(cmsWriteTag(profile, cmsSigMediaWhitePointTag, &paper));
        });
    };
    const auto reportOf = [&](const char* table) {
        return computed(withPaper(boxProfile({{table, 100}})), with(absolute, false, Adaptation::Full, 9))
            .report();
    };
    const KVGamut::Report own = reportOf("A2B1"), other = reportOf("A2B2");
    EXPECT_NEAR(own.white.L, 89.4, 0.1); // Y 0.75
    EXPECT_NEAR(other.white.L, own.white.L, 0.01);
    EXPECT_NEAR(other.volume, own.volume, 1e-4 * own.volume);
}

TEST(ColorTable, isCalledMatrixIfThereIsNone)
{
    for (const auto intent : {perceptual, relative, saturation, absolute})
        EXPECT_EQ(usedBy(bytesOf(srgb()), intent), used("matrix", false, 100));
}

TEST(ColorTable, withFloatingPointNumbersIsPreferred)
{
    const QByteArray bytes = edited(boxProfile({{"A2B0", 50}, {"A2B1", 60}}),
                                    [](cmsHPROFILE profile) { writeFloatTable(profile, cmsSigDToB1Tag); });
    EXPECT_EQ(usedBy(bytes, relative), used("D2B1", false, 80));
    EXPECT_EQ(usedBy(bytes, perceptual), used("A2B0", false, 50));
    EXPECT_EQ(usedBy(bytes, absolute), used("A2B1", false, 60));
}

// The table of the absolute intent replaces the scaling to the media white.
TEST(ColorTable, ofTheAbsoluteIntentIsNotScaled)
{
    const QByteArray bytes = edited(boxProfile({{"A2B1", 60}}), [](cmsHPROFILE profile) {
        writeFloatTable(profile, cmsSigDToB3Tag);
        const cmsCIEXYZ paper{0.72, 0.75, 0.56};
        EXPECT_TRUE(cmsWriteTag(profile, cmsSigMediaWhitePointTag, &paper));
    });
    EXPECT_EQ(usedBy(bytes, absolute), used("D2B3", false, 80));
    const KVGamut::Report report = computed(bytes, with(absolute, false, Adaptation::Full, 9)).report();
    EXPECT_NEAR(report.volume, 80.0 * 40.0 * 40.0, 1.0);
}

// --- Damaged tags ----------------------------------------------------------------------------------

TEST(DamagedTag, thatIsNotUsedChangesNothing)
{
    const QByteArray sound = bytesOf(printerCmyk());
    const double volume = computed(sound, with(relative, false, Adaptation::Full, 9)).report().volume;
    for (const auto tag :
         {cmsSigGamutTag, cmsSigAToB2Tag, cmsSigBToA0Tag, cmsSigBToA1Tag, cmsSigPreview0Tag}) {
        const QByteArray bytes = withRawTag(sound, tag, brokenTable());
        const KVGamut::GamutObject gamut = computed(bytes, with(relative, false, Adaptation::Full, 9));
        EXPECT_EQ(gamut.problem(), std::nullopt);
        EXPECT_EQ(gamut.report().volume, volume);
    }
}

TEST(DamagedTag, isRefusedByTheIntentThatUsesIt)
{
    const QByteArray bytes = withRawTag(bytesOf(printerCmyk()), cmsSigAToB2Tag, brokenTable());
    const KVProblem damaged{KVProblemCode::DamagedTag, {QStringLiteral("A2B2")}, {}};
    EXPECT_EQ(computed(bytes, with(saturation)).problem(), damaged);
    EXPECT_EQ(KVProfileTableProblem(*opened(bytes), saturation), damaged);
    EXPECT_EQ(KVProfileTableProblem(*opened(bytes), relative), std::nullopt);
    EXPECT_EQ(codeOf(KVProfileTableProblem(*opened(bytes), static_cast<KVVMRenderType>(4))),
              KVProblemCode::UnknownIntent);
}

// Little CMS finds the black of a CMYK printer with the perceptual table from Lab to device.
TEST(DamagedTag, thatTellsTheBlackPointIsRefusedOnlyWithCompensation)
{
    const QByteArray bytes = withRawTag(bytesOf(printerCmyk()), cmsSigBToA0Tag, brokenTable());
    EXPECT_EQ(computed(bytes, with(relative, true)).problem(),
              (KVProblem{KVProblemCode::DamagedTag, {QStringLiteral("B2A0")}, {}}));
    EXPECT_EQ(computed(bytes, with(perceptual, true, Adaptation::Full, 5)).problem(), std::nullopt);
    EXPECT_EQ(computed(bytes, with(relative, false, Adaptation::Full, 5)).problem(), std::nullopt);
}

// Little CMS copies nine numbers, however few there are.
TEST(DamagedTag, ofTheAdaptationIsRefusedOnlyByTheAbsoluteIntent)
{
    QByteArray bytes = bytesOf(srgb());
    const auto entry = bytes.indexOf("chad", 128);
    bytes.replace(entry + 8, 4, QByteArray("\0\0\0\x10", 4)); // two numbers
    EXPECT_EQ(computed(bytes, with(absolute)).problem(),
              (KVProblem{KVProblemCode::DamagedTag, {QStringLiteral("chad")}, {}}));
    EXPECT_EQ(computed(bytes, with(relative, false, Adaptation::Full, 5)).problem(), std::nullopt);
}

TEST(DamagedTag, ofAnAdaptationWithoutInverseIsRefusedOnlyIfUndone)
{
    QByteArray bytes = bytesOf(srgb());
    const auto entry = bytes.indexOf("chad", 128);
    quint32 offset = 0;
    for (int i = 0; i < 4; ++i)
        offset = offset << 8 | static_cast<uchar>(bytes[entry + 4 + i]);
    bytes.replace(offset + 8, 36, QByteArray(36, '\0'));
    EXPECT_EQ(computed(bytes, with(absolute, false, Adaptation::None)).problem(),
              (KVProblem{KVProblemCode::DamagedTag, {QStringLiteral("chad")}, {}}));
    EXPECT_EQ(computed(bytes, with(relative, false, Adaptation::None, 5)).problem(), std::nullopt);
}

TEST(DamagedTag, beyondTheEndIsNotReplacedByAnotherTable)
{
    QByteArray bytes = boxProfile({{"A2B0", 50}, {"A2B1", 60}});
    const auto entry = bytes.indexOf("A2B1", 128);
    bytes.replace(entry + 8, 4, QByteArray("\x7f\0\0\0", 4));
    EXPECT_EQ(computed(bytes, with(relative)).problem(),
              (KVProblem{KVProblemCode::DamagedTag, {QStringLiteral("A2B1")}, {}}));
    EXPECT_EQ(usedBy(bytes, perceptual), used("A2B0", false, 50));
}

// --- White -----------------------------------------------------------------------------------------

namespace {

using Matrix = std::array<double, 9>;

/// Solves m x = v by Cramer's rule.
Vec solved(const Matrix& m, const Vec& v)
{
    const auto column = [&m](std::size_t c) { return Vec{m[c], m[3 + c], m[6 + c]}; };
    const double all = determinant(column(0), column(1), column(2));
    return {determinant(v, column(1), column(2)) / all, determinant(column(0), v, column(2)) / all,
            determinant(column(0), column(1), v) / all};
}

/// From device values to Lab by the matrix and the curves of a profile, without a transform of Little CMS.
class MatrixDevice
{
public:
    /// @param adaptation is undone; the identity undoes nothing
    MatrixDevice(const QByteArray& bytes, const Matrix* adaptation, const cmsCIEXYZ& white)
        : m_profile(cmsOpenProfileFromMem(bytes.constData(), static_cast<cmsUInt32Number>(bytes.size()))),
          m_white(white)
    {
        const std::array colorants{cmsSigRedColorantTag, cmsSigGreenColorantTag, cmsSigBlueColorantTag};
        const std::array curves{cmsSigRedTRCTag, cmsSigGreenTRCTag, cmsSigBlueTRCTag};
        for (std::size_t c = 0; c < 3; ++c) {
            const auto* xyz = static_cast<const cmsCIEXYZ*>(cmsReadTag(m_profile, colorants[c]));
            m_colorants[c] = {xyz->X, xyz->Y, xyz->Z};
            if (adaptation)
                m_colorants[c] = solved(*adaptation, m_colorants[c]);
            m_curves[c] = static_cast<const cmsToneCurve*>(cmsReadTag(m_profile, curves[c]));
        }
    }
    ~MatrixDevice() { cmsCloseProfile(m_profile); }
    Q_DISABLE_COPY_MOVE(MatrixDevice)

    Vec operator()(const Vec& device) const
    {
        Vec sum{};
        for (std::size_t c = 0; c < 3; ++c) {
            const double light = cmsEvalToneCurveFloat(m_curves[c], static_cast<float>(device[c]));
            for (std::size_t i = 0; i < 3; ++i)
                sum[i] += light * m_colorants[c][i];
        }
        return labOf({sum[0], sum[1], sum[2]}, m_white);
    }

private:
    cmsHPROFILE m_profile;
    cmsCIEXYZ m_white;
    std::array<Vec, 3> m_colorants{};
    std::array<const cmsToneCurve*, 3> m_curves{};
};

Matrix adaptationOf(const QByteArray& bytes)
{
    const cmsHPROFILE profile =
        cmsOpenProfileFromMem(bytes.constData(), static_cast<cmsUInt32Number>(bytes.size()));
    Matrix matrix{};
    const auto* tag = static_cast<const cmsFloat64Number*>(cmsReadTag(profile, cmsSigChromaticAdaptationTag));
    EXPECT_TRUE(tag);
    std::copy_n(tag, 9, matrix.begin());
    cmsCloseProfile(profile);
    return matrix;
}

/// Computed with a fine grid, so that the difference is that of the colours.
double volumeOf(const QByteArray& bytes, Adaptation adaptation)
{
    return computed(bytes, with(absolute, false, adaptation, 129)).report().volume;
}

} // namespace

TEST(Adaptation, undoneGivesTheVolumeOfTheMeasuredColours)
{
    for (const QString& path : {srgb(), adobeRgb()}) {
        const QByteArray bytes = bytesOf(path);
        const Matrix adaptation = adaptationOf(bytes);
        const MatrixDevice measured(bytes, &adaptation, *cmsD50_XYZ());
        const double expected =
            extrapolatedVolume([&measured](const Vec& device) { return measured(device); });
        EXPECT_NEAR(volumeOf(bytes, Adaptation::None), expected, 1e-4 * expected);
        // what other programs find for these spaces
        EXPECT_NEAR(expected, path == srgb() ? 899'100 : 1'311'021, 0.002 * expected);
    }
}

TEST(Adaptation, keptGivesTheVolumeOfTheProfileColours)
{
    for (const QString& path : {srgb(), adobeRgb()}) {
        const QByteArray bytes = bytesOf(path);
        const MatrixDevice stored(bytes, nullptr, *cmsD50_XYZ());
        const double expected = extrapolatedVolume([&stored](const Vec& device) { return stored(device); });
        EXPECT_NEAR(volumeOf(bytes, Adaptation::Full), expected, 1e-4 * expected);
    }
}

TEST(Adaptation, undoneRelativeToD65HasANeutralWhite)
{
    const QByteArray bytes = bytesOf(srgb());
    const cmsCIEXYZ d65{0.3127 / 0.3290, 1.0, 0.3583 / 0.3290};
    const Matrix adaptation = adaptationOf(bytes);
    const MatrixDevice measured(bytes, &adaptation, d65);
    const double expected = extrapolatedVolume([&measured](const Vec& device) { return measured(device); });
    EXPECT_NEAR(volumeOf(bytes, Adaptation::NoneD65), expected, 1e-4 * expected);
    const auto white = computed(bytes, with(absolute, false, Adaptation::NoneD65, 5)).whitePoint();
    EXPECT_NEAR(white.L, 100.0, 0.1);
    EXPECT_NEAR(white.a, 0.0, 0.1);
    EXPECT_NEAR(white.b, 0.0, 0.1);
}

// x 0.3127, y 0.3290 relative to D50.
TEST(Adaptation, undoneShowsTheWhiteOfTheDisplay)
{
    const Vec expected = labOf({0.3127 / 0.3290, 1.0, 0.3583 / 0.3290}, *cmsD50_XYZ());
    ASSERT_LT(expected[2], -15.0);
    // One profile has the tag "chad", the other one is of version 2 and has only its white.
    for (const QString& path : {srgb(), QStringLiteral("/usr/share/color/icc/ghostscript/srgb.icc")}) {
        const KVGamut::Report report =
            computed(bytesOf(path), with(absolute, false, Adaptation::None, 5)).report();
        EXPECT_NEAR(report.white.L, expected[0], 0.1);
        EXPECT_NEAR(report.white.a, expected[1], 0.1);
        EXPECT_NEAR(report.white.b, expected[2], 0.1);
        EXPECT_EQ(report.conversion.adaptation, Adaptation::None);
        EXPECT_EQ(report.conversion.adaptationSource,
                  path == srgb() ? AdaptationSource::Tag : AdaptationSource::MediaWhite);
    }
}

TEST(Adaptation, doesNotAffectOtherIntents)
{
    const QByteArray bytes = bytesOf(adobeRgb());
    for (const auto intent : {perceptual, relative, saturation}) {
        const auto kept = computed(bytes, with(intent, false, Adaptation::Full, 9)).report();
        const auto undone = computed(bytes, with(intent, false, Adaptation::None, 9)).report();
        EXPECT_EQ(undone.volume, kept.volume);
        EXPECT_EQ(undone.conversion.adaptation, Adaptation::Full);
    }
}

TEST(Adaptation, doesNotAffectAPrinterWithoutIt)
{
    const QByteArray bytes = bytesOf(printerCmyk());
    const auto kept = computed(bytes, with(absolute, false, Adaptation::Full, 9)).report();
    const auto undone = computed(bytes, with(absolute, false, Adaptation::None, 9)).report();
    EXPECT_NEAR(undone.volume, kept.volume, 1e-5 * kept.volume);
    EXPECT_EQ(undone.conversion.adaptationSource, AdaptationSource::None);
}

TEST(Adaptation, leavesTheStateOfLittleCmsUnchanged)
{
    constexpr double onlyAsk = -1.0;
    ASSERT_EQ(cmsSetAdaptationState(onlyAsk), 1.0);
    ASSERT_GT(computed(bytesOf(srgb()), with(absolute, false, Adaptation::None, 5)).faceCount(), 0);
    EXPECT_EQ(cmsSetAdaptationState(onlyAsk), 1.0);
}

TEST(Adaptation, thatIsUnknownIsRefused)
{
    for (const int unknown : {-1, 3, 1 << 20})
        EXPECT_EQ(
            computed(bytesOf(srgb()), with(absolute, false, static_cast<Adaptation>(unknown))).problem(),
            (KVProblem{KVProblemCode::UnknownSetting, {QStringLiteral("adaptation %1").arg(unknown)}, {}}));
}

TEST(MediaWhite, isReported)
{
    const auto whiteOf = [](const QString& path) {
        return computed(bytesOf(path), with(relative, false, Adaptation::Full, 5))
            .report()
            .conversion.mediaWhite;
    };
    const auto paper = whiteOf(printerCmyk());
    ASSERT_TRUE(paper);
    const auto expected =
        testprofiles::labOf(bytesOf(printerCmyk()), {0, 0, 0, 0}, INTENT_ABSOLUTE_COLORIMETRIC);
    EXPECT_NEAR(paper->L, expected[0], 0.05);
    EXPECT_NEAR(paper->a, expected[1], 0.05);
    EXPECT_NEAR(paper->b, expected[2], 0.05);
    const auto display = whiteOf(srgb());
    ASSERT_TRUE(display);
    EXPECT_NEAR(display->L, 100.0, 0.01);
    EXPECT_FALSE(computed(boxProfile({{"A2B0", 50}}), with(relative)).report().conversion.mediaWhite);
}

TEST(CodePoints, areReported)
{
    EXPECT_FALSE(
        computed(bytesOf(srgb()), with(relative, false, Adaptation::Full, 5)).report().conversion.cicp);
    const auto cicp = static_cast<cmsTagSignature>(0x63696370);
    const QByteArray bytes = withRawTag(bytesOf(srgb()), cicp, QByteArray("cicp\0\0\0\0\11\20\0\1", 12));
    EXPECT_EQ(computed(bytes, with(relative, false, Adaptation::Full, 5)).report().conversion.cicp,
              (KVGamut::CodePoints{9, 16, 0, true}));
    const QByteArray cut = withRawTag(bytesOf(srgb()), cicp, QByteArray("cicp\0\0\0\0\11\20", 10));
    EXPECT_FALSE(computed(cut, with(relative, false, Adaptation::Full, 5)).report().conversion.cicp);
}
