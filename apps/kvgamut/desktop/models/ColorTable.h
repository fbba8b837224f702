// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ColorChecks.h"
#include "model/reports/Table.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QElapsedTimer>

#include <functional>
#include <optional>
#include <vector>

/// The colours of the point layer as a table: a row for each, with its zone and its distance for each gamut,
/// and what the active gamut makes of it. Sorted and filtered here: a proxy would take seconds for a hundred
/// thousand colours.
///
/// The zone is that of the view: by the distance in dE76 and the tolerance of the point layer.
class ColorTable : public QAbstractTableModel
{
    Q_OBJECT
public:
    /// The kinds of columns. Zone and De00 are there for each gamut, first for the active one, the others
    /// once.
    enum class Kind
    {
        Name,
        Lightness,
        A,
        B,
        Zone,
        De00,
        Nearest, ///< of the active gamut: the nearest colour by CIEDE2000
        Device,  ///< of the active gamut: its device values, in percent
        File,
    };
    enum Role : int
    {
        PlainRole = Qt::UserRole, ///< text for other programs: decimal point, no symbols
    };

    ColorTable(const ColorChecks& checks, const GamutListModel& gamuts, const PointLayer& points,
               QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Values that are unknown come last. Without a column (-1): the order of the files.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    /// The column by which the rows are sorted, wherever it is now; -1 if they are in the order of the files.
    int sortColumn() const;

    /// Shows only colours in this zone of the active gamut; nullopt: all.
    void setZone(const std::optional<Side>& zone);
    /// Shows only colours whose names contain @p words, in any case.
    void setSearch(const QString& words);

    /// The colour in a row, as ColorChecks numbers it.
    qsizetype colorOf(int row) const { return m_order[static_cast<std::size_t>(row)]; }
    /// -1 if it is not shown.
    int rowOf(qsizetype color) const;
    Kind kindOf(int column) const { return m_columns[column].kind; }
    /// The first column of this kind; -1 without a gamut.
    int columnOf(Kind kind) const;

    /// @p rows as tab-separated text with titles. No cell begins as a formula would.
    QString toTsv(const QList<int>& rows) const;
    /// All rows that are shown, to be printed as CSV.
    Table table() const;
    /// The word for a zone in both, as `kvgamut check` writes it.
    static QString plainZone(Side side);

private:
    struct Column
    {
        Kind kind = Kind::Name;
        quint64 revision = 0; ///< of its gamut; 0 without
        QString gamut;        ///< its title
    };

    void makeColumns();
    bool isSortColumn(const Column& column) const;
    void arrange();
    void update();
    std::vector<qsizetype> arranged() const;
    bool isShown(qsizetype color) const;
    bool followsChecks() const;
    std::vector<double> numbersOf(const std::vector<qsizetype>& colors) const;
    std::vector<double> ranksOfNames(const std::vector<qsizetype>& colors) const;
    double numberOf(const Column& column, qsizetype color) const;
    int compareLists(const Column& column, qsizetype first, qsizetype second) const;
    std::optional<Side> zoneOf(quint64 revision, qsizetype color) const;
    QString textOf(const Column& column, qsizetype color, bool plain) const;
    QString unknownText(bool plain) const;
    QVariant symbolOf(const Column& column, qsizetype color) const;
    QString toolTipOf(const Column& column, qsizetype color) const;
    QString titleOf(const Column& column) const;
    QVariant valueOf(const Column& column, qsizetype color) const;

    const ColorChecks& m_checks;
    const GamutListModel& m_gamuts;
    const PointLayer& m_points;
    QList<Column> m_columns;
    std::vector<qsizetype> m_order; ///< the colours that are shown
    Column m_sortColumn;            ///< stays the same when columns of gamuts come and go
    bool m_isSorted = false;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    std::optional<Side> m_zone;
    QString m_search;
    float m_tolerance = 0.0f;
    QElapsedTimer m_arranged; ///< since the order was last computed
    qint64 m_arrangeMs = 0;   ///< that this took
};
