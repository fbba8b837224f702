// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>
#include <scene/GeometryData.h>

#include <QtCore/QList>
#include <QtGui/QVector3D>

#include <optional>
#include <utility>

/// @file
/// What a ray through the scene meets first. Pure functions; positions are (L*, a*, b*).

/// Origin, then direction, which need not have length 1. A zero direction meets nothing.
using KVRay = std::pair<QVector3D, QVector3D>;

/// A point of a surface.
struct SurfaceHit
{
    float distance = 0.0f; ///< from the ray's origin, Lab units
    QVector3D lab;
};

/// Where @p ray, going forward, first meets a triangle from either side at a lightness of @p clip or
/// below; what lies above is cut off.
std::optional<SurfaceHit> kvPickSurface(const KVRay& ray, const KVGamut::Mesh& mesh, float clip);

/// A marker, picked as a sphere.
struct MarkerHit
{
    int index = 0;         ///< in the list
    float distance = 0.0f; ///< from the ray's origin to where it enters the sphere
};

/// The first of the spheres of @p radius around @p markers that @p ray, going forward, enters.
std::optional<MarkerHit> kvPickMarker(const KVRay& ray, const QList<ColoredPoint>& markers, float radius);
