// SPDX-License-Identifier: Apache-2.0
#include "GamutData.h"

#include <engine/base/ListOf.h>
#include <engine/mesh/MeshVolume.h>
#include <engine/mesh/Outline.h>

namespace velmora {
namespace {

QList<float> deviceOf(const Mesh& mesh, int vertex)
{
    return listOf(std::span(mesh.deviceOf(vertex), static_cast<std::size_t>(mesh.channels)));
}

std::vector<KVHull::Node> nodesOf(const Mesh& mesh)
{
    std::vector<KVHull::Node> nodes(mesh.lab.size());
    for (std::size_t v = 0; v < nodes.size(); ++v) {
        if (!mesh.device.empty())
            nodes[v].device = deviceOf(mesh, static_cast<int>(v));
        nodes[v].lab = listOf({mesh.lab[v].L, mesh.lab[v].a, mesh.lab[v].b});
    }
    return nodes;
}

} // namespace
} // namespace velmora

KVGamut::GamutData::GamutData(velmora::GamutRecord r, const velmora::Task& task)
    : record(std::move(r)), surfaceVolume(velmora::signedVolume(record.mesh, task))
{
}

const QList<QList<KVHull::Node>>& KVGamut::GamutData::faces() const
{
    std::call_once(m_facesOnce, [this] {
        const auto nodes = velmora::nodesOf(record.mesh);
        QList<QList<KVHull::Node>> faces; // a call that runs out of memory leaves no part of the result
        faces.reserve(static_cast<qsizetype>(record.mesh.triangles.size()));
        for (const auto& t : record.mesh.triangles)
            faces.append(
                velmora::listOf({nodes[static_cast<std::size_t>(t[0])], nodes[static_cast<std::size_t>(t[1])],
                                 nodes[static_cast<std::size_t>(t[2])]}));
        m_faces = std::move(faces);
    });
    return m_faces;
}

const QList<QList<KVHull::Node>>& KVGamut::GamutData::outline(const velmora::Task& task) const
{
    std::call_once(m_outlineOnce, [this, &task] {
        if (!record.decorated)
            return;
        const Mesh& mesh = record.mesh;
        const auto node = [&mesh](const velmora::OutlinePoint& p) {
            KVHull::Node n;
            n.lab = velmora::listOf({p.lab.L, p.lab.a, p.lab.b});
            if (p.vertex >= 0 && !mesh.device.empty())
                n.device = velmora::deviceOf(mesh, p.vertex);
            return n;
        };
        QList<QList<KVHull::Node>> outline;
        for (const auto& loop : velmora::outlineOf(mesh, task)) {
            QList<KVHull::Node> nodes;
            for (std::size_t i = 0; i < loop.size() && !task.isCancelled(); ++i)
                nodes.append(node(loop[i]));
            for (qsizetype i = 0; i < nodes.size() && !task.isCancelled(); ++i)
                outline.append(velmora::listOf({nodes[i], nodes[(i + 1) % nodes.size()]}));
        }
        m_outline = std::move(outline);
    });
    return m_outline;
}

const velmora::WindingIndex& KVGamut::GamutData::index() const
{
    std::call_once(m_indexOnce, [this] { m_index = velmora::WindingIndex(record.mesh); });
    return m_index;
}

const velmora::NearestIndex& KVGamut::GamutData::nearestIndex() const
{
    std::call_once(m_nearestOnce, [this] { m_nearest = velmora::NearestIndex(record.mesh); });
    return m_nearest;
}

const velmora::LchIndex& KVGamut::GamutData::lchIndex() const
{
    std::call_once(m_lchOnce, [this] { m_lch = velmora::LchIndex(record.mesh); });
    return m_lch;
}
