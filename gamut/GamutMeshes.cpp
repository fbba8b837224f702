// SPDX-License-Identifier: Apache-2.0
#include <gamut/GamutMeshes.h>
#include <scene/Generators.h>

#include <vector>

namespace {

constexpr float outlineLightness = 0.3f; // just above the grid in the plane L* = 0
constexpr float lineWidth = 2.0f;
constexpr float wireWidth = 1.2f;
constexpr float primarySize = 3.0f;

/// Missing components count as 0.
QVector3D positionOf(const QList<float>& lab)
{
    return QVector3D(lab.value(0), lab.value(1), lab.value(2));
}

ColoredPoint pointOf(const QList<float>& lab)
{
    return {kvLabToColor(lab), positionOf(lab)};
}

QVector3D positionOf(const KVGamut::LabPoint& p)
{
    return QVector3D(p.L, p.a, p.b);
}

QList<ColoredTriangle> trianglesOf(const KVGamut::Mesh& mesh)
{
    std::vector<ColoredPoint> points; // triangles share vertices: each is converted once
    points.reserve(mesh.lab.size());
    for (const KVGamut::LabPoint& p : mesh.lab)
        points.emplace_back(kvLabToColor({p.L, p.a, p.b}), positionOf(p));

    const auto pointAt = [&points](int vertex) { return points[static_cast<std::size_t>(vertex)]; };
    QList<ColoredTriangle> triangles;
    triangles.reserve(static_cast<qsizetype>(mesh.triangles.size()));
    for (const KVGamut::Mesh::Triangle& t : mesh.triangles)
        triangles.append(ColoredTriangle{pointAt(t[0]), pointAt(t[1]), pointAt(t[2])});
    return triangles;
}

QList<ColoredSegment> edgesOf(const QList<ColoredTriangle>& triangles)
{
    QList<ColoredSegment> edges;
    edges.reserve(3 * triangles.size());
    for (const ColoredTriangle& t : triangles) {
        edges.append({t[0], t[1]});
        edges.append({t[1], t[2]});
        edges.append({t[2], t[0]});
    }
    return edges;
}

QList<ColoredSegment> outlineOf(const KVGamut::GamutObject& gamut)
{
    const auto flat = [](const KVHull::Node& node) {
        return ColoredPoint{kvLabToColor(node.lab),
                            QVector3D(outlineLightness, node.lab.value(1), node.lab.value(2))};
    };
    QList<ColoredSegment> segments;
    const auto outline = gamut.outline();
    segments.reserve(outline.size());
    for (const auto& segment : outline)
        segments.append({flat(segment.value(0)), flat(segment.value(1))});
    return segments;
}

} // namespace

QColor kvLabToColor(const QList<float>& lab)
{
    const QList<float> rgb = KVColorConversionHelper::KVHLab2RGB(lab);
    int channels[3] = {0, 0, 0};
    for (qsizetype i = 0; i < rgb.size(); ++i) {
        // Truncated towards zero. Values outside 0..255 after that, and NaN, make the colour invalid.
        if (!(rgb[i] > -1.0f && rgb[i] < 256.0f))
            return {};
        if (i < 3)
            channels[i] = static_cast<int>(rgb[i]);
    }
    return QColor(channels[0], channels[1], channels[2]);
}

GamutMeshSet kvGamutMeshes(const KVGamut::GamutObject& gamut, const KVCompletionProtocolPtr& protocol)
{
    const auto cancelled = [&] { return protocol && protocol->isCancelled(); };

    GamutMeshSet meshes;
    const QList<ColoredTriangle> triangles = trianglesOf(gamut.mesh());
    meshes[QStringLiteral("Projection")] = kvSegments(outlineOf(gamut), true, lineWidth);
    meshes[QStringLiteral("Front")] = kvTriangles(triangles);
    if (cancelled())
        return meshes;
    meshes[QStringLiteral("Wireframe")] = kvSegments(edgesOf(triangles), true, wireWidth);
    if (cancelled())
        return meshes;

    // Each primary's ramp is a polyline from the reference point; every point is marked.
    const ColoredPoint reference = pointOf(gamut.referenceLab());
    QList<ColoredSegment> lines;
    QList<ColoredPoint> points{reference};
    const auto groups = gamut.primaries();
    for (const auto& group : groups) {
        ColoredPoint previous = reference;
        for (const QList<float>& lab : group) {
            const ColoredPoint point = pointOf(lab);
            lines.append({previous, point});
            points.append(point);
            previous = point;
        }
    }
    meshes[QStringLiteral("Primaries")] = kvSegments(lines, false, lineWidth);
    meshes[QStringLiteral("PrimariesPoints")] = kvMarkers(1, points, primarySize, 0.0f);
    return meshes;
}

QList<ColoredSegment> kvGamutSection(const KVGamut::GamutObject& gamut, float L, const QColor& color)
{
    const float plane[4] = {1.0f, 0.0f, 0.0f, -L};
    const std::vector<KVGamut::RingPiece> ring = KVGamut::computeRing(plane, gamut.mesh());
    QList<ColoredSegment> segments;
    segments.reserve(static_cast<qsizetype>(ring.size()));
    for (const KVGamut::RingPiece& piece : ring)
        segments.append({{color, positionOf(piece[0])}, {color, positionOf(piece[1])}});
    return segments;
}
