// SPDX-License-Identifier: Apache-2.0
#include "MeshFormat.h"
#include "MeshText.h"

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>

namespace {

constexpr qsizetype headerSize = 80;

/// The colour of a triangle in its 16 spare bits, as VisCAM and SolidView write it: valid, then 5 bits
/// each of red, green and blue.
quint16 packed(const GamutMesh& mesh, const GamutMesh::Triangle& triangle)
{
    int red = 0, green = 0, blue = 0;
    for (const int corner : triangle) {
        red += qRed(mesh.vertices[corner].color);
        green += qGreen(mesh.vertices[corner].color);
        blue += qBlue(mesh.vertices[corner].color);
    }
    const auto five = [](int sum) { return (sum * 31 + 3 * 127) / (3 * 255); };
    return static_cast<quint16>(0x8000 | five(red) << 10 | five(green) << 5 | five(blue));
}

} // namespace

QByteArray MeshWriters::stl(const GamutMesh& mesh, const MeshNote& note)
{
    // A header that begins with "solid" would be taken for text.
    QByteArray file = QByteArray("x, y, z: a*, b*, L*; ")
                          .append(note.line().toUtf8())
                          .left(headerSize)
                          .leftJustified(headerSize, ' ');
    QDataStream stream(&file, QIODevice::Append);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
    const auto write = [&stream](const QVector3D& v) { stream << v.x() << v.y() << v.z(); };
    stream << static_cast<quint32>(mesh.triangles.size());
    for (const GamutMesh::Triangle& triangle : mesh.triangles) {
        const auto corner = [&](size_t i) { return MeshText::zUp(mesh.vertices[triangle[i]].lab); };
        write(QVector3D::normal(corner(0), corner(1), corner(2)));
        for (size_t i = 0; i < 3; ++i)
            write(corner(i));
        stream << packed(mesh, triangle);
    }
    return file;
}
