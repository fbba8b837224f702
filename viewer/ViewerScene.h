// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>

#include <annotation/AxisScale.h>
#include <gamut/KV3DGamutObject.h>
#include <glwindow/KVGLWidget.h>
#include <scene/KV3DObject.h>
#include <viewer/GamutLoads.h>
#include <viewer/ViewerEvents.h>

#include <QtCore/QHash>
#include <QtCore/QMap>
#include <QtCore/QSharedPointer>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <cmath>
#include <functional>
#include <memory>
#include <set>

class QKeyEvent;

/// What a viewer and the views attached to it share: the GL window, the scene's groups and items, and
/// the loads in progress.
///
/// The scene is a tree of three levels: root, group (see GroupNames), item.
class ViewerScene
{
public:
    explicit ViewerScene(KVGamut3DViewer& viewer);
    ~ViewerScene();
    Q_DISABLE_COPY_MOVE(ViewerScene)

    /// Null if the root has no such group.
    QSharedPointer<KV3DObject> group(const QString& id) const;
    /// The child @p id of @p parent. If it is missing, it is created, prepared and added.
    QSharedPointer<KV3DObject> findOrCreate(KV3DObject& parent, const QString& name, const QString& id,
                                            bool atFront, const std::function<void(KV3DObject&)>& prepare);
    void setGroupVisible(const QString& id, bool visible);
    bool groupVisible(const QString& id) const;
    void clearGroup(const QString& id);
    void removeItem(const QString& groupId, const QString& id);
    QStringList itemsOf(const QString& groupId) const;

    /// The gamut @p id; null if there is none.
    QSharedPointer<KV3DGamutObject> gamut(const QString& id) const;
    /// The same; if it is missing, it is created. Null if the id belongs to an object of another kind.
    QSharedPointer<KV3DGamutObject> findOrCreateGamut(const QString& id);
    /// If the gamut is not loaded, its first load begins with the default look, unless another one was set.
    void beginWithDefaultLook(const QString& id);
    /// Loads a gamut inside the call. It keeps the look that it has.
    void loadNow(const QString& id, const QHash<QString, QVariant>& params);
    /// Also cancels its load, silently.
    void removeGamut(const QString& id);
    /// Applies clipping and awaited look to a gamut whose load has ended.
    void prepareLoaded(const QString& id);
    /// Changes the look of a gamut that is loaded.
    void applyLook(const QString& id, const KVGamutLook& look);
    KVGamutLook lookOf(const QString& id) const;
    /// Applies the look that was set before the gamut was loaded. Does nothing if it is not loaded yet.
    void applyAwaitedLook(const QString& id);
    /// A function that makes the GL context current on true and releases it on false.
    KV3DGamutObject::ContextGuard contextGuard() const;
    bool isLoaded(const QString& id) const;
    void setChildVisible(const QString& gamutId, const QString& childId, bool visible);
    bool childVisible(const QString& gamutId, const QString& childId) const;

    KVViewTheme theme() const;
    void setTheme(const KVViewTheme& theme);
    void setBackground(const QColor& color);

    void setAnnotations(const KVAnnotations& annotations);
    const KVAnnotations& annotations() const { return m_annotations; }
    void setSection(const KVSection& section);
    const KVSection& section() const { return m_section; }
    /// Applies clipping and filled sections to all gamuts.
    void applyClipping();

    LabBox scaleBox() const; ///< of the scales: around all visible gamuts

    /// The scene survives the loss of the OpenGL context while a view is attached.
    void attachView() { widget->setKeepsScene(++m_views > 0); }
    void detachView() { widget->setKeepsScene(--m_views > 0); }

    /// If the key is Tab: moves the focus out of the viewer. The viewer may be destroyed inside the call.
    void leaveByTab(const QKeyEvent& event);

    float aspect() const; ///< width of the window divided by its height; 1 if it is empty

    KVGamut3DViewer& viewer;
    KVGLWidget* const widget;                       ///< a child window of the viewer, which owns it
    static constexpr float nothingCut = 1000000.0f; ///< clipping that cuts nothing off
    float clipping = nothingCut;                    ///< as the host set it
    /// The clipping as it is applied: NaN cuts nothing off.
    float appliedClipping() const { return std::isnan(clipping) ? nothingCut : clipping; }
    float pointSize = 4.0f;
    QHash<QString, KVGamutLook> awaitedLooks; ///< of gamuts that are not loaded yet
    // Not QHash: it ends the process if there is not enough memory for an insertion.
    std::set<QString> defaultLooks;            ///< ids whose first load begins with the default look
    QMap<QString, KVGamut::Settings> settings; ///< of the last request for each id
    GamutLoads loads;
    ViewerEvents events;
    /// Whether the axes are not drawn, because there are scales. Their draw check shares it.
    const std::shared_ptr<bool> hidesAxes = std::make_shared<bool>(false);

private:
    int freeOutlineRank() const; ///< the lowest that no gamut has; 0 if there is none
    void colourSections();
    void wantCoarse();
    void applyClippingTo(KV3DGamutObject& gamut);
    void applySectionTo(KV3DGamutObject& gamut);

    int m_views = 0;
    bool m_coarseWanted = false; ///< frames have been slow
    KVAnnotations m_annotations;
    KVSection m_section;
    KVViewTheme m_theme; ///< without the background, which the widget holds
};
