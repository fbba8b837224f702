// SPDX-License-Identifier: Apache-2.0
#include "MeshFormat.h"
#include "MeshNoteJson.h"

#include "model/reports/GamutWords.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtGui/QColor>

namespace {

QJsonArray jsonOf(const KVGamut::LabPoint& lab)
{
    return {double(lab.L), double(lab.a), double(lab.b)};
}

} // namespace

QJsonObject kvJsonOf(const MeshNote& note)
{
    QJsonObject object{
        {QStringLiteral("profile"), note.profile},
        {QStringLiteral("intent"), GamutWords::intent(note.report)},
        {QStringLiteral("bpc"), GamutWords::blackPointCompensated(note.report)},
        {QStringLiteral("white"), jsonOf(note.report.white)},
        {QStringLiteral("black"), jsonOf(note.report.black)},
        {QStringLiteral("volume"), GamutWords::writtenVolume(note.report.volume)},
        {QStringLiteral("uncertainty"), GamutWords::writtenVolume(note.report.volumeUncertainty)},
        {QStringLiteral("surface_volume"), GamutWords::writtenVolume(note.report.surfaceVolume)},
        {QStringLiteral("coordinates"), QStringLiteral("CIE L*a*b* (D50)")}};
    if (!note.part.isEmpty())
        object.insert(QStringLiteral("part"), note.part);
    return object;
}

QByteArray MeshWriters::json(const ColoredMesh& mesh, const MeshNote& note)
{
    QJsonArray vertices, colors, triangles;
    for (const KVGamut::LabPoint& lab : mesh.lab)
        vertices.append(jsonOf(lab));
    for (const QRgb color : mesh.colors)
        colors.append(QColor(color).name());
    for (const auto& [i, j, k] : mesh.triangles)
        triangles.append(QJsonArray{i, j, k});
    QJsonObject object = kvJsonOf(note);
    object.insert(QStringLiteral("vertices"), vertices);
    object.insert(QStringLiteral("colors"), colors);
    object.insert(QStringLiteral("triangles"), triangles);
    return QJsonDocument(QJsonArray{object}).toJson(QJsonDocument::Compact) + '\n';
}
