// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/GamutListModel.h"

#include <QtWidgets/QWidget>

class ComparisonTable;
class QLabel;

/// The table of the comparison, and above it a sentence if the gamuts were computed with different intents:
/// their numbers then say less than they seem to.
class ComparisonPanel : public QWidget
{
    Q_OBJECT
public:
    /// Takes over @p table. The gamut list must outlive it.
    ComparisonPanel(ComparisonTable& table, GamutListModel& gamuts, QWidget* parent = nullptr);

private:
    void showNote();

    GamutListModel& m_gamuts;
    QLabel* m_note;
};
