// SPDX-License-Identifier: Apache-2.0
#include <gamut/GamutLoader.h>
#include <gamut/KV3DGamutObject.h>

#include <utility>

namespace {
constexpr int wireframeMode = 3;
constexpr float sectionWidth = 2.0f;
} // namespace

/// What the worker posts to the GUI thread.
struct KV3DGamutObject::LoadOutcome
{
    tl::expected<LoadedGamut, KVProblem> result =
        tl::unexpected(KVProblem{KVProblemCode::OutOfMemory, {}, {}});
    bool opened = false; ///< a profile was found, or none was needed
    bool thrown = false;
};

// Runs on the worker and posts its result to the task object: if the task is replaced meanwhile, the
// result is dropped with it.
class KV3DGamutObject::LoaderFunctor : public KVBackgroundTask<void*>::Functor
{
public:
    LoaderFunctor(KV3DGamutObject* owner, KVBackgroundTask<void*>* task, GamutRequest request,
                  KVCompletionProtocolPtr protocol)
        : m_owner(owner), m_task(task), m_request(std::move(request)), m_protocol(std::move(protocol))
    {
    }

    void* run() override
    {
        QMetaObject::invokeMethod(
            m_task, [owner = m_owner, protocol = m_protocol, outcome = outcome()]() mutable {
                if (outcome.result && protocol->isCancelled())
                    outcome.result = tl::unexpected(KVProblem{KVProblemCode::Cancelled, {}, {}});
                owner->finishLoad(outcome);
            });
        return nullptr;
    }

    void cancel() override { m_protocol->cancel(); }

private:
    LoadOutcome outcome()
    {
        LoadOutcome outcome;
        try {
            auto opened = kvOpenRequest(m_request);
            outcome.opened = opened.has_value();
            if (opened)
                outcome.result = kvLoadGamut(*std::move(opened), &m_protocol);
            else
                outcome.result = tl::unexpected(opened.error());
        } catch (...) {
            outcome = {};
            outcome.thrown = true;
        }
        return outcome;
    }

    KV3DGamutObject* const m_owner; // only used by the closure; the owner outlives its task
    KVBackgroundTask<void*>* const m_task;
    const GamutRequest m_request;
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
        loadNow(params, contextGuard);
        return;
    }
    load(
        kvGamutRequest(params), params,
        [onLoaded = std::move(onLoaded), name = name(), id = id()](const LoadEnd& end) {
            if (!end.thrown)
                onLoaded(name, id, !end.problem);
        },
        std::move(contextGuard));
}

void KV3DGamutObject::loadNow(const QHash<QString, QVariant>& params, const ContextGuard& contextGuard)
{
    KVCompletionProtocolPtr nobody;
    const auto loaded = kvOpenRequest(kvGamutRequest(params)).and_then([&nobody](GamutRequest request) {
        return kvLoadGamut(std::move(request), &nobody);
    });
    if (!loaded)
        return;
    if (contextGuard)
        contextGuard(true);
    applyGamut(loaded->gamut, loaded->meshes, params);
    if (contextGuard)
        contextGuard(false);
}

KVCompletionProtocolPtr KV3DGamutObject::load(const GamutRequest& request,
                                              const QHash<QString, QVariant>& params, EndFunction onEnd,
                                              ContextGuard contextGuard)
{
    // The old task is destroyed first: it cancels its work and waits, so that no two loads overlap.
    m_loader.reset();
    const auto replaced = std::exchange(m_onEnd, std::move(onEnd)); // its captures may run code of the host
    m_contextGuard = std::move(contextGuard);
    m_loadingParams = params;

    auto protocol = KVCompletionProtocol::createTask(QStringLiteral("GamutLoader"));
    m_loader.reset(new KVBackgroundTask<void*>);
    const QSharedPointer<KVBackgroundTask<void*>::Functor> functor(
        new LoaderFunctor(this, m_loader.data(), request, protocol));
    m_loader->start(functor, 0);
    return protocol;
}

void KV3DGamutObject::finishLoad(const LoadOutcome& outcome)
{
    // The callbacks may remove or reload this object: nothing of it is used after the first of them.
    const auto onEnd = std::exchange(m_onEnd, {});
    const auto contextGuard = std::exchange(m_contextGuard, {});
    const auto params = std::exchange(m_loadingParams, {});
    const bool guarded = contextGuard && outcome.opened;
    LoadEnd end{{}, outcome.thrown};
    if (guarded)
        contextGuard(true);
    if (outcome.result)
        applyGamut(outcome.result->gamut, outcome.result->meshes, params);
    else
        end.problem = outcome.result.error();
    onEnd(end);
    if (guarded)
        contextGuard(false);
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
        object->setColor(color()); // set before the first load
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
    section->setSegments(kvGamutSection(m_gamut, L, m_sectionColor), false, section->lineWidth(), 0.0f);
    if (const auto container = solid())
        container->setClip(L);
}

void KV3DGamutObject::setSectionColor(const QColor& color, float L)
{
    m_sectionColor = color;
    if (hasChild(QStringLiteral("Section")))
        setClip(L);
}
