// SPDX-License-Identifier: Apache-2.0
#include "glwindow/CameraOracle.h"
#include "support/ShownViewer.h"
#include "support/Vec3d.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <optional>

// Where the axes and the grid appear in the picture, compared with an independent projection of their
// documented end points.

namespace {

using kvtest::Vec3d;

constexpr int width = 400, height = 300;

struct Point
{
    double x, y;
};

struct View
{
    const char* name;
    QVector3D eye;
    QVector3D interest;
    bool orthogonal = false;
};

void PrintTo(const View& v, std::ostream* out)
{
    *out << v.name;
}

/// The projection of the camera, computed in double precision.
class Lens
{
public:
    explicit Lens(const View& view)
        : m_orbit(kvtest::sceneFromHost(Vec3d(view.eye)), kvtest::sceneFromHost(Vec3d(view.interest))),
          m_axes(m_orbit.eye, m_orbit.interest, m_orbit.up()), m_orthogonal(view.orthogonal)
    {
    }

    /// Distance in front of the camera, along its direction of view.
    double depth(const Vec3d& host) const
    {
        return dot(kvtest::sceneFromHost(host) - m_orbit.eye, m_axes.forward);
    }

    double pixelsPerUnit(const Vec3d& host) const
    {
        const double distance = m_orthogonal ? m_orbit.distance : depth(host);
        return height / 2.0 / (distance * std::tan(kvtest::radians(15)));
    }

    Point pixel(const Vec3d& host) const
    {
        const Vec3d v = kvtest::sceneFromHost(host) - m_orbit.eye;
        const double scale = pixelsPerUnit(host);
        return {width / 2.0 + scale * dot(v, m_axes.right), height / 2.0 - scale * dot(v, m_axes.up)};
    }

private:
    kvtest::OrbitOracle m_orbit;
    kvtest::Axes m_axes;
    bool m_orthogonal;
};

bool isInside(const Point& p, double margin)
{
    return p.x > margin && p.x < width - margin && p.y > margin && p.y < height - margin;
}

/// How much of a pixel an axis covers, 0 to 1. Axes are black, the background is light grey.
double coverage(const QImage& picture, int x, int y)
{
    const int background = qGray(picture.pixel(0, 0));
    return std::clamp(1.0 - qGray(picture.pixel(x, y)) / double(background), 0.0, 1.0);
}

/// Signed distance in pixels of the middle of the dark pixels from the line through @p centre, measured along
/// the row or column that crosses @p direction more steeply. Nullopt if there are none.
std::optional<double> offset(const QImage& picture, const Point& centre, const Point& direction, int reach)
{
    const bool alongX = std::abs(direction.x) > std::abs(direction.y);
    double sum = 0.0, weight = 0.0;
    const int fixed = static_cast<int>(alongX ? centre.x : centre.y);
    // the centre line in the middle of this row or column of pixels
    const double slope = alongX ? direction.y / direction.x : direction.x / direction.y;
    const double middle =
        (alongX ? centre.y : centre.x) + slope * (fixed + 0.5 - (alongX ? centre.x : centre.y));
    for (int i = static_cast<int>(middle) - reach; i <= static_cast<int>(middle) + reach; ++i) {
        const QPoint p = alongX ? QPoint(fixed, i) : QPoint(i, fixed);
        if (!picture.rect().contains(p))
            return {};
        const double c = coverage(picture, p.x(), p.y());
        sum += c * (i + 0.5);
        weight += c;
    }
    if (weight < 0.3)
        return {};
    return sum / weight - middle;
}

void show(kvtest::ShownViewer& shown, const View& view)
{
    shown.viewer.setOrthogonalProjection(view.orthogonal, 0);
    shown.viewer.setCamera(view.eye, 0, view.interest);
}

void hideLabels(kvtest::ShownViewer& shown)
{
    for (const auto& label : shown.root().child(QStringLiteral("Axes"))->children())
        label->setVisible(false);
}

class AxisPlaces : public testing::TestWithParam<View>
{
};

} // namespace

TEST_P(AxisPlaces, axesLieBetweenTheirDocumentedEnds)
{
    kvtest::ShownViewer shown(width, height);
    ASSERT_TRUE(shown.shown);
    shown.viewer.setDisplayGrid(false);
    shown.viewer.setBackground(Qt::white);
    hideLabels(shown);
    show(shown, GetParam());
    const QImage picture = shown.settledPicture();
    const Lens lens(GetParam());

    const std::pair<Vec3d, double> axes[] = {{{1, 0, 0}, 100}, {{0, 1, 0}, 110}, {{0, 0, 1}, 110}};
    int compared = 0;
    for (const auto& [direction, end] : axes) {
        for (double at = 4; at <= end - 1; at += 0.5) {
            const Vec3d p = at * direction;
            if (lens.depth(p) < 1.0)
                continue;
            const Point here = lens.pixel(p), next = lens.pixel((at + 0.25) * direction);
            const Point along{next.x - here.x, next.y - here.y};
            const int reach = static_cast<int>(std::ceil(1.5 * lens.pixelsPerUnit(p))) + 2;
            // Where an axis points towards the camera, or passes near another one, its middle is not defined.
            bool alone =
                std::hypot(along.x, along.y) > 0.05 * lens.pixelsPerUnit(p) && isInside(here, reach + 1);
            for (const auto& [otherDirection, otherEnd] : axes)
                for (double t = 0; t <= otherEnd + 1 && alone; t += 0.25) {
                    const bool same = dot(direction, otherDirection) > 0.5;
                    const Vec3d q = t * otherDirection;
                    const Point other = lens.pixel(q);
                    alone = same || lens.depth(q) < 0.2 ||
                            std::hypot(other.x - here.x, other.y - here.y) > 2 * reach;
                }
            if (!alone)
                continue;
            ++compared;
            const auto moved = offset(picture, here, along, reach);
            ASSERT_TRUE(moved) << "nothing at " << here.x << ", " << here.y << " for L* " << p.x << ", a* "
                               << p.y << ", b* " << p.z;
            EXPECT_LT(std::abs(*moved), 0.75)
                << "at " << here.x << ", " << here.y << " for L* " << p.x << ", a* " << p.y << ", b* " << p.z;
        }
    }
    EXPECT_GT(compared, 30);
}

