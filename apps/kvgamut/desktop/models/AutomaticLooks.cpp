// SPDX-License-Identifier: Apache-2.0
#include "AutomaticLooks.h"

#include "desktop/models/Threads.h"
#include "model/export/GamutPage.h"
#include "model/pictures/BodyLooks.h"

namespace {

float opacityFor(BodyLook look)
{
    switch (look) {
    case BodyLook::Translucent:
        return KVGamutLook::translucentOpacity;
    case BodyLook::Lines:
        return GamutPage::faint;
    case BodyLook::Solid:
        break;
    }
    return 1.0f;
}

QList<float> opacitiesOf(const QList<KVGamut::GamutObject>& gamuts)
{
    QList<float> opacities;
    for (const BodyLook look : bodyLooks(gamuts))
        opacities.append(opacityFor(look));
    return opacities;
}

QList<quint64> shownRevisions(const GamutListModel& gamuts)
{
    QList<quint64> revisions;
    for (int row = 0; row < gamuts.rowCount(); ++row)
        if (gamuts.at(row).hasGamut() && gamuts.isSeen(row))
            revisions.append(gamuts.at(row).revision);
    return revisions;
}

} // namespace

AutomaticLooks::AutomaticLooks(GamutListModel& gamuts, QObject* parent) : QObject(parent), m_gamuts(gamuts)
{
    m_pool.setMaxThreadCount(1);
    connect(&gamuts, &QAbstractItemModel::rowsRemoved, this, &AutomaticLooks::refresh);
    connect(&gamuts, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex&, const QModelIndex&, const QList<int>& roles) {
                if (roles.contains(GamutListModel::GamutRole) || roles.contains(GamutListModel::LookRole))
                    refresh();
            });
}

AutomaticLooks::~AutomaticLooks()
{
    m_pool.clear();
    m_pool.waitForDone();
}

void AutomaticLooks::refresh()
{
    const QList<quint64> shown = shownRevisions(m_gamuts);
    if (shown == m_asked)
        return;
    m_asked = shown;
    if (m_isRunning)
        m_isOutdated = true;
    else
        start();
}

void AutomaticLooks::start()
{
    QList<KVGamut::GamutObject> gamuts;
    for (const GamutEntry& entry : m_gamuts.entries())
        if (m_asked.contains(entry.revision))
            gamuts.append(entry.gamut);
    m_isRunning = true;
    m_isOutdated = false;
    Threads::run(m_pool, [gamuts] {
        return opacitiesOf(gamuts);
    }).then(this, [this](const QList<float>& opacities) {
        m_isRunning = false;
        if (m_isOutdated)
            start();
        else
            apply(opacities);
    });
}

void AutomaticLooks::apply(const QList<float>& opacities)
{
    for (int row = 0; row < m_gamuts.rowCount(); ++row) {
        const qsizetype place = m_asked.indexOf(m_gamuts.at(row).revision);
        if (place >= 0 && m_gamuts.at(row).automaticOpacity)
            m_gamuts.setAutomaticOpacity(row, opacities[place]);
    }
}
