// SPDX-License-Identifier: Apache-2.0
#include "PageSurface.h"

#include "ColoredMesh.h"

#include <QtCore/QJsonArray>
#include <QtCore/QtEndian>

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

namespace {

using KVGamut::LabPoint;

constexpr double maxStep = 65535.0;

std::array<double, 3> valuesOf(const LabPoint& lab)
{
    return {double(lab.L), double(lab.a), double(lab.b)};
}

PageSurface::Grid gridOf(const std::vector<LabPoint>& points)
{
    PageSurface::Grid grid;
    if (points.empty())
        return grid;
    grid.low = valuesOf(points.front());
    std::array<double, 3> high = grid.low;
    for (const LabPoint& lab : points)
        for (std::size_t i = 0; i < 3; ++i) {
            grid.low[i] = std::min(grid.low[i], valuesOf(lab)[i]);
            high[i] = std::max(high[i], valuesOf(lab)[i]);
        }
    for (std::size_t i = 0; i < 3; ++i)
        grid.step[i] = (high[i] - grid.low[i]) / maxStep;
    return grid;
}

template <typename Number>
void append(QByteArray& bytes, Number value)
{
    char little[sizeof(Number)];
    qToLittleEndian(value, little);
    bytes.append(little, sizeof(Number));
}

QByteArray positionsOf(const std::vector<LabPoint>& points, const PageSurface::Grid& grid)
{
    QByteArray bytes;
    for (const LabPoint& lab : points)
        for (std::size_t i = 0; i < 3; ++i) {
            const double steps =
                grid.step[i] > 0.0 ? std::round((valuesOf(lab)[i] - grid.low[i]) / grid.step[i]) : 0.0;
            append(bytes, static_cast<quint16>(std::clamp(steps, 0.0, maxStep)));
        }
    return bytes;
}

QByteArray colorsOf(const std::vector<LabPoint>& points)
{
    std::vector<std::array<float, 3>> rgb(points.size());
    KVColorConversionHelper::KVHLab2RGB(std::span<const LabPoint>(points), rgb);
    QByteArray bytes;
    for (const std::array<float, 3>& color : rgb)
        for (const float channel : color)
            append(bytes, static_cast<quint8>(std::clamp(std::round(channel), 0.0f, 255.0f)));
    return bytes;
}

QByteArray trianglesOf(const std::vector<KVGamut::Mesh::Triangle>& triangles, int indexBytes)
{
    QByteArray bytes;
    for (const KVGamut::Mesh::Triangle& triangle : triangles)
        for (const int vertex : triangle)
            if (indexBytes == 2)
                append(bytes, static_cast<quint16>(vertex));
            else
                append(bytes, static_cast<quint32>(vertex));
    return bytes;
}

/// The ends of the pieces of the outline on the ab plane.
std::vector<LabPoint> outlineOf(const KVGamut::GamutObject& gamut)
{
    std::vector<LabPoint> ends;
    const auto pieces = gamut.outline();
    for (const QList<KVHull::Node>& piece : pieces)
        for (const KVHull::Node& node : piece)
            ends.push_back({node.lab.value(0), node.lab.value(1), node.lab.value(2)});
    return ends;
}

QJsonArray jsonOf(const std::array<double, 3>& values)
{
    return {values[0], values[1], values[2]};
}

QString base64(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toBase64());
}

} // namespace

double PageSurface::Grid::error() const
{
    return 0.5 * std::hypot(step[0], step[1], step[2]);
}

PageSurface PageSurface::of(const KVGamut::GamutObject& gamut)
{
    const ColoredMesh mesh = ColoredMesh::of(gamut.mesh());
    PageSurface surface;
    surface.grid = gridOf(mesh.lab);
    surface.positions = positionsOf(mesh.lab, surface.grid);
    surface.colors = colorsOf(mesh.lab);
    surface.indexBytes = mesh.lab.size() < 65536 ? 2 : 4;
    surface.triangles = trianglesOf(mesh.triangles, surface.indexBytes);
    surface.outline = positionsOf(outlineOf(gamut), surface.grid);
    return surface;
}

QJsonObject PageSurface::json() const
{
    return {{QStringLiteral("grid"), QJsonObject{{QStringLiteral("low"), jsonOf(grid.low)},
                                                 {QStringLiteral("step"), jsonOf(grid.step)}}},
            {QStringLiteral("error"), grid.error()},
            {QStringLiteral("positions"), base64(positions)},
            {QStringLiteral("colours"), base64(colors)},
            {QStringLiteral("triangles"), base64(triangles)},
            {QStringLiteral("indexBytes"), indexBytes},
            {QStringLiteral("outline"), base64(outline)}};
}
