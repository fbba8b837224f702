// SPDX-License-Identifier: Apache-2.0
// The geometry of gamuts with many faces: edges, records, and how often the work can be cancelled.

#include <gamut/GamutMeshes.h>
#include <gamut/MeshEdges.h>
#include <scene/Generators.h>

#include "support/FakeVelmora.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

namespace {

using KVGamut::Mesh;

/// A surface like a torus, n by n squares of two triangles each.
Mesh torus(int n)
{
    Mesh mesh;
    const auto at = [n](int i, int j) { return (i % n) * n + j % n; };
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            mesh.lab.push_back({static_cast<float>(i), static_cast<float>(j), static_cast<float>(i * j % 7)});
            mesh.triangles.push_back({at(i, j), at(i + 1, j), at(i + 1, j + 1)});
            mesh.triangles.push_back({at(i, j), at(i + 1, j + 1), at(i, j + 1)});
        }
    return mesh;
}

fakevelmora::Gamut gamutOf(const Mesh& mesh)
{
    fakevelmora::Gamut gamut = fakevelmora::tetrahedron(QStringLiteral("torus"));
    gamut.faces.clear();
    for (const Mesh::Triangle& t : mesh.triangles) {
        QList<KVHull::Node> face;
        for (const int v : t) {
            const KVGamut::LabPoint& p = mesh.lab[static_cast<std::size_t>(v)];
            face.append(fakevelmora::node({p.L, p.a, p.b}));
        }
        gamut.faces.append(face);
    }
    return gamut;
}

std::vector<MeshEdge> firstOccurrences(const Mesh& mesh)
{
    std::set<std::pair<int, int>> seen;
    std::vector<MeshEdge> edges;
    for (const Mesh::Triangle& t : mesh.triangles)
        for (std::size_t i = 0; i < 3; ++i) {
            const MeshEdge edge{t[i], t[(i + 1) % 3]};
            if (seen.insert(std::minmax(edge[0], edge[1])).second)
                edges.push_back(edge);
        }
    return edges;
}

class GamutMeshes : public fakevelmora::Case
{
protected:
    /// A gamut of 5,000 faces.
    static KVGamut::GamutObject largeGamut()
    {
        fakevelmora::onInit([](const fakevelmora::InitCall&) { return std::optional(gamutOf(torus(50))); });
        KVGamut::GamutObject gamut;
        const KVProfilePtr profile(KVProfileCreateWithData("profile", 7), KVProfileRelease);
        EXPECT_TRUE(gamut.init(profile, KVGamut::Settings{}));
        return gamut;
    }
};

/// Cancels at look number @p last; counts all looks.
struct Looks
{
    int count = 0;
    int last = -1;
    KVCancelCheck check()
    {
        return [this] { return count++ >= last && last >= 0; };
    }
};

} // namespace

TEST(MeshEdges, eachEdgeOccursOnceInTheOrderOfTheTriangles)
{
    EXPECT_EQ(kvUniqueEdges(torus(20)), firstOccurrences(torus(20)));
    EXPECT_EQ(kvUniqueEdges(torus(20)).size(), 3u * 20 * 20);
    EXPECT_TRUE(kvUniqueEdges({}).empty());
}

TEST(MeshEdges, surfacesMayBeOpenOrNotManifold)
{
    std::mt19937 random(7);
    for (const int vertices : {3, 5, 50, 5000}) {
        std::uniform_int_distribution<int> vertex(0, vertices - 1);
        Mesh mesh;
        mesh.lab.resize(static_cast<std::size_t>(vertices));
        for (int i = 0; i < 2000; ++i)
            mesh.triangles.push_back({vertex(random), vertex(random), vertex(random)});
        EXPECT_EQ(kvUniqueEdges(mesh), firstOccurrences(mesh)) << vertices;
    }
}

TEST(MeshEdges, cancellingIsNoticedWithinAThousandTriangles)
{
    Looks looks;
    (void)kvUniqueEdges(torus(100), looks.check());
    EXPECT_GE(looks.count, 100 * 100 * 2 / 1024);
    Looks cancelled{.count = 0, .last = 2};
    EXPECT_LE(kvUniqueEdges(torus(100), cancelled.check()).size(), 3u * 3 * 1024);
    EXPECT_EQ(cancelled.count, 3);
}

TEST_F(GamutMeshes, theSetHasFiveNamesAndAnEmptyWireframe)
{
    const GamutMeshSet meshes = kvGamutMeshes(largeGamut());
    QStringList names = meshes.keys();
    names.sort();
    EXPECT_EQ(names, (QStringList{QStringLiteral("Front"), QStringLiteral("Primaries"),
                                  QStringLiteral("PrimariesPoints"), QStringLiteral("Projection"),
                                  QStringLiteral("Wireframe")}));
    EXPECT_TRUE(meshes[QStringLiteral("Wireframe")].records.isEmpty());
    EXPECT_TRUE(meshes[QStringLiteral("Wireframe")].vertices.isEmpty());
}

TEST_F(GamutMeshes, theSurfaceTakesOneRecordForEachCorner)
{
    const GeometryData front = kvGamutMeshes(largeGamut())[QStringLiteral("Front")];
    EXPECT_EQ(front.records.size(), 5000 * 3 * kvVertexFloats);
    EXPECT_EQ(front.records.capacity(), front.records.size());
    EXPECT_TRUE(front.vertices.isEmpty());
}

