// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QMenu>

/// The menu "File". The window connects its actions.
class FileMenu : public QMenu
{
    Q_OBJECT
public:
    explicit FileMenu(QWidget* parent);

    QAction* open;
    QAction* openPoints;
    QAction* openSession;
    QAction* saveSession;
    QAction* savePicture;
    QAction* saveSection;
    QAction* saveColors;
    QAction* savePage;
    QAction* closeAll;
    QAction* quit;

    /// Updates the list of recent files. Their shortcuts work before the menu is opened.
    void showRecentFiles();

Q_SIGNALS:
    void builtInChosen(const QString& name);
    void recentChosen(const QString& file);

private:
    void addBuiltIn();
    void addRecent();

    QMenu* m_recent;
};
