// SPDX-License-Identifier: Apache-2.0
#include "Turntable.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>

namespace {

constexpr int corners = 72; // of a polygon around each circle

QVector3D rotated(const QVector3D& lab, double degrees)
{
    const double angle = degrees * std::numbers::pi / 180.0;
    const double a = double(lab.y()), b = double(lab.z());
    return {lab.x(), static_cast<float>(a * std::cos(angle) - b * std::sin(angle)),
            static_cast<float>(a * std::sin(angle) + b * std::cos(angle))};
}

} // namespace

KVCamera Turntable::turned(const KVCamera& camera, double degrees)
{
    KVCamera result = camera;
    result.position = rotated(camera.position, degrees);
    result.interestPoint = rotated(camera.interestPoint, degrees);
    return result;
}

KVFraming Turntable::swept(const KVFraming& framing)
{
    // The outermost position of each lightness is enough. Rounding to whole L* keeps the lists short.
    std::map<int, float> radii;
    for (const QVector3D& p : framing.positions) {
        if (!std::isfinite(p.lengthSquared()))
            continue;
        const float radius = std::hypot(p.y(), p.z());
        for (const float L : {std::floor(p.x()), std::ceil(p.x())}) {
            float& widest = radii[static_cast<int>(std::clamp(L, -1e6f, 1e6f))];
            widest = std::max(widest, radius);
        }
    }
    KVFraming result;
    result.margin = framing.margin;
    result.taken = framing.taken;
    const double around = 1.0 / std::cos(std::numbers::pi / corners);
    for (const auto& [L, radius] : radii)
        for (int i = 0; i < corners; ++i)
            result.positions.append(rotated(
                {static_cast<float>(L), static_cast<float>(radius * around), 0.0f}, 360.0 * i / corners));
    return result;
}
