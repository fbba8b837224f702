// SPDX-License-Identifier: Apache-2.0
#include "CameraOracle.h"

#include <cfloat>
#include <limits>
#include <random>

using namespace kvtest;

namespace {

constexpr float pi = 3.14159265f;
constexpr float quarter = pi / 2.0f;

const std::vector<std::pair<QVector3D, QVector3D>> views = {
    {{0, 0, -350}, {0, 0, 0}},        {{10, 20, 30}, {-5, 60, 7}},      {{-200, 5, 100}, {0, 50, 0}},
    {{0.5f, 0.25f, 1.5f}, {0, 0, 0}}, {{300, -280, 10}, {12, 50, -33}}, {{0, 400, -1}, {0, 50, 0}},
    {{-1, -500, -1}, {0, 50, 0}},
};

/// Compares all values of the orbit with the independent computation.
void expectOrbit(const CameraState& c, const OrbitOracle& o, double relative = 2e-6)
{
    const double scale = std::max({1.0, o.distance, length(o.eye), length(o.interest)});
    expectVector(c.eye(), o.eye, relative * scale, "eye");
    expectVector(c.interestPoint(), o.interest, relative * scale, "interest");
    expectVector(c.up(), o.up(), 4.0 * relative * scale, "up");
    EXPECT_NEAR(c.distance(), o.distance, relative * scale);
    EXPECT_NEAR(c.azimuth(), o.azimuth, 1e-5);
    EXPECT_NEAR(c.polarAngle(), o.polar, 1e-3); // acos has half the precision near -1 and 1
}

Matrix4d asDouble(const QMatrix4x4& m)
{
    Matrix4d d{};
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c)
            d[std::size_t(r)][std::size_t(c)] = m(r, c);
    }
    return d;
}

} // namespace

// ---- construction ---------------------------------------------------------------------------

TEST(CameraState, hasDocumentedDefaults)
{
    const CameraState c;
    EXPECT_EQ(c.eye(), QVector3D(0, 0, -350));
    EXPECT_EQ(c.interestPoint(), QVector3D(0, 0, 0));
    EXPECT_FLOAT_EQ(c.azimuth(), -quarter);
    EXPECT_FLOAT_EQ(c.polarAngle(), quarter);
    EXPECT_EQ(c.distance(), 350.0f);
    expectVector(c.up(), {0, 350, 0}, 1e-4);
    EXPECT_EQ(c.viewingAngle(), 30.0f);
    EXPECT_EQ(c.aspect(), 1.0f);
    EXPECT_FALSE(c.orthogonal());
    EXPECT_TRUE(c.projectionOverride().isIdentity());
}

TEST(CameraState, derivesAnglesDistanceAndUpFromEyeAndInterest)
{
    for (const auto& [eye, interest] : views) {
        const OrbitOracle expected{Vec3d(eye), Vec3d(interest)};
        expectOrbit(CameraState(eye, interest), expected);
        CameraState c;
        c.setEyeAndInterest(eye, interest);
        EXPECT_EQ(c.eye(), eye);
        EXPECT_EQ(c.interestPoint(), interest);
        expectOrbit(c, expected);
        EXPECT_EQ(c.viewingAngle(), 30.0f);
        EXPECT_EQ(c.aspect(), 1.0f);
        EXPECT_FALSE(c.orthogonal());
    }
}

TEST(CameraState, setInterestKeepsTheEye)
{
    CameraState c({10, 20, 30}, {0, 0, 0});
    c.setInterest({-50, 60, 70});
    EXPECT_EQ(c.eye(), QVector3D(10, 20, 30));
    expectOrbit(c, {{10, 20, 30}, {-50, 60, 70}});
}

