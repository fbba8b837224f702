// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutEntry.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QList>

#include <functional>

/// The gamuts of the window, in the order in which they were opened. Panels, menus and sessions read and
/// change them here; the loader and the viewer follow its signals.
///
/// If there are gamuts, one of them is active: the panel and the menu change it, the others are compared
/// with it, and points are classified by it as inside, edge or outside.
class GamutListModel : public QAbstractListModel
{
    Q_OBJECT
public:
    /// Roles of dataChanged() in addition to those that views use.
    enum Role : int
    {
        LookRole = Qt::UserRole, ///< GamutEntry::look
        SettingsRole,            ///< GamutEntry::settings, or the input; the gamut must be recomputed
        LoadingRole,             ///< GamutEntry::loading and progress
        GamutRole,               ///< GamutEntry::gamut
    };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    /// Qt::CheckStateRole is the visibility of the gamut.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    const GamutEntry& at(int row) const { return m_entries[row]; }
    const QList<GamutEntry>& entries() const { return m_entries; }
    /// The row of the gamut with this id; -1 if there is none.
    int rowOf(const QString& id) const;
    /// The colour that identifies the gamut in lists, drawings and the view: its single colour if it has one,
    /// else its key colour, which it keeps while other gamuts come and go: a lighter one on a dark @p ground.
    QColor signColor(int row, const QColor& ground = Qt::white) const;
    /// The same on the ground of lists and tables, in the palette of the application.
    QColor swatch(int row) const;

    /// @name Changes by the user
    /// @{

    /// Appends a gamut, which the loader then computes. @return its id
    QString add(const QString& input, const KVGamut::Settings& settings, const KVGamutLook& look);
    void remove(int row);
    void clear();
    /// Another opacity, or no surface, is the user's choice: then the opacity is no longer automatic.
    void setLook(int row, const KVGamutLook& look);
    /// Sets the opacity and makes it automatic.
    void setAutomaticOpacity(int row, float opacity);
    /// Requests a new computation with other settings; until it ends the current gamut stays.
    void setSettings(int row, const KVGamut::Settings& settings);
    /// The same with the same settings, because the input has changed.
    void computeAgain(int row);
    /// Makes @p entries the gamuts, in this order: removes others, and inserts those that are missing, which
    /// the loader then computes; those that stay get the settings and the look of their entry.
    void restore(const QList<GamutEntry>& entries, int activeRow);
    int activeRow() const { return m_activeRow; } ///< -1 without gamuts
    /// Shows only the active gamut, whatever the looks say. Looks and sessions do not change. Ends when the
    /// list becomes empty.
    void setSolo(bool solo);
    bool isSolo() const { return m_solo; }
    /// Whether the gamut is seen: visible by its look, or the active one of a solo.
    bool isSeen(int row) const { return m_solo ? row == m_activeRow : m_entries[row].look.visible; }
    void setActiveRow(int row);
    /// Applies @p change to the look of the active gamut. Without an active gamut nothing happens.
    void changeActiveLook(const std::function<void(KVGamutLook&)>& change);
    /// Applies @p change to the settings of the active gamut.
    void changeActiveSettings(const std::function<void(KVGamut::Settings&)>& change);
    /// @}

    /// @name Reports of the loader
    /// @{
    void setProgress(int row, float progress);
    void setGamut(int row, const KVGamut::GamutObject& gamut);
    /// The load ended without a gamut: the settings return to those of the current gamut. An entry that
    /// never had a gamut is removed; if it was active, the one that was active before becomes so again.
    void abandonLoad(int row);
    /// @}

Q_SIGNALS:
    void activeRowChanged(int row);
    void soloChanged(bool solo);

private:
    void showAgain();
    int freeKey() const;
    void insert(int row, const GamutEntry& entry);
    void adjust(int row, const GamutEntry& entry);
    void takeLook(int row, const KVGamutLook& look);
    void changed(int row, const QList<int>& roles);
    void retitle();
    QString toolTip(const GamutEntry& entry) const;

    QList<GamutEntry> m_entries;
    int m_activeRow = -1;
    bool m_solo = false;
    QString m_formerlyActive; ///< id of the gamut that was active before the present one
    int m_lastNumber = 0;
    quint64 m_lastRevision = 0;
};
