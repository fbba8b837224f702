// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QUndoStack>
#include <QtWidgets/QMenu>

/// The menu "Edit". The window connects its actions.
class EditMenu : public QMenu
{
    Q_OBJECT
public:
    EditMenu(QUndoStack& steps, QWidget* parent);

    /// Enables what can be copied of the gamuts and points that are shown.
    void showContent(bool gamuts, bool points);

    QAction* copyPicture;
    QAction* copyTable;
    QAction* copyColors;
    QAction* copyFinding; ///< disabled until the user clicks a colour
    QAction* copyCamera;
    QAction* pasteCamera;

private:
    void addStep(const char* name, QAction* action, const QKeySequence& key);
};
