// SPDX-License-Identifier: Apache-2.0
#include "GamutSource.h"

#include "BuiltInProfiles.h"
#include "InputFile.h"
#include "PictureProfile.h"
#include "SavedGamut.h"
#include "model/problems/SystemReason.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace {

// Every ICC profile has this signature at this offset.
constexpr int iccSignatureOffset = 36;
constexpr QByteArrayView iccSignature("acsp");
constexpr int maxMarkerSize = iccSignatureOffset + iccSignature.size();
static_assert(maxMarkerSize >= SavedGamut::markerSize);

constexpr qint64 maxSavedGamutSize = qint64(1) << 30;

/// The first bytes of a regular file. Empty for anything else: a pipe or a device may never end.
QByteArray startOf(const QString& name)
{
    QFile file(name);
    if (!QFileInfo(name).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    return file.read(maxMarkerSize);
}

} // namespace

Result<GamutSource> GamutSource::open(const QString& name)
{
    const QByteArray builtIn = BuiltInProfiles::profile(name);
    if (!builtIn.isEmpty())
        return ofProfileData(name, builtIn);
    const QByteArray start = startOf(name);
    if (PictureProfile::isPicture(start))
        return ofPicture(name);
    if (SavedGamut::isSavedGamut(start))
        return ofSavedGamut(name);
    // the engine reports why the file cannot be read
    if (start.isEmpty() || start.mid(iccSignatureOffset) == iccSignature)
        return ofProfile(name,
                         KVProfilePtr(KVProfileCreateWithPath(name.toUtf8().constData()), KVProfileRelease));
    return failure(Problem(ProblemCode::UnknownFormat).about(name));
}

namespace {

/// Why the engine could not open the profile @p name. The operating system's reason becomes a cause with
/// a code, so that it can be translated.
Problem profileProblem(const QString& name)
{
    const KVProblem problem = KVProfileProblem().value_or(KVProblem());
    if (problem.code == KVProblemCode::FileUnreadable)
        return Problem(ProblemCode::CannotRead, {}, name)
            .because(SystemReason::ofErrno(problem.arguments.value(1).toInt()));
    return Problem(problem).about(name);
}

} // namespace

/// @param profile the result of the engine; if null, KVProfileProblem() says why
Result<GamutSource> GamutSource::ofProfile(const QString& name, const KVProfilePtr& profile)
{
    if (!profile)
        return failure(profileProblem(name));
    GamutSource source(name);
    source.m_profile = profile;
    return source;
}

Result<GamutSource> GamutSource::ofProfileData(const QString& name, const QByteArray& bytes)
{
    return ofProfile(name,
                     KVProfilePtr(KVProfileCreateWithData(bytes.constData(), static_cast<int>(bytes.size())),
                                  KVProfileRelease));
}

Result<GamutSource> GamutSource::ofPicture(const QString& name)
{
    const Result<QByteArray> icc = PictureProfile::read(name);
    if (!icc)
        return failure(icc.error().about(name));
    return ofProfileData(name, *icc);
}

Result<GamutSource> GamutSource::ofSavedGamut(const QString& name)
{
    const Result<SavedGamut> saved = readInput(name, maxSavedGamutSize).and_then([](const QByteArray& bytes) {
        return SavedGamut::read(bytes);
    });
    if (!saved)
        return failure(saved.error().about(name));
    GamutSource source(name);
    source.m_saved.deserialize(saved->gamut);
    source.m_savedProfile = saved->profile;
    if (!source.isSaved())
        return failure(Problem(source.m_saved.problem().value_or(KVProblem())).about(name));
    return source;
}

Result<KVGamut::GamutObject> GamutSource::compute(const KVGamut::Settings& settings,
                                                  KVCompletionProtocolPtr* protocol) const
{
    if (isSaved())
        return m_saved;
    KVGamut::GamutObject gamut;
    if (!gamut.init(m_profile, settings, protocol))
        return failure(Problem(gamut.problem().value_or(KVProblem())).about(m_name));
    return gamut;
}
