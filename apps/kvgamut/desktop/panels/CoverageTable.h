// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/CoverageModel.h"

#include <QtWidgets/QDialog>

/// How much of each gamut each other one covers, as a table in a non-modal dialog.
class CoverageTable : public QDialog
{
    Q_OBJECT
public:
    /// @param gamuts which must outlive the dialog
    explicit CoverageTable(const GamutListModel& gamuts, QWidget* parent = nullptr);

private:
    void copy() const;

    CoverageModel m_model;
};
