// SPDX-License-Identifier: Apache-2.0
#include "GamutViewCase.h"

#include "support/Vec3d.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

using namespace kvtest;

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nearPlane = 0.1, farPlane = 1500.0; // of the documented projection

/// Bounds of what is seen, as shares of the picture: 0 at its left and top, 1 at its right and bottom.
struct Seen
{
    double left = inf, top = inf, right = -inf, bottom = -inf;
    double nearest = inf, farthest = -inf; ///< depths

    void add(double x, double y, double depth)
    {
        left = std::min(left, x);
        right = std::max(right, x);
        top = std::min(top, y);
        bottom = std::max(bottom, y);
        nearest = std::min(nearest, depth);
        farthest = std::max(farthest, depth);
    }
    double tighterMargin() const { return std::min({left, top, 1.0 - right, 1.0 - bottom}); }
    bool isTightOnOneAxis(double most) const
    {
        return std::max(left, 1.0 - right) <= most || std::max(top, 1.0 - bottom) <= most;
    }
};

/// Projects in double precision from the definition of the camera: L* points up in the picture.
class Projection
{
public:
    Projection(const KVCamera& camera, const QSize& size)
        : m_eye(space(camera.position)), m_forward(unit(space(camera.interestPoint) - m_eye)),
          m_right(unit(cross(m_forward, {0, 0, 1}))), m_up(cross(m_right, m_forward)),
          m_half(std::tan(double(camera.viewingAngle) * std::numbers::pi / 360.0)),
          m_distance(camera.orthogonal ? dot(space(camera.interestPoint) - m_eye, m_forward) : 0.0),
          m_size(size)
    {
    }

    void add(Seen& seen, const QVector3D& lab, const QRectF& box = {}) const
    {
        const Vec3d p = space(lab) - m_eye;
        const double depth = dot(p, m_forward);
        const double unit =
            2.0 * m_half * (m_distance > 0.0 ? m_distance : depth); // height of the picture there
        const double aspect = double(m_size.width()) / m_size.height();
        const double x = 0.5 + dot(p, m_right) / (unit * aspect);
        const double y = 0.5 - dot(p, m_up) / unit;
        seen.add(x + box.left() / m_size.width(), y + box.top() / m_size.height(), depth);
        seen.add(x + box.right() / m_size.width(), y + box.bottom() / m_size.height(), depth);
    }

    /// In pixels.
    QPointF pixelOf(const QVector3D& lab) const
    {
        Seen seen;
        add(seen, lab);
        return {seen.left * m_size.width(), seen.top * m_size.height()};
    }

    Seen of(const KVFraming& framing) const
    {
        Seen seen;
        for (const QVector3D& position : framing.positions)
            add(seen, position);
        for (const KVFraming::Label& label : framing.labels)
            add(seen, label.position, label.box);
        return seen;
    }

private:
    static Vec3d space(const QVector3D& lab) { return {lab.y(), lab.z(), lab.x()}; }

    Vec3d m_eye, m_forward, m_right, m_up;
    double m_half;
    double m_distance;
    QSize m_size;
};

constexpr QSize sizes[] = {{100, 100},  {320, 200},  {200, 320},  {1024, 768}, {1920, 1080},
                           {400, 1000}, {300, 1500}, {3000, 600}, {8000, 500}, {2000, 2001}};

/// One to four bodies of random extent and place, like the gamuts of devices, and the axes.
KVFraming randomGamuts(std::mt19937& random)
{
    std::uniform_real_distribution<float> share(0.0f, 1.0f);
    KVFraming framing;
    const int bodies = 1 + static_cast<int>(share(random) * 3.99f);
    for (int i = 0; i < bodies; ++i) {
        const float size = 0.05f + share(random);
        const QVector3D centre(20 + 60 * share(random), 80 * (share(random) - 0.5f),
                               80 * (share(random) - 0.5f));
        for (int k = 0; k < 200; ++k)
            framing.positions.append(centre + size * QVector3D(60 * (share(random) - 0.5f),
                                                               220 * (share(random) - 0.5f),
                                                               220 * (share(random) - 0.5f)));
    }
    if (share(random) < 0.7f)
        framing.positions += {{0, 0, 0}, {100, 0, 0}, {0, 110, 0}, {0, 0, 110}};
    return framing;
}

