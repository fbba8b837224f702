// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>
#include <scene/GeometryData.h>

#include <QtGui/QColor>

/// The colours of one hue: the half-plane that ends at the L* axis, up to a lightness.
struct HueLeaf
{
    float degrees = 0.0f; ///< hue angle, from +a* towards +b*; finite
    float maxL = 100.0f;  ///< what is lighter is left out

    bool operator==(const HueLeaf&) const = default;
};

/// The part of @p leaf inside @p surface as triangles, whose cells are those of kvSectionTriangles().
[[nodiscard]] KVGamut::Mesh kvHueTriangles(const KVGamut::Mesh& surface, const HueLeaf& leaf);
/// The same in its screen colours, without shading.
[[nodiscard]] GeometryData kvHueLid(const KVGamut::Mesh& surface, const HueLeaf& leaf);
/// Where @p leaf meets @p surface, all in one @p color.
[[nodiscard]] QList<ColoredSegment> kvHueOutline(const KVGamut::Mesh& surface, const HueLeaf& leaf,
                                                 const QColor& color);
