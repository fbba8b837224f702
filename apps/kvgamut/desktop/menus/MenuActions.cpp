// SPDX-License-Identifier: Apache-2.0
#include "MenuActions.h"

QAction* MenuActions::add(QMenu& menu, const char* name, const QString& text, const QKeySequence& key)
{
    QAction* action = menu.addAction(text);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(key);
    return action;
}

QAction* MenuActions::addCheckable(QMenu& menu, const char* name, const QString& text,
                                   const QKeySequence& key)
{
    QAction* action = add(menu, name, text, key);
    action->setCheckable(true);
    return action;
}