TEST(CameraState, setEyeAndInterestKeepsTheProjection)
{
    CameraState c;
    c.setViewingAngle(55.0f);
    c.setAspect(300, 200);
    c.setOrthogonal(true);
    QMatrix4x4 override;
    override.scale(3.0f);
    c.setProjectionOverride(override);
    c.setEyeAndInterest({1, 2, 3}, {4, 5, 6});
    EXPECT_EQ(c.viewingAngle(), 55.0f);
    EXPECT_EQ(c.aspect(), 1.5f);
    EXPECT_TRUE(c.orthogonal());
    EXPECT_EQ(c.projectionOverride(), override);
}

TEST(CameraState, eyeAtTheInterestPointHasDistanceZero)
{
    CameraState c;
    c.setEyeAndInterest({3, 4, 5}, {3, 4, 5});
    EXPECT_EQ(c.distance(), 0.0f);
    EXPECT_EQ(c.azimuth(), 0.0f);
    EXPECT_TRUE(std::isnan(c.polarAngle()));
    EXPECT_EQ(c.eye(), QVector3D(3, 4, 5));
    EXPECT_EQ(c.interestPoint(), QVector3D(3, 4, 5));
    EXPECT_EQ(c.up(), QVector3D(0, 0, 0));
}

TEST(CameraState, distanceOfLargeCoordinatesDoesNotOverflow)
{
    const CameraState c({1e25f, 0, 1e25f}, {0, 0, 0});
    EXPECT_NEAR(c.distance() / (std::sqrt(2.0) * 1e25), 1.0, 1e-6);
    EXPECT_NEAR(c.azimuth(), M_PI / 4.0, 1e-6);
    EXPECT_NEAR(c.polarAngle(), M_PI / 2.0, 1e-6);
}

TEST(CameraState, signOfZeroDecidesTheAzimuth)
{
    EXPECT_FLOAT_EQ(CameraState({-1, 0, 0.0f}, {}).azimuth(), pi);
    EXPECT_FLOAT_EQ(CameraState({-1, 0, -0.0f}, {}).azimuth(), -pi);
    EXPECT_EQ(CameraState({0.0f, 5, 0.0f}, {}).azimuth(), 0.0f);
    EXPECT_FLOAT_EQ(CameraState({-0.0f, 5, 0.0f}, {}).azimuth(), pi);
    EXPECT_FLOAT_EQ(CameraState({-0.0f, 5, -0.0f}, {}).azimuth(), -pi);
}

TEST(CameraState, topViewHasTheDefaultAzimuth)
{
    const CameraState top({-0.0f, 522.48712f, -1.1920929e-7f}, {-0.0f, 50, 0});
    EXPECT_FLOAT_EQ(top.azimuth(), -quarter);
    EXPECT_EQ(top.polarAngle(), 0.0f);
    EXPECT_FLOAT_EQ(top.distance(), 472.48712f);
    const CameraState bottom({-0.0f, -522.48712f, -1.1920929e-7f}, {-0.0f, 50, 0});
    EXPECT_FLOAT_EQ(bottom.azimuth(), -quarter);
    EXPECT_FLOAT_EQ(bottom.polarAngle(), pi);
    EXPECT_FLOAT_EQ(bottom.distance(), 572.48712f);
    // Scene X runs to the left, so that a* runs to the right; b* runs up.
    for (const CameraState& c : {top, bottom}) {
        const Axes axes(c);
        EXPECT_NEAR(axes.up.z, c.eye().y() > 0 ? 1.0 : -1.0, 1e-5);
    }
    EXPECT_NEAR(Axes(top).right.x, -1.0, 1e-5);
}

// ---- rotate ---------------------------------------------------------------------------------

TEST(CameraRotation, movesTheEyeOnASphere)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<float> turn(-1.2f, 1.2f);
    for (const auto& [eye, interest] : views) {
        CameraState c(eye, interest);
        OrbitOracle o{Vec3d(eye), Vec3d(interest)};
        // Starts from the angles of the camera, to exclude their rounding error.
        o.azimuth = c.azimuth();
        o.polar = c.polarAngle();
        o.distance = c.distance();
        for (int i = 0; i < 30; ++i) {
            const float dA = turn(random), dP = turn(random);
            c.rotate(dA, dP);
            o.azimuth += double(dA);
            o.polar += double(dP);
            o.moveEye();
            expectOrbit(c, o, 2e-5);
            EXPECT_NEAR(c.polarAngle(), o.polar, 1e-4);
            EXPECT_EQ(c.interestPoint(), interest);
        }
    }
}