KVCamera randomCamera(std::mt19937& random)
{
    std::uniform_real_distribution<float> share(-1.0f, 1.0f);
    KVCamera camera;
    camera.position = {300 * share(random), 500 * share(random), 500 * share(random)};
    camera.interestPoint = {50, 20 * share(random), 20 * share(random)};
    return camera;
}

/// Whether @p point is inside the convex hull of @p points: seen from inside, no gap between the directions
/// to them reaches half a turn.
bool isEnclosed(const QPointF& point, const std::vector<QPointF>& points)
{
    std::vector<double> angles;
    for (const QPointF& p : points)
        angles.push_back(std::atan2(p.y() - point.y(), p.x() - point.x()));
    std::sort(angles.begin(), angles.end());
    double widest = angles.front() + 2.0 * std::numbers::pi - angles.back();
    for (std::size_t i = 1; i < angles.size(); ++i)
        widest = std::max(widest, angles[i] - angles[i - 1]);
    return widest < std::numbers::pi;
}

/// Whether the convex hull of what @p camera shows of @p framing has a corner in one of the rectangles that
/// are taken, or encloses a point of one.
bool coversWhatIsTaken(const KVFraming& framing, const KVCamera& camera, const QSize& size)
{
    const Projection projection(camera, size);
    std::vector<QPointF> points;
    for (const QVector3D& position : framing.positions)
        points.push_back(projection.pixelOf(position));
    constexpr int steps = 6;
    for (const QRectF& taken : framing.taken) {
        const QRectF rect = taken.adjusted(0.1, 0.1, -0.1, -0.1); // the camera is rounded to floats
        for (const KVFraming::Label& label : framing.labels)
            if (label.box.translated(projection.pixelOf(label.position)).intersects(rect))
                return true;
        for (const QPointF& p : points)
            if (rect.contains(p))
                return true;
        for (int i = 1; i < steps; ++i)
            for (int j = 1; j < steps; ++j)
                if (isEnclosed(
                        {rect.left() + rect.width() * i / steps, rect.top() + rect.height() * j / steps},
                        points))
                    return true;
    }
    return false;
}

/// A legend, a scale bar and a caption, all within their shares of the picture.
QList<QRectF> randomPlacesTaken(std::mt19937& random, const QSize& size)
{
    std::uniform_real_distribution<double> share(0.05, 1.0);
    const double w = size.width(), h = size.height();
    QList<QRectF> taken{{0, 0, 0.5 * w * share(random), 0.25 * h * share(random)}};
    if (share(random) < 0.5)
        taken.append({0.9 * w, 0.02 * h, 0.1 * w, 0.4 * h * share(random)});
    if (share(random) < 0.5)
        taken.append({0.3 * w, 0.93 * h, 0.4 * w, 0.07 * h});
    return taken;
}

/// Half the height that the camera sees at the point of interest, Lab units.
double halfHeight(const KVCamera& camera)
{
    return std::tan(double(camera.viewingAngle) * std::numbers::pi / 360.0) *
           double((camera.interestPoint - camera.position).length());
}

/// A ball of radius 50, in the axes L*, a* and b*.
KVFraming ball()
{
    KVFraming framing;
    for (int i = 0; i < 180; ++i)
        for (int j = 0; j <= 90; ++j) {
            const double azimuth = i * std::numbers::pi / 90.0, polar = j * std::numbers::pi / 90.0;
            framing.positions.append(QVector3D(float(50.0 + 50.0 * std::cos(polar)),
                                               float(50.0 * std::sin(polar) * std::cos(azimuth)),
                                               float(50.0 * std::sin(polar) * std::sin(azimuth))));
        }
    return framing;
}

using Framing = GamutViewCase;

} // namespace

