// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <QtGui/QVector3D>

#include <cmath>

/// True if no coordinate is infinite or NaN.
inline bool kvIsFinite(const QVector3D& v)
{
    return std::isfinite(v.x()) && std::isfinite(v.y()) && std::isfinite(v.z());
}
