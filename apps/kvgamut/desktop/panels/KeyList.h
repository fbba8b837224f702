// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "MenuCommands.h"

#include <QtWidgets/QDialog>

#include <functional>

class QKeySequenceEdit;
class QLabel;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

/// The keys of the program, as a list in a non-modal dialog. Those of commands can be changed.
class KeyList : public QDialog
{
    Q_OBJECT
public:
    /// Gives the keys that a command has at first.
    using DefaultKeys = std::function<QList<QKeySequence>(const QAction&)>;

    /// @param commands of the menus
    KeyList(QList<MenuCommand> commands, DefaultKeys defaultKeys, QWidget* parent = nullptr);

Q_SIGNALS:
    void keysChanged();

private:
    void addCommands();
    void addFixedKeys();
    QTreeWidgetItem* addGroup(const QString& title);
    QWidget* makeEditor();
    MenuCommand* current();
    void showCurrent();
    void showKeys();
    void set(const QList<QKeySequence>& keys);
    void setTyped();
    void setAllDefaults();

    QList<MenuCommand> m_commands;
    DefaultKeys m_defaultKeys;
    QTreeWidget* m_tree;
    QKeySequenceEdit* m_key;
    QPushButton* m_set;
    QPushButton* m_none;
    QPushButton* m_default;
    QLabel* m_answer;
};
