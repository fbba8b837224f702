// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtGui/QColor>
#include <QtGui/QVector3D>

#include <array>
#include <utility>

/// @file
/// Plain records that travel between the host, the geometry generators and the scene objects.

/// A colour at a position in host coordinates, (L*, a*, b*). The same type as
/// KVGamut3DViewer::ColoredPosition, the name that hosts use.
using ColoredPoint = std::pair<QColor, QVector3D>;
/// Start and end of a coloured segment.
using ColoredSegment = std::pair<ColoredPoint, ColoredPoint>;
/// Corners of a coloured triangle, in order.
using ColoredTriangle = std::array<ColoredPoint, 3>;

/// OpenGL primitives that a scene object draws; the values are those of glDrawArrays.
enum KVPrimitiveMode : int
{
    KVPrimitivePoints = 0,
    KVPrimitiveLines = 1,
    KVPrimitiveTriangles = 4,
};

/// What a generator returns and KV3DObject::setGeometry applies.
struct GeometryData
{
    /// Floats of one generated vertex: position 3 (scene), normal 3 (host), colour RGBA 4.
    static constexpr int floatsPerVertex = 10;

    int primitiveMode = KVPrimitiveTriangles;
    QList<float> vertices;  ///< whole records of floatsPerVertex
    float lineWidth = 1.0f; ///< pixels for lines; Lab units where a ribbon was built
    int markerType = 1;
    QList<ColoredPoint> markers; ///< what marker geometry was made from; empty otherwise
    float markerSize = -1.0f;
    float markerParam = 0.0f;
};
