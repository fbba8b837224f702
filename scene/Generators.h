// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <scene/GeometryData.h>

#include <QtCore/QString>
#include <QtGui/QFont>
#include <QtGui/QMatrix4x4>

/// @file
/// Geometry generators: coloured points, segments, triangles and text become vertex data.
///
/// Pure functions; they know no objects, GL or scene tree and may run on any thread (the text outline
/// needs a QGuiApplication for its fonts). Input positions are host coordinates (L*, a*, b*) and are
/// written as scene coordinates (-a*, L*, b*). Normals stay in host coordinates: the vertex shader
/// maps them the same way.

/// Triangles with one flat normal each, counter-clockwise seen from where the normal points.
/// Collinear corners, and corners that are not finite, give the normal (0, 0, 0), which the shader
/// leaves unlit.
GeometryData kvTriangles(const QList<ColoredTriangle>& triangles);

/// Segments as GL lines (width 0 or not finite, or an empty list) or as ribbons.
///
/// A ribbon is a tube of square cross-section, width / 1.5 Lab units across, around the segments, so
/// that it shows from every side. Where a segment starts at the end of the one before it, the two meet
/// in a mitre; too sharp a corner is covered by both tubes reaching half a width further instead.
/// Segments of zero length or with positions that are not finite are skipped, and one that repeats an
/// earlier one (in either direction) adds nothing. A closed figure (closedHint) at constant lightness
/// is a band, a third as high as it is wide: it lies on what is below it and does not sink into it.
///
/// @param closedHint the segments are a closed figure: the free ends of the tube reach half a width
///        further, so that they cover a corner (so do all below width 4, and a list that ends where it
///        begins; the latter also gets a mitre there). Otherwise free ends are cut square at the point.
/// @param width Lab units; kept as the result's line width
/// @param trailing not read; callers pass 0
GeometryData kvSegments(const QList<ColoredSegment>& segments, bool closedHint, float width,
                        float trailing = 0.0f);

/// Markers: one solid of radius size / 2 around each position.
///
/// Type 2 is a bracketed cube: of each of its edges only the two outer thirds are drawn.
/// Type 3 is a faceted star: eight equatorial corners in steps of π/4, every second at half the radius,
/// between two poles on the L* axis.
/// Type 1 and every other value is a sphere in steps of π/8, smoothly lit. Very many spheres (over 2,000,
/// or 700 of size 2 or less) are made in steps of π/4, π/3 and at last π/2, so that 100,000 of them take
/// 144 MB instead of 4 GB.
///
/// @param size diameter in Lab units
/// @param param passed through in the result; for type 1 the ambient strength, see setGeometry
/// The result carries the four inputs, from which setMarkerSize regenerates it.
GeometryData kvMarkers(int markerType, const QList<ColoredPoint>& markers, float size, float param);

/// Outline of @p text, traced along the glyph contours in 200 steps.
///
/// @param transform maps a point (u, v, 0) of the text path (u to the right, v downwards, origin on the
///        baseline) to host coordinates
/// @param width as for kvSegments
GeometryData kvTextOutline(const QString& text, const QMatrix4x4& transform, const QFont& font,
                           const QColor& color, int width);
