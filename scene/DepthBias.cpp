// SPDX-License-Identifier: Apache-2.0
#include <scene/DepthBias.h>

#include <glwindow/CameraState.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr float reach = 185.0f; // of the grid and the plane from the origin
constexpr float maxBias = 0.6f; // of the biases below

/// The largest distance to which a bias may move an object that is @p distance away: inside the far plane,
/// but always a little.
float maxBiasedDistance(float distance)
{
    return std::max(CameraState::farPlane, 1.02f * distance);
}

} // namespace

QMatrix4x4 KVDepthBias::applied(const QMatrix4x4& worldToCamera, const QMatrix4x4& cameraToView) const
{
    if (above == 0.0f && below == 0.0f)
        return cameraToView;

    // An enlargement of the object around the centre of projection does not change its picture. In front of
    // the camera by the distance d it has w = a d + b: a = 1 and b = 0 in perspective, a = 0 and b = 1 in an
    // orthogonal projection, something between during an animated change. The enlargement by 1 + a k changes
    // the depth z / w as below. It lowers the plane L* 0 by k times the height of the centre above it, where
    // the height is multiplied by a, which remains finite.
    const float a = -cameraToView(3, 2), b = cameraToView(3, 3), c = -cameraToView(2, 2);
    const QVector3D up = worldToCamera.column(1).toVector3D(), back = worldToCamera.row(2).toVector3D();
    const QVector3D toOrigin = worldToCamera.column(3).toVector3D();
    const float height = b * back.y() - a * QVector3D::dotProduct(up, toOrigin);

    // Close to L* 0 the bias would move what is visible beyond the far plane.
    const float distance = toOrigin.length() + reach;
    const float maxStep = (maxBiasedDistance(distance) - distance) / (a * distance + b);
    const float shift = height >= 0.0f ? above : below;
    const float k = shift * std::min(1.0f / std::abs(height), maxStep / maxBias);
    QMatrix4x4 biased = cameraToView;
    const float scale = 1.0f / (1.0f + a * k); // a factor: vectors must not be divided by zero or NaN
    biased.setRow(2, (cameraToView.row(2) + c * k * cameraToView.row(3)) * scale);
    return biased;
}

KVDepthBias kvAxesBias()
{
    return {};
}

KVDepthBias kvSectionBias()
{
    return {.above = 0.0f, .below = 0.0f, .resolutionSteps = 1};
}

KVDepthBias kvOutlineBias(int rank)
{
    return {.above = 0.35f, .below = 0.0f, .resolutionSteps = 1 + rank % kvOrderedOutlines};
}

KVDepthBias kvGridBias()
{
    return {.above = 0.6f, .below = 0.6f, .resolutionSteps = 4};
}

KVDepthBias kvPlaneBias()
{
    return {.above = 0.4f, .below = 0.4f, .resolutionSteps = 7};
}
