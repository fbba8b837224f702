// SPDX-License-Identifier: Apache-2.0
#include <KVGamut3DViewer.h>

#include <glwindow/ContextScope.h>
#include <glwindow/KVGLWidget.h>
#include <viewer/GroupNames.h>

namespace {
constexpr float newSegmentWidth = 2.0f;
constexpr int pointMarker = KVGamut3DViewer::Sphere;
} // namespace

void KVGamut3DViewer::addMarkerSet(const QString& name, MarkerType type,
                                   const QList<ColoredPosition>& markers, float size1, float size2)
{
    const ContextScope scope(m_widget);
    const QString groupId = GroupNames::markers();
    const auto parent = findOrCreate(m_widget->root(), groupId, groupId, false, {});
    const auto set = findOrCreate(*parent, QStringLiteral("Marker"), name, false, {});
    set->setMarkers(type, markers, size1, size2);
    // Spheres take their light from the geometry; solids with flat faces need it even more, since
    // without it all their sides have one colour.
    if (type != Sphere && !markers.isEmpty())
        set->setAmbientStrength(size2 > 0.0f ? size2 : 1.0f);
}

void KVGamut3DViewer::addPointSet(const QString& name, const QList<ColoredPosition>& points)
{
    if (points.isEmpty() || name.isEmpty())
        return;
    const ContextScope scope(m_widget);
    const QString groupId = GroupNames::points();
    const auto parent = findOrCreate(m_widget->root(), groupId, groupId, true, {});
    findOrCreate(*parent, name, name, true, {})->setMarkers(pointMarker, points, m_pointSize, 0.0f);
}

void KVGamut3DViewer::addSegmentSet(const QString& name,
                                    const QList<std::pair<ColoredPosition, ColoredPosition>>& segments)
{
    if (segments.isEmpty() || name.isEmpty())
        return;
    const ContextScope scope(m_widget);
    const QString groupId = GroupNames::segments();
    const auto parent = findOrCreate(m_widget->root(), groupId, groupId, true, {});
    const auto set = findOrCreate(*parent, name, name, true,
                                  [](KV3DObject& fresh) { fresh.setLineWidth(newSegmentWidth); });
    set->setSegments(segments, false, set->lineWidth(), 0.0f);
}

void KVGamut3DViewer::setPointSize(float size)
{
    m_pointSize = size;
    const auto parent = group(GroupNames::points());
    if (!parent)
        return;
    const QStringList names = itemsOf(GroupNames::points());
    for (const QString& name : names) {
        if (const auto set = parent->child(name)) {
            const ContextScope scope(m_widget);
            set->setMarkerSize(size);
        }
    }
}

void KVGamut3DViewer::setPointSetSize(const QString& name, int size)
{
    const auto set = m_widget->root().childAt({GroupNames::points(), name});
    if (!set)
        return;
    const ContextScope scope(m_widget);
    set->setMarkerSize(static_cast<float>(size));
}

void KVGamut3DViewer::setSegmentSetWidth(const QString& name, float width)
{
    const auto set = m_widget->root().childAt({GroupNames::segments(), name});
    if (!set)
        return;
    const ContextScope scope(m_widget);
    set->setLineWidth(width);
}

void KVGamut3DViewer::removeMarkerSet(const QString& name)
{
    removeItem(GroupNames::markers(), name);
}

void KVGamut3DViewer::removePointSet(const QString& name)
{
    removeItem(GroupNames::points(), name);
}

void KVGamut3DViewer::removeSegmentSet(const QString& name)
{
    removeItem(GroupNames::segments(), name);
}

void KVGamut3DViewer::clearMarkerSet()
{
    clearGroup(GroupNames::markers());
}

void KVGamut3DViewer::clearPointSet()
{
    clearGroup(GroupNames::points());
}

void KVGamut3DViewer::clearSegmentSet()
{
    clearGroup(GroupNames::segments());
}

QStringList KVGamut3DViewer::markerSet() const
{
    return itemsOf(GroupNames::markers());
}

QStringList KVGamut3DViewer::pointSet() const
{
    return itemsOf(GroupNames::points());
}

QStringList KVGamut3DViewer::segmentSet() const
{
    return itemsOf(GroupNames::segments());
}
