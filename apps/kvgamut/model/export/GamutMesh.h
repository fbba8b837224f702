// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QList>
#include <QtGui/QRgb>
#include <QtGui/QVector3D>

#include <array>

/// A gamut's surface with shared corners: closed, each edge in two triangles with opposite directions.
struct GamutMesh
{
    struct Vertex
    {
        QVector3D lab; ///< L*, a*, b*
        QRgb color;    ///< sRGB, in which a screen shows it
    };
    using Triangle = std::array<int, 3>; ///< counter-clockwise from outside, (L*, a*, b*) right-handed

    QList<Vertex> vertices; ///< no two in the same place
    QList<Triangle> triangles;

    /// Joins the corners of @p faces, as GamutObject::faces() gives them, that are in the same place.
    static GamutMesh of(const QList<QList<KVHull::Node>>& faces);
};
