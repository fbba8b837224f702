// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QList>
#include <QtGui/QRgb>

#include <utility>
#include <vector>

/// Values on a surface and their colours.
struct SurfaceValues
{
    std::vector<float> values;           ///< one for each vertex; linear within each triangle
    QList<std::pair<float, QRgb>> stops; ///< ascending; two with the same value are a step
};

/// A surface whose vertices have colours.
struct ColoredSurface
{
    KVGamut::Mesh mesh; ///< vertices are not shared between the bands of a triangle; no device values
    QList<QRgb> colors; ///< of each vertex
};

/// @p mesh in the colours of @p values, split along the lines where the value is that of a stop, so that
/// borders and colours do not depend on the size of the triangles. Triangles with a common edge are split in
/// the same points of it. Empty if there is not one value for each vertex, or no stop; values that are NaN
/// count as the smallest.
[[nodiscard]] ColoredSurface kvColoredBands(const KVGamut::Mesh& mesh, const SurfaceValues& values);
