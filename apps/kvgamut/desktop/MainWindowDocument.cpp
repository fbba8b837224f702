// SPDX-License-Identifier: Apache-2.0
#include "MainWindow.h"

#include "desktop/menus/FileMenu.h"
#include "desktop/panels/OfferBar.h"
#include "desktop/panels/UnsavedQuestion.h"

#include <QtCore/QLocale>
#include <QtGui/QCloseEvent>

// The session of the window as a document, and the files that it refers to.

// --- Unsaved changes ------------------------------------------------------------------------------

void MainWindow::connectDocument()
{
    connect(&m_document, &SessionDocument::changed, this, [this] {
        showPage();
        if (m_isProtected)
            m_autosave.update(m_document.isModified());
    });
    connect(&m_autosave, &Autosave::failed, this, &MainWindow::say);
}

void MainWindow::protectWork()
{
    m_isProtected = true;
    m_document.setUnchanged();
    offerLostWork();
}

/// Asks about unsaved changes before they are lost. @return whether the window may close, or show another
/// session
bool MainWindow::mayReplace()
{
    if (!m_isProtected || !m_document.isModified())
        return true;
    UnsavedQuestion question(m_document.file(), this);
    switch (question.exec()) {
    case QMessageBox::Save:
        return saveSession();
    case QMessageBox::Discard:
        return true;
    default:
        return false;
    }
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    event->setAccepted(mayReplace());
}

void MainWindow::offerLostWork()
{
    m_lost.reset(); // frees its lock
    m_lost = LostWork::newest();
    if (!m_lost)
        return;
    const QString time = QLocale().toString(m_lost->time(), QLocale::ShortFormat);
    const auto restore = [this] { restoreLostWork(); };
    const auto discard = [this] {
        m_lost->remove();
        offerLostWork();
    };
    m_offers->offer(QStringLiteral("lost"),
                    tr("A window ended unexpectedly. Its unsaved changes of %1 were kept.").arg(time),
                    {{QStringLiteral("restoreLost"), tr("Restore"), restore},
                     {QStringLiteral("discardLost"), tr("Discard"), discard}});
}

/// What is restored is unsaved again.
void MainWindow::restoreLostWork()
{
    if (mayReplace()) {
        restore(m_lost->work().session);
        m_document.begin(m_lost->work().document);
        m_lost->remove();
    }
    offerLostWork();
}

// --- Files that change on disk --------------------------------------------------------------------

void MainWindow::connectChanges()
{
    connect(m_fileMenu->reload, &QAction::triggered, &m_changes, &ChangedFiles::readAll);
    connect(m_fileMenu->reloadAutomatically, &QAction::toggled, &m_changes, &ChangedFiles::setAutomatic);
    connect(&m_changes, &ChangedFiles::changed, this, &MainWindow::offerChanges);
}

void MainWindow::offerChanges()
{
    const QString id = QStringLiteral("changed");
    if (m_changes.files().isEmpty())
        m_offers->withdraw(id);
    else
        m_offers->offer(id, tr("Changed on disk: %1").arg(m_changes.names()),
                        {{QStringLiteral("reloadChanged"), tr("Reload"), [this] { m_changes.readAgain(); }},
                         {QStringLiteral("ignoreChanged"), tr("Not now"), [this] { m_changes.ignore(); }}});
}
