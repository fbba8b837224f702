// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/GamutListModel.h"

#include <QtCore/QHash>
#include <QtCore/QObject>

/// Keeps a viewer showing what a list of gamuts says. Both must outlive it.
class ViewerBinding : public QObject
{
    Q_OBJECT
public:
    ViewerBinding(GamutListModel& model, KVGamut3DViewer& viewer, QObject* parent = nullptr);

    /// Whether the viewer shows every gamut that was computed, none of them on its way.
    bool isUpToDate() const;

Q_SIGNALS:
    /// The viewer shows the gamut as it was computed last.
    void shown(QString id);

private:
    void onDataChanged(const QModelIndex& first, const QModelIndex& last, const QList<int>& roles);
    void onRowsAboutToBeRemoved(const QModelIndex& parent, int first, int last);
    void show(int row);
    void onShown(const QString& id, quint64 revision);
    void changeLook(int row);
    void dress(const GamutEntry& entry);

    GamutListModel& m_model;
    KVGamut3DViewer& m_viewer;
    QHash<QString, quint64> m_shown; ///< which revision of each gamut the viewer shows
};
