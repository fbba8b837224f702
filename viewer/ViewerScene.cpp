// SPDX-License-Identifier: Apache-2.0
#include <viewer/ViewerScene.h>

#include <glwindow/ContextScope.h>
#include <viewer/FocusChain.h>
#include <viewer/GamutLook.h>
#include <viewer/GroupNames.h>

#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <utility>

ViewerScene::ViewerScene(KVGamut3DViewer& v)
    : viewer(v), widget(new KVGLWidget(&v)),
      loads({[this](const QString& id) { return findOrCreateGamut(id); },
             [this](const QString& id) { prepareLoaded(id); }, [this] { return contextGuard(); }}),
      events(v, *widget)
{
    QObject::connect(&events, &ViewerEvents::coarseWanted, &events, [this] { wantCoarse(); });
}

ViewerScene::~ViewerScene() = default;

QSharedPointer<KV3DObject> ViewerScene::group(const QString& id) const
{
    return widget->root().child(id);
}

QSharedPointer<KV3DObject> ViewerScene::findOrCreate(KV3DObject& parent, const QString& name,
                                                     const QString& id, bool atFront,
                                                     const std::function<void(KV3DObject&)>& prepare)
{
    auto object = parent.child(id);
    if (object)
        return object;
    object.reset(new KV3DObject(name, id));
    object->setId(id); // an empty set name is valid; the constructor would replace it by a UUID
    if (QOpenGLContext* context = widget->usableContext())
        object->initializeGL(context);
    if (prepare)
        prepare(*object);
    parent.addChild(object, atFront);
    return object;
}

void ViewerScene::setGroupVisible(const QString& id, bool visible)
{
    const auto object = group(id);
    if (!object)
        return;
    const ContextScope scope(widget);
    object->setVisible(visible);
}

bool ViewerScene::groupVisible(const QString& id) const
{
    const auto object = group(id);
    return object && object->isVisible();
}

void ViewerScene::clearGroup(const QString& id)
{
    const ContextScope scope(widget);
    widget->root().takeChild(id);
}

void ViewerScene::removeItem(const QString& groupId, const QString& id)
{
    const auto object = group(groupId);
    if (!object)
        return;
    const ContextScope scope(widget);
    object->takeChild(id);
}

QStringList ViewerScene::itemsOf(const QString& groupId) const
{
    QStringList ids;
    if (const auto object = group(groupId)) {
        const auto items = object->children();
        for (const auto& item : items)
            ids.append(item->id());
    }
    return ids;
}

// --- Gamuts ---------------------------------------------------------------------------------------

QSharedPointer<KV3DGamutObject> ViewerScene::gamut(const QString& id) const
{
    return widget->root().childAt({GroupNames::profiles(), id}).dynamicCast<KV3DGamutObject>();
}

QSharedPointer<KV3DGamutObject> ViewerScene::findOrCreateGamut(const QString& id)
{
    const ContextScope scope(widget);
    const auto profiles =
        findOrCreate(widget->root(), GroupNames::profiles(), GroupNames::profiles(), false, {});
    if (profiles->hasChild(id))
        return gamut(id);
    // Not create(), which crashes if there is not enough memory.
    const QSharedPointer<KV3DGamutObject> fresh(new KV3DGamutObject(id));
    fresh->setId(id); // an empty id is valid
    fresh->setSectionColor(m_theme.section, appliedClipping());
    applySectionTo(*fresh);
    fresh->setOutlineRank(freeOutlineRank());
    fresh->setCoarseWanted(m_coarseWanted);
    if (QOpenGLContext* context = widget->usableContext())
        fresh->initializeGL(context);
    profiles->addChild(fresh);
    return fresh;
}

void ViewerScene::wantCoarse()
{
    m_coarseWanted = true;
    const QStringList ids = itemsOf(GroupNames::profiles());
    for (const QString& id : ids)
        if (const auto object = gamut(id))
            object->setCoarseWanted(true);
}

int ViewerScene::freeOutlineRank() const
{
    std::array<bool, kvOrderedOutlines> used{};
    const QStringList ids = itemsOf(GroupNames::profiles());
    for (const QString& id : ids)
        if (const auto other = gamut(id))
            used[static_cast<std::size_t>(other->outlineRank())] = true;
    const auto* free = std::find(used.begin(), used.end(), false);
    return free == used.end() ? 0 : static_cast<int>(free - used.begin());
}

bool ViewerScene::isLoaded(const QString& id) const
{
    const auto object = gamut(id);
    return object && object->solid();
}

void ViewerScene::beginWithDefaultLook(const QString& id)
{
    if (!isLoaded(id))
        defaultLooks.insert(id);
}

