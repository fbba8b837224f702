// SPDX-License-Identifier: Apache-2.0
#include "MeshFormat.h"
#include "MeshText.h"

QByteArray MeshWriters::ply(const ColoredMesh& mesh, const MeshNote& note)
{
    QByteArray file = "ply\nformat ascii 1.0\n";
    const QStringList lines = note.lines();
    for (const QString& line : lines)
        file += "comment " + line.simplified().toUtf8() + '\n';
    file += "comment x, y, z: a*, b*, L*\n"
            "element vertex " +
            QByteArray::number(static_cast<qulonglong>(mesh.lab.size())) +
            "\nproperty float x\nproperty float y\nproperty float z\n"
            "property uchar red\nproperty uchar green\nproperty uchar blue\n"
            "element face " +
            QByteArray::number(static_cast<qulonglong>(mesh.triangles.size())) +
            "\nproperty list uchar int vertex_indices\nend_header\n";
    for (std::size_t v = 0; v < mesh.lab.size(); ++v)
        file += MeshText::triple(MeshText::zUp(mesh.lab[v])) + ' ' +
                QByteArray::number(qRed(mesh.colors[v])) + ' ' + QByteArray::number(qGreen(mesh.colors[v])) +
                ' ' + QByteArray::number(qBlue(mesh.colors[v])) + '\n';
    for (const auto& [i, j, k] : mesh.triangles)
        file +=
            "3 " + QByteArray::number(i) + ' ' + QByteArray::number(j) + ' ' + QByteArray::number(k) + '\n';
    return file;
}
