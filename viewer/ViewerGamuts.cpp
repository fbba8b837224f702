// SPDX-License-Identifier: Apache-2.0
#include <KVGamut3DViewer.h>

#include <gamut/KV3DGamutObject.h>
#include <glwindow/ContextScope.h>
#include <glwindow/KVGLWidget.h>
#include <viewer/GroupNames.h>

#include <QtCore/QPointer>

#include <memory>
#include <optional>

namespace {

const QString& solidChild()
{
    static const QString name = QStringLiteral("Gamut");
    return name;
}

/// A function that makes the widget's context current on true and releases it on false.
KV3DGamutObject::ContextGuard contextGuardOf(KVGLWidget* widget)
{
    return [widget = QPointer<KVGLWidget>(widget),
            scope = std::make_shared<std::optional<ContextScope>>()](bool acquire) {
        if (!acquire)
            scope->reset();
        else if (widget)
            scope->emplace(widget.data());
    };
}

} // namespace

QSharedPointer<KV3DObject> KVGamut3DViewer::getGamut(QString id) const
{
    return m_widget->root().childAt({GroupNames::profiles(), id});
}

namespace {

QSharedPointer<KV3DGamutObject> gamutObject(const QSharedPointer<KV3DObject>& object)
{
    return object.dynamicCast<KV3DGamutObject>();
}

} // namespace

void KVGamut3DViewer::load(QString id, const QHash<QString, QVariant>& params,
                           std::function<void(QString, bool)> callback)
{
    const ContextScope scope(m_widget);
    const auto profiles =
        findOrCreate(m_widget->root(), GroupNames::profiles(), GroupNames::profiles(), false, {});

    QSharedPointer<KV3DGamutObject> gamut;
    if (const auto present = profiles->child(id)) {
        gamut = gamutObject(present);
        if (!gamut)
            return;
    } else {
        gamut.reset(new KV3DGamutObject(id));
        gamut->setId(id);
        if (m_widget->context())
            gamut->initializeGL(m_widget->context());
        gamut->setVisible(true);
        profiles->addChild(gamut);
    }

    KV3DGamutObject::LoadedFunction onLoaded;
    if (callback) {
        // Held weakly: a strong pointer inside the gamut's own task would keep a removed gamut
        // computing.
        onLoaded = [weak = gamut.toWeakRef(), viewer = QPointer<KVGamut3DViewer>(this),
                    callback = std::move(callback)](const QString&, const QString& loadedId, bool ok) {
            if (viewer) {
                if (const auto loaded = weak.toStrongRef()) {
                    const ContextScope current(viewer->m_widget);
                    loaded->setClip(viewer->clipping());
                }
            }
            callback(loadedId, ok);
        };
    }
    gamut->load(params, std::move(onLoaded), contextGuardOf(m_widget));
}

void KVGamut3DViewer::removeGamut(QString id)
{
    removeItem(GroupNames::profiles(), id);
}

QStringList KVGamut3DViewer::gamuts() const
{
    return itemsOf(GroupNames::profiles());
}

bool KVGamut3DViewer::exists(QString id) const
{
    return !gamutObject(getGamut(id)).isNull();
}

void KVGamut3DViewer::setGamutVisible(QString id, bool visible)
{
    if (const auto gamut = getGamut(id)) {
        const ContextScope scope(m_widget);
        gamut->setVisible(visible);
    }
}

bool KVGamut3DViewer::gamutVisible(QString id) const
{
    const auto gamut = getGamut(id);
    return gamut && gamut->isVisible();
}

void KVGamut3DViewer::setChildVisible(const QString& gamutId, const QString& childId, bool visible)
{
    const auto object = m_widget->root().childAt({GroupNames::profiles(), gamutId, childId});
    if (!object)
        return;
    const ContextScope scope(m_widget);
    object->setVisible(visible);
}

bool KVGamut3DViewer::childVisible(const QString& gamutId, const QString& childId) const
{
    const auto object = m_widget->root().childAt({GroupNames::profiles(), gamutId, childId});
    return object && object->isVisible();
}

void KVGamut3DViewer::setDisplayGamut(QString id, bool display)
{
    setChildVisible(id, solidChild(), display);
}

bool KVGamut3DViewer::displayGamut(QString id) const
{
    return childVisible(id, solidChild());
}

void KVGamut3DViewer::setDisplayProjection(QString id, bool display)
{
    setChildVisible(id, QStringLiteral("Projection"), display);
}

bool KVGamut3DViewer::displayProjection(QString id) const
{
    return childVisible(id, QStringLiteral("Projection"));
}

