// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>
#include <scene/GeometryData.h>

#include <QtCore/QHash>
#include <QtCore/QString>

/// The geometry of a gamut's five drawn children, by child name: "Projection", "Front", "Wireframe",
/// "Primaries", "PrimariesPoints". Any other name gives the empty default geometry.
using GamutMeshSet = QHash<QString, GeometryData>;

/// Builds the mesh set of @p gamut. Pure; runs on the worker thread.
///
/// Progress of @p protocol (may be null) is not touched; a cancelled one ends it early with what
/// there is so far.
GamutMeshSet kvGamutMeshes(const KVGamut::GamutObject& gamut, const KVCompletionProtocolPtr& protocol = {});

/// Segments of the section of @p gamut at lightness @p L, all in one @p color.
QList<ColoredSegment> kvGamutSection(const KVGamut::GamutObject& gamut, float L, const QColor& color);

/// Screen colour of a Lab triple; invalid when the colour engine answers out of 0..255, black when it
/// answers nothing.
QColor kvLabToColor(const QList<float>& lab);
