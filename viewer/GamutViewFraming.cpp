// SPDX-License-Identifier: Apache-2.0
#include <viewer/Framing.h>
#include <viewer/GamutViewPrivate.h>
#include <viewer/GroupNames.h>

#include <scene/Coordinates.h>
#include <scene/VertexStride.h>

#include <cmath>

namespace {

/// Appends the positions of the vertices of @p object and its children that are drawn.
void appendDrawn(const KV3DObject& object, QList<QVector3D>& positions)
{
    if (!object.isVisible() || object.id() == GroupNames::grid())
        return;
    const QList<float>& list = object.vertices();
    const float clip = object.vertexStyle().clip;
    if (object.alpha() > 0.0f)
        for (qsizetype i = 0; i + kvVertexFloats <= list.size(); i += kvVertexFloats)
            if (!(list[i + 1] > clip)) // L*; a section has vertices of its own
                positions.append(kvHostFromScene({list[i], list[i + 1], list[i + 2]}));
    const auto children = object.children();
    for (const auto& child : children)
        appendDrawn(*child, positions);
}

bool isFinite(const QVector3D& v)
{
    return std::isfinite(v.x()) && std::isfinite(v.y()) && std::isfinite(v.z());
}

/// Without positions that are not finite, which are not drawn.
KVFraming finite(KVFraming framing)
{
    framing.positions.removeIf([](const QVector3D& position) { return !isFinite(position); });
    framing.labels.removeIf([](const KVFraming::Label& label) { return !isFinite(label.position); });
    constexpr float maxMargin = 0.4f;
    framing.margin = framing.margin >= 0.0f ? std::min(framing.margin, maxMargin) : 0.0f;
    return framing;
}

} // namespace

KVFraming KVGamutView::shownFraming() const
{
    KVFraming framing;
    if (const ViewerScene* scene = d->scene())
        appendDrawn(scene->widget->root(), framing.positions);
    return framing;
}

KVCamera KVGamutView::framing(const KVCamera& camera, const KVFraming& shown, const QSize& size)
{
    const KVFraming usable = finite(shown);
    if (size.isEmpty() || (usable.positions.isEmpty() && usable.labels.isEmpty()))
        return camera;
    return kvFramedCamera(camera.isValid() ? camera : KVCamera(), usable, size);
}
