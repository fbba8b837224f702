// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <scene/KV3DObject.h>
#include <scene/VertexStride.h>

#include <gtest/gtest.h>

#include <QtCore/QStringList>

/// Common checks of scene objects.
namespace kvtest {

/// The attributes of one vertex of an object.
struct Vertex
{
    QVector3D position; ///< scene
    QVector3D normal;
    std::array<float, 4> color{}; ///< as drawn
    std::array<float, 4> base{};  ///< as generated
    float clip = 0.0f;

    /// The position in host coordinates: scene (X, Y, Z) is (L*, a*, b*) = (Y, -X, Z).
    QVector3D lab() const { return QVector3D(position.y(), -position.x(), position.z()); }
};

inline QList<Vertex> verticesOf(const KV3DObject& object)
{
    const QList<float>& floats = object.vertices();
    QList<Vertex> vertices;
    for (qsizetype i = 0; i + 15 <= floats.size(); i += 15) {
        const float* f = floats.constData() + i;
        vertices.append({QVector3D(f[0], f[1], f[2]),
                         QVector3D(f[3], f[4], f[5]),
                         {f[6], f[7], f[8], f[9]},
                         {f[10], f[11], f[12], f[13]},
                         f[14]});
    }
    return vertices;
}

/// Checks that the object has the mode, the line width and the markers that a generator made, and the
/// position, normal and colour of every vertex.
inline void expectGeometry(const KV3DObject& object, const GeometryData& expected)
{
    EXPECT_EQ(object.primitiveMode(), expected.primitiveMode);
    EXPECT_EQ(object.lineWidth(), expected.lineWidth);
    EXPECT_EQ(object.markerType(), expected.markerType);
    EXPECT_TRUE(object.markers() == expected.markers);
    EXPECT_EQ(object.markerSize(), expected.markerSize);
    EXPECT_EQ(object.markerParam(), expected.markerParam);
    ASSERT_EQ(object.vertices().size() / 15, expected.vertices.size() / 10);
    for (qsizetype i = 0; i < expected.vertices.size() / 10; ++i) {
        const float* is = object.vertices().constData() + 15 * i;
        const float* should = expected.vertices.constData() + 10 * i;
        for (int k = 0; k < 6; ++k)
            ASSERT_EQ(is[k], should[k]) << "vertex " << i << " float " << k;
        for (int k = 6; k < 10; ++k)
            ASSERT_EQ(is[k + 4], should[k]) << "vertex " << i << " float " << k + 4;
    }
}

inline QStringList idsOf(const QList<QSharedPointer<KV3DObject>>& objects)
{
    QStringList ids;
    for (const auto& object : objects)
        ids.append(object->id());
    return ids;
}

inline QStringList sorted(QStringList list)
{
    list.sort();
    return list;
}

} // namespace kvtest
