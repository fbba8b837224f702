// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <scene/CancelPacer.h>
#include <scene/GeometryData.h>

#include <QtCore/QString>
#include <QtGui/QFont>
#include <QtGui/QMatrix4x4>

/// @file
/// Geometry generators: they turn coloured points, segments, triangles and text into vertex data.
///
/// Pure functions that do not depend on objects, GL or the scene tree. They may run on any thread (the text
/// outline needs a QGuiApplication for its fonts). Input positions are host coordinates (L*, a*, b*), output
/// positions are scene coordinates (-a*, L*, b*). Normals stay in host coordinates: the vertex shader
/// converts them.

/// Triangles with one flat normal each. Corners are counter-clockwise seen from the side to which the normal
/// points. Triangles whose corners are collinear or not finite get the normal (0, 0, 0); the shader does not
/// light them.
[[nodiscard]] GeometryData kvTriangles(const QList<ColoredTriangle>& triangles);

/// Segments as GL lines (width 0 or not finite, or an empty list) or as ribbons.
///
/// A ribbon is a tube of square cross-section around the segments, width / 1.5 Lab units across, so that it
/// is visible from every side. Consecutive segments that share a point are joined by a mitre. At corners that
/// are too sharp for a mitre, both tubes are extended by half a width instead.
/// Degenerate segments and segments with positions that are not finite are skipped. Segments between the same
/// two points (in either direction) become one bar in the colours of the last one; in a list of lines all are
/// kept. A closed figure (closedHint) at constant lightness becomes a band whose height is a third of its
/// width, so that its lower half does not intersect a plane just below it.
///
/// @param closedHint the segments are a closed figure. Free ends of the tube are then extended by half a
///        width, so that they cover a corner. The same applies to every width below 4 and to a list that ends
///        where it begins; the latter also gets a mitre there. All other free ends are cut square.
/// @param width Lab units; stored as the line width of the result
/// @param trailing not read; callers pass 0
[[nodiscard]] GeometryData kvSegments(const QList<ColoredSegment>& segments, bool closedHint, float width,
                                      float trailing = 0.0f);

/// The ribbon of kvSegments() as vertex records with the style @p style, for large lists.
/// @param width greater than 0
/// @param cancelled if it returns true, the result is incomplete
[[nodiscard]] GeometryData kvSegmentRecords(const QList<ColoredSegment>& segments, bool closedHint,
                                            float width, const VertexStyle& style,
                                            const KVCancelCheck& cancelled);

/// Markers: one solid of radius size / 2 around each position.
///
/// Type 2 is a bracketed cube: only the two outer thirds of each edge are drawn.
/// Type 3 is a faceted star: eight vertices on the equator in steps of π/4, every second one at half the
/// radius, connected to two poles on the L* axis.
/// Type 1 and every other value is a sphere in steps of π/8 with smooth normals. Large sets (more than 2,000
/// markers, or 700 of size 2 or less) use coarser steps, π/4, π/3 or π/2, to limit memory: 100,000 spheres
/// take 144 MB instead of 4 GB.
///
/// @param size diameter in Lab units
/// @param param stored in the result; for type 1 the ambient strength, see KV3DObject::setGeometry()
/// @return geometry that also stores the four arguments; KV3DObject::setMarkerSize() needs them
[[nodiscard]] GeometryData kvMarkers(int markerType, const QList<ColoredPoint>& markers, float size,
                                     float param);

/// Outline of @p text, sampled along the glyph contours in 200 steps.
///
/// @param transform maps a point (u, v, 0) of the text path (u to the right, v downwards, origin on the
///        baseline) to host coordinates
/// @param width see kvSegments()
[[nodiscard]] GeometryData kvTextOutline(const QString& text, const QMatrix4x4& transform, const QFont& font,
                                         const QColor& color, int width);
