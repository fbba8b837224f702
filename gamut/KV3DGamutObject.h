// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gamut/GamutLoader.h>
#include <gamut/GamutMeshes.h>
#include <gamut/KVBackgroundTask.h>
#include <platform/KVVelmoraFramework.h>
#include <scene/KV3DObject.h>

#include <functional>

/// A colour gamut in the scene.
///
/// Empty until its first successful load. Then it has the children "Projection", "Gamut" (with "Front"
/// and "Wireframe" below it), "Primaries" and "PrimariesPoints", and from the first section on
/// "Section". Opacity, ambient strength and clipping live on "Gamut"; the other children keep their own.
///
/// GUI thread, like every scene object; the computation runs on a worker and hands its result over as
/// one value.
class KV3DGamutObject : public KV3DObject
{
public:
    /// Name, id and whether a gamut was installed.
    using LoadedFunction = std::function<void(QString, QString, bool)>;
    /// Makes the GL context current (true) and releases it (false).
    using ContextGuard = std::function<void(bool)>;

    /// How a load in the background ended.
    struct LoadEnd
    {
        std::optional<KVProblem> problem; ///< nullopt: the gamut is installed
        bool thrown = false;              ///< the engine threw an exception
    };
    using EndFunction = std::function<void(const LoadEnd&)>;

    explicit KV3DGamutObject(const QString& id);
    /// Cancels a running load and waits for it.
    ~KV3DGamutObject() override;

    /// Loads a gamut from @p params: "Gamut" (a saved gamut), or the first usable of "ProfilePath",
    /// "ProfileData" and "Profile", with the settings in "AdditionnalParam".
    ///
    /// With @p onLoaded the computation runs in the background; a load in progress on this object is
    /// cancelled and waited for first, and only the newest reports. onLoaded is called once, on this
    /// thread, between guard(true) and guard(false), except where no profile could be opened: then
    /// without the guard. Without @p onLoaded everything happens inside the call.
    /// A failed load leaves the object as it was.
    void load(const QHash<QString, QVariant>& params, LoadedFunction onLoaded, ContextGuard contextGuard);

    /// The same in the background, for any request. @p onEnd is called once on this thread, also if the
    /// engine threw; not if the load is replaced or the object destroyed before. The callbacks and what
    /// they capture never leave this thread.
    /// @param params what params() answers after success
    /// @return progress of the load, and the means to cancel it; then it ends with Cancelled
    KVCompletionProtocolPtr load(const GamutRequest& request, const QHash<QString, QVariant>& params,
                                 EndFunction onEnd, ContextGuard contextGuard);

    /// Installs a computed gamut. The context must be current when there is one.
    void applyGamut(KVGamut::GamutObject gamut, const GamutMeshSet& meshes,
                    const QHash<QString, QVariant>& params);

    /// Whether the Lab colour @p p, read as (L*, a*, b*), lies inside.
    bool isInside(const QVector3D& p) const;
    KVGamut::Comparison compare(const KV3DGamutObject& other) const;
    const KVGamut::GamutObject& gamut() const { return m_gamut; }
    /// Parameters of the last successful load.
    QHash<QString, QVariant> params() const { return m_params; }

    /// The child "Gamut"; null before the first load.
    QSharedPointer<KV3DObject> solid() const;

    void setAlpha(float alpha, int durationMs) override;
    void applyAlpha(float alpha) override;
    float alpha() const override;
    /// 3 shows the wireframe, every other mode the solid surface. Set before the first load it is
    /// stored, and takes effect when the children are made.
    void setDisplayMode(int mode) override;
    void setAmbientStrength(float strength) override;
    float ambientStrength() const override;
    /// Cuts the gamut at lightness @p L: shows the section there and clips the surface above it.
    void setClip(float L) override;
    /// Colour of sections. One that is there already is cut anew at lightness @p L.
    void setSectionColor(const QColor& color, float L);

private:
    class LoaderFunctor;
    struct LoadOutcome;

    void loadNow(const QHash<QString, QVariant>& params, const ContextGuard& contextGuard);
    void finishLoad(const LoadOutcome& outcome);
    QSharedPointer<KV3DObject> childFor(KV3DObject& parent, const QString& name, bool visible);

    KVGamut::GamutObject m_gamut;
    QColor m_sectionColor{80, 80, 80, 1}; ///< the alpha is not drawn: objects have an opacity of their own
    QHash<QString, QVariant> m_params;
    QSharedPointer<KVBackgroundTask<void*>> m_loader;

    // of the load in progress
    EndFunction m_onEnd;
    ContextGuard m_contextGuard;
    QHash<QString, QVariant> m_loadingParams;
};
