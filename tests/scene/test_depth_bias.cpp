// SPDX-License-Identifier: Apache-2.0
#include "support/Vec3d.h"

#include <glwindow/CameraState.h>
#include <scene/DepthBias.h>

#include <gtest/gtest.h>

#include <QtGui/QVector4D>

#include <array>
#include <cmath>
#include <string>

namespace {

using kvtest::Vec3d;

/// A point in clip coordinates, in double precision.
struct Clip
{
    double x, y, z, w;
    double depth() const { return z / w; }
};

Clip clipOf(const QMatrix4x4& projection, const QMatrix4x4& view, const Vec3d& p)
{
    const std::array<double, 4> in{p.x, p.y, p.z, 1.0};
    std::array<double, 4> eye{}, out{};
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            eye[std::size_t(r)] += double(view(r, c)) * in[std::size_t(c)];
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            out[std::size_t(r)] += double(projection(r, c)) * eye[std::size_t(c)];
    return {out[0], out[1], out[2], out[3]};
}

/// A second point that is in the same pixel as @p p: farther along the line of sight. In perspective lines of
/// sight begin at the eye, in an orthogonal projection they are parallel.
struct Sight
{
    const char* name;
    CameraState camera;

    Vec3d direction(const Vec3d& p) const
    {
        const Vec3d eye(camera.eye());
        return camera.orthogonal() ? Vec3d(camera.interestPoint()) - eye : p - eye;
    }
};

Sight sight(const char* name, const QVector3D& eye, const QVector3D& interest, bool orthogonal = false)
{
    Sight s{name, CameraState(eye, interest)};
    s.camera.setOrthogonal(orthogonal);
    return s;
}

void PrintTo(const Sight& s, std::ostream* out)
{
    *out << s.name;
}

// scene coordinates: y is L*
const std::array<Vec3d, 4> onThePlane{Vec3d(0, 0, 0), Vec3d(40, 0, -30), Vec3d(-110, 0, 60),
                                      Vec3d(5, 0, 110)};

class DepthBiases : public testing::TestWithParam<Sight>
{
protected:
    QMatrix4x4 view() const { return GetParam().camera.viewMatrix(); }
    QMatrix4x4 projection() const { return GetParam().camera.projectionMatrix(); }
};

} // namespace

TEST_P(DepthBiases, keepThePlaceInThePicture)
{
    const QMatrix4x4 biased = KVDepthBias{.above = 1.4f, .below = 0.7f}.applied(view(), projection());
    for (const int row : {0, 1, 3})
        EXPECT_EQ(biased.row(row), projection().row(row)) << row;
}

TEST_P(DepthBiases, giveTheDepthOfAPlaneFartherAway)
{
    const bool fromAbove = GetParam().camera.eye().y() > 0.0f;
    const KVDepthBias bias{.above = 1.4f, .below = 0.7f};
    const QMatrix4x4 biased = bias.applied(view(), projection());
    for (const Vec3d& p : onThePlane) {
        const Vec3d d = GetParam().direction(p);
        const double target = fromAbove ? -1.4 : 0.7;
        const Vec3d behind = p + target / d.y * d;
        const Clip original = clipOf(projection(), view(), p);
        const Clip actual = clipOf(biased, view(), p);
        const Clip expected = clipOf(projection(), view(), behind);
        // the same pixel
        EXPECT_NEAR(expected.x / expected.w, original.x / original.w, 1e-4);
        EXPECT_NEAR(expected.y / expected.w, original.y / original.w, 1e-4);
        const double step = expected.depth() - original.depth();
        EXPECT_GT(step, 0.0);
        // the elements of the matrix are floats near 1: rounding gives about 1e-7
        EXPECT_NEAR(actual.depth() - original.depth(), step, 0.02 * step + 1.5e-7);
    }
}

INSTANTIATE_TEST_SUITE_P(Views, DepthBiases,
                         testing::Values(sight("oblique", {-200, 250, -300}, {0, 50, 0}),
                                         sight("steep", {20, 400, 30}, {0, 0, 0}),
                                         sight("low", {-300, 20, -300}, {0, 0, 0}),
                                         sight("fromBelow", {200, -150, 300}, {0, 50, 0}),
                                         sight("orthogonal", {-200, 250, -300}, {0, 50, 0}, true),
                                         sight("orthogonalFromBelow", {200, -150, 300}, {0, 50, 0}, true)),
                         [](const auto& row) { return row.param.name; });

