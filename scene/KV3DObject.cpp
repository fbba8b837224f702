// SPDX-License-Identifier: Apache-2.0
#include <scene/Generators.h>
#include <scene/KV3DObject.h>
#include <scene/ResourceFiles.h>

#include <QtCore/QUuid>

#include <tuple>
#include <utility>

KV3DObject::KV3DObject(const QString& name, const QString& id)
    : m_name(name), m_id(id.isEmpty() ? QUuid::createUuid().toString(QUuid::WithBraces) : id),
      m_vertexShaderPath(ResourceFiles::folder() + QLatin1String("/Shaders/simple.vert")),
      m_fragmentShaderPath(ResourceFiles::folder() + QLatin1String("/Shaders/simple.frag"))
{
}

KV3DObject::~KV3DObject()
{
    releaseGL();
}

// Calls the setter for every child in drawing order. The list is copied because the setter of a derived child
// may add children.
template <typename Setter>
void KV3DObject::forEachChild(Setter setter)
{
    const QStringList order = m_childOrder;
    for (const QString& childId : order)
        if (const auto object = m_children.value(childId))
            setter(*object);
}

void KV3DObject::markDataChanged()
{
    destroyBuffers();
    markMoved();
}

void KV3DObject::markMoved()
{
    m_changed = true;
    m_drawnSinceChange = false;
}

// --- Appearance -----------------------------------------------------------------------------------

void KV3DObject::setAlpha(float alpha, int durationMs)
{
    if (durationMs <= 0) {
        m_transition.reset();
        applyAlpha(alpha);
        return;
    }
    auto transition = QSharedPointer<AlphaTransition>::create();
    transition->from = this->alpha();
    transition->to = alpha;
    transition->durationMs = durationMs;
    transition->timer.start();
    m_transition = transition;
}

void KV3DObject::applyAlpha(float alpha)
{
    m_alpha = alpha;
    m_vertices.setAlpha(alpha);
    if (m_coarse)
        m_coarse->vertices.setAlpha(alpha);
    markDataChanged();
    forEachChild([alpha](KV3DObject& c) { c.applyAlpha(alpha); });
}

float KV3DObject::alpha() const
{
    return m_alpha;
}

void KV3DObject::setDisplayMode(int mode)
{
    applyColor(color(), mode);
    m_displayMode = mode;
    forEachChild([mode](KV3DObject& c) { c.setDisplayMode(mode); });
}

int KV3DObject::displayMode() const
{
    return m_displayMode;
}

void KV3DObject::setColor(const QColor& color)
{
    applyColor(color, m_displayMode);
}

QColor KV3DObject::color() const
{
    return m_color;
}

void KV3DObject::setLineWidth(float width)
{
    if (m_lineWidth != width)
        m_drawnSinceChange = false; // needs a redraw, but no upload
    m_lineWidth = width;
    forEachChild([width](KV3DObject& c) { c.setLineWidth(width); });
}

float KV3DObject::lineWidth() const
{
    return m_lineWidth;
}

void KV3DObject::setMarkerSize(float size)
{
    if (m_markers.isEmpty())
        m_markerSize = size;
    else
        setMarkers(m_markerType, m_markers, size, m_markerParam);
    forEachChild([size](KV3DObject& c) { c.setMarkerSize(size); });
}

float KV3DObject::markerSize() const
{
    return m_markerSize;
}

void KV3DObject::setClip(float clip)
{
    m_clip = clip;
    m_vertices.setClip(clip);
    if (m_coarse)
        m_coarse->vertices.setClip(clip);
    markDataChanged();
    forEachChild([clip](KV3DObject& c) { c.setClip(clip); });
}

float KV3DObject::clip() const
{
    return m_clip;
}

void KV3DObject::setAmbientStrength(float strength)
{
    if (m_ambientStrength != strength)
        m_drawnSinceChange = false; // needs a redraw, but no upload
    m_ambientStrength = strength;
    forEachChild([strength](KV3DObject& c) { c.setAmbientStrength(strength); });
}

float KV3DObject::ambientStrength() const
{
    return m_ambientStrength;
}

void KV3DObject::applyColor(const QColor& color, int mode)
{
    if (color == m_color && mode == m_displayMode)
        return;
    m_color = color;

    const bool surface = m_id == QLatin1String("Front") || m_id == QLatin1String("Wireframe");
    const VertexStyle::Shading shading{
        .color = color, .mode = mode, .surface = surface, .primitiveMode = m_primitiveMode};
    m_vertices.shade(shading);
    if (m_coarse)
        m_coarse->vertices.shade(shading);
    markDataChanged();
    forEachChild([&](KV3DObject& c) { c.applyColor(color, mode); });
}

void KV3DObject::restoreColors()
{
    if (m_color.isValid()) {
        m_color = QColor();
        m_vertices.restoreColors();
        if (m_coarse)
            m_coarse->vertices.restoreColors();
        markDataChanged();
    }
    forEachChild([](KV3DObject& c) { c.restoreColors(); });
}

