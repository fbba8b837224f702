// SPDX-License-Identifier: Apache-2.0
#include <gamut/KV3DGamutObject.h>
#include <gamut/SectionLid.h>
#include <scene/CoarseTriangles.h>

#include <algorithm>
#include <array>
#include <utility>

namespace {
constexpr int wireframeMode = 3;
constexpr float sectionWidth = 2.0f;
constexpr float innerOutlineWidth = 1.0f; // of a section inside a gamut that is not cut

/// Of literals, which need no memory.
std::array<QString, 4> childNames()
{
    return {QStringLiteral("Projection"), QStringLiteral("Gamut"), QStringLiteral("Primaries"),
            QStringLiteral("PrimariesPoints")};
}

std::array<QString, 2> surfaceNames()
{
    return {QStringLiteral("Front"), QStringLiteral("Wireframe")};
}

KV3DGamutObject::Bounds boundsOf(const KVGamut::Mesh& mesh)
{
    if (mesh.lab.empty())
        return {};
    const KVGamut::LabPoint& first = mesh.lab.front();
    QVector3D low(first.L, first.a, first.b), high = low;
    for (const KVGamut::LabPoint& p : mesh.lab) {
        low = {std::min(low.x(), p.L), std::min(low.y(), p.a), std::min(low.z(), p.b)};
        high = {std::max(high.x(), p.L), std::max(high.y(), p.a), std::max(high.z(), p.b)};
    }
    return {low, high};
}

} // namespace

QSharedPointer<KV3DObject> KV3DGamutObject::childFor(KV3DObject& parent, const QString& name, bool visible)
{
    auto object = parent.child(name);
    if (object)
        return object;
    object.reset(new KV3DObject(name, name));
    if (parent.glOwner())
        object->initializeGL(parent.glOwner());
    object->setVisible(visible);
    if (color().isValid())
        object->setColor(color()); // set before the first load
    parent.addChild(object);
    return object;
}

void KV3DGamutObject::prepareChildren()
{
    const QString volume = QStringLiteral("volume");
    setProperty(volume, property(volume)); // later the value is only replaced
    childFor(*this, QStringLiteral("Projection"), true)->setDepthBias(kvOutlineBias(m_outlineRank));
    const auto container = childFor(*this, QStringLiteral("Gamut"), true);
    childFor(*container, QStringLiteral("Front"), true);
    childFor(*container, QStringLiteral("Wireframe"), false);
    childFor(*this, QStringLiteral("Primaries"), false);
    childFor(*this, QStringLiteral("PrimariesPoints"), false);
}

void KV3DGamutObject::applyGamut(KVGamut::GamutObject gamut, const GamutMeshSet& meshes,
                                 const GamutParams& params)
{
    const bool first = solid().isNull();
    try {
        prepareChildren();
    } catch (...) { // no memory: the object stays as it was
        if (first)
            for (const QString& name : childNames())
                takeChild(name);
        throw;
    }
    m_wireframeMaker.cancel();
    m_coarseMaker.cancel();
    m_params = params;
    std::swap(m_gamut, gamut);
    if (gamut.faceCount() > 0)
        kvDisposeOf(std::move(gamut));
    m_bounds = boundsOf(m_gamut.mesh());
    setProperty(QStringLiteral("volume"), m_gamut.volume());

    for (const QString& name : childNames())
        child(name)->setGeometry(meshes.value(name));
    for (const QString& name : surfaceNames())
        solid()->child(name)->setGeometry(meshes.value(name));
    wireframe()->setAwaitingVertices(false);
    m_hasWireframe = !meshes.value(QStringLiteral("Wireframe")).records.isEmpty();
    if (first)
        setDisplayMode(displayMode());
    else
        makeWireframeIfShown();
    makeCoarseIfWanted();
    try {
        showFilledSections();
    } catch (...) { // no memory: the gamut is shown without them
    }
}

QSharedPointer<KV3DObject> KV3DGamutObject::wireframe() const
{
    return childAt({QStringLiteral("Gamut"), QStringLiteral("Wireframe")});
}

