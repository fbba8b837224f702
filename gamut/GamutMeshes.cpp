// SPDX-License-Identifier: Apache-2.0
#include <gamut/GamutMeshes.h>
#include <gamut/MeshEdges.h>
#include <scene/Coordinates.h>
#include <scene/Generators.h>
#include <scene/TriangleWriter.h>

#include <algorithm>
#include <array>
#include <span>
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

using Rgb = std::array<float, 3>;

/// Truncated towards zero. Values outside 0..255 after that, and NaN, make a colour invalid.
bool isColor(const Rgb& rgb)
{
    return std::all_of(rgb.begin(), rgb.end(), [](float v) { return v > -1.0f && v < 256.0f; });
}

QColor colorOf(const Rgb& rgb)
{
    if (!isColor(rgb))
        return {};
    return QColor(static_cast<int>(rgb[0]), static_cast<int>(rgb[1]), static_cast<int>(rgb[2]));
}

/// QColor::redF() of each value 0..255: a call for each vertex would be slow.
const std::array<float, 256>& channelValues()
{
    static const auto values = [] {
        std::array<float, 256> table{};
        for (int i = 0; i < 256; ++i)
            table[static_cast<std::size_t>(i)] = QColor(i, i, i).redF();
        return table;
    }();
    return values;
}

/// Red, green and blue of colorOf(), 0..1. Invalid colours are black.
Rgb channelsOf(const Rgb& rgb)
{
    if (!isColor(rgb))
        return {};
    const auto& values = channelValues();
    return {values[static_cast<std::size_t>(rgb[0])], values[static_cast<std::size_t>(rgb[1])],
            values[static_cast<std::size_t>(rgb[2])]};
}

/// Screen colours of the vertices as the engine returns them.
std::vector<Rgb> colorsOf(const KVGamut::Mesh& mesh, const KVCancelCheck& cancelled)
{
    constexpr std::size_t colorsAtOnce = 1024;
    const std::span<const KVGamut::LabPoint> lab(mesh.lab);
    std::vector<Rgb> colors(lab.size());
    for (std::size_t i = 0; i < lab.size() && !(cancelled && cancelled()); i += colorsAtOnce) {
        const std::size_t count = std::min(colorsAtOnce, lab.size() - i);
        KVColorConversionHelper::KVHLab2RGB(lab.subspan(i, count), std::span(colors).subspan(i, count));
    }
    return colors;
}

/// The same as shown, 0..1 each, unless there are other colours for all vertices.
std::vector<Rgb> channelsOf(const KVGamut::Mesh& mesh, const QList<QRgb>& vertexColors,
                            const KVCancelCheck& cancelled)
{
    if (static_cast<std::size_t>(vertexColors.size()) != mesh.lab.size()) {
        std::vector<Rgb> channels = colorsOf(mesh, cancelled);
        std::transform(channels.begin(), channels.end(), channels.begin(),
                       [](const Rgb& rgb) { return channelsOf(rgb); });
        return channels;
    }
    std::vector<Rgb> channels(mesh.lab.size());
    const auto value = [](int channel) { return channelValues()[static_cast<std::size_t>(channel)]; };
    std::transform(vertexColors.cbegin(), vertexColors.cend(), channels.begin(), [&value](QRgb color) {
        return Rgb{value(qRed(color)), value(qGreen(color)), value(qBlue(color))};
    });
    return channels;
}

/// Writes the three records of a triangle.
void writeTriangle(const KVGamut::Mesh& mesh, const KVGamut::Mesh::Triangle& triangle,
                   const std::vector<Rgb>& channels, const VertexStyle& style, VertexStride* record)
{
    const auto at = [&](std::size_t i) { return static_cast<std::size_t>(triangle[i]); };
    const QVector3D corners[] = {positionOf(mesh.lab[at(0)]), positionOf(mesh.lab[at(1)]),
                                 positionOf(mesh.lab[at(2)])};
    const QVector3D normal = kvFlatNormal(corners[0], corners[1], corners[2]);
    for (std::size_t i = 0; i < 3; ++i) {
        const QVector3D placed = kvSceneFromHost(corners[i]);
        const auto [r, g, b] = channels[at(i)];
        record[i] = {{placed.x(), placed.y(), placed.z()},
                     {normal.x(), normal.y(), normal.z()},
                     {r, g, b, style.alpha},
                     {r, g, b, 1.0f},
                     style.clip};
    }
}

