// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ColoredMesh.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// Information about the gamut that is written into a file if its format allows it.
struct MeshNote
{
    QString profile;
    KVGamut::Report report;
    QString part = {}; ///< which part of the gamut it is; empty: all of it

    /// One line: profile, part, intent, white, volume.
    QString line() const;
    /// The same, one fact per line.
    QStringList lines() const;
};

/// A file format for surfaces.
struct MeshFormat
{
    const char* suffix;
    QByteArray (*write)(const ColoredMesh& mesh, const MeshNote& note);

    static const QList<MeshFormat>& all();
    /// The format with @p suffix (without the dot, in any case); null if there is none.
    static const MeshFormat* ofSuffix(const QString& suffix);
};

/// The writers. Units are those of Lab; x, y, z are
/// - in PLY, OBJ and STL, where z is usually up: a*, b*, L*;
/// - in glTF and X3D, where y is up: a*, L*, -b*.
/// Both are right-handed: triangles are counter-clockwise seen from outside. JSON has L*, a*, b*.
namespace MeshWriters {

QByteArray ply(const ColoredMesh& mesh, const MeshNote& note);  ///< text, with vertex colours
QByteArray obj(const ColoredMesh& mesh, const MeshNote& note);  ///< colours after the coordinates, 0..1
QByteArray stl(const ColoredMesh& mesh, const MeshNote& note);  ///< binary; 15-bit colour per triangle
QByteArray gltf(const ColoredMesh& mesh, const MeshNote& note); ///< version 2.0, unlit, embedded buffer
QByteArray x3d(const ColoredMesh& mesh, const MeshNote& note);  ///< XML, version 3.3
QByteArray json(const ColoredMesh& mesh, const MeshNote& note); ///< an array of one object
/// A profile of ICC.2 (version 5) with the surface as its gamut boundary, and without a transform.
QByteArray icc(const ColoredMesh& mesh, const MeshNote& note);

} // namespace MeshWriters