TEST(CameraRotation, anglesAreNotLimited)
{
    CameraState c;
    c.rotate(0, 1.0f); // polar angle pi/2 + 1
    EXPECT_GT(c.up().y(), 0.0f);
    c.rotate(0, 1.0f); // beyond pi: upside down
    EXPECT_FLOAT_EQ(c.polarAngle(), quarter + 2.0f);
    EXPECT_LT(c.up().y(), 0.0f);
    EXPECT_NEAR(c.up().y(), 350.0 * std::sin(M_PI / 2.0 + 2.0), 1e-2);
    c.rotate(0, -5.0f); // below 0: upside down again
    EXPECT_FLOAT_EQ(c.polarAngle(), quarter - 3.0f);
    EXPECT_LT(c.up().y(), 0.0f);
    for (int i = 0; i < 10; ++i)
        c.rotate(pi, 0);
    EXPECT_NEAR(c.azimuth(), -M_PI / 2.0 + 10.0 * M_PI, 1e-4);
    EXPECT_FLOAT_EQ(c.distance(), 350.0f);
}

TEST(CameraRotation, fullTurnReturnsToTheStart)
{
    CameraState c({100, 80, -60}, {0, 50, 0});
    const QVector3D eye = c.eye();
    c.rotate(2.0f * pi, 0);
    expectVector(c.eye(), Vec3d(eye), 1e-3);
    c.rotate(0, -2.0f * pi);
    expectVector(c.eye(), Vec3d(eye), 1e-3);
}

TEST(CameraRotation, pictureNeverRolls)
{
    CameraState c({100, 80, -60}, {0, 50, 0});
    for (int i = 0; i < 100; ++i) {
        c.rotate(0.37f, 0.23f);
        const Vec3d d = unit(Vec3d(c.eye()) - Vec3d(c.interestPoint()));
        EXPECT_NEAR(dot(unit(Vec3d(c.up())), d), 0.0, 1e-4);
        EXPECT_NEAR(Axes(c).right.y, 0.0, 1e-4) << "the horizon must be level";
    }
}

// ---- zoom -----------------------------------------------------------------------------------

TEST(CameraZoom, changesOnlyTheDistance)
{
    for (const auto& [eye, interest] : views) {
        CameraState c(eye, interest);
        const OrbitOracle before{Vec3d(eye), Vec3d(interest)};
        c.zoom(33.25f);
        const Vec3d expected =
            before.interest + (before.distance + 33.25) / before.distance * (before.eye - before.interest);
        // The polar angle is an arc cosine in float, which is imprecise near the poles.
        const double pole = (before.distance + 33.25) * FLT_EPSILON / std::sin(before.polar);
        expectVector(c.eye(), expected, 1e-3 + pole);
        EXPECT_NEAR(c.distance(), before.distance + 33.25, 1e-3);
        EXPECT_NEAR(c.azimuth(), before.azimuth, 1e-5);
        EXPECT_EQ(c.interestPoint(), interest);
        EXPECT_NEAR(length(Vec3d(c.up())), before.distance + 33.25, 5e-3);
    }
}

struct ZoomRow
{
    const char* sentence;
    float distance;
    float step;
    float expected;
};

class ZoomLimit : public testing::TestWithParam<ZoomRow>
{
};