// --- Visibility and tree --------------------------------------------------------------------------

void KV3DObject::setVisible(bool visible)
{
    if (m_visible == visible)
        return;
    m_visible = visible;
    markMoved();
}

void KV3DObject::setDepthBias(const KVDepthBias& bias)
{
    if (m_depthBias == bias)
        return;
    m_depthBias = bias;
    m_drawnSinceChange = false; // needs a redraw, but no upload
}

void KV3DObject::addChild(const QSharedPointer<KV3DObject>& child, bool atFront)
{
    if (!child)
        return;
    const QString key = child->id();
    QStringList order = m_childOrder; // if memory is exhausted, the object keeps its children
    if (!order.contains(key)) {
        if (atFront)
            order.prepend(key);
        else
            order.append(key);
    }
    m_children.insert(key, child);
    m_childOrder.swap(order);
    markMoved(); // the batch must include the new child and drop the one that it replaced
}

QSharedPointer<KV3DObject> KV3DObject::child(const QString& id) const
{
    return m_children.value(id);
}

QSharedPointer<KV3DObject> KV3DObject::childAt(std::initializer_list<QString> path) const
{
    const KV3DObject* at = this;
    QSharedPointer<KV3DObject> found;
    for (const QString& step : path) {
        found = at->child(step);
        if (!found)
            return {};
        at = found.data();
    }
    return found;
}

bool KV3DObject::hasChild(const QString& id) const
{
    return m_children.contains(id);
}

QSharedPointer<KV3DObject> KV3DObject::takeChild(const QString& id)
{
    auto taken = m_children.take(id);
    m_childOrder.removeOne(id);
    if (taken)
        markMoved(); // otherwise the removed child stays in the picture
    return taken;
}

QList<QSharedPointer<KV3DObject>> KV3DObject::children() const
{
    return m_children.values();
}

void KV3DObject::setProperty(const QString& key, const QVariant& value)
{
    m_properties.insert(key, value);
}

QVariant KV3DObject::property(const QString& key) const
{
    return m_properties.value(key);
}

// --- Geometry -------------------------------------------------------------------------------------

void KV3DObject::setGeometry(const GeometryData& geometry)
{
    m_markerType = geometry.markerType;
    m_lineWidth = geometry.lineWidth;
    m_markers = geometry.markers;
    m_markerSize = geometry.markerSize;
    m_markerParam = geometry.markerParam;
    if (!m_markers.isEmpty() && m_markerType == 1)
        setAmbientStrength(m_markerParam > 0.0f ? m_markerParam : 1.0f);
    setVerticesOf(geometry);
}

void KV3DObject::setVerticesOf(const GeometryData& geometry)
{
    m_coarse.reset();
    m_primitiveMode = geometry.primitiveMode;
    if (geometry.records.isEmpty())
        m_vertices.assign(geometry.vertices);
    else
        m_vertices.adopt(geometry.records, geometry.recordStyle);
    restyleVertices();
}

void KV3DObject::setVertices(const QList<float>& generated)
{
    m_coarse.reset();
    m_vertices.assign(generated);
    restyleVertices();
}

void KV3DObject::setCoarseVertices(const QList<float>& generated)
{
    const VertexStyle& style = m_vertices.style();
    VertexRecords vertices;
    vertices.assign(generated);
    vertices.setAlpha(style.alpha);
    vertices.setClip(style.clip);
    if (style.shading)
        vertices.shade(*style.shading);
    std::ignore = vertices.list(); // made now: in a frame, a lack of memory would end the program
    m_coarse.emplace();
    m_coarse->vertices = std::move(vertices);
}

void KV3DObject::restyleVertices()
{
    // The mode -1 differs from every mode, so that applyColor() colours the new vertices even if colour and
    // mode are unchanged.
    const int mode = m_displayMode;
    m_displayMode = -1;
    applyColor(color(), mode);
    m_displayMode = mode;
    applyAlpha(alpha());
    setClip(clip());
    markDataChanged();
}

void KV3DObject::setTriangles(const QList<ColoredTriangle>& triangles)
{
    setGeometry(kvTriangles(triangles));
}

void KV3DObject::setSegments(const QList<ColoredSegment>& segments, bool closedHint, float width,
                             float trailing)
{
    setGeometry(kvSegments(segments, closedHint, width, trailing));
}

void KV3DObject::setMarkers(int type, const QList<ColoredPoint>& markers, float size, float param)
{
    if (type == m_markerType && markers == m_markers && size == m_markerSize && param == m_markerParam)
        return;
    setGeometry(kvMarkers(type, markers, size, param));
}

void KV3DObject::setTextOutline(const QString& text, const QMatrix4x4& transform, const QFont& font,
                                const QColor& color)
{
    setGeometry(kvTextOutline(text, transform, font, color, static_cast<int>(lineWidth())));
}
