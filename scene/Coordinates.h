// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QVector3D>

/// @file
/// Conversion between the coordinates of hosts, (L*, a*, b*), and those of the scene, (-a*, L*, b*).
///
/// All code of the library converts with these two functions; the vertex shader does the same for normals.

/// Host coordinates (L*, a*, b*) to scene coordinates (-a*, L*, b*). Exact. The sign of a zero is kept
/// (hence unary minus): it decides the azimuth of a camera that looks straight down.
[[nodiscard]] inline QVector3D kvSceneFromHost(const QVector3D& v)
{
    return {-v.y(), v.x(), v.z()};
}

/// Scene coordinates to host coordinates; the inverse of kvSceneFromHost().
[[nodiscard]] inline QVector3D kvHostFromScene(const QVector3D& v)
{
    return {v.y(), -v.x(), v.z()};
}