void KVGamut3DViewer::setDisplayPrimaries(QString id, bool display)
{
    setChildVisible(id, QStringLiteral("Primaries"), display);
    setChildVisible(id, QStringLiteral("PrimariesPoints"), display);
}

bool KVGamut3DViewer::displayPrimaries(QString id) const
{
    return childVisible(id, QStringLiteral("Primaries"));
}

void KVGamut3DViewer::setDisplayMode(QString id, DisplayMode mode)
{
    if (const auto gamut = getGamut(id)) {
        const ContextScope scope(m_widget);
        gamut->setDisplayMode(mode);
    }
}

KVGamut3DViewer::DisplayMode KVGamut3DViewer::displayMode(QString id) const
{
    const auto gamut = getGamut(id);
    return gamut ? static_cast<DisplayMode>(gamut->displayMode()) : Smooth;
}

void KVGamut3DViewer::changeGamutAlpha(QString id, float alpha, int duration)
{
    if (const auto gamut = getGamut(id)) {
        const ContextScope scope(m_widget);
        gamut->setAlpha(alpha, duration);
    }
}

float KVGamut3DViewer::gamutAlpha(QString id) const
{
    const auto gamut = getGamut(id);
    return gamut ? gamut->alpha() : 1.0f;
}

void KVGamut3DViewer::changeGamutColor(QString id, QColor color)
{
    if (const auto gamut = getGamut(id)) {
        const ContextScope scope(m_widget);
        gamut->setColor(color);
    }
}

QColor KVGamut3DViewer::gamutColor(QString id) const
{
    const auto gamut = getGamut(id);
    return gamut ? gamut->color() : QColor();
}

void KVGamut3DViewer::setGamutAmbientStrength(QString id, float strength)
{
    if (const auto gamut = getGamut(id)) {
        const ContextScope scope(m_widget);
        gamut->setAmbientStrength(strength);
    }
}

float KVGamut3DViewer::gamutAmbientStrength(QString id) const
{
    const auto gamut = getGamut(id);
    return gamut ? gamut->ambientStrength() : 1.0f;
}

float KVGamut3DViewer::volume(QString id) const
{
    const auto gamut = getGamut(id);
    return gamut ? gamut->property(QStringLiteral("volume")).toFloat() : 0.0f;
}

QHash<QString, QVariant> KVGamut3DViewer::params(QString id) const
{
    const auto gamut = gamutObject(getGamut(id));
    return gamut ? gamut->params() : QHash<QString, QVariant>();
}

QHash<QString, QVariant> KVGamut3DViewer::save(QString id) const
{
    const auto gamut = gamutObject(getGamut(id));
    return gamut ? gamut->gamut().serialize() : QHash<QString, QVariant>();
}

bool KVGamut3DViewer::isInsideGamut(QString id, const QVector3D& p)
{
    const auto gamut = gamutObject(getGamut(id));
    return gamut && gamut->isInside(p);
}

QList<QList<QVector3D>> KVGamut3DViewer::faceList(QString id)
{
    QList<QList<QVector3D>> list;
    const auto gamut = gamutObject(getGamut(id));
    if (!gamut)
        return list;
    const auto faces = gamut->gamut().faces();
    list.reserve(faces.size());
    for (const auto& face : faces) {
        QList<QVector3D> corners;
        corners.reserve(face.size());
        for (const auto& node : face)
            corners.append(QVector3D(node.lab.value(0), node.lab.value(1), node.lab.value(2)));
        list.append(corners);
    }
    return list;
}

bool KVGamut3DViewer::gamutSetProperties(QString id1, QString id2, float& f1, float& f2, float& f3, float& f4,
                                         float& f5, float& f6) const
{
    const auto first = gamutObject(getGamut(id1));
    const auto second = gamutObject(getGamut(id2));
    if (!first || !second)
        return false;
    const KVGamut::Comparison comparison = first->compare(*second);
    f1 = comparison.volumeFirst;
    f2 = comparison.volumeSecond;
    f3 = comparison.intersection;
    f4 = comparison.unionVolume;
    f5 = comparison.secondCovered;
    f6 = comparison.firstCovered;
    return true;
}

void KVGamut3DViewer::setClipping(float clipping)
{
    const ContextScope scope(m_widget);
    m_clipping = clipping;
    const auto profiles = group(GroupNames::profiles());
    if (!profiles)
        return;
    const QStringList ids = itemsOf(GroupNames::profiles());
    for (const QString& id : ids)
        if (const auto gamut = profiles->child(id))
            gamut->setClip(clipping);
}
