// SPDX-License-Identifier: Apache-2.0
#include "MeshFormat.h"
#include "MeshText.h"

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>

namespace {

constexpr qsizetype stlHeaderSize = 80;

/// The mean colour of a triangle in the 16 attribute bits, in the usual encoding of binary STL: a bit that
/// marks it as valid, then 5 bits each of red, green and blue.
quint16 packed(const ColoredMesh& mesh, const KVGamut::Mesh::Triangle& triangle)
{
    int red = 0, green = 0, blue = 0;
    for (const int vertex : triangle) {
        const QRgb color = mesh.colors[static_cast<std::size_t>(vertex)];
        red += qRed(color);
        green += qGreen(color);
        blue += qBlue(color);
    }
    const auto five = [](int sum) { return (sum * 31 + 3 * 127) / (3 * 255); };
    return static_cast<quint16>(0x8000 | five(red) << 10 | five(green) << 5 | five(blue));
}

} // namespace

QByteArray MeshWriters::stl(const ColoredMesh& mesh, const MeshNote& note)
{
    // The header must not begin with "solid": readers would parse the file as text.
    QByteArray file = QByteArray("x, y, z: a*, b*, L*; ")
                          .append(note.line().toUtf8())
                          .left(stlHeaderSize)
                          .leftJustified(stlHeaderSize, ' ');
    QDataStream stream(&file, QIODevice::Append);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
    const auto write = [&stream](const QVector3D& v) { stream << v.x() << v.y() << v.z(); };
    stream << static_cast<quint32>(mesh.triangles.size());
    for (const KVGamut::Mesh::Triangle& triangle : mesh.triangles) {
        const auto corner = [&](std::size_t i) {
            return MeshText::zUp(mesh.lab[static_cast<std::size_t>(triangle[i])]);
        };
        write(QVector3D::normal(corner(0), corner(1), corner(2)));
        for (std::size_t i = 0; i < 3; ++i)
            write(corner(i));
        stream << packed(mesh, triangle);
    }
    return file;
}
