// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>
#include <scene/GeometryData.h>

#include <QtCore/QHash>
#include <QtCore/QString>

/// The geometry of the five drawn children of a gamut, by name: "Projection", "Front", "Wireframe",
/// "Primaries", "PrimariesPoints". Any other name gives the empty default geometry.
using GamutMeshSet = QHash<QString, GeometryData>;

/// Builds the geometry of @p gamut. A pure function, which runs on the worker thread. If @p protocol (may be
/// null) is cancelled, the result is incomplete.
GamutMeshSet kvGamutMeshes(const KVGamut::GamutObject& gamut, const KVCompletionProtocolPtr& protocol = {});

/// Segments of the section of @p gamut at lightness @p L, all in one @p color.
QList<ColoredSegment> kvGamutSection(const KVGamut::GamutObject& gamut, float L, const QColor& color);

/// Screen colour of a Lab triple. Invalid if the colour engine returns values outside 0..255, black if it
/// returns no values.
QColor kvLabToColor(const QList<float>& lab);
