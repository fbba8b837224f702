// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <glwindow/CameraState.h>
#include <scene/KV3DObject.h>
#include <scene/VertexStride.h>

#include <cstring>
#include <vector>

/// Helpers to draw scene objects without a GL context and to read their vertices.
namespace kvtest {

using ObjectPtr = QSharedPointer<KV3DObject>;

inline ObjectPtr object(const QString& id)
{
    return ObjectPtr::create(QStringLiteral("Object"), id);
}

inline std::vector<VertexStride> verticesOf(const KV3DObject& o)
{
    std::vector<VertexStride> records(std::size_t(o.vertices().size() / kvVertexFloats));
    std::memcpy(records.data(), o.vertices().constData(), records.size() * sizeof(VertexStride));
    return records;
}

/// Generated vertices (ten floats each) in @p color at the given positions, with distinct normals.
inline QList<float> generated(const QList<QVector3D>& positions, const QColor& color)
{
    QList<float> floats;
    float n = 0.0f;
    for (const QVector3D& p : positions) {
        floats << p.x() << p.y() << p.z() << n + 0.25f << n + 0.5f << n + 0.75f << color.redF()
               << color.greenF() << color.blueF() << color.alphaF();
        n += 1.0f;
    }
    return floats;
}

/// Generated vertices of one small triangle per depth, at Z = depth.
inline QList<float> trianglesAt(const std::vector<float>& depths, const QColor& color = Qt::green)
{
    QList<QVector3D> positions;
    for (const float z : depths)
        positions << QVector3D(0, 0, z) << QVector3D(1, 0, z) << QVector3D(0, 1, z);
    return generated(positions, color);
}

/// One pass of a frame over the tree.
inline void drawPass(KV3DObject& o, int pass, const CameraState& camera = {})
{
    o.draw(nullptr, camera.viewMatrix(), camera.projectionMatrix(), QMatrix4x4(), camera, {0, 300, 0},
           Qt::white, pass);
}

/// One frame: the opaque pass, then the translucent one.
inline void drawFrame(KV3DObject& o, const CameraState& camera = {})
{
    drawPass(o, KVPassOpaque, camera);
    drawPass(o, KVPassTranslucent, camera);
}

} // namespace kvtest