GamutStyles KV3DGamutObject::stylesForLoad() const
{
    GamutStyles styles;
    if (const auto front = childAt({QStringLiteral("Gamut"), QStringLiteral("Front")}))
        styles.front = front->vertexStyle();
    else if (color().isValid())
        styles.front.shading = {.color = color(), .mode = displayMode(), .surface = true};
    // Both parts of the surface have the same style.
    if (displayMode() == wireframeMode)
        styles.wireframe = styles.front;
    return styles;
}

void KV3DGamutObject::makeWireframeIfShown()
{
    const auto object = wireframe();
    if (!object || displayMode() != wireframeMode) {
        m_wireframeMaker.cancel();
        if (object)
            object->setAwaitingVertices(false);
        return;
    }
    if (m_hasWireframe || m_wireframeMaker.isBusy())
        return;
    try {
        m_wireframeMaker.start(
            [gamut = m_gamut, style = object->vertexStyle()](const KVCancelCheck& cancelled) {
                return kvGamutWireframe(gamut, style, cancelled);
            },
            [this](const GeometryData& geometry) { installWireframe(geometry); });
        object->setAwaitingVertices(true);
    } catch (...) { // no memory: setting mode 3 tries it again
    }
}

// Without vertices the child has no GPU objects, so that no GL context is needed.
void KV3DGamutObject::installWireframe(const GeometryData& geometry)
{
    const auto object = wireframe();
    if (!object)
        return;
    m_hasWireframe = !geometry.records.isEmpty();
    object->setAwaitingVertices(false);
    object->setVerticesOf(geometry);
}

void KV3DGamutObject::setCoarseWanted(bool wanted)
{
    if (m_coarseWanted == wanted)
        return;
    m_coarseWanted = wanted;
    makeCoarseIfWanted();
}

void KV3DGamutObject::makeCoarseIfWanted()
{
    const auto front = childAt({QStringLiteral("Gamut"), QStringLiteral("Front")});
    constexpr qsizetype floats = qsizetype(3) * kvVertexFloats;
    if (!m_coarseWanted || !front || front->hasCoarseVertices() || m_coarseMaker.isBusy() ||
        front->vertices().size() <= 2 * maxCoarseTriangles * floats)
        return;
    try {
        m_coarseMaker.start(
            [records = front->vertices()](const KVCancelCheck&) {
                GeometryData geometry;
                geometry.vertices = kvCoarseTriangles(records, maxCoarseTriangles);
                return geometry;
            },
            [front](const GeometryData& geometry) { installCoarse(*front, geometry); });
    } catch (...) { // no memory: the surface has no coarse triangles
    }
}

void KV3DGamutObject::installCoarse(KV3DObject& front, const GeometryData& geometry)
{
    if (geometry.vertices.isEmpty())
        return;
    try {
        front.setCoarseVertices(geometry.vertices);
    } catch (...) { // no memory: as above
    }
}

bool KV3DGamutObject::isInside(const QVector3D& p) const
{
    const float lab[3] = {p.x(), p.y(), p.z()};
    return m_gamut.isInside(lab);
}

KVGamut::Comparison KV3DGamutObject::compare(const KV3DGamutObject& other) const
{
    return m_gamut.compare(other.m_gamut);
}

QSharedPointer<KV3DObject> KV3DGamutObject::solid() const
{
    return child(QStringLiteral("Gamut"));
}

void KV3DGamutObject::setAlpha(float alpha, int durationMs)
{
    if (const auto container = solid())
        container->setAlpha(alpha, durationMs);
}

void KV3DGamutObject::applyAlpha(float alpha)
{
    setAlpha(alpha, 0);
}

float KV3DGamutObject::alpha() const
{
    const auto container = solid();
    return container ? container->alpha() : 1.0f;
}

void KV3DGamutObject::setDisplayMode(int mode)
{
    storeDisplayMode(mode);
    const auto container = solid();
    if (!container)
        return;
    container->setDisplayMode(mode);
    if (const auto front = container->child(QStringLiteral("Front")))
        front->setVisible(mode != wireframeMode);
    if (const auto wireframe = container->child(QStringLiteral("Wireframe")))
        wireframe->setVisible(mode == wireframeMode);
    makeWireframeIfShown();
}

