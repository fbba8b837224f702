// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "commands/options/LookOptions.h"
#include "commands/options/ProfileOptions.h"
#include "model/inputs/GamutSource.h"

/// The gamuts of a command line in a viewer: starts their loads, dresses each gamut when it arrives and
/// says what failed.
///
/// Must not outlive the viewer, and the viewer's event loop must not run after it.
class GamutScene
{
public:
    GamutScene(KVGamut3DViewer& viewer, const ProfileOptions& profiles, const LookOptions& look);

    /// Starts to load everything that opens; says what does not.
    void load();
    /// Calls @p complete when the last load reports; not when nothing opened.
    void onComplete(std::function<void()> complete) { m_complete = std::move(complete); }
    /// Whether every load has reported.
    bool isComplete() const;
    int shownCount() const { return count(Shown); }
    int failedCount() const { return count(Failed); }

private:
    enum State
    {
        Waiting,
        Shown,
        Failed
    };
    struct Gamut
    {
        QString id;
        Result<GamutSource> source;
        State state;
    };

    int count(State state) const;
    void loaded(qsizetype position, bool ok);
    void dress();

    KVGamut3DViewer& m_viewer;
    const ProfileOptions& m_profiles;
    const LookOptions& m_look;
    std::function<void()> m_complete;
    QList<Gamut> m_gamuts; ///< in the order of the command line
};
