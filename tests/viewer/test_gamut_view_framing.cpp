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
