// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>
#include <scene/GeometryData.h>
#include <scene/KV3DObject.h>

#include <span>

/// Length of the cells of a lid, in Lab units. Colours between the corners of a cell are interpolated. On a
/// scale of 0 to 255 they differ from the true ones by at most kvMaxLidColorError, and by more than 3 in 0.3
/// % of the places: where a channel begins at 0.
inline constexpr double kvLidCell = 1.0;
inline constexpr int kvMaxLidColorError = 15;
/// The largest number of cells along a* and along b*. The cells of larger sections are larger.
inline constexpr int kvMaxLidCells = 200;

/// The region inside @p loops, which lie in a plane of one lightness, as triangles seen from above:
/// counter-clockwise, with corners at least at each node of a grid of @p cell Lab units. The loops are closed
/// polygons that do not cross each other; a loop inside another one is a hole. Points that are not finite
/// give an empty mesh.
///
/// The outline is exact. Triangles have the same points on a common line of the grid, so that no gaps appear
/// between them when they are drawn.
[[nodiscard]] KVGamut::Mesh kvSectionTriangles(std::span<const KVGamut::SectionLoop> loops, double cell);

/// The region inside @p loops in its screen colours, without shading.
[[nodiscard]] GeometryData kvUnshadedLid(std::span<const KVGamut::SectionLoop> loops);
/// The same for the section of @p surface at lightness @p L.
[[nodiscard]] GeometryData kvSectionLid(const KVGamut::Mesh& surface, float L);

/// Shows a filled section. Only the opacity of its parents affects it: its colours are true in every mode,
/// and nothing is cut off. It is hidden in the wireframe mode.
class KVSectionLid : public KV3DObject
{
public:
    using KV3DObject::KV3DObject;

    void setDisplayMode(int mode) override;
    void setColor(const QColor&) override {}
    void setClip(float) override {}
    void setAmbientStrength(float) override {}
    void applyColor(const QColor&, int) override {}
};

/// Shows a filled section inside a gamut that is not cut. It is opaque unless its parent is invisible: mixed
/// with a translucent surface in nearly the same colours, it could hardly be seen.
class KVInnerSection : public KVSectionLid
{
public:
    using KVSectionLid::KVSectionLid;

    void applyAlpha(float alpha) override { KVSectionLid::applyAlpha(alpha > 0.0f ? 1.0f : 0.0f); }
};
