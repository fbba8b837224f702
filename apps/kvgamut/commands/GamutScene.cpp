// SPDX-License-Identifier: Apache-2.0
#include "GamutScene.h"

#include "commands/process/Say.h"
#include "model/pictures/PictureFile.h"
#include "model/text/SafeText.h"

#include <QtCore/QEventLoop>

#include <algorithm>

GamutScene::GamutScene(KVGamutView& view, const ProfileOptions& profiles, const LookOptions& look)
    : m_view(view), m_profiles(profiles), m_look(look)
{
    m_look.applyTo(m_view);
}

void GamutScene::load()
{
    open();
    applyLooks();
    QEventLoop loop;
    const auto ended = [this, &loop] {
        if (count(Waiting) == 0)
            loop.quit();
    };
    for (qsizetype i = 0; i < m_gamuts.size(); ++i)
        if (m_gamuts[i].state == Waiting)
            start(i, ended);
    if (count(Waiting) > 0)
        loop.exec();
}

void GamutScene::open()
{
    for (const QString& name : m_profiles.profiles) {
        const Result<GamutSource> source = GamutSource::open(name);
        // numbered, since the same profile may be named twice
        const QString id = QStringLiteral("%1 %2").arg(m_gamuts.size() + 1).arg(name);
        m_gamuts.append({id, source, source ? Waiting : Failed});
        if (!source)
            say(source.error());
    }
}

void GamutScene::start(qsizetype position, const std::function<void()>& ended)
{
    const Gamut& gamut = m_gamuts[position];
    const GamutSource& source = *gamut.source;
    const auto done = [this, position, ended](const std::optional<KVProblem>& problem) {
        m_gamuts[position].state = problem ? Failed : Shown;
        if (problem) {
            say(Problem(*problem).about(m_gamuts[position].source->name()));
            applyLooks(); // another gamut may now be the first
        }
        ended();
    };
    if (source.isSaved())
        m_view.show(gamut.id, source.savedGamut(), &m_context, done);
    else
        m_view.load(gamut.id, KVLoadRequest::fromProfile(source.profile(), m_profiles.settings), &m_context,
                    done);
}

int GamutScene::count(State state) const
{
    return static_cast<int>(std::count_if(m_gamuts.cbegin(), m_gamuts.cend(),
                                          [state](const Gamut& gamut) { return gamut.state == state; }));
}

QStringList GamutScene::profileLines() const
{
    QStringList lines;
    for (const Gamut& gamut : m_gamuts)
        if (gamut.state == Shown)
            lines.append(
                PictureNote::profileLine(SafeText::shown(gamut.source->name()), gamut.source->hash()));
    return lines;
}

void GamutScene::applyLooks()
{
    bool isFirst = true;
    for (qsizetype i = 0; i < m_gamuts.size(); ++i) {
        if (m_gamuts[i].state == Failed)
            continue;
        m_view.setLook(m_gamuts[i].id, m_look.lookOf(i, isFirst));
        isFirst = false;
    }
}