TEST_P(ZoomLimit, stepBelowTheMinimumIsIgnored)
{
    const ZoomRow zoom = GetParam();
    CameraState c({0, 0, -zoom.distance}, {0, 0, 0});
    ASSERT_FLOAT_EQ(c.distance(), zoom.distance);
    c.zoom(zoom.step);
    EXPECT_NEAR(c.distance(), zoom.expected, 1e-5 * zoom.expected);
    expectVector(c.eye(), {0, 0, -double(zoom.expected)}, 1e-5 * zoom.expected);
    c.zoom(1.0f); // a valid step still works
    EXPECT_NEAR(c.distance(), zoom.expected + 1.0f, 1e-5 * zoom.expected);
}

INSTANTIATE_TEST_SUITE_P(
    CameraZoom, ZoomLimit,
    testing::Values(ZoomRow{"nineOfTenIsRefused", 10, -9, 10}, ZoomRow{"downToOnePointTwo", 10, -8.8f, 1.2f},
                    ZoomRow{"exactlyTheSmallest", 1.1f, 0, 1.1f}, ZoomRow{"justBelow", 1.1f, -0.001f, 1.1f},
                    ZoomRow{"throughThePoint", 10, -20, 10}, ZoomRow{"farBeyond", 10, -1e6f, 10},
                    ZoomRow{"noUpperLimit", 10, 1e6f, 1000010}),
    [](const auto& row) { return std::string(row.param.sentence); });

TEST(CameraZoom, canLeaveADistanceBelowTheMinimum)
{
    CameraState c({0, 0, -0.5f}, {0, 0, 0});
    c.zoom(0.1f);
    EXPECT_FLOAT_EQ(c.distance(), 0.5f);
    c.zoom(2.0f);
    EXPECT_FLOAT_EQ(c.distance(), 2.5f);
}

// ---- pan ------------------------------------------------------------------------------------

TEST(CameraPan, movesEyeAndInterestIndependentOfTheDistance)
{
    for (const auto& [eye, interest] : views) {
        CameraState c(eye, interest);
        const Axes axes(c);
        const CameraState before = c;
        c.pan(13.0f, -7.0f);
        const Vec3d offset = 13.0 * axes.right + 7.0 * axes.up;
        EXPECT_NEAR(length(offset), std::hypot(13.0, 7.0), 1e-9);
        expectVector(c.eye(), Vec3d(eye) + offset, 1e-3);
        expectVector(c.interestPoint(), Vec3d(interest) + offset, 1e-3);
        EXPECT_EQ(c.azimuth(), before.azimuth());
        EXPECT_EQ(c.polarAngle(), before.polarAngle());
        EXPECT_EQ(c.distance(), before.distance());
        EXPECT_EQ(c.up(), before.up());
    }
}

TEST(CameraPan, degenerateCameraDoesNotMove)
{
    CameraState c({3, 4, 5}, {3, 4, 5});
    c.pan(10, 20);
    EXPECT_EQ(c.eye(), QVector3D(3, 4, 5));
    EXPECT_EQ(c.interestPoint(), QVector3D(3, 4, 5));
}

TEST(CameraPan, positiveOffsetsMoveTheCameraRightAndDown)
{
    CameraState c; // looks along +Z with +Y up: right is -X
    c.pan(10, 0);
    expectVector(c.eye(), {-10, 0, -350}, 1e-4);
    expectVector(c.interestPoint(), {-10, 0, 0}, 1e-4);
    c.pan(0, 5);
    expectVector(c.eye(), {-10, -5, -350}, 1e-4);
}

// ---- matrices -------------------------------------------------------------------------------

TEST(CameraMatrices, viewMatrixLooksFromTheEyeAtTheInterestPoint)
{
    for (const auto& [eye, interest] : views) {
        const CameraState c(eye, interest);
        // Computed from eye and interest, because the up vector is imprecise near the poles.
        const OrbitOracle o{Vec3d(eye), Vec3d(interest)};
        expectMatrix(c.viewMatrix(), lookAtOracle(o.eye, Axes(o.eye, o.interest, o.up())), 2e-5);
    }
}

