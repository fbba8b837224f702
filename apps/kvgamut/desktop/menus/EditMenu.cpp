// SPDX-License-Identifier: Apache-2.0
#include "EditMenu.h"

#include "MenuActions.h"

using MenuActions::add;

EditMenu::EditMenu(QUndoStack& steps, QWidget* parent) : QMenu(tr("&Edit"), parent)
{
    addStep("undo", steps.createUndoAction(this, tr("&Undo")), QKeySequence(QStringLiteral("Ctrl+Z")));
    addStep("redo", steps.createRedoAction(this, tr("R&edo")), QKeySequence(QStringLiteral("Ctrl+Shift+Z")));
    addSeparator();
    copyPicture =
        add(*this, "copyPicture", tr("Copy &picture"), QKeySequence(QStringLiteral("Ctrl+Shift+C")));
    copyTable = add(*this, "copyTable", tr("Copy &comparison"), QKeySequence(QStringLiteral("Ctrl+Shift+T")));
    copyColors =
        add(*this, "copyColors", tr("Copy &table of colours"), QKeySequence(QStringLiteral("Ctrl+Alt+C")));
    copyFinding =
        add(*this, "copyFinding", tr("Copy c&licked colour"), QKeySequence(QStringLiteral("Ctrl+I")));
    addSeparator();
    copyCamera = add(*this, "copyCamera", tr("Copy c&amera"), QKeySequence(QStringLiteral("Ctrl+K")));
    pasteCamera =
        add(*this, "pasteCamera", tr("Pa&ste camera"), QKeySequence(QStringLiteral("Ctrl+Shift+K")));
    copyFinding->setEnabled(false);
}

void EditMenu::showContent(bool gamuts, bool points)
{
    copyPicture->setEnabled(gamuts || points);
    copyTable->setEnabled(gamuts);
    copyColors->setEnabled(points);
}

void EditMenu::addStep(const char* name, QAction* action, const QKeySequence& key)
{
    action->setObjectName(QLatin1String(name));
    action->setShortcut(key);
    addAction(action);
}
