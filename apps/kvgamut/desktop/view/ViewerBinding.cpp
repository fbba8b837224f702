// SPDX-License-Identifier: Apache-2.0
#include "ViewerBinding.h"

#include <algorithm>

ViewerBinding::ViewerBinding(GamutListModel& model, KVGamutView& view, QObject* parent)
    : QObject(parent), m_model(model), m_view(view)
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
        const GamutEntry& entry = m_model.at(row);
        if (roles.contains(GamutListModel::GamutRole))
            show(entry);
        else if (roles.contains(GamutListModel::LookRole) && entry.hasGamut())
            m_view.setLook(entry.id, entry.look);
    }
}

void ViewerBinding::onRowsAboutToBeRemoved(const QModelIndex&, int first, int last)
{
    for (int row = first; row <= last; ++row) {
        m_shown.remove(m_model.at(row).id);
        m_view.remove(m_model.at(row).id);
    }
}

void ViewerBinding::show(const GamutEntry& entry)
{
    m_shown.remove(entry.id);
    m_view.setLook(entry.id, entry.look);
    m_view.show(entry.id, entry.gamut, this,
                [this, id = entry.id, revision = entry.revision](const std::optional<KVProblem>& problem) {
                    onShown(id, revision, problem);
                });
}

void ViewerBinding::onShown(const QString& id, quint64 revision, const std::optional<KVProblem>& problem)
{
    const int row = m_model.rowOf(id);
    if (row < 0 || m_model.at(row).revision != revision)
        return; // removed or recomputed in the meantime
    m_shown.insert(id, revision);
    if (problem)
        Q_EMIT failed(Problem(*problem).about(m_model.at(row).input));
}
