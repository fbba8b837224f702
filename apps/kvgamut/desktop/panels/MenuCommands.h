// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtGui/QAction>

class QMenuBar;

/// An action of the menus, with the names of the menus that lead to it.
struct MenuCommand
{
    QString path;             ///< such as "View › Look from"
    QString text;             ///< without the mark of the letter for Alt
    QPointer<QAction> action; ///< owned by its menu; null after the menu has changed

    /// Such as "Ctrl+E", in the language of the window; empty without a key.
    QString keys() const;
};

namespace MenuCommands {

/// All commands of the menus and their submenus, in the order of the menus.
QList<MenuCommand> of(const QMenuBar& menuBar);

QList<QAction*> actionsOf(const QMenuBar& menuBar);

/// Between the names in MenuCommand::path.
QString separator();

/// @p text without the mark of the letter for Alt.
QString withoutMnemonic(QString text);

} // namespace MenuCommands
