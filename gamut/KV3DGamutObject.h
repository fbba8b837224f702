// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gamut/GamutLoader.h>
#include <gamut/GamutMeshes.h>
#include <gamut/GamutParams.h>
#include <gamut/GeometryMaker.h>
#include <gamut/HueLeaf.h>
#include <gamut/KVBackgroundTask.h>
#include <platform/KVVelmoraFramework.h>
#include <scene/KV3DObject.h>

#include <functional>
#include <memory>
#include <optional>

/// A colour gamut in the scene.
///
/// Empty until its first successful load. Then it has the children "Projection", "Gamut" (with the children
/// "Front" and "Wireframe"), "Primaries" and "PrimariesPoints"; the first section adds "Section". Opacity,
/// ambient strength and clipping are those of "Gamut" and do not affect the other children. Filled sections
/// are the children "Lid" and "PlaneLid" of "Gamut".
///
/// The vertices of "Wireframe" are made when mode 3 is set first, on a worker thread, or by a load in mode 3.
/// The object is not settled until they are there.
///
/// GUI thread only. The computation runs on a worker thread and returns its result as one value.
class KV3DGamutObject : public KV3DObject
{
public:
    /// Name, id and whether a gamut was installed.
    using LoadedFunction = std::function<void(QString, QString, bool)>;
    /// Makes the GL context current (true) and releases it (false).
    using ContextGuard = std::function<void(bool)>;

    /// How a load in the background ended. Nullopt: the gamut is installed.
    using EndFunction = std::function<void(const std::optional<KVProblem>&)>;

    explicit KV3DGamutObject(const QString& id);
    /// Cancels a running load and waits for it.
    ~KV3DGamutObject() override;

    /// Loads a gamut; see kvGamutRequest() for @p params.
    ///
    /// With @p onLoaded the computation runs in the background. A load in progress on this object is
    /// cancelled first; the call waits for its end, and it is not reported. onLoaded is called once on this
    /// thread, between guard(true) and guard(false), or without the guard if no profile could be opened.
    /// Without @p onLoaded everything happens inside the call, which does not throw. A failed load does not
    /// change the object.
    void load(const QHash<QString, QVariant>& params, LoadedFunction onLoaded, ContextGuard contextGuard);

    /// Loads any request in the background. @p onEnd is called once on this thread, whatever fails; not if
    /// the load is replaced or cancelLoad() called before, nor if this call throws std::bad_alloc. Callbacks,
    /// request and parameters are copied, called and destroyed on this thread only.
    /// @param params returned by params() after success
    /// @return for progress, and to cancel the load, which then ends with Cancelled
    KVCompletionProtocolPtr load(const GamutRequest& request, const GamutParams& params, EndFunction onEnd,
                                 ContextGuard contextGuard);

    /// Ends a load in the background without a report. Waits until the worker has noticed it.
    void cancelLoad();

    /// Installs a computed gamut. If there is a GL context, it must be current.
    void applyGamut(KVGamut::GamutObject gamut, const GamutMeshSet& meshes, const GamutParams& params);

    /// Whether the colour @p p (L*, a*, b*) is inside.
    bool isInside(const QVector3D& p) const;
    KVGamut::Comparison compare(const KV3DGamutObject& other) const;
    const KVGamut::GamutObject& gamut() const { return m_gamut; }
    /// The smallest and the largest L*, a* and b* of the gamut; zeros before the first load.
    struct Bounds
    {
        QVector3D low;
        QVector3D high;
    };
    const Bounds& bounds() const { return m_bounds; }
    /// Parameters of the last successful load.
    QHash<QString, QVariant> params() const { return m_params.values(); }

    /// The child "Gamut"; null before the first load.
    QSharedPointer<KV3DObject> solid() const;

    void setAlpha(float alpha, int durationMs) override;
    void applyAlpha(float alpha) override;
    float alpha() const override;
    /// Mode 3 shows the wireframe, every other mode the surface. A mode set before the first load is applied
    /// by that load. The wireframe appears as soon as its vertices are made.
    void setDisplayMode(int mode) override;
    void setAmbientStrength(float strength) override;
    float ambientStrength() const override;
    /// Shows the section at lightness @p L and hides the surface above it.
    void setClip(float L) override;
    /// Colour of the section. If there is one, it is made again, at lightness @p L.
    void setSectionColor(const QColor& color, float L);
    /// Fills the section at @p lightness, see KVSectionLid; nullopt: nothing is filled. Loads keep it.
    void setLid(const std::optional<float>& lightness);
    /// Shows another section, with its outline, inside and on the surface. Nullopt: none.
    void setPlane(const std::optional<float>& lightness);
    /// Shows the colours of one hue, with their outline, inside and on the surface. Nullopt: none.
    void setLeaf(const std::optional<HueLeaf>& leaf);
    /// Order of the projection's outline among those of other gamuts, see kvOutlineBias(). Set it before the
    /// first load.
    void setOutlineRank(int rank) { m_outlineRank = rank; }
    int outlineRank() const { return m_outlineRank; }
    /// Makes coarse triangles for the surface, see KV3DObject::showCoarse(), on a worker thread: now and
    /// after each load. Surfaces of few triangles get none.
    void setCoarseWanted(bool wanted);
    /// Number of triangles of a coarse surface, at most. The default grid makes 12,288.
    static constexpr int maxCoarseTriangles = 800;

private:
    class LoaderFunctor;
    struct Load;

    void loadNow(const QHash<QString, QVariant>& params, const ContextGuard& contextGuard);
    void finishLoad();
    /// Calls contextGuard(true) and installs @p loaded. Returns why nothing was installed.
    std::optional<KVProblem> install(const tl::expected<LoadedGamut, KVProblem>& loaded,
                                     const GamutParams& params, const ContextGuard& contextGuard);
    /// Creates what applyGamut() needs and an object that is not loaded yet does not have.
    void prepareChildren();
    QSharedPointer<KV3DObject> childFor(KV3DObject& parent, const QString& name, bool visible);
    QSharedPointer<KV3DObject> wireframe() const;
    /// The styles that the surface has, or will have after the first load.
    GamutStyles stylesForLoad() const;
    /// The lines of a section; created if missing.
    QSharedPointer<KV3DObject> sectionChild(const QString& name);
    void showLid(const QString& name, const std::optional<GeometryData>& geometry);
    void showLidAt(const QString& name, const std::optional<float>& lightness);
    void showPlaneOutline();
    void showLeaf();
    void showLeafOutline();
    void showFilledSections();
    void makeWireframeIfShown();
    void installWireframe(const GeometryData& geometry);
    void makeCoarseIfWanted();
    static void installCoarse(KV3DObject& front, const GeometryData& geometry);

    KVGamut::GamutObject m_gamut;
    Bounds m_bounds;
    GeometryMaker m_wireframeMaker{QStringLiteral("GamutWireframe")};
    GeometryMaker m_coarseMaker{QStringLiteral("CoarseGamut")};
    bool m_coarseWanted = false;
    bool m_hasWireframe = false;          ///< the vertices of the present gamut's wireframe are made
    QColor m_sectionColor{80, 80, 80, 1}; ///< the alpha is not used: opacity is a property of the object
    std::optional<float> m_lid;
    std::optional<float> m_plane;
    std::optional<HueLeaf> m_leaf;
    int m_outlineRank = 0;
    GamutParams m_params;
    std::unique_ptr<Load> m_load;                     ///< in progress; its worker uses it
    QSharedPointer<KVBackgroundTask<void*>> m_loader; ///< of the last load
};
