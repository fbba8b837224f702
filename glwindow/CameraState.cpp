// SPDX-License-Identifier: Apache-2.0
#include <glwindow/CameraState.h>

#include <cmath>
#include <numbers>

CameraState::CameraState()
{
    updateFromEye();
}

CameraState::CameraState(const QVector3D& eye, const QVector3D& interest) : m_eye(eye), m_interest(interest)
{
    updateFromEye();
}

void CameraState::setEyeAndInterest(const QVector3D& eye, const QVector3D& interest)
{
    m_eye = eye;
    m_interest = interest;
    updateFromEye();
}

void CameraState::setInterest(const QVector3D& interest)
{
    m_interest = interest;
    updateFromEye();
}

void CameraState::setOrthogonal(bool orthogonal)
{
    resetProjectionOverride();
    m_orthogonal = orthogonal;
}

void CameraState::setAspect(int width, int height)
{
    m_aspect = static_cast<float>(width) / static_cast<float>(height);
}

void CameraState::updateFromEye()
{
    const QVector3D d = m_eye - m_interest;
    m_distance = d.length();
    m_azimuth = std::atan2(d.z(), d.x());
    m_polarAngle = std::acos(d.y() / m_distance);
    updateEyeAndUp(false);
}

void CameraState::updateEyeAndUp(bool moveEye)
{
    const float sinAzimuth = std::sin(m_azimuth), cosAzimuth = std::cos(m_azimuth);
    if (moveEye) {
        const float sinPolar = std::sin(m_polarAngle), cosPolar = std::cos(m_polarAngle);
        m_eye = m_interest + m_distance * QVector3D(cosAzimuth * sinPolar, cosPolar, sinAzimuth * sinPolar);
    }
    // d × (sin azimuth, 0, -cos azimuth). Its Y component is distance · sin(polar), so that the up vector is
    // inverted together with the eye when the polar angle leaves 0..π.
    const QVector3D d = m_eye - m_interest;
    m_up = QVector3D(-cosAzimuth * d.y(), sinAzimuth * d.z() + cosAzimuth * d.x(), -sinAzimuth * d.y());
}

void CameraState::rotate(float dAzimuth, float dPolar)
{
    m_azimuth += dAzimuth;
    m_polarAngle += dPolar;
    updateEyeAndUp(true);
}

void CameraState::zoom(float dDistance)
{
    const float distance = m_distance + dDistance;
    if (!(distance < minDistance)) // also accepts NaN, as documented: nothing is checked
        m_distance = distance;
    updateEyeAndUp(true);
}

void CameraState::pan(float dx, float dy)
{
    QVector3D forward = m_interest - m_eye;
    forward.normalize();
    QVector3D up = m_up;
    up.normalize();
    QVector3D right = QVector3D::crossProduct(forward, up);
    right.normalize();
    const QVector3D offset = dx * right - dy * up;
    m_eye += offset;
    m_interest += offset;
}

QMatrix4x4 CameraState::viewMatrix() const
{
    QMatrix4x4 view;
    view.lookAt(m_eye, m_interest, m_up);
    return view;
}

QMatrix4x4 CameraState::projectionMatrix() const
{
    if (!m_projectionOverride.isIdentity())
        return m_projectionOverride;
    QMatrix4x4 projection;
    if (m_orthogonal) {
        const double half = std::abs(double((m_eye - m_interest).length()) *
                                     std::tan(double(m_viewingAngle) * 0.5 * std::numbers::pi / 180.0));
        const auto h = static_cast<float>(half);
        projection.ortho(-h * m_aspect, h * m_aspect, -h, h, nearPlane, farPlane);
    } else {
        projection.perspective(m_viewingAngle, m_aspect, nearPlane, farPlane);
    }
    return projection;
}

namespace {

// std::lerp is exact for equal arguments: values that a move does not change must not drift, even after many
// aborted moves.
QVector3D between(const QVector3D& a, const QVector3D& b, float t)
{
    return {std::lerp(a.x(), b.x(), t), std::lerp(a.y(), b.y(), t), std::lerp(a.z(), b.z(), t)};
}

} // namespace

void CameraState::setBetween(const CameraState& from, const CameraState& to, float t)
{
    m_viewingAngle = std::lerp(from.m_viewingAngle, to.m_viewingAngle, t);
    m_eye = between(from.m_eye, to.m_eye, t);
    m_interest = between(from.m_interest, to.m_interest, t);
    m_up = between(from.m_up, to.m_up, t);
    m_azimuth = std::lerp(from.m_azimuth, to.m_azimuth, t);
    m_polarAngle = std::lerp(from.m_polarAngle, to.m_polarAngle, t);
    m_distance = std::lerp(from.m_distance, to.m_distance, t);
    const float s = 1.0f - t;
    m_projectionOverride = s * from.projectionMatrix() + t * to.projectionMatrix();
}

bool operator==(const CameraState& a, const CameraState& b)
{
    // operator== of QVector3D and QMatrix4x4 is exact
    return a.m_eye == b.m_eye && a.m_interest == b.m_interest && a.m_up == b.m_up &&
           a.m_orthogonal == b.m_orthogonal && a.m_aspect == b.m_aspect &&
           a.m_viewingAngle == b.m_viewingAngle && a.m_projectionOverride == b.m_projectionOverride;
}

float CameraAnimation::progressAt(qint64 elapsed) const
{
    const float progress = static_cast<float>(elapsed) / static_cast<float>(duration);
    return static_cast<float>(easing.valueForProgress(progress > 1.0f   ? 1.0f
                                                      : progress > 0.0f ? progress
                                                                        : 0.0f));
}
