// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutListModel.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QHash>
#include <QtCore/QThreadPool>
#include <QtCore/QTimer>

#include <optional>

/// The share of each gamut's volume that each other gamut covers: a row for the gamut that is covered, a
/// column for the one that covers. The tool tip states the uncertainty.
///
/// Follows the gamut list, which must outlive it. Computed in the background; the destructor waits for the
/// comparisons in progress.
class CoverageModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    explicit CoverageModel(const GamutListModel& gamuts, QObject* parent = nullptr);
    ~CoverageModel() override;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// All cells with titles, tab-separated; shares with a decimal point, 1 for all.
    QString toTsv() const;
    bool isComplete() const { return m_pending == 0; }

private:
    /// Of a row by a column.
    struct Share
    {
        double value = 0.0; ///< 0..1
        double uncertainty = 0.0;
    };
    using Pair = std::pair<quint64, quint64>; ///< revisions: covered, covering

    void refresh();
    std::optional<Share> share(int row, int column) const;

    const GamutListModel& m_gamuts;
    struct Item
    {
        quint64 revision = 0;
        QString title;
        QColor color;
    };
    QList<Item> m_items;
    QHash<Pair, Share> m_shares;
    qsizetype m_pending = 0;
    QThreadPool m_pool;
    QTimer m_soon; ///< combines the changes of one event loop iteration
};