TEST_F(Framing, fillsPicturesOfEveryShapeWithRandomGamuts)
{
    std::mt19937 random(14);
    for (int set = 0; set < 40; ++set) {
        const KVFraming framing = randomGamuts(random);
        KVCamera camera = randomCamera(random);
        for (const QSize& size : sizes)
            for (const bool orthogonal : {false, true}) {
                camera.orthogonal = orthogonal;
                const KVCamera framed = KVGamutView::framing(camera, framing, size);
                ASSERT_TRUE(framed.isValid());
                const Seen seen = Projection(framed, size).of(framing);
                EXPECT_GE(seen.tighterMargin(), 0.02)
                    << set << " in " << size.width() << "x" << size.height();
                EXPECT_TRUE(seen.isTightOnOneAxis(0.08))
                    << set << " in " << size.width() << "x" << size.height();
                EXPECT_GT(seen.nearest, nearPlane);
                EXPECT_LT(seen.farthest, farPlane);
            }
    }
}

TEST_F(Framing, keepsLabelsInsideThePicture)
{
    std::mt19937 random(15);
    for (int set = 0; set < 40; ++set) {
        KVFraming framing = randomGamuts(random);
        // numbers beside the axis, a title above it
        for (int L = 0; L <= 100; L += 20)
            framing.labels.append({QVector3D(float(L), 0, 0), QRectF(-40, -8, 34, 16)});
        framing.labels.append({{0, 110, 0}, QRectF(4, -10, 24, 20)});
        framing.labels.append({{100, 0, 0}, QRectF(-12, -26, 24, 22)});
        KVCamera camera = randomCamera(random);
        for (const QSize& size : sizes)
            for (const bool orthogonal : {false, true}) {
                camera.orthogonal = orthogonal;
                const Seen seen = Projection(KVGamutView::framing(camera, framing, size), size).of(framing);
                EXPECT_GE(seen.tighterMargin(), 0.02)
                    << set << " in " << size.width() << "x" << size.height();
                EXPECT_TRUE(seen.isTightOnOneAxis(0.08))
                    << set << " in " << size.width() << "x" << size.height();
            }
    }
}

TEST_F(Framing, leavesWhatIsTakenFree)
{
    std::mt19937 random(17);
    int passed = 0, all = 0;
    for (int set = 0; set < 20; ++set) {
        KVFraming framing = randomGamuts(random);
        for (int L = 0; L <= 100; L += 20)
            framing.labels.append({QVector3D(float(L), -60, 0), QRectF(-20, -4, 17, 8)});
        KVCamera camera = randomCamera(random);
        for (const QSize& size : sizes)
            for (const bool orthogonal : {false, true}) {
                camera.orthogonal = orthogonal;
                framing.taken.clear();
                const KVCamera whole = KVGamutView::framing(camera, framing, size);
                framing.taken = randomPlacesTaken(random, size);
                const KVCamera beside = KVGamutView::framing(camera, framing, size);
                const Seen seen = Projection(beside, size).of(framing);
                EXPECT_GE(seen.tighterMargin(), 0.02);
                EXPECT_LE(halfHeight(beside), halfHeight(whole) / 0.75 * 1.001) << "too small";
                ++all;
                const bool isFree = !coversWhatIsTaken(framing, beside, size);
                passed += isFree;
                EXPECT_TRUE(isFree || beside == whole)
                    << set << " in " << size.width() << "x" << size.height();
            }
    }
    EXPECT_GT(passed, 0.9 * all) << "of " << all << "; the others would become too small";
}

TEST_F(Framing, passesACornerThatIsTaken)
{
    KVFraming framing = ball();
    KVCamera camera;
    camera.orthogonal = true;
    const QSize size(1000, 1000);
    // A disc between the right margin, the lower margin and the corner (300, 100) has the radius 454.5
    // pixels; one below the strip of 100 pixels would have 430, one without the legend 460.
    framing.taken = {QRectF(0, 0, 300, 100)};
    const double radius = 500.0 * 50.0 / halfHeight(KVGamutView::framing(camera, framing, size));
    EXPECT_GT(radius, 438.0);
    EXPECT_LT(radius, 454.6);
    // what is not in its way has no effect
    const KVCamera free = KVGamutView::framing(camera, ball(), size);
    framing.taken = {QRectF(0, 0, 120, 60), QRectF(2000, 0, 10, 10)};
    EXPECT_EQ(KVGamutView::framing(camera, framing, size), free);
}