TEST(CameraMatrices, perspectiveDependsOnAngleAndAspect)
{
    for (const float angle : {1.0f, 30.0f, 60.0f, 120.0f}) {
        for (const auto& [w, h] : {std::pair(100, 100), std::pair(1600, 900), std::pair(200, 700)}) {
            CameraState c;
            c.setViewingAngle(angle);
            c.setAspect(w, h);
            expectMatrix(c.projectionMatrix(), perspectiveOracle(angle, double(w) / h));
        }
    }
}

TEST(CameraMatrices, orthogonalShowsTheSameHeightAtTheInterestPoint)
{
    for (const auto& [eye, interest] : views) {
        CameraState c(eye, interest);
        c.setAspect(1600, 900);
        c.setOrthogonal(true);
        const double distance = length(Vec3d(eye) - Vec3d(interest));
        const double h = distance * std::tan(radians(15.0));
        expectMatrix(c.projectionMatrix(), orthogonalOracle(h, 1600.0 / 900.0));

        // A point at the upper edge of one projection is at the upper edge of the other one.
        const Axes axes(c);
        const Vec3d edge = Vec3d(interest) + h * axes.up;
        const QVector3D point = QVector3D(float(edge.x), float(edge.y), float(edge.z));
        EXPECT_NEAR((c.projectionMatrix() * c.viewMatrix()).map(point).y(), 1.0, 2e-3);
        c.setOrthogonal(false);
        EXPECT_NEAR((c.projectionMatrix() * c.viewMatrix()).map(point).y(), 1.0, 2e-3);
    }
}

TEST(CameraMatrices, orthogonalHeightDependsOnZoomAndAngle)
{
    CameraState c;
    c.setOrthogonal(true);
    c.zoom(-250.0f);
    expectMatrix(c.projectionMatrix(), orthogonalOracle(100.0 * std::tan(radians(15.0)), 1.0));
    c.setViewingAngle(80.0f);
    expectMatrix(c.projectionMatrix(), orthogonalOracle(100.0 * std::tan(radians(40.0)), 1.0));
    c.setViewingAngle(-80.0f);
    expectMatrix(c.projectionMatrix(), orthogonalOracle(100.0 * std::tan(radians(40.0)), 1.0));
}

TEST(CameraMatrices, orthogonalUsesTheDistanceFromEyeToInterest)
{
    // Half way between these cameras the stored distance is 100, the actual one 70.7.
    CameraState from({0, 0, -100}, {0, 0, 0}), to({0, 100, 0}, {0, 0, 0});
    CameraState c;
    c.setBetween(from, to, 0.5f);
    c.setOrthogonal(true);
    EXPECT_FLOAT_EQ(c.distance(), 100.0f);
    const double real = std::hypot(50.0, 50.0);
    expectMatrix(c.projectionMatrix(), orthogonalOracle(real * std::tan(radians(15.0)), 1.0));
}

TEST(CameraMatrices, overrideReplacesTheProjection)
{
    CameraState c;
    QMatrix4x4 override;
    override.ortho(-1, 2, -3, 4, 5, 6);
    c.setProjectionOverride(override);
    EXPECT_EQ(c.projectionMatrix(), override);
    EXPECT_EQ(c.projectionOverride(), override);
    c.setViewingAngle(77.0f);
    c.setAspect(3, 1);
    c.rotate(1, 1);
    c.zoom(5);
    c.pan(1, 1);
    EXPECT_EQ(c.projectionMatrix(), override);
    c.resetProjectionOverride();
    EXPECT_TRUE(c.projectionOverride().isIdentity());
    expectMatrix(c.projectionMatrix(), perspectiveOracle(77.0, 3.0));
}

TEST(CameraMatrices, setOrthogonalResetsTheOverride)
{
    for (const bool orthogonal : {false, true}) {
        CameraState c;
        QMatrix4x4 override;
        override.scale(4.0f);
        c.setProjectionOverride(override);
        c.setOrthogonal(orthogonal);
        EXPECT_EQ(c.orthogonal(), orthogonal);
        EXPECT_TRUE(c.projectionOverride().isIdentity());
    }
}

