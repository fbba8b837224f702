// SPDX-License-Identifier: Apache-2.0
#include "ViewerBinding.h"

#include <algorithm>

ViewerBinding::ViewerBinding(GamutListModel& model, KVGamut3DViewer& viewer, QObject* parent)
    : QObject(parent), m_model(model), m_viewer(viewer)
{
    connect(&model, &QAbstractItemModel::dataChanged, this, &ViewerBinding::onDataChanged);
    connect(&model, &QAbstractItemModel::rowsAboutToBeRemoved, this, &ViewerBinding::onRowsAboutToBeRemoved);
}

bool ViewerBinding::isUpToDate() const
{
    const QList<GamutEntry>& entries = m_model.entries();
    return std::all_of(entries.begin(), entries.end(),
                       [this](const GamutEntry& entry) { return m_shown.value(entry.id) == entry.revision; });
}

void ViewerBinding::onDataChanged(const QModelIndex& first, const QModelIndex& last, const QList<int>& roles)
{
    for (int row = first.row(); row <= last.row(); ++row) {
        if (roles.contains(GamutListModel::GamutRole))
            show(row);
        if (roles.contains(GamutListModel::LookRole))
            changeLook(row);
    }
}

void ViewerBinding::onRowsAboutToBeRemoved(const QModelIndex&, int first, int last)
{
    for (int row = first; row <= last; ++row) {
        m_shown.remove(m_model.at(row).id);
        m_viewer.removeGamut(m_model.at(row).id);
    }
}

/// Hands the computed gamut to the viewer as a saved one: the viewer builds its meshes of it in the
/// background and does not compute it again.
void ViewerBinding::show(int row)
{
    const GamutEntry& entry = m_model.at(row);
    m_shown.remove(entry.id);
    m_viewer.load(entry.id, entry.gamut.serialize(),
                  [this, revision = entry.revision](const QString& id, bool ok) {
                      if (ok)
                          onShown(id, revision);
                  });
}

void ViewerBinding::onShown(const QString& id, quint64 revision)
{
    const int row = m_model.rowOf(id);
    if (row < 0)
        return;
    dress(m_model.at(row));
    m_shown.insert(id, revision);
    Q_EMIT shown(id);
}

/// The viewer cannot take a colour back: a gamut that is to show its own ones again is made anew.
void ViewerBinding::changeLook(int row)
{
    const GamutEntry& entry = m_model.at(row);
    if (entry.look.color.isValid() || !m_viewer.gamutColor(entry.id).isValid()) {
        dress(entry);
        return;
    }
    m_viewer.removeGamut(entry.id);
    if (entry.hasGamut())
        show(row);
}

void ViewerBinding::dress(const GamutEntry& entry)
{
    const KVGamutLook& look = entry.look;
    m_viewer.setGamutVisible(entry.id, look.visible);
    m_viewer.setDisplayMode(entry.id, look.mode);
    m_viewer.changeGamutColor(entry.id, look.color);
    m_viewer.changeGamutAlpha(entry.id, look.opacity, 0);
    m_viewer.setGamutAmbientStrength(entry.id, look.ambientStrength);
    m_viewer.setDisplayGamut(entry.id, look.surface);
    m_viewer.setDisplayProjection(entry.id, look.projection);
    m_viewer.setDisplayPrimaries(entry.id, look.primaries);
}
