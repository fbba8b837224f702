// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutSettings.h"

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QVariant>

/// Something that has a gamut, as a person names it - an opened profile or a saved gamut - or the
/// reason why there is none.
///
/// A value; copies share what was opened, and may be used on different threads.
class GamutSource
{
public:
    /// Opens @p name: a built-in profile, or else a file, of a kind that its content tells: an ICC
    /// profile, a PNG, JPEG or TIFF picture with a profile in it, or a saved gamut.
    /// (A file of a built-in name is "./sRGB".)
    static GamutSource open(const QString& name);

    /// As it was named.
    QString name() const { return m_name; }

    bool isOpen() const { return m_profile || isSaved(); }
    /// Why it did not open, naming the input; one line.
    QString problem() const { return m_problem; }

    /// Whether this is a gamut that was computed and saved before: settings have no effect on it.
    bool isSaved() const { return m_saved.faceCount() > 0; }
    /// What a saved gamut was computed of, as it was named then; empty where that is not known.
    QString savedProfile() const { return m_savedProfile; }

    /// The profile; null of a saved gamut, and when nothing opened.
    KVProfilePtr profile() const { return m_profile; }

    /// What KVGamut3DViewer::load() takes.
    QHash<QString, QVariant> loadParams(const GamutSettings& settings) const;

    /// The gamut itself, with all its decoration, computed as the viewer computes it, or as it was
    /// saved. Of what is not open, or has no gamut, an empty one, whose reason() does not name the input.
    KVGamut::GamutObject compute(const GamutSettings& settings,
                                 KVCompletionProtocolPtr* protocol = nullptr) const;

    /// Why no gamut can be computed of an open profile, naming the input. Computes it once more, since
    /// the viewer reports only that it failed.
    QString loadProblem(const GamutSettings& settings) const;

    /// @p reason as a line about the input called @p name.
    static QString about(const QString& name, const QString& reason);

private:
    void openProfile(const QByteArray& bytes);
    void openProfileFile();
    void openPicture();
    void openSavedGamut();
    void fail(const QString& reason) { m_problem = about(m_name, reason); }

    QString m_name;
    QString m_problem;
    KVProfilePtr m_profile;
    KVGamut::GamutObject m_saved;
    QString m_savedProfile;
};
