// SPDX-License-Identifier: Apache-2.0
#include "MeshFormat.h"
#include "MeshText.h"

#include <QtCore/QXmlStreamWriter>

namespace {

void writeMeta(QXmlStreamWriter& xml, const QString& name, const QString& content)
{
    xml.writeEmptyElement(QStringLiteral("meta"));
    xml.writeAttribute(QStringLiteral("name"), name);
    xml.writeAttribute(QStringLiteral("content"), content);
}

QString coordinatesOf(const ColoredMesh& mesh)
{
    QByteArray text;
    for (const KVGamut::LabPoint& lab : mesh.lab)
        text += MeshText::triple(MeshText::yUp(lab)) + ' ';
    return QString::fromLatin1(text.trimmed());
}

QString coloursOf(const ColoredMesh& mesh)
{
    QByteArray text;
    for (const QRgb color : mesh.colors)
        for (const int step : {qRed(color), qGreen(color), qBlue(color)})
            text += QByteArray::number(step / 255.0, 'f', 5) + ' ';
    return QString::fromLatin1(text.trimmed());
}

QString indicesOf(const ColoredMesh& mesh)
{
    QByteArray text;
    for (const auto& [i, j, k] : mesh.triangles)
        text += QByteArray::number(i) + ' ' + QByteArray::number(j) + ' ' + QByteArray::number(k) + " -1 ";
    return QString::fromLatin1(text.trimmed());
}

} // namespace

QByteArray MeshWriters::x3d(const ColoredMesh& mesh, const MeshNote& note)
{
    QByteArray file;
    QXmlStreamWriter xml(&file);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("X3D"));
    xml.writeAttribute(QStringLiteral("profile"), QStringLiteral("Interchange"));
    xml.writeAttribute(QStringLiteral("version"), QStringLiteral("3.3"));
    xml.writeStartElement(QStringLiteral("head"));
    writeMeta(xml, QStringLiteral("generator"), QStringLiteral("kvgamut"));
    const QStringList lines = note.lines();
    for (const QString& line : lines)
        writeMeta(xml, line.section(QStringLiteral(": "), 0, 0), line.section(QStringLiteral(": "), 1));
    writeMeta(xml, QStringLiteral("axes"), QStringLiteral("x = a*, y = L*, z = -b*"));
    xml.writeEndElement();
    xml.writeStartElement(QStringLiteral("Scene"));
    xml.writeStartElement(QStringLiteral("Shape"));
    xml.writeStartElement(QStringLiteral("IndexedFaceSet"));
    xml.writeAttribute(QStringLiteral("coordIndex"), indicesOf(mesh));
    xml.writeEmptyElement(QStringLiteral("Coordinate"));
    xml.writeAttribute(QStringLiteral("point"), coordinatesOf(mesh));
    xml.writeEmptyElement(QStringLiteral("Color"));
    xml.writeAttribute(QStringLiteral("color"), coloursOf(mesh));
    xml.writeEndDocument(); // closes all elements
    return file;
}
