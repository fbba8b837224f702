// SPDX-License-Identifier: Apache-2.0
#include "MeshFormat.h"
#include "MeshText.h"

QByteArray MeshWriters::obj(const ColoredMesh& mesh, const MeshNote& note)
{
    QByteArray file;
    const QStringList lines = note.lines();
    for (const QString& line : lines)
        file += "# " + line.simplified().toUtf8() + '\n';
    file += "# x, y, z: a*, b*, L*; then the colour in sRGB, 0..1\no gamut\n";
    const auto share = [](int step) { return QByteArray::number(step / 255.0, 'f', 5); };
    for (std::size_t v = 0; v < mesh.lab.size(); ++v)
        file += "v " + MeshText::triple(MeshText::zUp(mesh.lab[v])) + ' ' + share(qRed(mesh.colors[v])) +
                ' ' + share(qGreen(mesh.colors[v])) + ' ' + share(qBlue(mesh.colors[v])) + '\n';
    for (const auto& [i, j, k] : mesh.triangles) // counted from 1
        file += "f " + QByteArray::number(i + 1) + ' ' + QByteArray::number(j + 1) + ' ' +
                QByteArray::number(k + 1) + '\n';
    return file;
}
