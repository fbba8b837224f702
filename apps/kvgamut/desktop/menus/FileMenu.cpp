// SPDX-License-Identifier: Apache-2.0
#include "FileMenu.h"

#include "MenuActions.h"
#include "desktop/files/RecentFiles.h"
#include "model/inputs/BuiltInNames.h"
#include "model/text/SafeText.h"

#include <QtCore/QFileInfo>

using MenuActions::add;
using MenuActions::addCheckable;

FileMenu::FileMenu(QWidget* parent) : QMenu(tr("&File"), parent)
{
    open = add(*this, "open", tr("&Open…"), QKeySequence::Open);
    addBuiltIn();
    addRecent();
    openPoints = add(*this, "openPoints", tr("Add &points or the pixels of a picture…"),
                     QKeySequence(QStringLiteral("Ctrl+P")));
    reload = add(*this, "reload", tr("&Load files again"), QKeySequence(QStringLiteral("Ctrl+R")));
    reloadAutomatically = addCheckable(*this, "reloadAutomatically", tr("Load changed files a&utomatically"),
                                       QKeySequence(QStringLiteral("Ctrl+Shift+R")));
    addSeparator();
    openSession =
        add(*this, "openSession", tr("R&estore session…"), QKeySequence(QStringLiteral("Ctrl+Shift+O")));
    saveSession = add(*this, "saveSession", tr("&Save session"), QKeySequence::Save);
    saveSessionAs =
        add(*this, "saveSessionAs", tr("Sa&ve session as…"), QKeySequence(QStringLiteral("Ctrl+Alt+S")));
    addSeparator();
    savePicture = add(*this, "savePicture", tr("Save p&icture…"), QKeySequence(QStringLiteral("Ctrl+E")));
    saveSection =
        add(*this, "saveSection", tr("Save sec&tion…"), QKeySequence(QStringLiteral("Ctrl+Shift+E")));
    savePage =
        add(*this, "savePage", tr("Save pa&ge to send…"), QKeySequence(QStringLiteral("Ctrl+Shift+S")));
    saveGamut =
        add(*this, "saveGamut", tr("Save gamut as &mesh…"), QKeySequence(QStringLiteral("Ctrl+Shift+G")));
    saveColors =
        add(*this, "saveColors", tr("Save t&able of colours…"), QKeySequence(QStringLiteral("Ctrl+Alt+E")));
    addSeparator();
    closeAll = add(*this, "closeAll", tr("&Close everything"), QKeySequence(QStringLiteral("Ctrl+W")));
    quit = add(*this, "quit", tr("&Quit"), QKeySequence(QStringLiteral("Ctrl+Q")));
}

void FileMenu::showContent(bool gamuts, bool points)
{
    for (QAction* action : {saveSession, savePicture, closeAll})
        action->setEnabled(gamuts || points);
    savePage->setEnabled(gamuts);
    saveGamut->setEnabled(gamuts);
    saveSection->setEnabled(gamuts);
    saveColors->setEnabled(points);
}

void FileMenu::addBuiltIn()
{
    QMenu* menu = addMenu(tr("Open &built-in profile"));
    const QStringList names = BuiltInNames::all();
    for (qsizetype i = 0; i < names.size(); ++i) {
        if (names[i] == BuiltInNames::bodies().first())
            menu->addSeparator();
        QAction* action = menu->addAction(names[i]);
        action->setObjectName(QStringLiteral("open") + names[i]);
        action->setShortcut(QKeySequence(QStringLiteral("Ctrl+%1").arg(i + 1)));
        connect(action, &QAction::triggered, this, [this, name = names[i]] { Q_EMIT builtInChosen(name); });
    }
}

void FileMenu::addRecent()
{
    m_recent = addMenu(tr("Open &recent"));
    connect(m_recent, &QMenu::aboutToShow, this, &FileMenu::showRecentFiles);
    connect(this, &QMenu::aboutToShow, m_recent,
            [this] { m_recent->setEnabled(!RecentFiles::list().isEmpty()); });
    showRecentFiles();
}

void FileMenu::showRecentFiles()
{
    m_recent->clear();
    const QStringList files = RecentFiles::list();
    for (qsizetype i = 0; i < files.size(); ++i) {
        QAction* action = m_recent->addAction(SafeText::shown(QFileInfo(files[i]).fileName()));
        action->setToolTip(SafeText::forToolTip(files[i]));
        action->setShortcut(QKeySequence(QStringLiteral("Alt+%1").arg(i + 1)));
        connect(action, &QAction::triggered, this, [this, file = files[i]] { Q_EMIT recentChosen(file); });
    }
}
