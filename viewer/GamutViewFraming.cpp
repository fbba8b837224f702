// SPDX-License-Identifier: Apache-2.0
#include <viewer/Framing.h>
#include <viewer/GamutViewPrivate.h>
#include <viewer/GroupNames.h>

#include <annotation/AnnotationLayout.h>
#include <annotation/ScaleLayout.h>
#include <glwindow/CameraState.h>
#include <scene/Coordinates.h>
#include <scene/Finite.h>
#include <scene/VertexStride.h>

#include <algorithm>
#include <cmath>

namespace {

/// Appends the positions of the vertices of @p object and its children that are drawn.
void appendDrawn(const KV3DObject& object, QList<QVector3D>& positions)
{
    if (!object.isVisible())
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

/// The vertices of everything that is drawn, except the grid, and the axes while there are scales instead.
QList<QVector3D> drawnPositions(const ViewerScene& scene)
{
    QList<QVector3D> positions;
    const auto groups = scene.widget->root().children();
    for (const auto& group : groups)
        if (group->id() != GroupNames::grid() && !(group->id() == GroupNames::axes() && *scene.hidesAxes))
            appendDrawn(*group, positions);
    return positions;
}

/// From scene coordinates to clip coordinates.
QMatrix4x4 toClip(const KVCamera& camera, const QSize& size)
{
    CameraState state(kvSceneFromHost(camera.position), kvSceneFromHost(camera.interestPoint));
    state.setViewingAngle(camera.viewingAngle);
    state.setOrthogonal(camera.orthogonal);
    state.setAspect(size.width(), size.height());
    return state.projectionMatrix() * state.viewMatrix();
}

/// Adds the scales of a picture of @p size that @p camera, framed, would take.
void addScales(KVFraming& framing, const ViewerScene& scene, const KVCamera& camera, const QSize& size)
{
    const LabBox box = scene.scaleBox();
    KVFraming all = framing;
    for (int corner = 0; corner < 8; ++corner)
        all.positions.append(QVector3D(corner & 1 ? box.high.x() : box.low.x(),
                                       corner & 2 ? box.high.y() : box.low.y(),
                                       corner & 4 ? box.high.z() : box.low.z()));
    const KVCamera framed = KVGamutView::framing(camera, all, size);
    const Overlay style = kvAnnotationStyle(scene.annotations(), scene.widget->background(), size);
    const ScaleExtent extent = kvScaleExtent(style, box, toClip(framed, size), size);
    framing.positions << extent.positions;
    for (const ScaleExtent::Text& text : extent.texts)
        framing.labels.append({text.position, text.rect});
}

bool isFinite(const QRectF& r)
{
    return std::isfinite(r.x()) && std::isfinite(r.y()) && std::isfinite(r.width()) &&
           std::isfinite(r.height());
}

/// Without positions that are not finite, which are not drawn, and without what is outside the picture.
KVFraming usable(KVFraming framing, const QSize& size)
{
    const QRectF picture(0.0, 0.0, size.width(), size.height());
    framing.taken.removeIf([&](const QRectF& rect) { return !isFinite(rect) || !rect.intersects(picture); });
    framing.positions.removeIf([](const QVector3D& position) { return !kvIsFinite(position); });
    framing.labels.removeIf([](const KVFraming::Label& label) { return !kvIsFinite(label.position); });
    constexpr float maxMargin = 0.4f;
    framing.margin = framing.margin >= 0.0f ? std::min(framing.margin, maxMargin) : 0.0f;
    return framing;
}

} // namespace

KVFraming KVGamutView::shownFraming(const QSize& size) const
{
    KVFraming framing;
    const ViewerScene* scene = d->scene();
    if (!scene)
        return framing;
    framing.positions = drawnPositions(*scene);
    framing.taken = kvFixedAnnotations(scene->annotations(), size);
    if (scene->annotations().scales && !size.isEmpty())
        addScales(framing, *scene, camera(), size);
    return framing;
}

KVCamera KVGamutView::framing(const KVCamera& camera, const KVFraming& shown, const QSize& size)
{
    const KVFraming framed = usable(shown, size);
    if (size.isEmpty() || (framed.positions.isEmpty() && framed.labels.isEmpty()))
        return camera;
    return kvFramedCamera(camera.isValid() ? camera : KVCamera(), framed, size);
}
