// SPDX-License-Identifier: Apache-2.0
#include <KVGamut3DViewer.h>

#include <glwindow/ContextScope.h>
#include <viewer/GroupNames.h>
#include <viewer/ViewerPrivate.h>

namespace {
constexpr float newSegmentWidth = 2.0f;
constexpr int pointMarker = KVGamut3DViewer::Sphere;
} // namespace

void KVGamut3DViewer::addMarkerSet(const QString& name, MarkerType type,
                                   const QList<ColoredPosition>& markers, float size1, float size2)
{
    const ContextScope scope(d->widget);
    const QString groupId = GroupNames::markers();
    const auto parent = d->findOrCreate(d->widget->root(), groupId, groupId, false, {});
    const auto set = d->findOrCreate(*parent, QStringLiteral("Marker"), name, false, {});
    set->setMarkers(type, markers, size1, size2);
    // setMarkers() applies the ambient strength to spheres. Stars need it, too: without shading all their
    // faces have the same colour. All other markers show their pure colours, also in a set that contained
    // spheres before.
    if (type != Sphere && !markers.isEmpty())
        set->setAmbientStrength(type == Star && size2 > 0.0f ? size2 : 1.0f);
}

void KVGamut3DViewer::addPointSet(const QString& name, const QList<ColoredPosition>& points)
{
    if (points.isEmpty() || name.isEmpty())
        return;
    const ContextScope scope(d->widget);
    const QString groupId = GroupNames::points();
    const auto parent = d->findOrCreate(d->widget->root(), groupId, groupId, true, {});
    d->findOrCreate(*parent, name, name, true, {})->setMarkers(pointMarker, points, d->pointSize, 0.0f);
}

void KVGamut3DViewer::addSegmentSet(const QString& name,
                                    const QList<std::pair<ColoredPosition, ColoredPosition>>& segments)
{
    if (segments.isEmpty() || name.isEmpty())
        return;
    const ContextScope scope(d->widget);
    const QString groupId = GroupNames::segments();
    const auto parent = d->findOrCreate(d->widget->root(), groupId, groupId, true, {});
    const auto set = d->findOrCreate(*parent, name, name, true,
                                     [](KV3DObject& fresh) { fresh.setLineWidth(newSegmentWidth); });
    set->setSegments(segments, false, set->lineWidth(), 0.0f);
}

void KVGamut3DViewer::setPointSize(float size)
{
    d->pointSize = size;
    const auto parent = d->group(GroupNames::points());
    if (!parent)
        return;
    const QStringList names = d->itemsOf(GroupNames::points());
    for (const QString& name : names) {
        if (const auto set = parent->child(name)) {
            const ContextScope scope(d->widget);
            set->setMarkerSize(size);
        }
    }
}

float KVGamut3DViewer::pointSize() const
{
    return d->pointSize;
}

void KVGamut3DViewer::setPointSetSize(const QString& name, int size)
{
    const auto set = d->widget->root().childAt({GroupNames::points(), name});
    if (!set)
        return;
    const ContextScope scope(d->widget);
    set->setMarkerSize(static_cast<float>(size));
}

void KVGamut3DViewer::setSegmentSetWidth(const QString& name, float width)
{
    const auto set = d->widget->root().childAt({GroupNames::segments(), name});
    if (!set)
        return;
    const ContextScope scope(d->widget);
    set->setLineWidth(width);
}

void KVGamut3DViewer::removeMarkerSet(const QString& name)
{
    d->removeItem(GroupNames::markers(), name);
}

void KVGamut3DViewer::removePointSet(const QString& name)
{
    d->removeItem(GroupNames::points(), name);
}

void KVGamut3DViewer::removeSegmentSet(const QString& name)
{
    d->removeItem(GroupNames::segments(), name);
}

void KVGamut3DViewer::clearMarkerSet()
{
    d->clearGroup(GroupNames::markers());
}

void KVGamut3DViewer::clearPointSet()
{
    d->clearGroup(GroupNames::points());
}

void KVGamut3DViewer::clearSegmentSet()
{
    d->clearGroup(GroupNames::segments());
}

QStringList KVGamut3DViewer::markerSet() const
{
    return d->itemsOf(GroupNames::markers());
}

QStringList KVGamut3DViewer::pointSet() const
{
    return d->itemsOf(GroupNames::points());
}

QStringList KVGamut3DViewer::segmentSet() const
{
    return d->itemsOf(GroupNames::segments());
}
