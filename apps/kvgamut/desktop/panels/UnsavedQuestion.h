// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QMessageBox>

/// Asks what is to become of unsaved changes: Save, Discard or Cancel. Enter saves, Esc cancels.
class UnsavedQuestion : public QMessageBox
{
    Q_OBJECT
public:
    /// @param file of the session; empty if it has none
    UnsavedQuestion(const QString& file, QWidget* parent);
};
