// SPDX-License-Identifier: Apache-2.0
#include "HelpMenu.h"

#include "MenuActions.h"

using MenuActions::add;

HelpMenu::HelpMenu(QWidget* parent) : QMenu(tr("&Help"), parent)
{
    keys = add(*this, "keys", tr("&Keys…"), QKeySequence(Qt::Key_H));
    keys->setShortcuts({QKeySequence(Qt::Key_H), QKeySequence(Qt::Key_Question), QKeySequence(Qt::Key_F1)});
    findCommand =
        add(*this, "findCommand", tr("&Find a command…"), QKeySequence(QStringLiteral("Ctrl+Shift+P")));
    findCommand->setShortcuts(
        {QKeySequence(QStringLiteral("Ctrl+Shift+P")), QKeySequence(QStringLiteral("/"))});
    tour = add(*this, "tour", tr("&Tour…"), QKeySequence(QStringLiteral("Shift+F1")));
    about = add(*this, "about", tr("&About kvgamut…"), QKeySequence(QStringLiteral("Ctrl+F1")));
    about->setMenuRole(QAction::AboutRole);
}
