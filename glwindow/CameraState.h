// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QEasingCurve>
#include <QtCore/QElapsedTimer>
#include <QtGui/QMatrix4x4>
#include <QtGui/QVector3D>

/// Orbit camera: an eye that looks at an interest point, given by two angles and a distance, and its
/// projection.
///
/// A value type without GL and events. Scene coordinates (-a*, L*, b*) with L* along +Y; distances in Lab
/// units; angles in radians. Angles are not limited: the picture never rolls, but it may turn upside down.
/// Arguments are not checked: an eye at the interest point gives a distance of 0 and a polar angle of NaN.
struct CameraState
{
    static constexpr float nearPlane = 0.1f;
    static constexpr float farPlane = 1500.0f;
    static constexpr float minDistance = 1.1f;

    /// Eye (0, 0, -350), interest point (0, 0, 0), 30 degrees, aspect 1, perspective.
    CameraState();
    CameraState(const QVector3D& eye, const QVector3D& interest);

    /// Sets eye and interest point, and updates angles, distance and up vector.
    void setEyeAndInterest(const QVector3D& eye, const QVector3D& interest);
    /// Sets the interest point, and updates angles, distance and up vector.
    void setInterest(const QVector3D& interest);
    /// Vertical field of view in degrees. The orthogonal projection shows the same height at the interest
    /// point.
    void setViewingAngle(float degrees) { m_viewingAngle = degrees; }
    /// Also resets the projection override.
    void setOrthogonal(bool orthogonal);
    /// Aspect ratio of the viewport, width / height.
    void setAspect(int width, int height);
    /// Identity: the projection is computed from the parameters. Any other matrix is used as the projection.
    void setProjectionOverride(const QMatrix4x4& projection) { m_projectionOverride = projection; }
    void resetProjectionOverride() { m_projectionOverride.setToIdentity(); }

    /// Rotates the eye around the interest point. Radians, not clamped.
    void rotate(float dAzimuth, float dPolar);
    /// Moves the eye away by @p dDistance (closer if negative). A step to less than minDistance is ignored,
    /// not shortened.
    void zoom(float dDistance);
    /// Moves eye and interest point by @p dx to the right of the camera and by @p dy downwards, in scene
    /// units.
    void pan(float dx, float dy);

    QVector3D eye() const { return m_eye; }
    QVector3D interestPoint() const { return m_interest; }
    QVector3D up() const { return m_up; } ///< not normalised
    float viewingAngle() const { return m_viewingAngle; }
    float azimuth() const { return m_azimuth; }       ///< of (eye - interest) in the X-Z plane, atan2(Z, X)
    float polarAngle() const { return m_polarAngle; } ///< between (eye - interest) and +Y
    float distance() const { return m_distance; }
    float aspect() const { return m_aspect; }
    bool orthogonal() const { return m_orthogonal; }
    const QMatrix4x4& projectionOverride() const { return m_projectionOverride; }

    /// World coordinates to eye coordinates.
    [[nodiscard]] QMatrix4x4 viewMatrix() const;
    /// Eye coordinates to clip coordinates: the override, unless it is the identity.
    [[nodiscard]] QMatrix4x4 projectionMatrix() const;

    /// Sets this camera to the linear interpolation of two others at @p t; the eye moves on a straight line.
    /// The projection override becomes the interpolation of both projection matrices, which animates changes
    /// of the viewing angle and of the kind of projection. Aspect ratio and orthogonal flag are not changed.
    void setBetween(const CameraState& from, const CameraState& to, float t);

    /// Whether both give the same picture: compares eye, interest point, up, projection parameters and
    /// override. Cameras with a NaN are never equal.
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

/// An animated camera move.
struct CameraAnimation
{
    CameraState start;
    CameraState target;
    QElapsedTimer timer;
    int duration = 1; ///< milliseconds, at least 1
    QEasingCurve easing{QEasingCurve::InOutSine};

    /// Eased progress, 0..1, after @p elapsed milliseconds.
    [[nodiscard]] float progressAt(qint64 elapsed) const;
};
