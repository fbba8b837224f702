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
    QAction* reload;
    QAction* reloadAutomatically;
    QAction* openSession;
    QAction* saveSession;
    QAction* saveSessionAs;
    QAction* savePicture;
    QAction* saveSection;
    QAction* saveColors;
    QAction* saveGamut;
    QAction* savePage;
    QAction* closeAll;
    QAction* quit;

    /// Enables what can be done with the gamuts and points that are shown.
    void showContent(bool gamuts, bool points);
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
