// SPDX-License-Identifier: Apache-2.0
#include <gamut/GamutLoader.h>
#include <gamut/KV3DGamutObject.h>

#include <stdexcept>
#include <utility>

namespace {

using Task = KVBackgroundTask<void*>;

KVProblem problem(KVProblemCode code)
{
    return KVProblem{code, {}, {}};
}

/// The result of @p work; a problem if it throws.
template <typename Work>
tl::expected<LoadedGamut, KVProblem> withoutThrowing(const Work& work)
{
    try {
        return work();
    } catch (const std::bad_alloc&) {
    } catch (const std::length_error&) { // a container that would be larger than the address space
    } catch (...) {
        return tl::unexpected(problem(KVProblemCode::EngineFailed));
    }
    return tl::unexpected(problem(KVProblemCode::OutOfMemory));
}

} // namespace

/// A load in the background. Created and destroyed on the GUI thread with all that belongs to the host; the
/// worker uses it until its run has ended.
struct KV3DGamutObject::Load
{
    const GamutRequest request;
    const GamutParams params;
    EndFunction onEnd;
    ContextGuard contextGuard;
    KVCompletionProtocolPtr protocol;

    // Written by the worker. The result is OutOfMemory until then, so that a run that Qt cannot start is
    // reported, too.
    tl::expected<LoadedGamut, KVProblem> result = tl::unexpected(problem(KVProblemCode::OutOfMemory));
    bool opened = false; ///< a profile was found, or none was needed
};

/// Computes a load on the worker. It does not own the load: the object of the load outlives its task.
class KV3DGamutObject::LoaderFunctor : public Task::Functor
{
public:
    explicit LoaderFunctor(Load& load) : m_load(load), m_protocol(load.protocol) {}

    void* run() override
    {
        m_load.result = withoutThrowing([this]() -> tl::expected<LoadedGamut, KVProblem> {
            auto opened = kvOpenRequest(m_load.request, m_protocol);
            m_load.opened = opened.has_value();
            if (!opened)
                return tl::unexpected(opened.error());
            return kvLoadGamut(*std::move(opened), &m_protocol);
        });
        return nullptr;
    }

    void cancel() override { m_protocol->cancel(); }

private:
    Load& m_load;
    KVCompletionProtocolPtr m_protocol;
};

KV3DGamutObject::KV3DGamutObject(const QString& id) : KV3DObject(id, id) {}

KV3DGamutObject::~KV3DGamutObject()
{
    cancelLoad();
    if (m_gamut.faceCount() > 0)
        kvDisposeOf(std::move(m_gamut)); // with the lists of its faces, if the host asked for them
}

void KV3DGamutObject::cancelLoad()
{
    m_loader.reset(); // cancels and waits
    m_load.reset();
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
        [onLoaded = std::move(onLoaded), name = name(), id = id()](const std::optional<KVProblem>& failure) {
            onLoaded(name, id, !failure);
        },
        std::move(contextGuard));
}

void KV3DGamutObject::loadNow(const QHash<QString, QVariant>& params, const ContextGuard& contextGuard)
{
    KVCompletionProtocolPtr nobody;
    const auto loaded = withoutThrowing([&]() -> tl::expected<LoadedGamut, KVProblem> {
        return kvOpenRequest(kvGamutRequest(params)).and_then([&](GamutRequest request) {
            request.styles = stylesForLoad();
            return kvLoadGamut(std::move(request), &nobody);
        });
    });
    if (!loaded)
        return;
    install(loaded, params, contextGuard);
    if (contextGuard)
        contextGuard(false);
}

std::optional<KVProblem> KV3DGamutObject::install(const tl::expected<LoadedGamut, KVProblem>& loaded,
                                                  const GamutParams& params, const ContextGuard& contextGuard)
{
    try {
        if (contextGuard)
            contextGuard(true);
        if (!loaded)
            return loaded.error();
        applyGamut(loaded->gamut, loaded->meshes, params);
        return {};
    } catch (...) { // only allocations can fail here
        return problem(KVProblemCode::OutOfMemory);
    }
}

KVCompletionProtocolPtr KV3DGamutObject::load(const GamutRequest& request, const GamutParams& params,
                                              EndFunction onEnd, ContextGuard contextGuard)
{
    auto protocol = KVCompletionProtocol::createTask(QStringLiteral("GamutLoader"));
    GamutRequest styled = request;
    styled.styles = stylesForLoad();
    std::unique_ptr<Load> next(
        new Load{std::move(styled), params, std::move(onEnd), std::move(contextGuard), protocol});
    const QSharedPointer<Task::Functor> functor(new LoaderFunctor(*next));
    QSharedPointer<Task> task(new Task);
    QObject::connect(task.data(), &Task::finished, task.data(), [this] { finishLoad(); });

    // The old task is destroyed first: it cancels its work and waits, so that no two loads overlap.
    m_loader.reset();
    const auto replaced = std::exchange(m_load, std::move(next)); // its captures may run code of the host
    m_loader = std::move(task);
    try {
        m_loader->start(functor, 0);
    } catch (...) {
        cancelLoad();
        throw;
    }
    return protocol;
}

void KV3DGamutObject::finishLoad()
{
    if (!m_load)
        return;
    // The callbacks may remove or reload this object: nothing of it is used after the first of them.
    const std::unique_ptr<Load> load = std::move(m_load);
    if (load->result && load->protocol->isCancelled())
        load->result = tl::unexpected(problem(KVProblemCode::Cancelled));
    const ContextGuard guard = load->opened ? std::move(load->contextGuard) : ContextGuard();
    const auto failure = install(load->result, load->params, guard);
    load->onEnd(failure);
    if (guard)
        guard(false);
}
