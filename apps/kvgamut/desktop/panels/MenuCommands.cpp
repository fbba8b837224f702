// SPDX-License-Identifier: Apache-2.0
#include "MenuCommands.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

namespace {

class MenuWords
{
    Q_DECLARE_TR_FUNCTIONS(MenuCommands)
};

void append(QList<MenuCommand>& commands, const QMenu& menu, const QString& path)
{
    const QList<QAction*> actions = menu.actions();
    for (QAction* action : actions) {
        const QString text = MenuCommands::withoutMnemonic(action->text());
        if (const QMenu* submenu = action->menu())
            append(commands, *submenu, path + MenuCommands::separator() + text);
        else if (!action->isSeparator())
            commands.append({path, text, action});
    }
}

} // namespace

QString MenuCommand::keys() const
{
    QStringList keys;
    const QList<QKeySequence> sequences = action->shortcuts();
    for (const QKeySequence& sequence : sequences)
        keys.append(sequence.toString(QKeySequence::NativeText));
    return keys.join(MenuWords::tr(" or "));
}

QList<MenuCommand> MenuCommands::of(const QMenuBar& menuBar)
{
    QList<MenuCommand> commands;
    const QList<QAction*> menus = menuBar.actions();
    for (const QAction* menu : menus)
        append(commands, *menu->menu(), withoutMnemonic(menu->text()));
    return commands;
}

QList<QAction*> MenuCommands::actionsOf(const QMenuBar& menuBar)
{
    QList<QAction*> actions;
    const QList<MenuCommand> commands = of(menuBar);
    for (const MenuCommand& command : commands)
        actions.append(command.action);
    return actions;
}

QString MenuCommands::separator()
{
    return QStringLiteral(" › ");
}

QString MenuCommands::withoutMnemonic(QString text)
{
    return text.remove(QLatin1Char('&'));
}
