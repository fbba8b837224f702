// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <scene/Disposal.h>
#include <scene/VertexRecords.h>

#include <QtCore/QList>
#include <QtGui/QColor>
#include <QtGui/QVector3D>

#include <array>
#include <utility>

/// @file
/// Plain records passed between the host, the geometry generators and the scene objects.

/// A colour at a position in host coordinates, (L*, a*, b*). The same type as
/// KVGamut3DViewer::ColoredPosition, the name that hosts use.
using ColoredPoint = std::pair<QColor, QVector3D>;
/// Start and end of a coloured segment.
using ColoredSegment = std::pair<ColoredPoint, ColoredPoint>;
/// Corners of a coloured triangle, in order.
using ColoredTriangle = std::array<ColoredPoint, 3>;

/// The result of a generator, applied by KV3DObject::setGeometry().
struct GeometryData
{
    /// Floats per generated vertex: position (3, scene coordinates), normal (3, host coordinates), RGBA (4).
    static constexpr int floatsPerVertex = kvGeneratedFloats;

    int primitiveMode = KVPrimitiveTriangles;
    QList<float> vertices; ///< whole records of floatsPerVertex
    /// Instead of vertices: records of kvVertexFloats floats each, which need no further work. They have the
    /// style recordStyle.
    LongList records;
    VertexStyle recordStyle;
    float lineWidth = 1.0f; ///< pixels for lines, Lab units for ribbons
    int markerType = 1;
    QList<ColoredPoint> markers; ///< input of the marker generator; empty for other geometry
    float markerSize = -1.0f;
    float markerParam = 0.0f;
};
