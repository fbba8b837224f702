// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/ColorTable.h"

#include <QtWidgets/QWidget>

#include <optional>

class QComboBox;
class QLabel;
class QLineEdit;
class QTreeView;

/// The table of colours, with search, filter, and a line that says how many there are and how far the
/// computation is. Below it the panel of the files.
class ColorsPanel : public QWidget
{
    Q_OBJECT
public:
    /// @param files shown below the table, which becomes their owner
    ColorsPanel(ColorTable& table, const ColorChecks& checks, QWidget* files, QWidget* parent = nullptr);

    /// Selects the row of a colour. Filter and search are reset if they hide it.
    void select(qsizetype color);
    void deselect();
    /// Copies the selected rows with titles; all rows if none is selected.
    void copy() const;
    void copyAll() const;

Q_SIGNALS:
    /// The row with the focus; nullopt if there is none. Also when its results or the gamuts changed.
    void chosen(std::optional<qsizetype> color);
    void saveRequested();

private:
    void makeTable();
    void makeActions();
    QWidget* makeFilters();
    void rememberRows();
    void restoreRows();
    void announce();
    void showState();
    void sizeColumns();
    QList<int> selectedRows() const;

    ColorTable& m_table;
    const ColorChecks& m_checks;
    QTreeView* m_view;
    QLineEdit* m_search;
    QComboBox* m_zone;
    QLabel* m_state;
    QStringList m_titles; ///< of the columns that have their width
    /// @name While the rows change
    /// @{
    std::vector<qsizetype> m_selected;
    std::optional<qsizetype> m_current;
    int m_scrolled = 0;
    bool m_isRestoring = false;
    /// @}
};
