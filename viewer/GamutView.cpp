// SPDX-License-Identifier: Apache-2.0
#include <viewer/GamutViewPrivate.h>

#include <viewer/LoadRequest.h>
#include <viewer/ViewerPrivate.h>

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

namespace {

/// Calls @p done as long as the view and the context object exist.
GamutLoads::EndFunction guarded(KVGamutView* view, QObject* context, KVGamutView::Done done)
{
    if (!done)
        return [](const GamutLoads::End&) {};
    return [view = QPointer<KVGamutView>(view), context = QPointer<QObject>(context ? context : view),
            done = std::move(done)](const GamutLoads::End& end) {
        if (view && context)
            done(end.problem);
    };
}

} // namespace

void KVGamutView::show(const QString& id, const KVGamut::GamutObject& gamut)
{
    show(id, gamut, this, {});
}

void KVGamutView::show(const QString& id, const KVGamut::GamutObject& gamut, QObject* context, Done done)
{
    GamutRequest request;
    request.computed = gamut;
    if (ViewerScene* scene = d->scene())
        scene->startLoad(id, request, {}, guarded(this, context, std::move(done)));
}

void KVGamutView::load(const QString& id, const KVLoadRequest& request)
{
    load(id, request, this, {});
}

void KVGamutView::load(const QString& id, const KVLoadRequest& request, QObject* context, Done done)
{
    ViewerScene* scene = d->scene();
    if (!scene)
        return;
    scene->settings.insert(id, request.settings);
    scene->startLoad(id, kvGamutRequest(request), kvParamsOf(request),
                     guarded(this, context, std::move(done)));
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