void KV3DGamutObject::setAmbientStrength(float strength)
{
    if (const auto container = solid())
        container->setAmbientStrength(strength);
}

float KV3DGamutObject::ambientStrength() const
{
    const auto container = solid();
    return container ? container->ambientStrength() : 1.0f;
}

QSharedPointer<KV3DObject> KV3DGamutObject::sectionChild(const QString& name)
{
    auto section = child(name);
    if (section)
        return section;
    section.reset(new KV3DObject(name, name));
    if (glOwner())
        section->initializeGL(glOwner());
    section->setLineWidth(sectionWidth);
    section->setDepthBias(kvSectionBias());
    addChild(section);
    return section;
}

void KV3DGamutObject::setClip(float L)
{
    const auto section = sectionChild(QStringLiteral("Section"));
    section->setSegments(kvGamutSection(m_gamut, L, m_sectionColor), false, section->lineWidth(), 0.0f);
    if (const auto container = solid())
        container->setClip(L);
}

void KV3DGamutObject::setSectionColor(const QColor& color, float L)
{
    m_sectionColor = color;
    if (hasChild(QStringLiteral("Section")))
        setClip(L);
    if (m_plane)
        showPlaneOutline();
    if (m_leaf)
        showLeafOutline();
}

void KV3DGamutObject::setLid(const std::optional<float>& lightness)
{
    if (m_lid == lightness)
        return;
    m_lid = lightness;
    showLidAt(QStringLiteral("Lid"), m_lid);
}

void KV3DGamutObject::setPlane(const std::optional<float>& lightness)
{
    if (m_plane == lightness)
        return;
    m_plane = lightness;
    showLidAt(QStringLiteral("PlaneLid"), m_plane);
    showPlaneOutline();
}

void KV3DGamutObject::showFilledSections()
{
    showLidAt(QStringLiteral("Lid"), m_lid);
    showLidAt(QStringLiteral("PlaneLid"), m_plane);
    showPlaneOutline();
    showLeaf();
}

void KV3DGamutObject::setLeaf(const std::optional<HueLeaf>& leaf)
{
    if (m_leaf == leaf)
        return;
    m_leaf = leaf;
    showLeaf();
}

void KV3DGamutObject::showLidAt(const QString& name, const std::optional<float>& lightness)
{
    showLid(name,
            lightness && solid() ? std::optional(kvSectionLid(m_gamut.mesh(), *lightness)) : std::nullopt);
}

void KV3DGamutObject::showLeaf()
{
    showLid(QStringLiteral("LeafLid"),
            m_leaf && solid() ? std::optional(kvHueLid(m_gamut.mesh(), *m_leaf)) : std::nullopt);
    showLeafOutline();
}

void KV3DGamutObject::showLid(const QString& name, const std::optional<GeometryData>& geometry)
{
    const auto container = solid();
    if (!container)
        return;
    auto lid = container->child(name);
    if (!geometry) {
        if (lid)
            container->takeChild(name);
        return;
    }
    if (!lid) {
        lid.reset(name == QStringLiteral("Lid") ? new KVSectionLid(name, name)
                                                : new KVInnerSection(name, name));
        if (glOwner())
            lid->initializeGL(glOwner());
        lid->setDisplayMode(displayMode());
        container->addChild(lid);
    }
    lid->setGeometry(*geometry);
    lid->applyAlpha(container->alpha());
}

void KV3DGamutObject::showPlaneOutline()
{
    const QString name = QStringLiteral("PlaneOutline");
    if (!m_plane) {
        takeChild(name);
        return;
    }
    const auto outline = sectionChild(name);
    outline->setSegments(kvGamutSection(m_gamut, *m_plane, m_sectionColor), false, innerOutlineWidth, 0.0f);
}

void KV3DGamutObject::showLeafOutline()
{
    const QString name = QStringLiteral("LeafOutline");
    if (!m_leaf) {
        takeChild(name);
        return;
    }
    const auto outline = sectionChild(name);
    outline->setSegments(kvHueOutline(m_gamut.mesh(), *m_leaf, m_sectionColor), false, innerOutlineWidth,
                         0.0f);
}
