// SPDX-License-Identifier: Apache-2.0
#include <gamut/GamutLoader.h>
#include <gamut/KV3DGamutObject.h>

#include <utility>

namespace {
constexpr int wireframeMode = 3;
constexpr float sectionWidth = 2.0f;
} // namespace

// Runs on the worker, hands its result to the GUI thread through the task object: a task that was
// replaced meanwhile takes the posted result with it.
class KV3DGamutObject::LoaderFunctor : public KVBackgroundTask<void*>::Functor
{
public:
    LoaderFunctor(KV3DGamutObject* owner, KVBackgroundTask<void*>* task, QHash<QString, QVariant> params,
                  LoadedFunction onLoaded, ContextGuard contextGuard)
        : m_owner(owner), m_task(task), m_name(owner->name()), m_id(owner->id()), m_params(std::move(params)),
          m_onLoaded(std::move(onLoaded)), m_contextGuard(std::move(contextGuard)),
          m_protocol(KVCompletionProtocol::createTask(QStringLiteral("GamutLoader")))
    {
    }

    void* run() override
    {
        LoadedGamut loaded = kvLoadGamut(m_params, &m_protocol);
        if (!loaded.profileFound) {
            QMetaObject::invokeMethod(
                m_task, [onLoaded = m_onLoaded, name = m_name, id = m_id] { onLoaded(name, id, false); });
            return nullptr;
        }
        // The callbacks may remove or reload the gamut, so after the first of them nothing but the
        // closure's own copies is touched.
        QMetaObject::invokeMethod(m_task, [owner = m_owner, name = m_name, id = m_id, params = m_params,
                                           onLoaded = m_onLoaded, contextGuard = m_contextGuard,
                                           loaded = std::move(loaded)] {
            if (contextGuard)
                contextGuard(true);
            if (loaded.ok)
                owner->applyGamut(loaded.gamut, loaded.meshes, params);
            onLoaded(name, id, loaded.ok);
            if (contextGuard)
                contextGuard(false);
        });
        return nullptr;
    }

    void cancel() override { m_protocol->cancel(); }

private:
    KV3DGamutObject* const m_owner; // only touched by the closure; the owner outlives its task
    KVBackgroundTask<void*>* const m_task;
    const QString m_name;
    const QString m_id;
    const QHash<QString, QVariant> m_params;
    const LoadedFunction m_onLoaded;
    const ContextGuard m_contextGuard;
    KVCompletionProtocolPtr m_protocol;
};

KV3DGamutObject::KV3DGamutObject(const QString& id) : KV3DObject(id, id) {}

KV3DGamutObject::~KV3DGamutObject()
{
    m_loader.reset();
}

void KV3DGamutObject::load(const QHash<QString, QVariant>& params, LoadedFunction onLoaded,
                           ContextGuard contextGuard)
{
    if (!onLoaded) {
        KVCompletionProtocolPtr nobody;
        LoadedGamut loaded = kvLoadGamut(params, &nobody);
        if (!loaded.ok)
            return;
        if (contextGuard)
            contextGuard(true);
        applyGamut(std::move(loaded.gamut), loaded.meshes, params);
        if (contextGuard)
            contextGuard(false);
        return;
    }
    // The old task goes first: it cancels its work and waits, so that no two loads overlap.
    m_loader.reset();
    m_loader.reset(new KVBackgroundTask<void*>);
    const QSharedPointer<KVBackgroundTask<void*>::Functor> functor(
        new LoaderFunctor(this, m_loader.data(), params, std::move(onLoaded), std::move(contextGuard)));
    m_loader->start(functor, 0);
}

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
        object->setColor(color()); // chosen before there was anything to colour
    parent.addChild(object);
    return object;
}

void KV3DGamutObject::applyGamut(KVGamut::GamutObject gamut, const GamutMeshSet& meshes,
                                 const QHash<QString, QVariant>& params)
{
    m_params = params;
    m_gamut = std::move(gamut);
    setProperty(QStringLiteral("volume"), m_gamut.volume());

    const bool first = solid().isNull();
    const auto fill = [&](KV3DObject& parent, const QString& name, bool visible) {
        auto object = childFor(parent, name, visible);
        object->setGeometry(meshes.value(name));
        return object;
    };
    fill(*this, QStringLiteral("Projection"), true);
    const auto container = fill(*this, QStringLiteral("Gamut"), true);
    fill(*container, QStringLiteral("Front"), true);
    fill(*container, QStringLiteral("Wireframe"), false);
    fill(*this, QStringLiteral("Primaries"), false);
    fill(*this, QStringLiteral("PrimariesPoints"), false);
    if (first)
        setDisplayMode(displayMode());
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

void KV3DGamutObject::setClip(float L)
{
    const QString name = QStringLiteral("Section");
    auto section = child(name);
    if (!section) {
        section.reset(new KV3DObject(name, name));
        if (glOwner())
            section->initializeGL(glOwner());
        section->setLineWidth(sectionWidth);
        addChild(section);
    }
    section->setSegments(kvGamutSection(m_gamut, L), false, section->lineWidth(), 0.0f);
    if (const auto container = solid())
        container->setClip(L);
}
