// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtGui/QVector3D>

#include <optional>
#include <utility>

/// What a ray through the scene meets. Pure: positions in Lab, as (L*, a*, b*).
namespace Picker {

/// Origin, then direction, which need not have length 1.
using Ray = std::pair<QVector3D, QVector3D>;
/// Corners of a triangle.
using Face = QList<QVector3D>;

struct Hit
{
    float distance = 0.0f; ///< from the ray's origin, Lab units
    QVector3D lab;
};

/// Where @p ray, going forward, first meets a face from either side at a lightness of @p clip or
/// below; what lies above is cut off and cannot be met.
std::optional<Hit> firstHit(const Ray& ray, const QList<Face>& faces, float clip);

struct PointHit
{
    qsizetype index = 0;   ///< in the list
    float distance = 0.0f; ///< from the ray's origin to where it enters the ball
};

/// The first of the balls of @p radius around @p positions that @p ray, going forward, enters.
std::optional<PointHit> firstBall(const Ray& ray, const QList<QVector3D>& positions, float radius);

} // namespace Picker