void ViewerScene::loadNow(const QString& id, const QHash<QString, QVariant>& params)
{
    const ContextScope scope(widget);
    if (const auto object = findOrCreateGamut(id))
        object->load(params, {}, contextGuard());
    applyAwaitedLook(id);
}

void ViewerScene::removeGamut(const QString& id)
{
    awaitedLooks.remove(id);
    defaultLooks.erase(id);
    settings.remove(id);
    if (const auto object = gamut(id))
        object->cancelLoad(); // the object stays alive if the host holds it
    removeItem(GroupNames::profiles(), id);
    if (itemsOf(GroupNames::profiles()).isEmpty()) { // perhaps no further frame is drawn
        const ContextScope scope(widget);
        widget->root().releaseBatch();
    }
    loads.forget(id); // its signals may end the viewer
}

void ViewerScene::prepareLoaded(const QString& id)
{
    const ContextScope scope(widget);
    if (const auto loaded = gamut(id))
        applyClippingTo(*loaded); // after a failure too
    applyAwaitedLook(id);
}

void ViewerScene::applyAwaitedLook(const QString& id)
{
    if (!isLoaded(id))
        return;
    const bool fresh = defaultLooks.erase(id) > 0;
    if (awaitedLooks.contains(id))
        applyLook(id, awaitedLooks.take(id));
    else if (fresh) // all other defaults of the viewer are those of the default look
        viewer.setGamutAmbientStrength(id, KVGamutLook().ambientStrength);
}

void ViewerScene::applyLook(const QString& id, const KVGamutLook& look)
{
    kvApplyLook(viewer, id, look);
    const auto outline = widget->root().childAt({GroupNames::profiles(), id, GroupNames::projection()});
    if (!outline)
        return;
    const ContextScope scope(widget);
    const QColor color = look.outlineColor.isValid() ? look.outlineColor : look.color;
    if (color.isValid())
        outline->setColor(color);
    else
        outline->restoreColors();
}

KVGamutLook ViewerScene::lookOf(const QString& id) const
{
    KVGamutLook look = kvLookOf(viewer, id);
    const auto outline = widget->root().childAt({GroupNames::profiles(), id, GroupNames::projection()});
    if (outline && outline->color() != look.color)
        look.outlineColor = outline->color();
    return look;
}

KV3DGamutObject::ContextGuard ViewerScene::contextGuard() const
{
    return [window = QPointer<KVGLWidget>(widget),
            scope = std::make_shared<std::optional<ContextScope>>()](bool acquire) {
        if (!acquire)
            scope->reset();
        else if (window)
            scope->emplace(window.data());
    };
}

void ViewerScene::setChildVisible(const QString& gamutId, const QString& childId, bool visible)
{
    const auto object = widget->root().childAt({GroupNames::profiles(), gamutId, childId});
    if (!object)
        return;
    const ContextScope scope(widget);
    object->setVisible(visible);
}

bool ViewerScene::childVisible(const QString& gamutId, const QString& childId) const
{
    const auto object = widget->root().childAt({GroupNames::profiles(), gamutId, childId});
    return object && object->isVisible();
}

// --- Look -----------------------------------------------------------------------------------------

KVViewTheme ViewerScene::theme() const
{
    KVViewTheme theme = m_theme;
    theme.background = widget->background();
    return theme;
}

void ViewerScene::setTheme(const KVViewTheme& theme)
{
    m_theme = theme;
    widget->setBackground(theme.background);
    widget->redraw(); // setBackground() alone does not show with every camera
    viewer.addAxesAndGrid();
    colourSections();
    Q_EMIT events.themeChanged(); // last, because a slot may destroy the viewer
}

void ViewerScene::colourSections()
{
    const ContextScope scope(widget);
    const QStringList ids = itemsOf(GroupNames::profiles());
    for (const QString& id : ids) {
        if (const auto object = gamut(id))
            object->setSectionColor(m_theme.section, appliedClipping());
    }
}

void ViewerScene::setBackground(const QColor& color)
{
    const bool changed = color != widget->background();
    widget->setBackground(color);
    if (changed)
        Q_EMIT events.themeChanged();
}

void ViewerScene::leaveByTab(const QKeyEvent& event)
{
    if (!kvIsTab(event))
        return;
    // Shift will be released elsewhere. It is the only key whose state the widget stores.
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Shift, Qt::NoModifier);
    if (QGuiApplication::focusWindow() == &viewer)
        widget->keyReleaseEvent(&release);
    kvLeaveByTab(viewer, event);
}

float ViewerScene::aspect() const
{
    const QSize size = viewer.size();
    return size.isEmpty() ? 1.0f : static_cast<float>(size.width()) / static_cast<float>(size.height());
}