INSTANTIATE_TEST_SUITE_P(Views, AxisPlaces,
                         testing::Values(View{"oblique", {210, -250, -330}, {50, 0, 0}},
                                         View{"above", {450, 60, 40}, {0, 40, 40}},
                                         View{"below", {-300, 250, -200}, {0, 40, 40}},
                                         View{"closeUpFromAbove", {25, 60, -40}, {0, 60, 0}},
                                         View{"closeUpFromBelow", {-25, 60, -40}, {0, 60, 0}},
                                         View{"alongTheAxis", {12, -40, 30}, {0, 60, 0}},
                                         View{"low", {3, 50, -300}, {20, 50, 0}},
                                         View{"far", {600, -700, -600}, {0, 0, 0}},
                                         View{"orthogonal", {150, -250, -330}, {0, 30, 30}, true},
                                         View{"orthogonalFromBelow", {-60, 250, -330}, {0, 30, 30}, true}),
                         [](const auto& row) { return row.param.name; });

// --- Crossing the ab plane -----------------------------------------------------------------

namespace {

/// Largest difference of a channel in two pictures.
int largestDifference(const QImage& a, const QImage& b)
{
    int largest = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
            largest = std::max({largest, std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                                std::abs(qBlue(p) - qBlue(q))});
        }
    return largest;
}

} // namespace

TEST(AxesAtTheHorizon, doNotMoveWhenTheEyeCrossesLightness0)
{
    kvtest::ShownViewer shown(width, height);
    ASSERT_TRUE(shown.shown);
    shown.viewer.setDisplayGrid(false); // its lines in front of the axes are less than a pixel high
    for (const bool orthogonal : {false, true}) {
        for (const QVector3D& side :
             {QVector3D(0, 40, -300), QVector3D(0, -160, -60), QVector3D(0, 300, 250)}) {
            show(shown, {"above", side + QVector3D(0.02f, 0, 0), {0.02f, 40, 0}, orthogonal});
            const QImage above = shown.settledPicture();
            show(shown, {"below", side - QVector3D(0.02f, 0, 0), {-0.02f, 40, 0}, orthogonal});
            const QImage below = shown.settledPicture();
            // 0.04 units are less than a tenth of a pixel: less than one of the four samples of most pixels
            EXPECT_LE(largestDifference(above, below), 70) << side.y() << ", " << side.z();
        }
    }
}

// --- Surfaces in front of the axes -------------------------------------------------------

class AxesBehindAGamut : public testing::TestWithParam<View>
{
};

TEST_P(AxesBehindAGamut, doNotShowThroughTheSurface)
{
    kvtest::ShownViewer shown(width, height);
    ASSERT_TRUE(shown.shown);
    shown.viewer.load(
        QStringLiteral("g"),
        {{QStringLiteral("ProfilePath"), QStringLiteral("/usr/share/color/icc/colord/sRGB.icc")}}, nullptr);
    ASSERT_GT(shown.viewer.volume(QStringLiteral("g")), 0.0f);
    shown.viewer.setDisplayProjection(QStringLiteral("g"), false);
    shown.viewer.setabPlane(true);
    hideLabels(shown); // that of L* is above the gamut
    show(shown, GetParam());
    const QImage with = shown.settledPicture();
    shown.viewer.setDisplayAxes(false);
    shown.viewer.setDisplayGrid(false);
    shown.viewer.setabPlane(false);
    const QImage without = shown.settledPicture();
    shown.viewer.setBackground(Qt::green);
    const QImage otherBackground = shown.settledPicture();

    // From above, nothing of the frame of reference is in front of the gamut, except the end of the L* axis,
    // which extends half its width beyond the white point. A pixel that the surface covers completely does
    // not depend on the background.
    const Lens lens(GetParam());
    const auto isNear = [&](int x, int y, const Vec3d& end) {
        const Point p = lens.pixel(end);
        return std::hypot(x + 0.5 - p.x, y + 0.5 - p.y) < 1.0 + lens.pixelsPerUnit(end);
    };
    int covered = 0, shining = 0;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            if (without.pixel(x, y) != otherBackground.pixel(x, y) || isNear(x, y, {0, 0, 0}) ||
                isNear(x, y, {100, 0, 0}))
                continue;
            ++covered;
            shining += with.pixel(x, y) != without.pixel(x, y);
        }
    EXPECT_GT(covered, 3000);
    EXPECT_EQ(shining, 0);
}

INSTANTIATE_TEST_SUITE_P(Views, AxesBehindAGamut,
                         testing::Values(View{"oblique", {210, -250, -330}, {50, 0, 0}},
                                         View{"steep", {420, -100, -130}, {50, 0, 0}},
                                         View{"far", {500, -500, -500}, {50, 0, 0}},
                                         View{"closeUp", {160, -100, -100}, {60, 0, 0}},
                                         View{"low", {10, -250, -330}, {50, 0, 0}},
                                         View{"orthogonal", {210, -250, -330}, {50, 0, 0}, true}),
                         [](const auto& row) { return row.param.name; });
