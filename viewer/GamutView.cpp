// SPDX-License-Identifier: Apache-2.0
#include <viewer/GamutViewPrivate.h>

#include <glwindow/ContextScope.h>
#include <viewer/EnoughMemory.h>
#include <viewer/LoadRequest.h>
#include <viewer/ViewerPrivate.h>

#include <memory>
#include <optional>
#include <utility>

KVGamutView::KVGamutView(KVGamut3DViewer* viewer, QObject* parent)
    : QObject(parent), d(std::make_unique<Private>(*this))
{
    if (!viewer)
        return;
    d->attach(*viewer->d);
    connect(d->loads, &GamutLoads::loaded, this, &KVGamutView::loaded);
    connect(d->loads, &GamutLoads::failed, this, &KVGamutView::failed);
    connect(d->loads, &GamutLoads::progressChanged, this, &KVGamutView::progressChanged);
    connect(d->loads, &GamutLoads::loadingChanged, this, &KVGamutView::loadingChanged);
    const ViewerEvents* events = &viewer->d->events;
    connect(events, &ViewerEvents::themeChanged, this, &KVGamutView::themeChanged);
    connect(events, &ViewerEvents::cameraChanged, this, &KVGamutView::cameraChanged);
    connect(events, &ViewerEvents::settled, this, &KVGamutView::settled);
    connect(events, &ViewerEvents::drawableChanged, this, &KVGamutView::drawableChanged);
    connect(events, &ViewerEvents::released, d.get(), &Private::onReleased);
    connect(events, &ViewerEvents::moved, d.get(), &Private::onMoved);
}

KVGamutView::~KVGamutView() = default;

KVGamut3DViewer* KVGamutView::viewer() const
{
    return d->scene() ? &d->scene()->viewer : nullptr;
}

bool KVGamutView::isDrawable() const
{
    return d->scene() && !d->scene()->widget->drawingProblem();
}

std::optional<KVProblem> KVGamutView::drawingProblem() const
{
    return d->scene() ? d->scene()->widget->drawingProblem() : std::nullopt;
}

/// The function of a host that is called at the end of a load, as long as the view and the context object
/// exist.
class KVGamutView::Private::Report
{
public:
    /// Moves @p done, unless there is not enough memory and it throws.
    Report(KVGamutView* view, QObject* context, Done& done)
        : m_view(view), m_context(context ? context : view), m_done(std::make_shared<Done>(std::move(done)))
    {
    }

    void operator()(const GamutLoads::End& end) const
    {
        if (m_view && m_context && *m_done)
            (*m_done)(end.problem);
    }

private:
    QPointer<KVGamutView> m_view;
    QPointer<QObject> m_context;
    std::shared_ptr<Done> m_done;
};

template <typename Prepare>
void KVGamutView::Private::start(const QString& id, QObject* context, Done done, const Prepare& prepare)
{
    if (!scene())
        return;
    GamutRequest request;
    GamutParams params;
    std::optional<Report> report;
    GamutLoads::EndFunction onEnd;
    const bool ready = kvEnoughMemoryFor([&] {
        prepare(request, params);
        scene()->beginWithDefaultLook(id);
        report.emplace(&m_view, context, done);
        onEnd = *report;
    });
    if (ready)
        loads->start(id, request, params, std::move(onEnd));
    else if (report)
        loads->refuse(id, *report);
    else
        loads->refuse(id, [&done](const GamutLoads::End& end) {
            if (done)
                done(end.problem);
        });
}

void KVGamutView::show(const QString& id, const KVGamut::GamutObject& gamut)
{
    show(id, gamut, this, {});
}

void KVGamutView::show(const QString& id, const KVGamut::GamutObject& gamut, QObject* context, Done done)
{
    d->start(id, context, std::move(done),
             [&gamut](GamutRequest& request, GamutParams&) { request.computed = gamut; });
}

void KVGamutView::show(const QString& id, const KVGamut::GamutObject& gamut, const QList<QRgb>& vertexColors,
                       QObject* context, Done done)
{
    d->start(id, context, std::move(done), [&](GamutRequest& request, GamutParams&) {
        request.computed = gamut;
        request.vertexColors = vertexColors;
    });
}

void KVGamutView::showValues(const QString& id, const KVGamut::GamutObject& gamut,
                             const std::vector<float>& values, const QList<std::pair<float, QRgb>>& stops,
                             QObject* context, Done done)
{
    d->start(id, context, std::move(done), [&](GamutRequest& request, GamutParams&) {
        request.computed = gamut;
        request.values = {values, stops};
    });
}

void KVGamutView::load(const QString& id, const KVLoadRequest& request)
{
    load(id, request, this, {});
}

void KVGamutView::load(const QString& id, const KVLoadRequest& request, QObject* context, Done done)
{
    d->start(id, context, std::move(done), [&](GamutRequest& result, GamutParams& params) {
        result = kvGamutRequest(request);
        params = GamutParams([request] { return kvParamsOf(request); });
        d->scene()->settings.insert(id, request.settings);
    });
}

bool KVGamutView::isLoading() const
{
    return d->loads && d->loads->isLoading();
}

bool KVGamutView::isLoading(const QString& id) const
{
    return d->loads && d->loads->isLoading(id);
}

float KVGamutView::progress(const QString& id) const
{
    return d->loads ? d->loads->progress(id) : 1.0f;
}

void KVGamutView::cancel(const QString& id)
{
    if (d->loads)
        d->loads->cancel(id);
}

void KVGamutView::remove(const QString& id)
{
    if (ViewerScene* scene = d->scene())
        scene->removeGamut(id);
}

KVGamut::GamutObject KVGamutView::gamut(const QString& id) const
{
    const auto object = d->scene() ? d->scene()->gamut(id) : nullptr;
    return object ? object->gamut() : KVGamut::GamutObject();
}

void KVGamutView::setCoarseWhileMoving(bool coarse)
{
    if (const ViewerScene* scene = d->scene())
        scene->widget->setCoarseWhileMoving(coarse);
}

bool KVGamutView::coarseWhileMoving() const
{
    const ViewerScene* scene = d->scene();
    return scene && scene->widget->coarseWhileMoving();
}

void KVGamutView::releaseMemory()
{
    if (const ViewerScene* scene = d->scene()) {
        const ContextScope context(scene->widget);
        scene->widget->root().releaseBatch();
        scene->widget->releaseFrames();
    }
}
