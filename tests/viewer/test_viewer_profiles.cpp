// SPDX-License-Identifier: Apache-2.0
#include <KVGamut3DViewer.h>

#include <glwindow/KVGLWidget.h>
#include <platform/KVCoreCommon.h>

#include "support/SceneCheck.h"
#include "support/Watchdog.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <lcms2.h>

#include <array>
#include <cmath>
#include <functional>
#include <map>

// The viewer with the real colour engine and with profiles whose parameters are published. The expected
// values are computed here from these parameters, independently and in double precision.

namespace {

using kvtest::Vertex;
using kvtest::verticesOf;
using Params = QHash<QString, QVariant>;
using Triple = std::array<double, 3>;

constexpr Triple kD50{0.96422, 1.0, 0.82521};
constexpr Triple kPaper{0.80, 0.84, 0.60}; ///< white of a medium, XYZ

/// Linear sRGB to XYZ, adapted to D50 by the Bradford transform; the inverse below.
constexpr double kToXyz[3][3] = {
    {0.4360747, 0.3850649, 0.1430804}, {0.2225045, 0.7168786, 0.0606169}, {0.0139322, 0.0971045, 0.7141733}};
constexpr double kFromXyz[3][3] = {{3.1338561, -1.6168667, -0.4906146},
                                   {-0.9787684, 1.9161415, 0.0334540},
                                   {0.0719453, -0.2289914, 1.4052427}};

Triple times(const double (&m)[3][3], const Triple& v)
{
    Triple r{};
    for (size_t i = 0; i < 3; ++i)
        r[i] = m[i][0] * v[0] + m[i][1] * v[1] + m[i][2] * v[2];
    return r;
}

Triple labFromXyz(const Triple& xyz)
{
    const auto f = [](double t) { return t > 216.0 / 24389 ? std::cbrt(t) : (24389.0 / 27 * t + 16) / 116; };
    const double x = f(xyz[0] / kD50[0]);
    const double y = f(xyz[1] / kD50[1]);
    const double z = f(xyz[2] / kD50[2]);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

Triple xyzFromLab(const Triple& lab)
{
    const auto g = [](double t) { return t > 6.0 / 29 ? t * t * t : (116 * t - 16) * 27 / 24389; };
    const double y = (lab[0] + 16) / 116;
    return {kD50[0] * g(y + lab[1] / 500), kD50[1] * g(y), kD50[2] * g(y - lab[2] / 200)};
}

double decoded(double v)
{
    return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
}

double encoded(double v)
{
    return v <= 0.0031308 ? 12.92 * v : 1.055 * std::pow(v, 1 / 2.4) - 0.055;
}

Triple labFromSrgb(const Triple& rgb)
{
    return labFromXyz(times(kToXyz, {decoded(rgb[0]), decoded(rgb[1]), decoded(rgb[2])}));
}

/// Linear sRGB of a Lab colour; inside the gamut when all three are within 0..1.
Triple linearFromLab(const Triple& lab)
{
    return times(kFromXyz, xyzFromLab(lab));
}

/// Signed volume of the tetrahedron of a triangle and the origin. The sum over a closed surface is the volume
/// inside it.
double pyramid(const Triple& p, const Triple& q, const Triple& r)
{
    return (p[0] * (q[1] * r[2] - q[2] * r[1]) - p[1] * (q[0] * r[2] - q[2] * r[0]) +
            p[2] * (q[0] * r[1] - q[1] * r[0])) /
           6;
}

/// Volume of the image of the sRGB cube in Lab, computed with a mesh of n by n squares on each side.
double srgbVolume(int n)
{
    double volume = 0;
    for (size_t axis = 0; axis < 3; ++axis)
        for (const int side : {0, 1}) {
            const auto at = [&](int i, int j) {
                Triple rgb{};
                rgb[axis] = side;
                rgb[(axis + 1) % 3] = double(i) / n;
                rgb[(axis + 2) % 3] = double(j) / n;
                return labFromSrgb(rgb);
            };
            double sum = 0;
            for (int i = 0; i < n; ++i)
                for (int j = 0; j < n; ++j)
                    sum += pyramid(at(i, j), at(i + 1, j), at(i + 1, j + 1)) +
                           pyramid(at(i, j), at(i + 1, j + 1), at(i, j + 1));
            volume += side ? sum : -sum;
        }
    return std::abs(volume);
}

double srgbVolume()
{
    static const double volume = srgbVolume(120);
    return volume;
}

constexpr cmsCIExyYTRIPLE kSrgbPrimaries{{0.64, 0.33, 1.0}, {0.30, 0.60, 1.0}, {0.15, 0.06, 1.0}};
constexpr cmsCIExyYTRIPLE kDisplayP3Primaries{{0.680, 0.320, 1.0}, {0.265, 0.690, 1.0}, {0.150, 0.060, 1.0}};

/// An RGB profile with the transfer curve of sRGB, the given primaries, a white point of D65 and the media
/// white @p media.
QByteArray rgbProfile(const cmsCIExyYTRIPLE& primaries, const Triple& media = kD50)
{
    const cmsCIExyY white{0.3127, 0.3290, 1.0};
    const cmsFloat64Number curve[] = {2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045};
    cmsToneCurve* tone = cmsBuildParametricToneCurve(nullptr, 4, curve);
    cmsToneCurve* tones[] = {tone, tone, tone};
    const cmsHPROFILE profile = cmsCreateRGBProfile(&white, &primaries, tones);
    cmsFreeToneCurve(tone);
    const cmsCIEXYZ mediaWhite{media[0], media[1], media[2]};
    EXPECT_TRUE(cmsWriteTag(profile, cmsSigMediaWhitePointTag, &mediaWhite));
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(profile, nullptr, &size);
    QByteArray bytes(static_cast<qsizetype>(size), Qt::Uninitialized);
    EXPECT_TRUE(cmsSaveProfileToMem(profile, bytes.data(), &size));
    cmsCloseProfile(profile);
    return bytes;
}

const QByteArray& srgb()
{
    static const QByteArray bytes = rgbProfile(kSrgbPrimaries);
    return bytes;
}

const QByteArray& displayP3()
{
    static const QByteArray bytes = rgbProfile(kDisplayP3Primaries);
    return bytes;
}

Params relative(const QByteArray& profile)
{
    return {{QStringLiteral("ProfileData"), profile},
            {QStringLiteral("AdditionnalParam"), Params{{QStringLiteral("Link_ICCRendering"), 1}}}};
}

Triple tripleOf(const QVector3D& v)
{
    return {v.x(), v.y(), v.z()};
}

const QString id = QStringLiteral("sRGB");
const QString wide = QStringLiteral("Display P3");
const QString copied = QStringLiteral("copy");

class ViewerProfiles : public testing::Test
{
protected:
    KV3DObject& root() { return viewer.findChild<KVGLWidget*>()->root(); }

    /// Loads in the background and waits for the report.
    bool load(const QString& gamutId, const Params& params)
    {
        int reports = 0;
        bool succeeded = false;
        viewer.load(gamutId, params, [&](const QString& loadedId, bool ok) {
            EXPECT_EQ(loadedId, gamutId);
            ++reports;
            succeeded = ok;
        });
        EXPECT_TRUE(QTest::qWaitFor([&] { return reports > 0; }, 300000));
        return succeeded;
    }

    /// Number of points of a lattice in Lab for which isInsideGamut() differs from the formula. Points closer
    /// to the surface than @p margin in linear RGB are not tested.
    int misplaced(const QString& gamutId, double margin, int* inside)
    {
        int wrong = 0;
        *inside = 0;
        for (int L = 3; L < 100; L += 6)
            for (int a = -100; a <= 110; a += 10)
                for (int b = -110; b <= 110; b += 10) {
                    const Triple linear = linearFromLab({double(L), double(a), double(b)});
                    double least = 1e9;
                    for (const double c : linear)
                        least = std::min({least, c, 1 - c});
                    if (std::abs(least) < margin)
                        continue;
                    const QVector3D lab(static_cast<float>(L), static_cast<float>(a), static_cast<float>(b));
                    const bool is = viewer.isInsideGamut(gamutId, lab);
                    *inside += is;
                    wrong += is != (least > 0);
                }
        return wrong;
    }

    KVGamut3DViewer viewer;
};

} // namespace

TEST_F(ViewerProfiles, theVolumeOfSrgbIsThatOfItsCubeInLab)
{
    ASSERT_NEAR(srgbVolume() / 832000, 1.0, 0.01) << "as published for D50";
    ASSERT_TRUE(load(id, relative(srgb())));
    EXPECT_NEAR(viewer.volume(id) / srgbVolume(), 1.0, 0.01);
}

TEST_F(ViewerProfiles, theFacesAreClosedAndEncloseTheVolume)
{
    ASSERT_TRUE(load(id, relative(srgb())));
    const auto faces = viewer.faceList(id);
    ASSERT_GT(faces.size(), 100);
    double volume = 0;
    std::map<std::pair<Triple, Triple>, int> edges;
    double lightest = -1;
    double darkest = 1000;
    for (const auto& face : faces) {
        ASSERT_EQ(face.size(), 3);
        volume += pyramid(tripleOf(face[0]), tripleOf(face[1]), tripleOf(face[2]));
        for (int i = 0; i < 3; ++i) {
            ++edges[{tripleOf(face[i]), tripleOf(face[(i + 1) % 3])}];
            lightest = std::max(lightest, double(face[i].x()));
            darkest = std::min(darkest, double(face[i].x()));
        }
    }
    EXPECT_NEAR(volume / viewer.volume(id), 1.0, 1e-3) << "counter-clockwise from outside: positive";
    for (const auto& [edge, count] : edges)
        ASSERT_EQ(edges.count({edge.second, edge.first}), 1u) << "each edge is walked both ways";
    EXPECT_NEAR(lightest, 100, 0.1);
    EXPECT_NEAR(darkest, 0, 0.1);
}

TEST_F(ViewerProfiles, everyVertexIsOnTheSurfaceOfTheDeviceCube)
{
    ASSERT_TRUE(load(id, relative(srgb())));
    double worst = 0;
    for (const auto& face : viewer.faceList(id))
        for (const QVector3D& corner : face) {
            double least = 1e9;
            for (const double c : linearFromLab(tripleOf(corner)))
                least = std::min({least, std::abs(c), std::abs(1 - c)});
            worst = std::max(worst, least);
        }
    EXPECT_LT(worst, 0.01);
}

TEST_F(ViewerProfiles, pointsAreInsideIfTheDeviceReproducesThem)
{
    ASSERT_TRUE(load(id, relative(srgb())));
    int inside = 0;
    EXPECT_EQ(misplaced(id, 0.01, &inside), 0);
    EXPECT_GT(inside, 500);
    EXPECT_FALSE(viewer.isInsideGamut(id, QVector3D(NAN, 0, 0)));
}

TEST_F(ViewerProfiles, theSurfaceIsShownInTheColoursOfTheScreen)
{
    ASSERT_TRUE(load(id, relative(srgb())));
    const auto front =
        root().childAt({QStringLiteral("Profiles"), id, QStringLiteral("Gamut"), QStringLiteral("Front")});
    ASSERT_TRUE(front);
    const auto vertices = verticesOf(*front);
    const auto faces = viewer.faceList(id);
    ASSERT_EQ(vertices.size(), 3 * faces.size());
    double worst = 0;
    for (qsizetype i = 0; i < vertices.size(); ++i) {
        EXPECT_EQ(vertices[i].lab(), faces[i / 3][i % 3]);
        const Triple linear = linearFromLab(tripleOf(vertices[i].lab()));
        for (size_t k = 0; k < 3; ++k)
            worst = std::max(
                worst, std::abs(encoded(std::clamp(linear[k], 0.0, 1.0)) - double(vertices[i].color[k])));
    }
    EXPECT_LT(worst, 4.0 / 255) << "cut to whole numbers, after at most a little compression";
}

TEST_F(ViewerProfiles, theDefaultIntentIsAbsolute)
{
    const QByteArray onPaper = rgbProfile(kSrgbPrimaries, kPaper);
    const auto lightestOf = [this](const Params& params) {
        EXPECT_TRUE(load(id, params));
        QVector3D lightest;
        for (const auto& face : viewer.faceList(id))
            for (const QVector3D& corner : face)
                if (corner.x() > lightest.x())
                    lightest = corner;
        return lightest;
    };
    const QVector3D absolute = lightestOf({{QStringLiteral("ProfileData"), onPaper}});
    const Triple paper = labFromXyz(kPaper);
    ASSERT_GT(paper[2], 5) << "a yellowish one";
    for (int k = 0; k < 3; ++k)
        EXPECT_NEAR(absolute[k], paper[static_cast<size_t>(k)], 0.1);
    const QVector3D relativeWhite = lightestOf(relative(onPaper));
    EXPECT_NEAR(relativeWhite.x(), 100, 0.1);
    EXPECT_NEAR(relativeWhite.y(), 0, 0.1);
    EXPECT_NEAR(relativeWhite.z(), 0, 0.1);
}

TEST_F(ViewerProfiles, aFileAndItsBytesGiveTheSameGamut)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("sRGB gr\u00fcn.icc"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(srgb());
    file.close();
    ASSERT_TRUE(load(id, relative(srgb())));
    Params params = relative({});
    params.insert(QStringLiteral("ProfilePath"), path);
    ASSERT_TRUE(load(copied, params));
    EXPECT_EQ(viewer.faceList(copied), viewer.faceList(id));
    EXPECT_EQ(viewer.volume(copied), viewer.volume(id));
}

TEST_F(ViewerProfiles, aSynchronousLoadGivesTheSameGamut)
{
    ASSERT_TRUE(load(id, relative(srgb())));
    viewer.load(copied, relative(srgb()), {});
    EXPECT_EQ(viewer.faceList(copied), viewer.faceList(id));
}

TEST_F(ViewerProfiles, aSavedGamutIsRestoredAloneOrUnderItsKey)
{
    ASSERT_TRUE(load(id, relative(srgb())));
    const Params saved = viewer.save(id);
    ASSERT_TRUE(saved.contains(QStringLiteral("Gamut")));
    const auto projection = [this](const QString& gamutId) {
        return root()
            .childAt({QStringLiteral("Profiles"), gamutId, QStringLiteral("Projection")})
            ->vertices();
    };
    const auto points = [this](const QString& gamutId) {
        return root()
            .childAt({QStringLiteral("Profiles"), gamutId, QStringLiteral("PrimariesPoints")})
            ->vertices();
    };
    for (const Params& params : {saved, Params{{QStringLiteral("Gamut"), saved}}}) {
        viewer.removeGamut(copied);
        ASSERT_TRUE(load(copied, params));
        EXPECT_EQ(viewer.volume(copied), viewer.volume(id));
        EXPECT_EQ(viewer.faceList(copied), viewer.faceList(id));
        EXPECT_EQ(projection(copied), projection(id));
        EXPECT_EQ(points(copied), points(id));
        EXPECT_FALSE(points(copied).isEmpty());
        int inside = 0;
        EXPECT_EQ(misplaced(copied, 0.01, &inside), 0);
        EXPECT_EQ(viewer.params(copied), params);
    }
}

TEST_F(ViewerProfiles, invalidDataFailsAndKeepsTheGamut)
{
    ASSERT_TRUE(load(id, relative(srgb())));
    const float volume = viewer.volume(id);
    EXPECT_FALSE(load(id, relative("no profile at all")));
    EXPECT_FALSE(load(id, relative(srgb().left(200))));
    EXPECT_FALSE(load(id, {{QStringLiteral("Gamut"), QStringLiteral("no saved gamut")}}));
    EXPECT_FALSE(load(id, {}));
    EXPECT_EQ(viewer.volume(id), volume);
    EXPECT_EQ(viewer.params(id), relative(srgb()));
    EXPECT_FALSE(load(wide, {}));
    EXPECT_TRUE(viewer.exists(wide));
    EXPECT_TRUE(viewer.save(wide).isEmpty() || !viewer.save(wide).contains(QStringLiteral("Gamut")));
}

TEST_F(ViewerProfiles, aNarrowGamutIsComparedWithAWiderOne)
{
    ASSERT_TRUE(load(id, relative(srgb())));
    ASSERT_TRUE(load(wide, relative(displayP3())));
    std::array<float, 6> f{};
    ASSERT_TRUE(viewer.gamutSetProperties(id, wide, f[0], f[1], f[2], f[3], f[4], f[5]));
    EXPECT_EQ(f[0], viewer.volume(id));
    EXPECT_EQ(f[1], viewer.volume(wide));
    EXPECT_GT(f[1], 1.2f * f[0]);
    // The small gamut is inside the large one, except for a sliver.
    EXPECT_NEAR(f[2] / f[0], 1.0, 0.01);
    EXPECT_NEAR(f[3] / f[1], 1.0, 0.01);
    EXPECT_NEAR(f[4], f[0] / f[1], 0.01);
    EXPECT_NEAR(f[5], 1.0, 0.01);
    // If the gamuts are exchanged, the results are exchanged as well.
    std::array<float, 6> g{};
    ASSERT_TRUE(viewer.gamutSetProperties(wide, id, g[0], g[1], g[2], g[3], g[4], g[5]));
    const int exchanged[] = {1, 0, 2, 3, 5, 4};
    for (size_t i = 0; i < 6; ++i)
        EXPECT_NEAR(g[static_cast<size_t>(exchanged[i])] / f[i], 1.0, 1e-3) << i;
}

TEST_F(ViewerProfiles, aSectionLiesOnTheSurfaceAtTheClippingLightness)
{
    viewer.setClipping(50);
    ASSERT_TRUE(load(id, relative(srgb())));
    const auto section = root().childAt({QStringLiteral("Profiles"), id, QStringLiteral("Section")});
    ASSERT_TRUE(section);
    const auto vertices = verticesOf(*section);
    ASSERT_GT(vertices.size(), 100);
    // The section is a ribbon of thickness 4/3. This limits the distance of its corners from the surface;
    // mitres are a little farther away.
    constexpr double half = 2.0 / 1.5 / 2 * 1.5;
    Triple low{1e9, 1e9, 1e9};
    Triple high{-1e9, -1e9, -1e9};
    for (const Vertex& vertex : vertices)
        for (int k = 0; k < 3; ++k) {
            low[static_cast<size_t>(k)] = std::min(low[static_cast<size_t>(k)], double(vertex.lab()[k]));
            high[static_cast<size_t>(k)] = std::max(high[static_cast<size_t>(k)], double(vertex.lab()[k]));
        }
    EXPECT_NEAR(low[0], 50, half);
    EXPECT_NEAR(high[0], 50, half);
    // The extent of the true section, by bisection along rays from its neutral centre.
    Triple trueLow{50, 0, 0};
    Triple trueHigh{50, 0, 0};
    for (int degree = 0; degree < 360; ++degree) {
        const double angle = degree * 3.14159265358979 / 180;
        double in = 0;
        double out = 200;
        for (int step = 0; step < 40; ++step) {
            const double r = (in + out) / 2;
            const Triple linear = linearFromLab({50, r * std::cos(angle), r * std::sin(angle)});
            const bool inside =
                std::all_of(linear.begin(), linear.end(), [](double c) { return c >= 0 && c <= 1; });
            (inside ? in : out) = r;
        }
        const double point[] = {in * std::cos(angle), in * std::sin(angle)};
        for (size_t k = 1; k < 3; ++k) {
            trueLow[k] = std::min(trueLow[k], point[k - 1]);
            trueHigh[k] = std::max(trueHigh[k], point[k - 1]);
        }
    }
    for (size_t k = 1; k < 3; ++k) {
        EXPECT_NEAR(low[k], trueLow[k], 2.5) << k;
        EXPECT_NEAR(high[k], trueHigh[k], 2.5) << k;
    }
    viewer.setClipping(150);
    EXPECT_TRUE(section->vertices().isEmpty());
    viewer.setClipping(-10);
    EXPECT_TRUE(section->vertices().isEmpty());
}

// displayMode() returns the mode that is shown, even if it was set before the first load.
TEST_F(ViewerProfiles, aDisplayModeSetBeforeTheFirstLoadShowsWithIt)
{
    int reports = 0;
    viewer.load(id, relative(srgb()), [&](const QString&, bool) { ++reports; });
    viewer.setDisplayMode(id, KVGamut3DViewer::Wireframe);
    EXPECT_TRUE(viewer.getGamut(id)->children().isEmpty());
    ASSERT_TRUE(QTest::qWaitFor([&] { return reports > 0; }, 300000));
    EXPECT_EQ(viewer.displayMode(id), KVGamut3DViewer::Wireframe);
    const auto shown = [&](const char* child) {
        return viewer.getGamut(id)
            ->childAt({QStringLiteral("Gamut"), QString::fromLatin1(child)})
            ->isVisible();
    };
    EXPECT_TRUE(shown("Wireframe"));
    EXPECT_FALSE(shown("Front"));
    // a reload keeps the mode that was set after the first load
    viewer.setDisplayMode(id, KVGamut3DViewer::Smooth);
    ASSERT_TRUE(load(id, relative(srgb())));
    EXPECT_FALSE(shown("Wireframe"));
    EXPECT_TRUE(shown("Front"));
}

TEST_F(ViewerProfiles, manyReloadsEndWithTheLastOne)
{
    const kvtest::Watchdog watchdog(300);
    QStringList reports;
    for (int i = 0; i < 12; ++i) {
        viewer.load(id, relative(i % 2 ? srgb() : displayP3()), [&reports, i](const QString&, bool ok) {
            reports.append(QStringLiteral("%1 %2").arg(i).arg(ok));
        });
        // A different part of the computation is interrupted each time.
        QTest::qWait(i * 3);
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return reports.contains(QStringLiteral("11 1")); }, 300000));
    EXPECT_EQ(reports.last(), QStringLiteral("11 1"));
    EXPECT_EQ(viewer.params(id), relative(srgb()));
    EXPECT_NEAR(viewer.volume(id) / srgbVolume(), 1.0, 0.01);
}

TEST_F(ViewerProfiles, destroyingAViewerCancelsItsLoad)
{
    const kvtest::Watchdog watchdog(300);
    bool reported = false;
    bool reportedBefore = false;
    {
        KVGamut3DViewer shortLived;
        Params params = relative(srgb());
        params.insert(QStringLiteral("AdditionnalParam"),
                      Params{{QStringLiteral("Link_GridPointNumber"), 129}});
        shortLived.load(id, params, [&](const QString&, bool) { reported = true; });
        EXPECT_TRUE(QTest::qWaitFor(
            [] {
                const auto running = KVCompletionProtocol::runningTasks();
                return !running.isEmpty() && running.first()->progress() > 0;
            },
            300000));
        reportedBefore = reported;
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(reported, reportedBefore);
    EXPECT_TRUE(KVCompletionProtocol::runningTasks().isEmpty());
}
