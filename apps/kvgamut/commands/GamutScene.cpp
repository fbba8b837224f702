// SPDX-License-Identifier: Apache-2.0
#include "GamutScene.h"

#include "commands/process/Say.h"

#include <algorithm>

GamutScene::GamutScene(KVGamut3DViewer& viewer, const ProfileOptions& profiles, const LookOptions& look)
    : m_viewer(viewer), m_profiles(profiles), m_look(look)
{
    m_look.applyTo(m_viewer);
}

void GamutScene::load()
{
    for (const QString& name : m_profiles.profiles) {
        const Result<GamutSource> source = GamutSource::open(name);
        // numbered, since the same profile may be named twice
        const QString id = QStringLiteral("%1 %2").arg(m_gamuts.size() + 1).arg(name);
        m_gamuts.append({id, source, source ? Waiting : Failed});
        if (!source)
            say(source.error());
    }
    for (qsizetype i = 0; i < m_gamuts.size(); ++i)
        if (m_gamuts[i].state == Waiting)
            m_viewer.load(m_gamuts[i].id, m_gamuts[i].source->loadParams(m_profiles.settings),
                          [this, i](const QString&, bool ok) { loaded(i, ok); });
}

bool GamutScene::isComplete() const
{
    return count(Waiting) == 0;
}

int GamutScene::count(State state) const
{
    return static_cast<int>(std::count_if(m_gamuts.cbegin(), m_gamuts.cend(),
                                          [state](const Gamut& gamut) { return gamut.state == state; }));
}

void GamutScene::loaded(qsizetype position, bool ok)
{
    m_gamuts[position].state = ok ? Shown : Failed;
    if (!ok)
        say(m_gamuts[position].source->compute(m_profiles.settings).error());
    dress(); // all of them: which one is the first to be seen may have changed
    if (isComplete() && m_complete)
        m_complete();
}

void GamutScene::dress()
{
    bool first = true;
    for (qsizetype i = 0; i < m_gamuts.size(); ++i) {
        const Gamut& gamut = m_gamuts[i];
        if (gamut.state == Failed)
            continue;
        if (gamut.state == Shown) {
            m_viewer.setDisplayMode(gamut.id, m_look.mode(i));
            m_viewer.changeGamutColor(gamut.id, m_look.color(i));
            m_viewer.changeGamutAlpha(gamut.id, m_look.alpha(i, first), 0);
            m_viewer.setGamutAmbientStrength(gamut.id, m_look.ambient);
            m_viewer.setDisplayGamut(gamut.id, m_look.surface);
            m_viewer.setDisplayProjection(gamut.id, m_look.projection);
            m_viewer.setDisplayPrimaries(gamut.id, m_look.primaries);
        }
        first = false;
    }
}