TEST_F(Framing, coversWhatIsTakenRatherThanBecomeTiny)
{
    KVFraming framing = ball();
    framing.taken = {QRectF(0, 0, 400, 200)};
    const KVCamera whole = KVGamutView::framing(KVCamera(), ball(), {400, 300});
    EXPECT_EQ(KVGamutView::framing(KVCamera(), framing, {400, 300}), whole);
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    framing.taken = {QRectF(nan, 0, 10, 10), QRectF(0, 0, 1e300 * 1e10, 3), QRectF(-1e9, -1e9, 3e9, 3e9)};
    EXPECT_EQ(KVGamutView::framing(KVCamera(), framing, {400, 300}), whole);
}

TEST_F(Framing, leavesRoomForLegendCaptionAndScaleBar)
{
    showAndWait(QStringLiteral("a"));
    KVAnnotations annotations;
    const QSize size(640, 480);
    EXPECT_TRUE(view->shownFraming(size).taken.isEmpty());
    annotations.legend = {{QStringLiteral("a"), QStringLiteral("A gamut"), QStringLiteral("100"), Qt::red},
                          {QStringLiteral("b"), QStringLiteral("Another"), QString(), Qt::blue}};
    annotations.caption = QStringLiteral("What it shows");
    annotations.scaleBar = {QStringLiteral("Distance"), {Qt::red, Qt::green}, 0.0f, 3.0f};
    view->setAnnotations(annotations);
    const KVFraming framing = view->shownFraming(size);
    const auto isTaken = [&](const QPointF& pixel) {
        return std::any_of(framing.taken.begin(), framing.taken.end(),
                           [&](const QRectF& rect) { return rect.contains(pixel); });
    };
    EXPECT_TRUE(isTaken({40, 16})) << "first row of the legend";
    EXPECT_TRUE(isTaken({40, 31})) << "second row";
    EXPECT_TRUE(isTaken({320, 468})) << "caption";
    EXPECT_TRUE(isTaken({605, 100})) << "scale bar";
    EXPECT_TRUE(isTaken({605, 16})) << "its title";
    EXPECT_FALSE(isTaken({320, 240}));
    EXPECT_TRUE(view->shownFraming().taken.isEmpty()) << "a size is needed";
    EXPECT_FALSE(coversWhatIsTaken(framing, KVGamutView::framing(view->camera(), framing, size), size));
}

TEST_F(Framing, keepsDirectionAngleAndProjection)
{
    std::mt19937 random(16);
    for (int set = 0; set < 10; ++set) {
        const KVFraming framing = randomGamuts(random);
        const KVCamera camera = randomCamera(random);
        const KVCamera framed = KVGamutView::framing(camera, framing, {1024, 768});
        EXPECT_NEAR(framed.viewingAngle, 30.0f, 1e-4f);
        const QVector3D before = (camera.interestPoint - camera.position).normalized();
        const QVector3D after = (framed.interestPoint - framed.position).normalized();
        EXPECT_LT((before - after).length(), 1e-5f);
        EXPECT_FALSE(framed.orthogonal);
    }
}

TEST_F(Framing, looksFromAboveWithPlusAToTheRight)
{
    // the azimuth of a camera straight above is a direction of 10^-7, which rounding must not turn
    for (const KVCamera& preset : {KVCamera(), KVCamera{{-522.48712f, 0, -1.1920929e-7f}, {50, 0, 0}}}) {
        const KVFraming framing{{{0, 20, 31}, {0, 90, 31}, {0, 20, 101}, {80, 50, 60}}, {}};
        view->setCamera(KVGamutView::framing(preset, framing, {400, 300}));
        viewer->resize(400, 300);
        const KVCamera framed = view->camera();
        EXPECT_NEAR(framed.position.y(), framed.interestPoint.y(), 0.1f);
        EXPECT_LT(framed.position.z(), framed.interestPoint.z()); // as in the preset
        EXPECT_LT(std::abs(framed.position.y() - framed.interestPoint.y()),
                  0.01f * std::abs(framed.position.z() - framed.interestPoint.z()));
    }
}

