// SPDX-License-Identifier: Apache-2.0
#include "PointerZoom.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float minDistance = 5.0f;
constexpr float maxDistance = 1300.0f; // within the far plane

} // namespace

double PointerZoom::factorOf(int angle)
{
    constexpr double factorOfNotch = 1.15;
    constexpr double angleOfNotch = 120.0;
    return std::pow(factorOfNotch, angle / angleOfNotch);
}

KVCamera PointerZoom::zoomed(const KVCamera& camera, const std::pair<QVector3D, QVector3D>& ray,
                             double factor)
{
    const QVector3D sight = camera.interestPoint - camera.position;
    const float distance = sight.length();
    const auto& [origin, direction] = ray;
    const float slope = QVector3D::dotProduct(direction, sight);
    if (!(distance > 0.0f) || !(slope > 0.0f) || !(factor > 0.0) || !std::isfinite(factor))
        return camera;
    const float along = QVector3D::dotProduct(camera.interestPoint - origin, sight) / slope;
    const QVector3D place = origin + along * direction;
    const float wanted = std::clamp(distance / float(factor), std::min(minDistance, distance),
                                    std::max(maxDistance, distance));
    const float share = wanted / distance;
    KVCamera result = camera;
    result.position = place + share * (camera.position - place);
    result.interestPoint = place + share * (camera.interestPoint - place);
    return result;
}
