// SPDX-License-Identifier: Apache-2.0
#include <KVGamut3DViewer.h>

#include <glwindow/ContextScope.h>
#include <viewer/EnoughMemory.h>
#include <viewer/GroupNames.h>
#include <viewer/ViewerPrivate.h>

namespace {

const QString& solidChild()
{
    static const QString name = QStringLiteral("Gamut");
    return name;
}

} // namespace

QSharedPointer<KV3DObject> KVGamut3DViewer::getGamut(QString id) const
{
    return d->widget->root().childAt({GroupNames::profiles(), id});
}

void KVGamut3DViewer::load(QString id, const QHash<QString, QVariant>& params,
                           std::function<void(QString, bool)> callback)
{
    if (!callback) {
        kvEnoughMemoryFor([&] { d->loadNow(id, params); });
        return;
    }
    std::shared_ptr<std::function<void(QString, bool)>> kept;
    GamutLoads::EndFunction onEnd;
    GamutRequest request;
    const bool ready = kvEnoughMemoryFor([&] {
        request = kvGamutRequest(params);
        kept = std::make_shared<std::function<void(QString, bool)>>(std::move(callback));
        onEnd = [id, kept](const GamutLoads::End& end) {
            if (!end.replaced)
                (*kept)(id, !end.problem);
        };
    });
    if (ready)
        d->loads.start(id, request, params, std::move(onEnd));
    else // the function was moved only if there was memory for it
        d->loads.refuse(id, [&](const GamutLoads::End&) { (kept ? *kept : callback)(id, false); });
}

void KVGamut3DViewer::removeGamut(QString id)
{
    d->removeGamut(id);
}

QStringList KVGamut3DViewer::gamuts() const
{
    return d->itemsOf(GroupNames::profiles());
}

bool KVGamut3DViewer::exists(QString id) const
{
    return !d->gamut(id).isNull();
}

void KVGamut3DViewer::setGamutVisible(QString id, bool visible)
{
    if (const auto gamut = getGamut(id)) {
        const ContextScope scope(d->widget);
        gamut->setVisible(visible);
    }
}

bool KVGamut3DViewer::gamutVisible(QString id) const
{
    const auto gamut = getGamut(id);
    return gamut && gamut->isVisible();
}

void KVGamut3DViewer::setDisplayGamut(QString id, bool display)
{
    d->setChildVisible(id, solidChild(), display);
}

bool KVGamut3DViewer::displayGamut(QString id) const
{
    return d->childVisible(id, solidChild());
}

void KVGamut3DViewer::setDisplayProjection(QString id, bool display)
{
    d->setChildVisible(id, GroupNames::projection(), display);
}

bool KVGamut3DViewer::displayProjection(QString id) const
{
    return d->childVisible(id, GroupNames::projection());
}

void KVGamut3DViewer::setDisplayPrimaries(QString id, bool display)
{
    d->setChildVisible(id, QStringLiteral("Primaries"), display);
    d->setChildVisible(id, QStringLiteral("PrimariesPoints"), display);
}

bool KVGamut3DViewer::displayPrimaries(QString id) const
{
    return d->childVisible(id, QStringLiteral("Primaries"));
}

void KVGamut3DViewer::setDisplayMode(QString id, DisplayMode mode)
{
    if (const auto gamut = getGamut(id)) {
        const ContextScope scope(d->widget);
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
        const ContextScope scope(d->widget);
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
        const ContextScope scope(d->widget);
        if (color.isValid())
            gamut->setColor(color);
        else
            gamut->restoreColors();
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
        const ContextScope scope(d->widget);
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
    const auto gamut = d->gamut(id);
    return gamut ? gamut->params() : QHash<QString, QVariant>();
}

QHash<QString, QVariant> KVGamut3DViewer::save(QString id) const
{
    const auto gamut = d->gamut(id);
    return gamut ? gamut->gamut().serialize() : QHash<QString, QVariant>();
}

bool KVGamut3DViewer::isInsideGamut(QString id, const QVector3D& p)
{
    const auto gamut = d->gamut(id);
    return gamut && gamut->isInside(p);
}

QList<QList<QVector3D>> KVGamut3DViewer::faceList(QString id)
{
    QList<QList<QVector3D>> list;
    const auto gamut = d->gamut(id);
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
    const auto first = d->gamut(id1);
    const auto second = d->gamut(id2);
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
    const ContextScope scope(d->widget);
    d->clipping = clipping;
    d->applyClipping();
}

float KVGamut3DViewer::clipping() const
{
    return d->clipping;
}