TEST(CameraMatrices, identityOverrideMeansNoOverride)
{
    CameraState c;
    QMatrix4x4 identity;
    identity.translate(0, 0, 0);
    c.setProjectionOverride(identity);
    expectMatrix(c.projectionMatrix(), perspectiveOracle(30.0, 1.0));
}

TEST(CameraMatrices, aspectIsWidthOverHeight)
{
    CameraState c;
    c.setAspect(800, 600);
    EXPECT_EQ(c.aspect(), 800.0f / 600.0f);
    c.setAspect(1, 3);
    EXPECT_EQ(c.aspect(), 1.0f / 3.0f);
    c.setAspect(5, 0);
    EXPECT_TRUE(std::isinf(c.aspect()));
    c.setAspect(0, 0);
    EXPECT_TRUE(std::isnan(c.aspect()));
}

// ---- equality -------------------------------------------------------------------------------

TEST(CameraEquality, comparesEveryVisibleField)
{
    const CameraState c({10, 20, 30}, {1, 2, 3});
    const auto differs = [&](auto change) {
        CameraState other = c;
        EXPECT_TRUE(other == c);
        EXPECT_FALSE(other != c);
        change(other);
        EXPECT_FALSE(other == c);
        EXPECT_TRUE(other != c);
    };
    differs([](CameraState& o) { o.setEyeAndInterest({10, 20, std::nextafter(30.0f, 31.0f)}, {1, 2, 3}); });
    differs([](CameraState& o) { o.setInterest({1, std::nextafter(2.0f, 3.0f), 3}); });
    differs([](CameraState& o) { o.setViewingAngle(std::nextafter(30.0f, 31.0f)); });
    differs([](CameraState& o) { o.setAspect(1001, 1000); });
    differs([](CameraState& o) { o.setOrthogonal(true); });
    for (int r = 0; r < 4; ++r) {
        for (int k = 0; k < 4; ++k) {
            differs([&](CameraState& o) {
                QMatrix4x4 m;
                m(r, k) = std::nextafter(m(r, k), 2.0f);
                o.setProjectionOverride(m);
            });
        }
    }
}

TEST(CameraEquality, comparesTheUpVector)
{
    // Two interpolated cameras with equal eye and interest point but different up vectors.
    const QVector3D interest(0, 10, 8);
    CameraState parallel, converging;
    parallel.setBetween(CameraState({-8, 10, 0}, {-8, 10, 8}), CameraState({8, 10, 0}, {8, 10, 8}), 0.5f);
    converging.setBetween(CameraState({-6, 10, 0}, interest), CameraState({6, 10, 0}, interest), 0.5f);
    ASSERT_EQ(parallel.eye(), converging.eye());
    ASSERT_EQ(parallel.interestPoint(), converging.interestPoint());
    ASSERT_EQ(parallel.projectionOverride(), converging.projectionOverride());
    ASSERT_NE(parallel.up(), converging.up());
    EXPECT_FALSE(parallel == converging);
}

TEST(CameraEquality, ignoresTheStoredDistance)
{
    // Two interpolated cameras with equal eye, interest point and up vector but stored distances of 10 and 8.
    const QVector3D interest(0, 12, 0);
    CameraState far, near;
    far.setBetween(CameraState({0, 18, -8}, interest), CameraState({0, 6, -8}, interest), 0.5f);
    near.setBetween(CameraState({0, 12, -8}, interest), CameraState({0, 12, -8}, interest), 0.5f);
    ASSERT_FLOAT_EQ(far.distance(), 10.0f);
    ASSERT_FLOAT_EQ(near.distance(), 8.0f);
    ASSERT_EQ(far.eye(), near.eye());
    ASSERT_EQ(far.up(), near.up());
    EXPECT_TRUE(far == near);
}

