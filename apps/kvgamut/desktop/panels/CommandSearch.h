// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "MenuCommands.h"

#include <QtCore/QObject>
#include <QtWidgets/QDialog>

class QLineEdit;
class QTreeWidget;

/// Finds a command by words of its name or of its menu, says its key, and runs it.
///
/// Up and Down choose, Enter runs, Esc closes. Commands that are not possible now are shown and cannot be
/// run.
class CommandSearch : public QDialog
{
    Q_OBJECT
public:
    explicit CommandSearch(QList<MenuCommand> commands, QWidget* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showMatches();
    void run();

    QList<MenuCommand> m_commands;
    QLineEdit* m_words;
    QTreeWidget* m_list;
};
