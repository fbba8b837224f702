// SPDX-License-Identifier: Apache-2.0
#include "ViewerBinding.h"

#include <algorithm>

ViewerBinding::ViewerBinding(GamutListModel& model, KVGamutView& view, QObject* parent)
    : QObject(parent), m_model(model), m_view(view)
{
    connect(&model, &QAbstractItemModel::dataChanged, this, &ViewerBinding::onDataChanged);
    connect(&view, &KVGamutView::themeChanged, this, [this] {
        for (int row = 0; row < m_model.rowCount(); ++row)
            if (m_model.at(row).hasGamut())
                applyLook(row);
    });
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
            show(row);
        else if (roles.contains(GamutListModel::LookRole) && entry.hasGamut())
            applyLook(row);
    }
}

void ViewerBinding::onRowsAboutToBeRemoved(const QModelIndex&, int first, int last)
{
    for (int row = first; row <= last; ++row) {
        m_shown.remove(m_model.at(row).id);
        m_view.remove(m_model.at(row).id);
    }
}

/// The outline on the ab plane has the key colour of the gamut, as in lists and legend.
void ViewerBinding::applyLook(int row)
{
    KVGamutLook look = m_model.at(row).look;
    look.visible = m_model.isSeen(row);
    look.outlineColor = m_model.signColor(row, m_view.theme().background);
    m_view.setLook(m_model.at(row).id, look);
}

void ViewerBinding::show(int row)
{
    const GamutEntry& entry = m_model.at(row);
    m_shown.remove(entry.id);
    applyLook(row);
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
