// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutListModel.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QHash>
#include <QtCore/QSet>
#include <QtCore/QThreadPool>

#include <optional>

/// The numbers of the gamuts of a list, each compared with the active one. Each computed gamut has a row,
/// with the profile, intent and white point that its numbers belong to.
///
/// Comparisons are computed in the background, once for each pair of computed gamuts; until then their cells
/// show that they are being computed. The tool tip of a computed value shows its uncertainty. The gamut list
/// must outlive it; the destructor waits for the comparison in progress.
class ComparisonModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column : int
    {
        Name,
        Intent,
        White,           ///< white point of the device, L*, a*, b*
        Volume,          ///< dE76 cubed
        Uncertainty,     ///< the true volume lies within volume ± this
        Intersection,    ///< with the active gamut, dE76 cubed
        Union,           ///< with the active gamut, dE76 cubed
        CoversActive,    ///< share of the active gamut that this one covers
        CoveredByActive, ///< share of this gamut that the active one covers
        ColumnCount
    };
    enum Role : int
    {
        PlainRole = Qt::UserRole, ///< text for other programs: full precision, decimal point
        SortRole,                 ///< a number, or a text; unknown numbers come first
    };

    explicit ComparisonModel(GamutListModel& gamuts, QObject* parent = nullptr);
    ~ComparisonModel() override;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// The rows and columns that @p cells span as tab-separated text, a line for each row. With @p titles the
    /// first line has the titles of the columns.
    QString toTsv(const QModelIndexList& cells, bool titles) const;
    /// All cells as tab-separated text, with titles.
    QString toTsv() const;

    /// The title of the gamut that the others are compared with.
    QString activeTitle() const;

    /// Whether no comparison is pending.
    bool isComplete() const;

private:
    using Pair = std::pair<quint64, quint64>; ///< revisions of the first and the second gamut

    void refresh();
    void request(const GamutEntry& first, const GamutEntry& second);
    std::optional<KVGamut::ComparisonReport> comparison(const GamutEntry& entry) const;
    std::optional<double> uncertainty(const GamutEntry& entry, int column) const;
    std::optional<double> number(const GamutEntry& entry, int column) const;
    QString shownText(const GamutEntry& entry, int column) const;
    QString toolTip(const GamutEntry& entry, int column) const;
    QString plainText(const GamutEntry& entry, int column) const;
    QVariant shortTitle(int column) const;
    QVariant fullTitle(int column) const;
    const GamutEntry* active() const;

    GamutListModel& m_gamuts;
    QList<int> m_rows; ///< rows of the list that have a computed gamut
    QHash<quint64, KVGamut::Report> m_reports;
    QHash<Pair, KVGamut::ComparisonReport> m_comparisons;
    QSet<Pair> m_pending;
    QThreadPool m_pool;
};
