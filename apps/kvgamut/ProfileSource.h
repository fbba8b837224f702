#pragma once

#include "ProfileOptions.h"

/// An input of the command line: an opened profile, or the reason why there is none.
class ProfileSource
{
public:
    /// Opens @p name: a built-in profile, or else a file. (A file of a built-in name is "./sRGB".)
    static ProfileSource open(const QString& name);

    /// As the command line named it.
    QString name() const { return m_name; }

    bool isOpen() const { return !m_profile.isNull(); }
    /// Why it did not open, naming the input; one line.
    QString problem() const { return m_problem; }

    /// What KVGamut3DViewer::load() takes.
    QHash<QString, QVariant> loadParams(const ProfileOptions& options) const;

    /// Why no gamut can be computed of an open profile, naming the input. Computes it once more, since
    /// the viewer reports only that it failed.
    QString loadProblem(const ProfileOptions& options) const;

private:
    QString m_name;
    QString m_problem;
    QByteArray m_bytes; ///< of a built-in profile
    KVProfilePtr m_profile;
};
