// SPDX-License-Identifier: Apache-2.0
#include <viewer/GamutViewPrivate.h>

#include <gamut/Picking.h>
#include <viewer/GroupNames.h>

#include <QtCore/QMetaMethod>

#include <cmath>

namespace {

/// Keeps the nearer of both. At the same distance the candidate is preferred: markers are tested after
/// surfaces.
void keepNearest(KVHit& nearest, float distance, const KVHit& candidate)
{
    if (nearest.kind != KVHit::Kind::Nothing && distance > nearest.distance)
        return;
    nearest = candidate;
    nearest.distance = distance;
}

KVHit hitOf(KVHit::Kind kind, const QString& id, int index, const QVector3D& lab)
{
    KVHit hit;
    hit.kind = kind;
    hit.id = id;
    hit.index = index;
    hit.lab = lab;
    return hit;
}

/// Where @p ray meets the lid of a gamut that is cut off; nullopt if it has none there.
std::optional<SurfaceHit> pickLid(const KVRay& ray, const KV3DGamutObject& gamut, float clip)
{
    const auto lid = gamut.childAt({QStringLiteral("Gamut"), QStringLiteral("Lid")});
    if (!lid || !lid->isVisible())
        return {};
    const auto& [origin, direction] = ray;
    const float along = (clip - origin.x()) / direction.x();
    const QVector3D lab(clip, origin.y() + along * direction.y(), origin.z() + along * direction.z());
    if (!(along > 0.0f) || !std::isfinite(along) || !gamut.isInside(lab))
        return {};
    return SurfaceHit{(lab - origin).length(), lab};
}

void pickGamuts(const ViewerScene& scene, const KVRay& ray, KVHit& nearest)
{
    const QStringList ids = scene.itemsOf(GroupNames::profiles());
    for (const QString& id : ids) {
        const auto gamut = scene.gamut(id);
        if (!gamut || !gamut->isVisible() || !scene.childVisible(id, QStringLiteral("Gamut")) ||
            !(gamut->alpha() > 0.0f))
            continue;
        const auto hit = kvPickSurface(ray, gamut->gamut().mesh(), scene.appliedClipping());
        if (hit)
            keepNearest(nearest, hit->distance, hitOf(KVHit::Kind::Gamut, id, -1, hit->lab));
        if (const auto lid = pickLid(ray, *gamut, scene.appliedClipping()))
            keepNearest(nearest, lid->distance, hitOf(KVHit::Kind::Gamut, id, -1, lid->lab));
    }
}

void pickMarkers(const ViewerScene& scene, const QString& groupId, KVHit::Kind kind, const KVRay& ray,
                 KVHit& nearest)
{
    if (!scene.groupVisible(groupId))
        return;
    const auto sets = scene.group(groupId)->children();
    for (const auto& set : sets) {
        if (!set->isVisible())
            continue;
        const auto hit = kvPickMarker(ray, set->markers(), set->markerSize() / 2.0f);
        if (hit)
            keepNearest(nearest, hit->distance,
                        hitOf(kind, set->id(), hit->index, set->markers()[hit->index].second));
    }
}

} // namespace

KVHit KVGamutView::hitAt(const QPoint& pixel) const
{
    const ViewerScene* scene = d->scene();
    if (!scene)
        return {};
    const KVRay ray = scene->viewer.rayToPoint(pixel);
    KVHit hit;
    pickGamuts(*scene, ray, hit);
    pickMarkers(*scene, GroupNames::markers(), KVHit::Kind::Marker, ray, hit);
    pickMarkers(*scene, GroupNames::points(), KVHit::Kind::Point, ray, hit);
    hit.rayOrigin = ray.first;
    hit.rayDirection = ray.second;
    hit.pixel = pixel;
    return hit;
}

// Clicks and hovering are reported from the event loop, because a slot may destroy the viewer, whose event is
// still being delivered.

void KVGamutView::Private::onReleased(const QPoint& pixel, Qt::MouseButton button,
                                      Qt::KeyboardModifiers modifiers, bool endsDrag)
{
    if (!m_view.isSignalConnected(QMetaMethod::fromSignal(&KVGamutView::clicked)))
        return;
    KVHit hit = m_view.hitAt(pixel); // now, before the scene changes
    hit.button = button;
    hit.modifiers = modifiers;
    hit.endsDrag = endsDrag;
    QMetaObject::invokeMethod(
        this, [this, hit] { Q_EMIT m_view.clicked(hit); }, Qt::QueuedConnection);
}

void KVGamutView::Private::onMoved(const QPoint& pixel, Qt::KeyboardModifiers modifiers)
{
    m_hoverPixel = pixel;
    m_hoverModifiers = modifiers;
    if (m_hoverPosted || !m_view.isSignalConnected(QMetaMethod::fromSignal(&KVGamutView::hovered)))
        return;
    m_hoverPosted = true; // moves in the same iteration of the event loop are picked once
    QMetaObject::invokeMethod(this, &Private::reportHover, Qt::QueuedConnection);
}

void KVGamutView::Private::reportHover()
{
    m_hoverPosted = false;
    if (!scene())
        return;
    KVHit hit = m_view.hitAt(m_hoverPixel);
    hit.modifiers = m_hoverModifiers;
    Q_EMIT m_view.hovered(hit);
}
