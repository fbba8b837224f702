// SPDX-License-Identifier: Apache-2.0
#include <viewer/GamutViewPrivate.h>

#include <QtGui/QGuiApplication>
#include <scene/Coordinates.h>

#include <cmath>

void KVGamutView::setLook(const QString& id, const KVGamutLook& look)
{
    ViewerScene* scene = d->scene();
    if (!scene)
        return;
    if (scene->isLoaded(id))
        scene->applyLook(id, look);
    else
        scene->awaitedLooks.insert(id, look);
}

KVGamutLook KVGamutView::look(const QString& id) const
{
    const ViewerScene* scene = d->scene();
    if (!scene)
        return {};
    if (scene->isLoaded(id))
        return scene->lookOf(id);
    return scene->awaitedLooks.value(id);
}

void KVGamutView::setState(const KVViewState& state)
{
    ViewerScene* scene = d->scene();
    if (!scene)
        return;
    KVGamut3DViewer& viewer = scene->viewer;
    viewer.setDisplayGrid(state.grid);
    viewer.setDisplayAxes(state.axes);
    viewer.setabPlane(state.plane);
    setClipping(state.clipping);
    viewer.setLightPos(kvSceneFromHost(state.light));
    viewer.setLightColor(state.lightColor);
    for (auto look = state.looks.begin(); look != state.looks.end(); ++look)
        setLook(look.key(), look.value());
    for (auto at = state.settings.begin(); at != state.settings.end(); ++at)
        scene->settings.insert(at.key(), at.value());
    setCamera(state.camera);
    scene->setTheme(state.theme); // last, and even if it is the present one: this draws the light, too
}

KVViewState KVGamutView::state() const
{
    const ViewerScene* scene = d->scene();
    if (!scene)
        return {};
    const KVGamut3DViewer& viewer = scene->viewer;
    KVViewState state;
    state.camera = camera();
    state.theme = theme();
    state.light = kvHostFromScene(viewer.lightPos());
    state.lightColor = viewer.lightColor();
    state.grid = viewer.displayGrid();
    state.axes = viewer.displayAxes();
    state.plane = viewer.abPlane();
    state.clipping = clipping();
    state.looks = scene->awaitedLooks;
    const QStringList ids = viewer.gamuts();
    for (const QString& id : ids)
        state.looks.insert(id, look(id));
    for (auto at = scene->settings.cbegin(); at != scene->settings.cend(); ++at)
        state.settings.insert(at.key(), at.value());
    return state;
}

void KVGamutView::setClipping(const std::optional<float>& lightness)
{
    ViewerScene* scene = d->scene();
    if (scene && (!lightness || std::isfinite(*lightness)))
        scene->viewer.setClipping(lightness.value_or(ViewerScene::nothingCut));
}

std::optional<float> KVGamutView::clipping() const
{
    const ViewerScene* scene = d->scene();
    if (!scene || !(scene->clipping < ViewerScene::nothingCut))
        return {};
    return scene->clipping;
}

void KVGamutView::setLight(const QVector3D& position, const QColor& color)
{
    ViewerScene* scene = d->scene();
    if (!scene)
        return;
    scene->viewer.setLightPos(kvSceneFromHost(position));
    scene->viewer.setLightColor(color);
    scene->widget->redraw(); // the light alone does not cause a frame
}

void KVGamutView::setTheme(const KVViewTheme& theme)
{
    ViewerScene* scene = d->scene();
    if (!scene)
        return;
    if (theme != scene->theme())
        scene->setTheme(theme);
    else if (!scene->viewer.isSettled())
        scene->widget->redraw(); // the viewer has not shown its background yet
}

KVViewTheme KVGamutView::theme() const
{
    return d->scene() ? d->scene()->theme() : KVViewTheme();
}

void KVGamutView::setThemeFollowsPalette(bool follow)
{
    if (d->themeFollowsPalette == follow)
        return;
    const QPointer<KVGamutView> self(this); // a slot of themeChanged() may destroy the view
    d->themeFollowsPalette = follow;
    if (follow) {
        qGuiApp->installEventFilter(d.get());
        setTheme(KVViewTheme::fromPalette(QGuiApplication::palette()));
    } else {
        qGuiApp->removeEventFilter(d.get());
    }
    if (self)
        Q_EMIT themeFollowsPaletteChanged();
}

bool KVGamutView::themeFollowsPalette() const
{
    return d->themeFollowsPalette;
}

bool KVGamutView::Private::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ApplicationPaletteChange && watched == qGuiApp && scene())
        scene()->setTheme(KVViewTheme::fromPalette(QGuiApplication::palette()));
    return false;
}
