// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QTableView>

class ComparisonModel;

/// Shows a ComparisonModel; what is selected can be copied as tab-separated text.
class ComparisonTable : public QTableView
{
    Q_OBJECT
public:
    explicit ComparisonTable(ComparisonModel& model, QWidget* parent = nullptr);

    /// Selected cells to the clipboard; everything, with titles, when none is selected.
    void copy();
    /// Everything, with titles, to the clipboard.
    void copyAll();

    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    ComparisonModel& m_model;
};
