// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QTableView>

class ComparisonModel;

/// Shows a ComparisonModel. Selected cells can be copied as tab-separated text.
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
    ComparisonModel& m_model;
};