TEST_F(Framing, replacesACameraThatIsNotValid)
{
    const KVFraming framing{{{0, 0, 0}, {100, 50, 20}}, {}};
    KVCamera broken;
    broken.viewingAngle = 0.0f;
    EXPECT_EQ(KVGamutView::framing(broken, framing, {100, 100}),
              KVGamutView::framing(KVCamera(), framing, {100, 100}));
}

TEST_F(Framing, ofNothingKeepsTheCamera)
{
    const KVCamera camera{{300, 100, -200}, {50, 10, 5}, 40, false};
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(KVGamutView::framing(camera, KVFraming(), {100, 100}), camera);
    EXPECT_EQ(KVGamutView::framing(camera, KVFraming{{{nan, 0, 0}}, {}}, {100, 100}), camera);
    EXPECT_EQ(KVGamutView::framing(camera, KVFraming{{{50, 0, 0}}, {}}, QSize(0, 100)), camera);
    EXPECT_EQ(KVGamutView(nullptr).shownFraming().positions.size(), 0);
}

TEST_F(Framing, survivesHostileInput)
{
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    KVFraming framing{{{50, 0, 0}, {nan, 1, 1}, {60, 3, 1e30f}, {-1e30f, 0, 0}},
                      {{{50, 0, 0}, {-9e9, -9e9, 2e10, 2e10}}}};
    for (const float margin : {nan, -1.0f, 0.5f, 1e9f})
        for (const bool orthogonal : {false, true}) {
            framing.margin = margin;
            KVCamera camera;
            camera.orthogonal = orthogonal;
            const KVCamera framed = KVGamutView::framing(camera, framing, {16, 8192});
            EXPECT_GE(framed.viewingAngle, KVCamera::minAngle);
            EXPECT_LE(framed.viewingAngle, KVCamera::maxAngle);
        }
    EXPECT_TRUE(KVGamutView::framing(KVCamera(), KVFraming{{{50, 1, 2}}, {}}, {300, 200}).isValid());
}

TEST_F(Framing, containsTheVisiblePartsOfAGamut)
{
    viewer->setDisplayAxes(false);
    const QString id = QStringLiteral("a");
    showAndWait(id);
    const qsizetype all = view->shownFraming().positions.size();
    EXPECT_GT(all, 0);
    KVGamutLook look = view->look(id);
    look.projection = false;
    view->setLook(id, look);
    const QList<QVector3D> body = view->shownFraming().positions;
    EXPECT_LT(body.size(), all);
    for (const KVGamut::LabPoint& corner : view->gamut(id).mesh().lab)
        EXPECT_TRUE(body.contains(QVector3D(corner.L, corner.a, corner.b)));
    look.visible = false;
    view->setLook(id, look);
    EXPECT_TRUE(view->shownFraming().positions.isEmpty());
}

TEST_F(Framing, containsWhatIsShownExceptTheGrid)
{
    viewer->setDisplayAxes(false);
    EXPECT_TRUE(view->shownFraming().positions.isEmpty()) << "the grid is not framed";
    viewer->addPointSet(QStringLiteral("points"), {{Qt::red, {50, 60, -70}}});
    const auto reaches = [this](const QVector3D& lab) {
        const KVFraming framing = view->shownFraming();
        return std::any_of(framing.positions.begin(), framing.positions.end(),
                           [&](const QVector3D& p) { return (p - lab).length() < 3.0f; });
    };
    EXPECT_TRUE(reaches({50, 60, -70}));
    viewer->clearPointSet();
    EXPECT_FALSE(reaches({50, 60, -70}));
    viewer->setDisplayAxes(true);
    for (const QVector3D& end : {QVector3D(100, 0, 0), QVector3D(0, 110, 0), QVector3D(0, 0, 110)})
        EXPECT_TRUE(reaches(end));
}
