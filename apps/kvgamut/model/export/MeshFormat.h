// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutMesh.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// What a file says of the gamut in it, where its format has a place for that.
struct MeshNote
{
    QString profile;
    KVGamut::Report report;

    /// One line: profile, intent, white, volume.
    QString line() const;
    /// The same, a fact a line.
    QStringList lines() const;
};

/// A format of files in which surfaces are exchanged.
struct MeshFormat
{
    const char* suffix;
    QByteArray (*write)(const GamutMesh& mesh, const MeshNote& note);

    /// Those that are known.
    static const QList<MeshFormat>& all();
    /// The one of @p suffix (without the dot, in any case); null when there is none.
    static const MeshFormat* ofSuffix(const QString& suffix);
};

/// The writers. Units are those of Lab; x, y, z are
/// - in PLY, OBJ and STL, where z is usually up: a*, b*, L*;
/// - in glTF and X3D, where y is up: a*, L*, -b*.
/// Both are right-handed: triangles are counter-clockwise from outside. JSON says L*, a*, b*.
namespace MeshWriters {

QByteArray ply(const GamutMesh& mesh, const MeshNote& note);  ///< text, with colours of vertices
QByteArray obj(const GamutMesh& mesh, const MeshNote& note);  ///< colours after the coordinates, 0..1
QByteArray stl(const GamutMesh& mesh, const MeshNote& note);  ///< binary; a colour of 15 bits a triangle
QByteArray gltf(const GamutMesh& mesh, const MeshNote& note); ///< version 2.0, unlit, buffer inside
QByteArray x3d(const GamutMesh& mesh, const MeshNote& note);  ///< XML, version 3.3
QByteArray json(const GamutMesh& mesh, const MeshNote& note); ///< an array of one object

} // namespace MeshWriters
