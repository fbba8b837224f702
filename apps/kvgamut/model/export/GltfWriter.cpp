// SPDX-License-Identifier: Apache-2.0
#include "MeshFormat.h"
#include "MeshNoteJson.h"
#include "MeshText.h"

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <algorithm>
#include <cmath>

namespace {

constexpr int arrayBuffer = 34962;
constexpr int elementArrayBuffer = 34963;
constexpr int unsignedInt = 5125;
constexpr int singleFloat = 5126;

qsizetype vertexCount(const ColoredMesh& mesh)
{
    return static_cast<qsizetype>(mesh.lab.size());
}

qsizetype triangleCount(const ColoredMesh& mesh)
{
    return static_cast<qsizetype>(mesh.triangles.size());
}

/// Decodes an sRGB value (IEC 61966-2-1): vertex colours of glTF are linear.
float linear(int step)
{
    const double v = step / 255.0;
    return static_cast<float>(v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4));
}

QJsonArray jsonOf(const QVector3D& v)
{
    return {double(v.x()), double(v.y()), double(v.z())};
}

QByteArray bufferOf(const ColoredMesh& mesh)
{
    QByteArray buffer;
    QDataStream stream(&buffer, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
    for (const KVGamut::LabPoint& lab : mesh.lab) {
        const QVector3D p = MeshText::yUp(lab);
        stream << p.x() << p.y() << p.z();
    }
    for (const QRgb color : mesh.colors)
        stream << linear(qRed(color)) << linear(qGreen(color)) << linear(qBlue(color));
    for (const KVGamut::Mesh::Triangle& triangle : mesh.triangles)
        for (const int corner : triangle)
            stream << static_cast<quint32>(corner);
    return buffer;
}

/// The accessor of the positions. glTF requires their bounds here.
QJsonObject positionAccessor(const ColoredMesh& mesh)
{
    QVector3D low = MeshText::yUp(mesh.lab.front()), high = low;
    for (const KVGamut::LabPoint& lab : mesh.lab) {
        const QVector3D p = MeshText::yUp(lab);
        for (int i = 0; i < 3; ++i) {
            low[i] = std::min(low[i], p[i]);
            high[i] = std::max(high[i], p[i]);
        }
    }
    return {{QStringLiteral("bufferView"), 0},
            {QStringLiteral("componentType"), singleFloat},
            {QStringLiteral("count"), vertexCount(mesh)},
            {QStringLiteral("type"), QStringLiteral("VEC3")},
            {QStringLiteral("min"), jsonOf(low)},
            {QStringLiteral("max"), jsonOf(high)}};
}

QJsonObject view(qsizetype offset, qsizetype length, int target)
{
    return {{QStringLiteral("buffer"), 0},
            {QStringLiteral("byteOffset"), offset},
            {QStringLiteral("byteLength"), length},
            {QStringLiteral("target"), target}};
}

} // namespace

QByteArray MeshWriters::gltf(const ColoredMesh& mesh, const MeshNote& note)
{
    const qsizetype vectors = vertexCount(mesh) * qsizetype(3 * sizeof(float));
    const qsizetype indices = triangleCount(mesh) * qsizetype(3 * sizeof(quint32));
    QJsonObject extras = kvJsonOf(note);
    extras.insert(QStringLiteral("axes"), QStringLiteral("x = a*, y = L*, z = -b*"));
    const QString unlit = QStringLiteral("KHR_materials_unlit"); // shows the colours without lighting
    const QJsonObject file{
        {QStringLiteral("asset"), QJsonObject{{QStringLiteral("version"), QStringLiteral("2.0")},
                                              {QStringLiteral("generator"), QStringLiteral("kvgamut")},
                                              {QStringLiteral("extras"), extras}}},
        {QStringLiteral("extensionsUsed"), QJsonArray{unlit}},
        {QStringLiteral("scene"), 0},
        {QStringLiteral("scenes"), QJsonArray{QJsonObject{{QStringLiteral("nodes"), QJsonArray{0}}}}},
        {QStringLiteral("nodes"),
         QJsonArray{QJsonObject{{QStringLiteral("mesh"), 0}, {QStringLiteral("name"), note.profile}}}},
        {QStringLiteral("meshes"),
         QJsonArray{QJsonObject{{QStringLiteral("primitives"),
                                 QJsonArray{QJsonObject{{QStringLiteral("attributes"),
                                                         QJsonObject{{QStringLiteral("POSITION"), 0},
                                                                     {QStringLiteral("COLOR_0"), 1}}},
                                                        {QStringLiteral("indices"), 2},
                                                        {QStringLiteral("material"), 0},
                                                        {QStringLiteral("mode"), 4}}}}}}},
        {QStringLiteral("materials"),
         QJsonArray{QJsonObject{{QStringLiteral("extensions"), QJsonObject{{unlit, QJsonObject()}}},
                                {QStringLiteral("pbrMetallicRoughness"),
                                 QJsonObject{{QStringLiteral("metallicFactor"), 0.0},
                                             {QStringLiteral("roughnessFactor"), 1.0}}}}}},
        {QStringLiteral("accessors"),
         QJsonArray{positionAccessor(mesh),
                    QJsonObject{{QStringLiteral("bufferView"), 1},
                                {QStringLiteral("componentType"), singleFloat},
                                {QStringLiteral("count"), vertexCount(mesh)},
                                {QStringLiteral("type"), QStringLiteral("VEC3")}},
                    QJsonObject{{QStringLiteral("bufferView"), 2},
                                {QStringLiteral("componentType"), unsignedInt},
                                {QStringLiteral("count"), 3 * triangleCount(mesh)},
                                {QStringLiteral("type"), QStringLiteral("SCALAR")}}}},
        {QStringLiteral("bufferViews"),
         QJsonArray{view(0, vectors, arrayBuffer), view(vectors, vectors, arrayBuffer),
                    view(2 * vectors, indices, elementArrayBuffer)}},
        {QStringLiteral("buffers"),
         QJsonArray{QJsonObject{
             {QStringLiteral("byteLength"), 2 * vectors + indices},
             {QStringLiteral("uri"),
              QString::fromLatin1("data:application/octet-stream;base64," + bufferOf(mesh).toBase64())}}}},
    };
    return QJsonDocument(file).toJson(QJsonDocument::Compact) + '\n';
}
