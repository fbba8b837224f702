// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Result.h"

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QString>

/// Something that has a gamut: an opened profile or a saved gamut.
///
/// A value; copies share what was opened, and may be used on different threads.
class GamutSource
{
public:
    /// Opens @p name: a built-in profile, or else a file. The content of the file decides what it is: an ICC
    /// profile, a PNG, JPEG or TIFF picture with an embedded profile, or a saved gamut.
    /// (A file with the name of a built-in profile is "./sRGB".)
    static Result<GamutSource> open(const QString& name);

    /// The input as it was named.
    QString name() const { return m_name; }

    /// Whether this is a gamut that was computed and saved before: settings have no effect on it.
    bool isSaved() const { return m_saved.faceCount() > 0; }
    /// The saved gamut; empty for a profile.
    const KVGamut::GamutObject& savedGamut() const { return m_saved; }
    /// The name of the profile that a saved gamut was computed from; empty where that is not known.
    QString savedProfile() const { return m_savedProfile; }

    /// The profile; null for a saved gamut.
    KVProfilePtr profile() const { return m_profile; }

    /// The gamut with primaries and outline, as the viewer computes it, or as it was saved. The problem names
    /// the input.
    Result<KVGamut::GamutObject> compute(const KVGamut::Settings& settings,
                                         KVCompletionProtocolPtr* protocol = nullptr) const;

private:
    explicit GamutSource(const QString& name) : m_name(name) {}

    static Result<GamutSource> ofProfile(const QString& name, const KVProfilePtr& profile);
    static Result<GamutSource> ofProfileData(const QString& name, const QByteArray& bytes);
    static Result<GamutSource> ofPicture(const QString& name);
    static Result<GamutSource> ofSavedGamut(const QString& name);

    QString m_name;
    KVProfilePtr m_profile;
    KVGamut::GamutObject m_saved;
    QString m_savedProfile;
};