TEST(DepthBias, ofZeroKeepsTheProjection)
{
    const CameraState camera(QVector3D(-200, 250, -300), QVector3D(0, 50, 0));
    EXPECT_EQ(KVDepthBias{}.applied(camera.viewMatrix(), camera.projectionMatrix()),
              camera.projectionMatrix());
    EXPECT_EQ(kvAxesBias(), KVDepthBias{});
}

TEST(DepthBias, betweenTwoProjectionsIsBetweenTheirBiases)
{
    CameraState perspective(QVector3D(-200, 250, -300), QVector3D(0, 50, 0));
    CameraState orthogonal = perspective;
    orthogonal.setOrthogonal(true);
    CameraState between = perspective;
    double previous = 0.0;
    for (const float t : {0.0f, 0.25f, 0.5f, 0.75f, 1.0f}) {
        between.setBetween(perspective, orthogonal, t);
        const QMatrix4x4 projection = between.projectionMatrix(), view = between.viewMatrix();
        const QMatrix4x4 biased = kvGridBias().applied(view, projection);
        const double step =
            clipOf(biased, view, onThePlane[1]).depth() - clipOf(projection, view, onThePlane[1]).depth();
        EXPECT_GT(step, 0.0) << t;
        EXPECT_GE(step, previous) << t; // depths are closer together in perspective
        previous = step;
    }
}

TEST(DepthBias, isLimitedForCamerasCloseToLightness0)
{
    for (const bool orthogonal : {false, true})
        for (const float height : {4.0f, 0.5f, 1e-6f, 0.0f, -1e-6f, -0.5f, -4.0f}) {
            const auto [name, camera] =
                sight("", {-250, height, -300}, {0, orthogonal ? 0.0f : height, 0}, orthogonal);
            const QMatrix4x4 projection = camera.projectionMatrix(), view = camera.viewMatrix();
            const Clip clip = clipOf(kvGridBias().applied(view, projection), view, onThePlane[2]);
            EXPECT_GT(clip.depth(), clipOf(projection, view, onThePlane[2]).depth());
            EXPECT_LT(clip.depth(), 1.0) << "beyond the far plane";
        }
}

// --- The order of axes, outlines, grid and plane -------------------------------------------

namespace {

/// The lightness that a bar or the plane covers, and its bias.
struct Layer
{
    double bottom, top;
    KVDepthBias bias;

    double topFromAbove() const { return top - double(bias.above); }
    double bottomFromAbove() const { return bottom - double(bias.above); }
    double topFromBelow() const { return top + double(bias.below); }
    double bottomFromBelow() const { return bottom + double(bias.below); }
};

const Layer axes{-0.5, 0.5, kvAxesBias()};
const Layer outline{0.3 - 2.0 / 9, 0.3 + 2.0 / 9, kvOutlineBias(0)}; // a band, a third as high as wide
const Layer grid{-1.0 / 30, 1.0 / 30, kvGridBias()};                 // flattened to a tenth when it is drawn
const Layer plane{-0.3, -0.3, kvPlaneBias()};

} // namespace

TEST(DepthBias, putsTheGridBehindAllOfAxesAndOutlines)
{
    for (const Layer& front : {axes, outline}) {
        EXPECT_LT(grid.topFromAbove(), front.bottomFromAbove());
        EXPECT_GT(grid.bottomFromBelow(), front.topFromBelow());
    }
}

TEST(DepthBias, putsThePlaneBehindAllOfTheGridFromAbove)
{
    EXPECT_LT(plane.topFromAbove(), grid.bottomFromAbove());
}

TEST(DepthBias, putsTheFacingSideOfOutlinesBehindThatOfAxes)
{
    EXPECT_LT(outline.topFromAbove(), axes.topFromAbove() - 0.3);
    EXPECT_GT(outline.bottomFromBelow(), axes.bottomFromBelow() + 0.3);
}

TEST(DepthBias, stepsOfResolutionHaveTheSameOrder)
{
    EXPECT_LT(kvAxesBias().resolutionSteps, kvSectionBias().resolutionSteps);
    EXPECT_LE(kvSectionBias().resolutionSteps, kvOutlineBias(0).resolutionSteps);
    for (int rank = 0; rank + 1 < kvOrderedOutlines; ++rank)
        EXPECT_LT(kvOutlineBias(rank).resolutionSteps, kvOutlineBias(rank + 1).resolutionSteps);
    EXPECT_EQ(kvOutlineBias(kvOrderedOutlines).resolutionSteps, kvOutlineBias(0).resolutionSteps);
    EXPECT_LT(kvOutlineBias(kvOrderedOutlines - 1).resolutionSteps, kvGridBias().resolutionSteps);
    EXPECT_LT(kvGridBias().resolutionSteps, kvPlaneBias().resolutionSteps);
}
