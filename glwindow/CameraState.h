// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QEasingCurve>
#include <QtCore/QElapsedTimer>
#include <QtGui/QMatrix4x4>
#include <QtGui/QVector3D>

/// Orbit camera: an eye that looks at an interest point from two angles and a distance, with its
/// projection.
///
/// A value: copy it, compare it, store it. No GL, no events. Scene coordinates (-a*, L*, b*), L* along
/// +Y; angles in radians, unbounded, so that the picture never rolls but may turn over; distances in
/// Lab units. Nothing is checked: an eye at the interest point gives a distance of 0 and a polar angle
/// that is not a number.
struct CameraState
{
    static constexpr float nearPlane = 0.1f;
    static constexpr float farPlane = 1500.0f;
    static constexpr float minDistance = 1.1f;

    /// Eye (0, 0, -350), interest point (0, 0, 0), 30 degrees, aspect 1, perspective.
    CameraState();
    CameraState(const QVector3D& eye, const QVector3D& interest);

    /// Moves eye and interest point; angles, distance and up vector follow.
    void setEyeAndInterest(const QVector3D& eye, const QVector3D& interest);
    /// Moves the interest point; angles, distance and up vector follow.
    void setInterest(const QVector3D& interest);
    /// Vertical field of view, degrees. The orthogonal view shows the same height at the interest point.
    void setViewingAngle(float degrees) { m_viewingAngle = degrees; }
    /// Also drops the projection override.
    void setOrthogonal(bool orthogonal);
    /// Viewport width over height.
    void setAspect(int width, int height);
    /// Identity means: compute the projection; anything else is used as it stands.
    void setProjectionOverride(const QMatrix4x4& projection) { m_projectionOverride = projection; }
    void resetProjectionOverride() { m_projectionOverride.setToIdentity(); }

    /// Turns the eye around the interest point; radians, not clamped.
    void rotate(float dAzimuth, float dPolar);
    /// Moves the eye away by @p dDistance (closer when negative). A step that would end below
    /// minDistance is refused, not shortened.
    void zoom(float dDistance);
    /// Moves eye and interest point by @p dx to the camera's right and @p dy downwards, in scene units.
    void pan(float dx, float dy);

    QVector3D eye() const { return m_eye; }
    QVector3D interestPoint() const { return m_interest; }
    QVector3D up() const { return m_up; } ///< not normalised
    float viewingAngle() const { return m_viewingAngle; }
    float azimuth() const { return m_azimuth; }       ///< of the eye direction in the X-Z plane, atan2(Z, X)
    float polarAngle() const { return m_polarAngle; } ///< between the eye direction and +Y
    float distance() const { return m_distance; }
    float aspect() const { return m_aspect; }
    bool orthogonal() const { return m_orthogonal; }
    const QMatrix4x4& projectionOverride() const { return m_projectionOverride; }

    /// World to eye.
    QMatrix4x4 viewMatrix() const;
    /// Eye to clip space; the override when there is one.
    QMatrix4x4 projectionMatrix() const;

    /// Sets this camera between two others: everything linear, the eye on a straight line; the
    /// projection a blend of both matrices, so that changes of angle and kind of projection glide.
    /// Aspect and the orthogonal flag stay as they are.
    void setBetween(const CameraState& from, const CameraState& to, float t);

    /// Whether both show the same picture: eye, interest point, up, projection parameters and override.
    /// A value that is not a number equals nothing.
    friend bool operator==(const CameraState& a, const CameraState& b);
    friend bool operator!=(const CameraState& a, const CameraState& b) { return !(a == b); }

private:
    void updateFromEye();
    void updateEyeAndUp(bool moveEye);

    float m_viewingAngle = 30.0f;
    QVector3D m_eye{0.0f, 0.0f, -350.0f};
    QVector3D m_interest;
    QVector3D m_up;
    QMatrix4x4 m_projectionOverride;
    float m_azimuth = 0.0f;
    float m_polarAngle = 0.0f;
    float m_distance = 0.0f;
    float m_aspect = 1.0f;
    bool m_orthogonal = false;
};

/// A camera move in progress.
struct CameraAnimation
{
    CameraState start;
    CameraState target;
    QElapsedTimer timer;
    int duration = 1; ///< milliseconds, at least 1
    QEasingCurve easing{QEasingCurve::InOutSine};

    /// Eased progress, 0..1, after @p elapsed milliseconds.
    float progressAt(qint64 elapsed) const;
};