/// The triangles of the surface, each with its flat normal. The same as kvTriangles(), but as records and
/// without a list of ColoredTriangle.
GeometryData surfaceOf(const KVGamut::Mesh& mesh, const QList<QRgb>& vertexColors, const VertexStyle& style,
                       const KVCancelCheck& cancelled)
{
    constexpr std::size_t trianglesAtOnce = 512; // about a hundred microseconds
    VertexStyle unshaded = style;
    unshaded.shading.reset();
    const std::vector<Rgb> channels = channelsOf(mesh, vertexColors, cancelled);

    GeometryData data;
    data.primitiveMode = KVPrimitiveTriangles;
    data.recordStyle = style;
    data.records.reserve(static_cast<qsizetype>(3 * mesh.triangles.size()) * kvVertexFloats);
    std::span<const KVGamut::Mesh::Triangle> rest(mesh.triangles);
    while (!rest.empty() && !(cancelled && cancelled())) {
        const auto now = rest.first(std::min(trianglesAtOnce, rest.size()));
        rest = rest.subspan(now.size());
        const auto records = kvAppendRecords(data.records, static_cast<qsizetype>(3 * now.size()));
        for (std::size_t i = 0; i < now.size(); ++i)
            writeTriangle(mesh, now[i], channels, unshaded, &records[3 * i]);
        kvApplyStyle(records, style, unshaded);
    }
    return data;
}

QList<ColoredSegment> edgesOf(const KVGamut::Mesh& mesh, const KVCancelCheck& cancelled)
{
    const std::vector<MeshEdge> edges = kvUniqueEdges(mesh, cancelled);
    const std::vector<Rgb> colors = colorsOf(mesh, cancelled);
    const auto pointAt = [&](int vertex) {
        const auto v = static_cast<std::size_t>(vertex);
        return ColoredPoint{colorOf(colors[v]), positionOf(mesh.lab[v])};
    };
    CancelPacer pacer(cancelled, 1024);
    QList<ColoredSegment> segments;
    segments.reserve(static_cast<qsizetype>(edges.size()));
    for (const auto& [from, to] : edges) {
        if (pacer.isCancelled())
            break;
        segments.append({pointAt(from), pointAt(to)});
    }
    return segments;
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

/// The wireframe until it is made.
GeometryData withoutVertices(float width)
{
    GeometryData data;
    data.lineWidth = width;
    return data;
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

GeometryData kvGamutWireframe(const KVGamut::GamutObject& gamut, const VertexStyle& style,
                              const KVCancelCheck& cancelled)
{
    QList<ColoredSegment> edges = edgesOf(gamut.mesh(), cancelled);
    GeometryData wireframe = kvSegmentRecords(edges, true, wireWidth, style, cancelled);
    kvDisposeOfElements(std::move(edges));
    return wireframe;
}

GamutMeshSet kvGamutMeshes(const KVGamut::GamutObject& gamut, const GamutStyles& styles,
                           const KVCancelCheck& cancelled, const QList<QRgb>& vertexColors,
                           const SurfaceValues& values)
{
    GamutMeshSet meshes;
    meshes[QStringLiteral("Projection")] = kvSegments(outlineOf(gamut), true, lineWidth);
    const ColoredSurface bands = kvColoredBands(gamut.mesh(), values);
    meshes[QStringLiteral("Front")] = bands.mesh.isEmpty()
                                          ? surfaceOf(gamut.mesh(), vertexColors, styles.front, cancelled)
                                          : surfaceOf(bands.mesh, bands.colors, styles.front, cancelled);
    meshes[QStringLiteral("Wireframe")] =
        styles.wireframe ? kvGamutWireframe(gamut, *styles.wireframe, cancelled) : withoutVertices(wireWidth);
    if (cancelled && cancelled())
        return meshes;

    // Each primary's ramp is a polyline from the reference point; every point is marked.
    const ColoredPoint reference = pointOf(gamut.referenceLab());
    QList<ColoredSegment> lines;
    QList<ColoredPoint> points;
    points.append(reference); // Qt does not check whether a list can be constructed from a value
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

GeometryData kvUnshadedSurface(const KVGamut::Mesh& mesh)
{
    GeometryData data = surfaceOf(mesh, {}, {}, {});
    constexpr qsizetype normal = offsetof(VertexStride, normal) / sizeof(float);
    for (qsizetype i = normal; i + 3 <= data.records.size(); i += kvVertexFloats)
        std::fill_n(data.records.begin() + i, 3, 0.0f); // records without a normal are not shaded
    return data;
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
