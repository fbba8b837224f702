// SPDX-License-Identifier: Apache-2.0
#include "GamutSource.h"

#include "BuiltInProfiles.h"
#include "PictureProfile.h"
#include "SavedGamut.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace {

// An ICC profile says so at this place.
constexpr int iccSignatureAt = 36;
constexpr QByteArrayView iccSignature("acsp");
constexpr int longestMarker = iccSignatureAt + iccSignature.size();
static_assert(longestMarker >= SavedGamut::markerSize);

constexpr qint64 largestSavedGamut = qint64(1) << 30;

/// The first bytes of a regular file; nothing of anything else, which may never come to its end.
QByteArray startOf(const QString& name)
{
    QFile file(name);
    if (!QFileInfo(name).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    return file.read(longestMarker);
}

} // namespace

GamutSource GamutSource::open(const QString& name)
{
    GamutSource source;
    source.m_name = name;
    const QByteArray builtIn = BuiltInProfiles::profile(name);
    if (!builtIn.isEmpty()) {
        source.openProfile(builtIn);
        return source;
    }
    const QByteArray start = startOf(name);
    if (PictureProfile::isPicture(start))
        source.openPicture();
    else if (SavedGamut::isSavedGamut(start))
        source.openSavedGamut();
    else if (start.isEmpty() || start.mid(iccSignatureAt) == iccSignature)
        source.openProfileFile(); // which also knows best why there is nothing to read
    else
        source.fail(QStringLiteral("this is neither an ICC profile, nor a PNG, JPEG or TIFF picture, "
                                   "nor a saved gamut"));
    return source;
}

void GamutSource::openProfile(const QByteArray& bytes)
{
    m_profile = KVProfilePtr(KVProfileCreateWithData(bytes.constData(), static_cast<int>(bytes.size())),
                             KVProfileRelease);
    if (!m_profile)
        fail(KVProfileError());
}

void GamutSource::openProfileFile()
{
    m_profile = KVProfilePtr(KVProfileCreateWithPath(m_name.toUtf8().constData()), KVProfileRelease);
    if (m_profile)
        return;
    const QString reason = KVProfileError();
    m_problem = reason.contains(m_name) ? reason : about(m_name, reason);
}

void GamutSource::openPicture()
{
    const PictureProfile picture = PictureProfile::read(m_name);
    if (!picture.problem.isEmpty())
        fail(picture.problem);
    else
        openProfile(picture.icc);
}

void GamutSource::openSavedGamut()
{
    QFile file(m_name);
    if (!file.open(QIODevice::ReadOnly)) {
        fail(QStringLiteral("cannot be read: %1").arg(file.errorString()));
        return;
    }
    const SavedGamut saved = SavedGamut::read(file.read(largestSavedGamut));
    if (!saved.problem.isEmpty()) {
        fail(saved.problem);
        return;
    }
    m_saved.deserialize(saved.gamut);
    m_savedProfile = saved.profile;
    if (!isSaved())
        fail(m_saved.reason());
}

QHash<QString, QVariant> GamutSource::loadParams(const GamutSettings& settings) const
{
    if (isSaved())
        return m_saved.serialize();
    const QHash<QString, QVariant> how{
        {QStringLiteral("Link_ICCRendering"), static_cast<int>(settings.intent)},
        {QStringLiteral("Link_blackPointCompensation"), settings.blackPointCompensation},
        {QStringLiteral("Link_GridPointNumber"), settings.gridPoints},
    };
    // the opened profile, not its path: what was looked at is what is drawn
    return {{QStringLiteral("Profile"), QVariant::fromValue(m_profile)},
            {QStringLiteral("AdditionnalParam"), how}};
}

KVGamut::GamutObject GamutSource::compute(const GamutSettings& settings,
                                          KVCompletionProtocolPtr* protocol) const
{
    if (isSaved())
        return m_saved;
    // as the viewer asks for them
    constexpr bool withDecoration = true;
    constexpr float maxEdge = 40.0f;
    constexpr int refinements = 2;
    KVGamut::GamutObject gamut;
    gamut.init(m_profile, settings.intent, settings.blackPointCompensation, withDecoration, maxEdge,
               settings.gridPoints, refinements, protocol);
    return gamut;
}

QString GamutSource::loadProblem(const GamutSettings& settings) const
{
    const QString reason = compute(settings).reason();
    return about(m_name, reason.isEmpty() ? QStringLiteral("no gamut could be computed") : reason);
}

QString GamutSource::about(const QString& name, const QString& reason)
{
    return QStringLiteral("'%1': %2").arg(name, reason);
}
