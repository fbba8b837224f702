// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/GamutListModel.h"
#include "model/problems/Problem.h"

#include <KVGamutView.h>

#include <QtCore/QHash>
#include <QtCore/QObject>

/// Shows the gamuts of a list in the viewer, with their looks. Both must outlive it.
class ViewerBinding : public QObject
{
    Q_OBJECT
public:
    ViewerBinding(GamutListModel& model, KVGamutView& view, QObject* parent = nullptr);

    /// Whether the viewer shows the latest computed revision of every gamut.
    bool isUpToDate() const;

Q_SIGNALS:
    /// A computed gamut cannot be shown, for example because of insufficient memory.
    void failed(const Problem& problem);

private:
    void onDataChanged(const QModelIndex& first, const QModelIndex& last, const QList<int>& roles);
    void onRowsAboutToBeRemoved(const QModelIndex& parent, int first, int last);
    void applyLook(int row);
    void show(int row);
    void onShown(const QString& id, quint64 revision, const std::optional<KVProblem>& problem);

    GamutListModel& m_model;
    KVGamutView& m_view;
    QHash<QString, quint64> m_shown; ///< revision of each gamut that the viewer shows, by id
};
