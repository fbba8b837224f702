// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QTableView>

class ComparisonModel;
class QSortFilterProxyModel;

/// Shows a ComparisonModel, sorted by the column whose title is clicked; a third click gives the order of the
/// list of gamuts. Selected cells can be copied as tab-separated text.
class ComparisonTable : public QTableView
{
    Q_OBJECT
public:
    explicit ComparisonTable(ComparisonModel& model, QWidget* parent = nullptr);

    /// Copies the selected cells; without a selection all cells, with titles.
    void copy();
    /// Copies all cells, with titles.
    void copyAll();

    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void sortNext(int column);

    ComparisonModel& m_model;
    QSortFilterProxyModel* m_sorted;
};
