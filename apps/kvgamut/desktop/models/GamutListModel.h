// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutEntry.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QList>

/// The gamuts of the window, in the order of their opening: the one place where what is shown is kept.
/// The panels and sessions read it and write to it; the loader and the viewer follow its signals.
///
/// One of the gamuts, if there is any, is the active one: the panel changes it, the others are compared
/// with it, and points are judged by it.
class GamutListModel : public QAbstractListModel
{
    Q_OBJECT
public:
    /// What dataChanged() says has changed, beside the roles of views.
    enum Role : int
    {
        LookRole = Qt::UserRole, ///< GamutEntry::look
        SettingsRole,            ///< GamutEntry::settings: another gamut is asked for
        LoadingRole,             ///< GamutEntry::loading and progress
        GamutRole,               ///< GamutEntry::gamut: another gamut is there
    };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    /// Qt::CheckStateRole: visibility.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    const GamutEntry& at(int row) const { return m_entries[row]; }
    const QList<GamutEntry>& entries() const { return m_entries; }
    /// -1 when there is none of this id.
    int rowOf(const QString& id) const;
    /// The colour that stands for the gamut where it needs one: the one that it was given, or else
    /// one of its own by its place in the list.
    QColor signColor(int row) const;

    /// @name What people ask for
    /// @{

    /// Appends a gamut that waits to be loaded. @return its id
    QString add(const QString& input, const GamutSettings& settings, const GamutLook& look);
    void remove(int row);
    void setLook(int row, const GamutLook& look);
    /// Asks for the gamut with other settings; the present one stays until the new one is there.
    void setSettings(int row, const GamutSettings& settings);
    int activeRow() const { return m_activeRow; } ///< -1: there is no gamut
    void setActiveRow(int row);
    /// @}

    /// @name What the loader reports
    /// @{
    void setProgress(int row, float progress);
    void setGamut(int row, const KVGamut::GamutObject& gamut);
    /// The load ended without a gamut: back to the settings of the one that is there. An entry that
    /// never had one is removed.
    void abandonLoad(int row);
    /// @}

Q_SIGNALS:
    void activeRowChanged(int row);

private:
    void changed(int row, const QList<int>& roles);
    void retitle();
    QString toolTip(const GamutEntry& entry) const;

    QList<GamutEntry> m_entries;
    int m_activeRow = -1;
    int m_lastNumber = 0;
    quint64 m_lastRevision = 0;
};