TEST(CameraEquality, ignoresTheAngles)
{
    // With the eye at the interest point the azimuth depends on signed zeros and the polar angle is NaN.
    const CameraState a({0.0f, 0, 0}, {0, 0, 0}), b({-0.0f, 0, 0}, {0, 0, 0});
    ASSERT_NE(a.azimuth(), b.azimuth());
    ASSERT_TRUE(std::isnan(a.polarAngle()));
    EXPECT_TRUE(a == b);
}

TEST(CameraEquality, camerasWithNaNAreNeverEqual)
{
    constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
    CameraState c;
    c.setAspect(0, 0);
    EXPECT_FALSE(c == c);
    EXPECT_TRUE(c != c);
    c = CameraState({notANumber, 0, 0}, {});
    EXPECT_FALSE(c == c);
    c = CameraState();
    c.setViewingAngle(notANumber);
    EXPECT_FALSE(c == c);
    c = CameraState();
    QMatrix4x4 m;
    m(2, 3) = notANumber;
    c.setProjectionOverride(m);
    EXPECT_FALSE(c == c);
}

// ---- between two cameras --------------------------------------------------------------------

TEST(CameraBlend, isLinearInAllFieldsAndTheProjectionMatrix)
{
    CameraState a({10, 20, 30}, {-5, 60, 7}), b({-200, 5, 100}, {0, 50, 0});
    a.setViewingAngle(25.0f);
    b.setViewingAngle(65.0f);
    b.setOrthogonal(true);
    a.setAspect(1600, 900);
    b.setAspect(1600, 900);
    const double hb = length(Vec3d(b.eye()) - Vec3d(b.interestPoint())) * std::tan(radians(32.5));
    for (const float t : {0.0f, 0.1f, 0.25f, 0.5f, 0.9f, 1.0f}) {
        CameraState c;
        c.setBetween(a, b, t);
        const auto mix = [&](double x, double y) { return (1.0 - double(t)) * x + double(t) * y; };
        const auto mixed = [&](const QVector3D& x, const QVector3D& y) {
            return (1.0 - double(t)) * Vec3d(x) + double(t) * Vec3d(y);
        };
        expectVector(c.eye(), mixed(a.eye(), b.eye()), 1e-4);
        expectVector(c.interestPoint(), mixed(a.interestPoint(), b.interestPoint()), 1e-4);
        expectVector(c.up(), mixed(a.up(), b.up()), 1e-4);
        EXPECT_NEAR(c.viewingAngle(), mix(25.0, 65.0), 1e-5);
        EXPECT_NEAR(c.azimuth(), mix(a.azimuth(), b.azimuth()), 1e-6);
        EXPECT_NEAR(c.polarAngle(), mix(a.polarAngle(), b.polarAngle()), 1e-6);
        EXPECT_NEAR(c.distance(), mix(a.distance(), b.distance()), 1e-4);
        const Matrix4d expected =
            blend(perspectiveOracle(25.0, 1600.0 / 900.0), orthogonalOracle(hb, 1600.0 / 900.0), t);
        expectMatrix(c.projectionMatrix(), expected);
        expectMatrix(c.projectionOverride(), expected);
    }
}

TEST(CameraBlend, keepsEqualValuesExactly)
{
    const CameraState a({10, 20, 30}, {-0.1f, 50.3f, 7.7f});
    CameraState b = a;
    b.rotate(0.3f, 0.2f);
    for (int i = 0; i <= 1000; ++i) {
        CameraState c;
        c.setBetween(a, b, static_cast<float>(i) / 1000.0f);
        ASSERT_EQ(c.interestPoint(), a.interestPoint()) << i;
        ASSERT_EQ(c.viewingAngle(), a.viewingAngle()) << i;
        ASSERT_EQ(c.distance(), a.distance()) << i;
    }
}