TEST_F(GamutMeshes, theSurfaceHasTheColoursOfItsVertices)
{
    const KVGamut::GamutObject gamut = largeGamut();
    const Mesh& mesh = gamut.mesh();
    QList<QRgb> colors;
    for (std::size_t v = 0; v < mesh.lab.size(); ++v)
        colors.append(qRgb(int(v % 256), int(v / 256 % 256), 77));
    const GeometryData front = kvGamutMeshes(gamut, {}, {}, colors)[QStringLiteral("Front")];
    const auto* records = reinterpret_cast<const VertexStride*>(front.records.constData());
    for (std::size_t t = 0; t < mesh.triangles.size(); ++t)
        for (std::size_t i = 0; i < 3; ++i) {
            const QColor expected(colors[mesh.triangles[t][i]]);
            const auto& color = records[3 * t + i].color;
            ASSERT_EQ(color[0], expected.redF());
            ASSERT_EQ(color[1], expected.greenF());
            ASSERT_EQ(color[2], expected.blueF());
        }
}

TEST_F(GamutMeshes, anotherNumberOfColoursHasNoEffect)
{
    const KVGamut::GamutObject gamut = largeGamut();
    EXPECT_EQ(kvGamutMeshes(gamut, {}, {}, {qRgb(1, 2, 3)})[QStringLiteral("Front")].records,
              kvGamutMeshes(gamut)[QStringLiteral("Front")].records);
}

TEST_F(GamutMeshes, theSurfaceIsThatOfTheTrianglesGenerator)
{
    const KVGamut::GamutObject gamut = largeGamut();
    const Mesh& mesh = gamut.mesh();
    QList<ColoredTriangle> triangles;
    for (const Mesh::Triangle& t : mesh.triangles) {
        const auto point = [&](std::size_t i) {
            const KVGamut::LabPoint& p = mesh.lab[static_cast<std::size_t>(t[i])];
            return ColoredPoint{kvLabToColor({p.L, p.a, p.b}), QVector3D(p.L, p.a, p.b)};
        };
        triangles.append({point(0), point(1), point(2)});
    }
    const VertexStyle styles[] = {
        {},
        {.alpha = 0.25f, .clip = 40.0f, .shading = {}},
        {.alpha = 1.0f, .clip = 1e6f, .shading = VertexStyle::Shading{Qt::red, 1, true}},
        {.alpha = 0.5f, .clip = 12.0f, .shading = VertexStyle::Shading{Qt::green, 2, true}},
    };
    for (const VertexStyle& style : styles) {
        const GeometryData front = kvGamutMeshes(gamut, {style, {}})[QStringLiteral("Front")];
        VertexRecords made, expected;
        made.adopt(front.records, front.recordStyle);
        expected.assign(kvTriangles(triangles).vertices);
        for (VertexRecords* records : {&made, &expected}) {
            records->setAlpha(style.alpha);
            records->setClip(style.clip);
            if (style.shading)
                records->shade(*style.shading);
        }
        EXPECT_EQ(front.records, expected.list()) << "no change is necessary after the move";
        EXPECT_EQ(made.list(), expected.list());
    }
}

TEST_F(GamutMeshes, theWireframeIsThatOfTheSegmentsGenerator)
{
    const KVGamut::GamutObject gamut = largeGamut();
    const Mesh& mesh = gamut.mesh();
    QList<ColoredSegment> segments;
    for (const Mesh::Triangle& t : mesh.triangles)
        for (std::size_t i = 0; i < 3; ++i) {
            const auto point = [&](int vertex) {
                const KVGamut::LabPoint& p = mesh.lab[static_cast<std::size_t>(vertex)];
                return ColoredPoint{kvLabToColor({p.L, p.a, p.b}), QVector3D(p.L, p.a, p.b)};
            };
            segments.append({point(t[i]), point(t[(i + 1) % 3])});
        }
    VertexRecords expected;
    expected.assign(kvSegments(segments, true, 1.2f).vertices);
    const GeometryData wireframe = kvGamutWireframe(gamut, {});
    EXPECT_EQ(wireframe.records, expected.list());
    EXPECT_EQ(wireframe.lineWidth, 1.2f);
}

TEST_F(GamutMeshes, cancellingIsNoticedOftenEnough)
{
    const KVGamut::GamutObject gamut = largeGamut();
    const GamutStyles styles{{}, VertexStyle{}};
    Looks all;
    (void)kvGamutMeshes(gamut, styles, all.check());
    // 2,500 colours twice, 5,000 triangles, 7,500 edges in five loops
    EXPECT_GE(all.count, 2 * 2500 / 1024 + 5000 / 512 + 7500 / 1024 + 3 * 7500 / 512 + 7500 / 64);
    for (int last = 0; last < all.count; last += 3) {
        Looks cancelled{.count = 0, .last = last};
        (void)kvGamutMeshes(gamut, styles, cancelled.check());
        EXPECT_LE(cancelled.count - last, 10) << "little work is done after look " << last;
    }
}
