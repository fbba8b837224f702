// SPDX-License-Identifier: Apache-2.0
#include <gamut/AbandonableCall.h>
#include <gamut/GamutLoader.h>

#include <algorithm>

namespace {

/// An attempt to open a profile.
struct Opened
{
    KVProfilePtr profile;
    std::optional<KVProblem> problem; ///< why there is no profile
};

// Both functions are called on the thread on which the profile was opened, because KVProfileProblem() returns
// the last problem of its thread.
Opened opened(KVProfile* created)
{
    Opened result{KVProfilePtr(created, KVProfileRelease), {}};
    if (!created)
        result.problem = KVProfileProblem();
    return result;
}

Opened openedData(const QByteArray& data)
{
    return opened(KVProfileCreateWithData(data.constData(), static_cast<int>(data.size())));
}

/// Nullopt: cancelled.
std::optional<Opened> openPath(const QString& path, const KVCompletionProtocolPtr& protocol)
{
    return kvCallAbandonably(
        [name = path.toUtf8()] { return opened(KVProfileCreateWithPath(name.constData())); }, protocol);
}

/// A copy that shares nothing with @p data, whose bytes may belong to the host. Nullopt: cancelled.
std::optional<QByteArray> ownBytes(const QByteArray& data, const KVCompletionProtocolPtr& protocol)
{
    constexpr qsizetype piece = qsizetype(1) << 20;
    QByteArray copy;
    copy.reserve(data.size());
    for (qsizetype at = 0; at < data.size(); at += piece) {
        if (protocol->isCancelled())
            return std::nullopt;
        copy.append(data.constData() + at, std::min(piece, data.size() - at));
    }
    return copy;
}

/// Nullopt: cancelled.
std::optional<Opened> openData(const QByteArray& data, const KVCompletionProtocolPtr& protocol)
{
    constexpr qsizetype quicklyOpened = qsizetype(1) << 20; // bytes that the engine copies and checks in 1 ms
    if (!protocol || data.size() <= quicklyOpened)
        return openedData(data);
    auto own = ownBytes(data, protocol);
    if (!own)
        return std::nullopt;
    return kvCallAbandonably([bytes = *std::move(own)] { return openedData(bytes); }, protocol);
}

tl::unexpected<KVProblem> failure(const std::optional<KVProblem>& problem, KVProblemCode otherwise)
{
    return tl::unexpected(problem.value_or(KVProblem{otherwise, {}, {}}));
}

KVGamut::Settings settingsOf(const QHash<QString, QVariant>& params)
{
    KVGamut::Settings settings;
    const auto values = params.value(QStringLiteral("AdditionnalParam")).toHash();
    settings.gridPoints = values.value(QStringLiteral("Link_GridPointNumber"), settings.gridPoints).toInt();
    settings.intent = static_cast<KVVMRenderType>(
        values.value(QStringLiteral("Link_ICCRendering"), static_cast<int>(settings.intent)).toInt());
    settings.blackPointCompensation =
        values.value(QStringLiteral("Link_blackPointCompensation"), settings.blackPointCompensation).toBool();
    settings.adaptation = static_cast<KVGamut::Adaptation>(
        values.value(QStringLiteral("Link_adaptation"), static_cast<int>(settings.adaptation)).toInt());
    return settings;
}

using GamutResult = tl::expected<KVGamut::GamutObject, KVProblem>;

GamutResult restored(const QHash<QString, QVariant>& saved, KVCompletionProtocolPtr* protocol)
{
    KVGamut::GamutObject gamut;
    gamut.deserialize(saved, protocol);
    if (gamut.referenceLab().size() != 3)
        return failure(gamut.problem(), KVProblemCode::NotASavedGamut);
    return gamut;
}

GamutResult checked(const KVGamut::GamutObject& gamut)
{
    if (gamut.mesh().isEmpty())
        return failure(gamut.problem(), KVProblemCode::NoFaces);
    return gamut;
}

GamutResult computed(const KVProfilePtr& profile, const KVGamut::Settings& settings,
                     KVCompletionProtocolPtr* protocol)
{
    KVGamut::GamutObject gamut;
    if (!gamut.init(profile, settings, protocol))
        return failure(gamut.problem(), KVProblemCode::NoVolume);
    return gamut;
}

GamutResult gamutOf(GamutRequest request, KVCompletionProtocolPtr* protocol)
{
    if (request.computed)
        return checked(*request.computed);
    if (request.saved)
        return restored(*request.saved, protocol);
    return computed(request.profile, request.settings, protocol);
}

} // namespace

GamutRequest kvGamutRequest(const QHash<QString, QVariant>& params)
{
    GamutRequest request;
    if (params.contains(QStringLiteral("Gamut"))) {
        request.saved = params;
        return request;
    }
    request.profilePath = params.value(QStringLiteral("ProfilePath")).toString();
    request.profileData = params.value(QStringLiteral("ProfileData")).toByteArray();
    request.profile = params.value(QStringLiteral("Profile")).value<KVProfilePtr>();
    request.settings = settingsOf(params);
    return request;
}

tl::expected<GamutRequest, KVProblem> kvOpenRequest(GamutRequest request,
                                                    const KVCompletionProtocolPtr& protocol)
{
    if (request.computed || request.saved)
        return request;
    const auto cancelled = [] { return tl::unexpected(KVProblem{KVProblemCode::Cancelled, {}, {}}); };
    std::optional<KVProblem> problem;
    KVProfilePtr profile;
    if (!request.profilePath.isEmpty()) {
        const auto attempt = openPath(request.profilePath, protocol);
        if (!attempt)
            return cancelled();
        profile = attempt->profile;
        problem = attempt->problem;
    }
    if (!profile) { // called even without data: the engine decides whether an empty profile is valid
        const auto attempt = openData(request.profileData, protocol);
        if (!attempt)
            return cancelled();
        profile = attempt->profile;
        if (!problem && !request.profileData.isEmpty())
            problem = attempt->problem;
    }
    if (profile)
        request.profile = profile;
    if (!request.profile)
        return failure(problem, KVProblemCode::NoSource);
    request.profilePath.clear();
    request.profileData.clear();
    return request;
}

tl::expected<LoadedGamut, KVProblem> kvLoadGamut(GamutRequest request, KVCompletionProtocolPtr* protocol)
{
    const KVCompletionProtocolPtr handle = protocol ? *protocol : KVCompletionProtocolPtr();
    const auto cancelled = [&handle] { return handle && handle->isCancelled(); };
    const auto asCancelled = [] { return tl::unexpected(KVProblem{KVProblemCode::Cancelled, {}, {}}); };

    const GamutStyles styles = request.styles;
    const QList<QRgb> vertexColors = request.vertexColors;
    const SurfaceValues values = std::move(request.values);
    auto gamut = gamutOf(std::move(request), protocol);
    if (!gamut)
        return cancelled() ? asCancelled() : tl::unexpected(gamut.error());
    LoadedGamut loaded{*gamut, kvGamutMeshes(*gamut, styles, cancelled, vertexColors, values)};
    if (cancelled())
        return asCancelled();
    if (handle)
        handle->setProgress(1.0f);
    return loaded;
}