TEST(CameraBlend, keepsAspectAndKindOfProjection)
{
    CameraState a, b({1, 2, 3}, {});
    b.setOrthogonal(true);
    b.setAspect(7, 2);
    CameraState c;
    c.setAspect(5, 4);
    c.setBetween(a, b, 1.0f);
    EXPECT_FALSE(c.orthogonal());
    EXPECT_EQ(c.aspect(), 1.25f);
    c.setOrthogonal(true);
    c.setBetween(a, b, 0.0f);
    EXPECT_TRUE(c.orthogonal());
    EXPECT_EQ(c.aspect(), 1.25f);
}

TEST(CameraBlend, interpolatesOverrides)
{
    CameraState a, b;
    QMatrix4x4 ma, mb;
    ma.scale(3.0f, 5.0f, 7.0f);
    mb.translate(1.0f, 2.0f, 3.0f);
    a.setProjectionOverride(ma);
    b.setProjectionOverride(mb);
    CameraState c;
    c.setBetween(a, b, 0.25f);
    expectMatrix(c.projectionMatrix(), blend(asDouble(ma), asDouble(mb), 0.25));
}

TEST(CameraBlend, interpolatedMatrixIsMarkedAsGeneral)
{
    // QMatrix4x4 multiplies and inverts matrices differently if they are marked as scaling or translation.
    CameraState a, b;
    b.setOrthogonal(true);
    CameraState c;
    c.setBetween(a, b, 0.5f);
    const QMatrix4x4 p = c.projectionMatrix();
    const Matrix4d d = asDouble(p);
    const QVector4D in(1.5f, -2.5f, -300.0f, 1.0f);
    const QVector4D out = p * in;
    const double v[4] = {in.x(), in.y(), in.z(), in.w()};
    for (std::size_t r = 0; r < 4; ++r) {
        double expected = 0.0;
        for (std::size_t k = 0; k < 4; ++k)
            expected += d[r][k] * v[k];
        EXPECT_NEAR(out[int(r)], expected, 1e-4 * std::max(1.0, std::abs(expected)));
    }
    const QVector4D back = p.inverted() * out;
    for (int r = 0; r < 4; ++r)
        EXPECT_NEAR(back[r], in[r], 0.05 * std::max(1.0f, std::abs(in[r])));
    QMatrix4x4 copy = p;
    copy.optimize();
    EXPECT_EQ(copy * in, out);
}

TEST(CameraBlend, eyeMovesOnAStraightLine)
{
    const CameraState a({0, 0, -100}, {}), b({0, 0, 100}, {});
    CameraState c;
    c.setBetween(a, b, 0.5f);
    EXPECT_EQ(c.eye(), QVector3D(0, 0, 0));
    EXPECT_FLOAT_EQ(c.distance(), 100.0f);
}

// ---- progress of a move -------------------------------------------------------------------

TEST(CameraAnimation, followsAnInOutSine)
{
    CameraAnimation move;
    move.duration = 1000;
    for (const int ms : {0, 1, 100, 250, 333, 500, 750, 999, 1000}) {
        const double expected = 0.5 * (1.0 - std::cos(M_PI * ms / 1000.0));
        EXPECT_NEAR(move.progressAt(ms), expected, 1e-5) << ms;
    }
    EXPECT_EQ(move.easing.type(), QEasingCurve::InOutSine);
}

TEST(CameraAnimation, progressIsClamped)
{
    CameraAnimation move;
    move.duration = 50;
    EXPECT_EQ(move.progressAt(-10), 0.0f);
    EXPECT_EQ(move.progressAt(0), 0.0f);
    EXPECT_EQ(move.progressAt(51), 1.0f);
    EXPECT_EQ(move.progressAt(std::numeric_limits<qint64>::max()), 1.0f);
    move.duration = 0; // 0 / 0 gives progress 0
    EXPECT_EQ(move.progressAt(0), 0.0f);
    EXPECT_EQ(move.progressAt(1), 1.0f);
}
