// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "support/Vec3d.h"

#include <glwindow/CameraState.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <utility>

/// An independent computation of the orbit camera in double precision.
namespace kvtest {

/// Row-major 4x4 in double precision.
using Matrix4d = std::array<std::array<double, 4>, 4>;

inline double radians(double degrees)
{
    return degrees * M_PI / 180.0;
}

/// The expected camera at @p eye looking at @p interest.
struct OrbitOracle
{
    Vec3d eye;
    Vec3d interest;
    double azimuth = 0.0;
    double polar = 0.0;
    double distance = 0.0;

    OrbitOracle(const Vec3d& e, const Vec3d& i) : eye(e), interest(i)
    {
        const Vec3d d = eye - interest;
        distance = length(d);
        azimuth = std::atan2(d.z, d.x);
        polar = std::acos(d.y / distance);
    }

    void moveEye()
    {
        eye = interest + distance * Vec3d(std::cos(azimuth) * std::sin(polar), std::cos(polar),
                                          std::sin(azimuth) * std::sin(polar));
    }

    Vec3d up() const { return cross(eye - interest, {std::sin(azimuth), 0.0, -std::cos(azimuth)}); }
};

/// Unit vectors along the axes of the camera.
struct Axes
{
    Vec3d forward, right, up;

    Axes(const Vec3d& eye, const Vec3d& interest, const Vec3d& upHint)
    {
        forward = unit(interest - eye);
        right = unit(cross(forward, upHint));
        up = cross(right, forward);
    }
    explicit Axes(const CameraState& c) : Axes(Vec3d(c.eye()), Vec3d(c.interestPoint()), Vec3d(c.up())) {}
};

inline Matrix4d lookAtOracle(const Vec3d& eye, const Axes& a)
{
    return {{{a.right.x, a.right.y, a.right.z, -dot(a.right, eye)},
             {a.up.x, a.up.y, a.up.z, -dot(a.up, eye)},
             {-a.forward.x, -a.forward.y, -a.forward.z, dot(a.forward, eye)},
             {0, 0, 0, 1}}};
}

constexpr double nearPlane = 0.1;
constexpr double farPlane = 1500.0;

inline Matrix4d perspectiveOracle(double degrees, double aspect)
{
    const double f = 1.0 / std::tan(radians(degrees) / 2.0);
    return {{{f / aspect, 0, 0, 0},
             {0, f, 0, 0},
             {0, 0, -(farPlane + nearPlane) / (farPlane - nearPlane),
              -2.0 * farPlane * nearPlane / (farPlane - nearPlane)},
             {0, 0, -1, 0}}};
}

inline Matrix4d orthogonalOracle(double halfHeight, double aspect)
{
    return {{{1.0 / (halfHeight * aspect), 0, 0, 0},
             {0, 1.0 / halfHeight, 0, 0},
             {0, 0, -2.0 / (farPlane - nearPlane), -(farPlane + nearPlane) / (farPlane - nearPlane)},
             {0, 0, 0, 1}}};
}

inline Matrix4d blend(const Matrix4d& a, const Matrix4d& b, double t)
{
    Matrix4d m{};
    for (std::size_t r = 0; r < 4; ++r) {
        for (std::size_t c = 0; c < 4; ++c)
            m[r][c] = (1.0 - t) * a[r][c] + t * b[r][c];
    }
    return m;
}

inline void expectMatrix(const QMatrix4x4& actual, const Matrix4d& expected, double relative = 1e-5)
{
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            const double e = expected[std::size_t(r)][std::size_t(c)];
            EXPECT_NEAR(actual(r, c), e, relative * std::max(1.0, std::abs(e)))
                << "row " << r << ", column " << c;
        }
    }
}

inline void expectVector(const QVector3D& actual, const Vec3d& expected, double tolerance,
                         const char* what = "")
{
    EXPECT_NEAR(actual.x(), expected.x, tolerance) << what;
    EXPECT_NEAR(actual.y(), expected.y, tolerance) << what;
    EXPECT_NEAR(actual.z(), expected.z, tolerance) << what;
}

inline std::pair<Vec3d, Vec3d> asDouble(const std::pair<QVector3D, QVector3D>& ray)
{
    return {Vec3d(ray.first), Vec3d(ray.second)};
}

} // namespace kvtest
