// SPDX-License-Identifier: Apache-2.0
// What the 3D view of the page of `kvgamut export` shows, in a browser.

#include "app/support/PageTest.h"
#include "model/inputs/GamutSource.h"

#include <QtCore/QLocale>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace kvtest;

namespace {

const QString sRGB = QStringLiteral("sRGB");
const QString rec2020 = QStringLiteral("Rec2020");

/// A colour on the screen, 0..255 each.
struct Shown
{
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
};

Shown shownOf(const KVGamut::LabPoint& lab)
{
    const QList<float> rgb = KVColorConversionHelper::KVHLab2RGB({lab.L, lab.a, lab.b});
    return {double(rgb[0]), double(rgb[1]), double(rgb[2])};
}

Shown mixed(double share, const Shown& one, const Shown& other)
{
    const auto mix = [share](double a, double b) { return share * a + (1.0 - share) * b; };
    return {mix(one.red, other.red), mix(one.green, other.green), mix(one.blue, other.blue)};
}

/// The largest difference of a channel.
double difference(QRgb pixel, const Shown& shown)
{
    return std::max({std::abs(qRed(pixel) - shown.red), std::abs(qGreen(pixel) - shown.green),
                     std::abs(qBlue(pixel) - shown.blue)});
}

/// A point of a surface, with its colour interpolated between the vertices of a triangle.
struct SurfacePoint
{
    double L;
    Shown color;
};

/// The points of the surface at (a, b), from dark to light. Looks at every triangle.
std::vector<SurfacePoint> pointsAt(const KVGamut::Mesh& mesh, double a, double b)
{
    std::vector<SurfacePoint> points;
    for (const auto& triangle : mesh.triangles) {
        const auto vertex = [&](std::size_t i) { return mesh.lab[static_cast<std::size_t>(triangle[i])]; };
        const KVGamut::LabPoint p = vertex(0), q = vertex(1), r = vertex(2);
        const double area = double(q.a - p.a) * double(r.b - p.b) - double(r.a - p.a) * double(q.b - p.b);
        if (std::abs(area) < 1e-9)
            continue;
        const double u =
            ((a - double(p.a)) * double(r.b - p.b) - double(r.a - p.a) * (b - double(p.b))) / area;
        const double v =
            (double(q.a - p.a) * (b - double(p.b)) - (a - double(p.a)) * double(q.b - p.b)) / area;
        if (u < 0.0 || v < 0.0 || u + v > 1.0)
            continue;
        const double w = 1.0 - u - v;
        const Shown one = shownOf(p), two = shownOf(q), three = shownOf(r);
        points.push_back(
            {w * double(p.L) + u * double(q.L) + v * double(r.L),
             {w * one.red + u * two.red + v * three.red, w * one.green + u * two.green + v * three.green,
              w * one.blue + u * two.blue + v * three.blue}});
    }
    std::sort(points.begin(), points.end(),
              [](const auto& one, const auto& other) { return one.L < other.L; });
    return points;
}

/// Whether a pixel at most two pixels from @p place has this colour, but for a twentieth of another at its
/// edge.
bool hasColorNear(const QImage& picture, const QPoint& place, const Shown& color)
{
    for (int y = -2; y <= 2; ++y)
        for (int x = -2; x <= 2; ++x)
            if (difference(picture.pixel(place + QPoint(x, y)), color) < 255.0 / 20.0)
                return true;
    return false;
}

/// Whether less than about a pixel lies between a place and the outline of the surface.
bool isAtSilhouette(const KVGamut::GamutObject& gamut, const SurfacePoint& top, const Place& place)
{
    const KVGamut::LabPoint below{static_cast<float>(top.L - 1.5), static_cast<float>(place.a),
                                  static_cast<float>(place.b)};
    return gamut.nearest(&below.L).distance > -1.0f;
}

/// Expects that a picture from above shows @p gamut in its colours. @return the number of places compared
int probed(const QImage& picture, const QList<Place>& places, const KVGamut::GamutObject& gamut)
{
    int count = 0;
    double largest = 0.0;
    for (const Place& place : places) {
        const std::vector<SurfacePoint> points = pointsAt(gamut.mesh(), place.a, place.b);
        if (points.empty() || isAtSilhouette(gamut, points.back(), place))
            continue;
        ++count;
        largest = std::max(largest, difference(picture.pixel(place.pixel), points.back().color));
    }
    EXPECT_LE(largest, 2.0) << "of 255";
    return count;
}

TEST_F(PageTest, showsSurfacesInTheColoursOfTheProgram)
{
    const KVGamut::GamutObject gamut = *GamutSource::open(rec2020)->compute({});
    open({rec2020});
    const QList<Place> places = placesFromAbove();
    EXPECT_GT(probed(browser().picture(), places, gamut), 1000);
}

TEST_F(PageTest, showsThePartOfAGamutOutsideAnother)
{
    const KVGamut::GamutObject outer = *GamutSource::open(rec2020)->compute({});
    const KVGamut::GamutObject body =
        outer.body(*GamutSource::open(sRGB)->compute({}), KVGamut::Body::Outside);
    open({rec2020, sRGB, QStringLiteral("--body"), QStringLiteral("outside")});
    EXPECT_TRUE(browser().messages().isEmpty());
    EXPECT_EQ(text(QStringLiteral(
                  "[...document.querySelectorAll('#legend .name')].map(e => e.textContent).join()")),
              QStringLiteral("Rec2020,sRGB,Rec2020 outside sRGB"));
    EXPECT_TRUE(text(QStringLiteral("document.getElementById('tables').textContent"))
                    .contains(QLocale(QLocale::English).toString(std::round(body.report().volume), 'f', 0)));
    toggle("shown-0");
    toggle("shown-1");
    const QList<Place> places = placesFromAbove();
    EXPECT_GT(probed(browser().picture(), places, body), 300);
}

TEST_F(PageTest, fillsASectionWithTheColoursOfItsLightness)
{
    const KVGamut::GamutObject inner = *GamutSource::open(sRGB)->compute({});
    const KVGamut::GamutObject outer = *GamutSource::open(rec2020)->compute({});
    open({sRGB, rec2020});
    const QList<Place> places = placesFromAbove();
    toggle("section-shown");
    focus("section-lightness");
    for (const int lightness : {50, 20, 80}) {
        const auto shown = [] {
            return browser().evaluate(QStringLiteral("document.activeElement.valueAsNumber")).toInt();
        };
        for (int i = 0; i < 10 && shown() != lightness; ++i)
            browser().press(lightness < 50 ? QStringLiteral("PageDown") : QStringLiteral("PageUp"));
        ASSERT_EQ(shown(), lightness);
        const QImage picture = browser().picture();
        int probed = 0, outside = 0;
        double largest = 0.0;
        for (const Place& place : places) {
            const KVGamut::LabPoint lab{static_cast<float>(lightness), static_cast<float>(place.a),
                                        static_cast<float>(place.b)};
            if (outer.nearest(&lab.L).distance > -3.0f || std::abs(inner.nearest(&lab.L).distance) < 3.0f)
                continue; // at an outline
            ++probed;
            outside += inner.isInside(&lab.L) ? 0 : 1; // and not a colour of the screen
            largest = std::max(largest, difference(picture.pixel(place.pixel), shownOf(lab)));
        }
        EXPECT_GT(probed, 200);
        EXPECT_GT(outside, 50);
        EXPECT_LE(largest, 2.0) << "of 255, at L* " << lightness;
    }
}

TEST_F(PageTest, showsTheSectionOfVisibleGamutsOnly)
{
    open({sRGB, rec2020});
    placesFromAbove();
    toggle("section-shown");
    const KVGamut::LabPoint green{50, -80, 30};
    ASSERT_TRUE(GamutSource::open(rec2020)->compute({})->isInside(&green.L));
    ASSERT_FALSE(GamutSource::open(sRGB)->compute({})->isInside(&green.L));
    const QPoint outside = onPicture(50, -80, 30).toPoint();
    EXPECT_NE(browser().picture().pixel(outside), qRgb(255, 255, 255));
    toggle("shown-1");
    EXPECT_EQ(browser().picture().pixel(outside), qRgb(255, 255, 255));
}

TEST_F(PageTest, cutsTheBodiesOnlyIfToldTo)
{
    open({sRGB});
    placesFromAbove();
    toggle("section-shown");
    const QPoint middle = onPicture(50, 0, 0).toPoint();
    EXPECT_LE(difference(browser().picture().pixel(middle), shownOf({50, 0, 0})), 2);
    toggle("section-cut");
    EXPECT_LE(difference(browser().picture().pixel(middle), shownOf({100, 0, 0})), 2);
}

TEST_F(PageTest, drawsTheOutlineOfTheSectionInTheKeyColour)
{
    const KVGamut::GamutObject gamut = *GamutSource::open(sRGB)->compute({});
    const float plane[] = {1.0f, 0.0f, 0.0f, -50.0f};
    const std::vector<KVGamut::SectionLoop> loops = KVGamut::sectionLoops(plane, gamut.mesh());
    ASSERT_EQ(loops.size(), 1u);
    open({sRGB});
    toggle("section-shown");
    const QImage picture = browser().picture();
    int probed = 0, drawn = 0;
    for (std::size_t i = 0; i < loops[0].size(); i += 7) {
        const KVGamut::LabPoint& lab = loops[0][i];
        const QPoint pixel = onPicture(double(lab.L), double(lab.a), double(lab.b)).toPoint();
        ++probed;
        drawn += hasColorNear(picture, pixel, {0, 48, 154}) ? 1 : 0;
    }
    EXPECT_GT(probed, 20);
    EXPECT_EQ(drawn, probed);
}

TEST_F(PageTest, followsTheColourSchemeOfTheSystem)
{
    open({sRGB});
    const QPoint corner = box("view").topLeft() + QPoint(20, 20);
    EXPECT_EQ(browser().picture().pixel(corner), qRgb(255, 255, 255));
    browser().setMedia(QStringLiteral("prefers-color-scheme"), QStringLiteral("dark"));
    EXPECT_LT(qGray(browser().picture().pixel(corner)), 50);
    browser().evaluate(QStringLiteral("document.getElementById('theme').value = 'light'; "
                                      "document.getElementById('theme').dispatchEvent(new Event('change'))"));
    EXPECT_EQ(browser().picture().pixel(corner), qRgb(255, 255, 255));
}

TEST_F(PageTest, changesTheOpacityWithTheArrowKeys)
{
    const KVGamut::GamutObject gamut = *GamutSource::open(sRGB)->compute({});
    open({sRGB});
    const QList<Place> places = placesFromAbove();
    focus("opacity-0");
    for (int i = 0; i < 10; ++i)
        browser().press(QStringLiteral("ArrowLeft"));
    EXPECT_EQ(text(QStringLiteral("document.querySelector('output[for=\"opacity-0\"]').textContent")),
              QStringLiteral("50 %"));
    const QImage picture = browser().picture();
    int probed = 0;
    for (const Place& place : places) {
        const std::vector<SurfacePoint> points = pointsAt(gamut.mesh(), place.a, place.b);
        if (points.size() != 2 || isAtSilhouette(gamut, points.back(), place))
            continue; // above an edge there are more
        ++probed;
        const Shown ground{255, 255, 255};
        const Shown lower = mixed(0.5, points.front().color, ground);
        EXPECT_LE(difference(picture.pixel(place.pixel), mixed(0.5, points.back().color, lower)), 3.0)
            << place.a << ", " << place.b;
    }
    EXPECT_GT(probed, 500);
}

} // namespace
