// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gamut/SurfaceBands.h>
#include <platform/KVVelmoraFramework.h>
#include <scene/CancelPacer.h>
#include <scene/GeometryData.h>

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtGui/QRgb>

#include <optional>

/// The geometry of the five drawn children of a gamut, by name: "Projection", "Front", "Wireframe",
/// "Primaries", "PrimariesPoints". Any other name gives the empty default geometry.
using GamutMeshSet = QMap<QString, GeometryData>;

/// How the surface will be shown. Its vertex records are made with these styles, so that the GUI thread need
/// not change them.
struct GamutStyles
{
    VertexStyle front;
    std::optional<VertexStyle> wireframe; ///< nullopt: the wireframe is not needed
};

/// Builds the geometry of @p gamut. A pure function, which runs on the worker thread.
///
/// Without a style for it the wireframe has no vertices: it takes eighteen times the memory of the surface,
/// and few hosts show it. kvGamutWireframe() makes it later.
/// @param cancelled asked often; if it returns true, the result is incomplete
/// @param vertexColors of the surface, one for each vertex of the mesh; otherwise the colours are those of
/// the vertices on a screen
/// @param values of the surface with their colours, see kvColoredBands(); used instead of @p vertexColors if
/// there is one for each vertex
GamutMeshSet kvGamutMeshes(const KVGamut::GamutObject& gamut, const GamutStyles& styles = {},
                           const KVCancelCheck& cancelled = {}, const QList<QRgb>& vertexColors = {},
                           const SurfaceValues& values = {});

/// The geometry "Wireframe" of @p gamut, as vertex records. Otherwise as kvGamutMeshes().
GeometryData kvGamutWireframe(const KVGamut::GamutObject& gamut, const VertexStyle& style,
                              const KVCancelCheck& cancelled = {});

/// The triangles of @p mesh in the screen colours of their corners, without shading, as vertex records.
GeometryData kvUnshadedSurface(const KVGamut::Mesh& mesh);

/// Segments of the section of @p gamut at lightness @p L, all in one @p color.
QList<ColoredSegment> kvGamutSection(const KVGamut::GamutObject& gamut, float L, const QColor& color);

/// Screen colour of a Lab triple. Invalid if the colour engine returns values outside 0..255, black if it
/// returns no values.
QColor kvLabToColor(const QList<float>& lab);
