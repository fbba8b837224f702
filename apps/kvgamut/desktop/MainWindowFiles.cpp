// SPDX-License-Identifier: Apache-2.0
#include "MainWindow.h"

#include "desktop/files/FileDialogs.h"
#include "desktop/files/FileKind.h"
#include "desktop/files/GamutFile.h"
#include "desktop/files/PageFile.h"
#include "desktop/files/RecentFiles.h"
#include "desktop/files/SessionFile.h"
#include "desktop/menus/FileMenu.h"
#include "desktop/models/Threads.h"
#include "desktop/panels/ClipControl.h"
#include "desktop/panels/PhotoMask.h"
#include "desktop/panels/PictureDialog.h"
#include "desktop/panels/PointPanel.h"
#include "desktop/view/CameraControl.h"
#include "desktop/view/TransparentPicture.h"
#include "model/export/OutputFile.h"
#include "model/inputs/BuiltInNames.h"
#include "model/inputs/InputName.h"
#include "model/pictures/CameraText.h"
#include "model/pictures/PictureFile.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QFutureWatcher>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QStatusBar>

#include <algorithm>

// The actions of the window that open, save and copy.

namespace {

/// Files by their absolute path, since the working folder may differ next time; built-in profiles by name.
QString permanentName(const QString& input)
{
    return BuiltInNames::all().contains(input) ? input : QFileInfo(input).absoluteFilePath();
}

/// In the format of the suffix; without one, as PNG.
std::optional<Problem> writePicture(const QString& file, const QImage& picture)
{
    const auto format = QFileInfo(file).suffix().isEmpty() ? PictureFormat::Png : PictureFile::formatOf(file);
    if (!format)
        return Problem(ProblemCode::PictureFormatUnknown).about(file);
    const Result<QByteArray> bytes = PictureFile::bytes(picture, *format, {});
    return bytes ? writeOutput(file, *bytes) : bytes.error();
}

} // namespace

// --- Opening --------------------------------------------------------------------------------------

/// The first gamut becomes the active one, which keys and panels change.
void MainWindow::open(const QStringList& files)
{
    const int firstNew = m_gamuts.rowCount();
    for (const QString& file : files) {
        switch (fileKind(file)) {
        case FileKind::Gamut:
            addGamut(file);
            break;
        case FileKind::Points:
            addPoints({file});
            break;
        case FileKind::Session:
            readSession(file);
            break;
        }
    }
    m_gamuts.setActiveRow(firstNew);
}

void MainWindow::addGamut(const QString& input)
{
    KVGamutLook look;
    look.opacity = m_gamuts.rowCount() == 0 ? 1.0f : KVGamutLook::translucentOpacity;
    addGamut(input, KVGamut::Settings(), look, true);
}

void MainWindow::addGamut(const QString& input, const KVGamut::Settings& general, const KVGamutLook& look,
                          bool automaticOpacity)
{
    // an input whose settings are unknown cannot be opened, which reports them
    const InputName named = InputName::of(input).value_or(InputName{input, {}});
    KVGamut::Settings settings = general;
    settings.intent = named.intent.value_or(general.intent);
    const QString name = permanentName(named.file);
    // a message about a missing file shows the name as the user gave it
    m_gamuts.add(named.partOf(QFileInfo::exists(name) ? name : named.file), settings, look);
    if (automaticOpacity)
        m_gamuts.setAutomaticOpacity(m_gamuts.rowCount() - 1, look.opacity);
    if (QFileInfo::exists(name))
        remember(name);
}

void MainWindow::addPoints(const QStringList& files)
{
    for (const QString& file : files) {
        m_points.open(QFileInfo(file).absoluteFilePath());
        remember(QFileInfo(file).absoluteFilePath());
    }
}

/// Rebuilds the menu of recent files after the current action, which may belong to that menu.
void MainWindow::remember(const QString& file)
{
    RecentFiles::add(file);
    QMetaObject::invokeMethod(m_fileMenu, &FileMenu::showRecentFiles, Qt::QueuedConnection);
}

void MainWindow::cancelLoading()
{
    cancelSession();
    m_loader.cancelAll();
}

void MainWindow::closeAll()
{
    if (!mayReplace())
        return;
    m_gamuts.clear();
    m_points.clear();
    m_finding.forget();
    m_document.begin({});
    m_document.setUnchanged();
}

/// Of the photo in a row of the points, for the active gamut.
void MainWindow::showMask(int row)
{
    const int active = m_gamuts.activeRow();
    if (active < 0 || !m_gamuts.at(active).hasGamut())
        return;
    auto* mask = new PhotoMask(m_points, row, m_gamuts.at(active), this);
    mask->setAttribute(Qt::WA_DeleteOnClose);
    connect(mask, &PhotoMask::failed, this, &MainWindow::say);
    mask->show();
}

// --- Dialogs --------------------------------------------------------------------------------------

void MainWindow::askForFiles()
{
    open(FileDialogs::filesToOpen(this));
}

void MainWindow::askForPoints()
{
    addPoints(FileDialogs::pointsToAdd(this));
}

void MainWindow::askForSession()
{
    const QString file = FileDialogs::sessionToRestore(this);
    if (!file.isEmpty())
        readSession(file);
}

bool MainWindow::askWhereToSaveSession()
{
    const QString file = FileDialogs::sessionToSave(this);
    return !file.isEmpty() && saveSession(file);
}

void MainWindow::askWhereToSavePicture()
{
    PictureDialog size(viewer().picture().size(), this);
    if (size.exec() != QDialog::Accepted)
        return;
    const QString file = FileDialogs::pictureToSave(this, titles());
    if (!file.isEmpty())
        savePicture(file, size.size(), size.isTransparent());
}

QStringList MainWindow::titles() const
{
    QStringList titles;
    for (const GamutEntry& entry : m_gamuts.entries())
        titles.append(entry.title);
    return titles;
}

void MainWindow::askWhereToSaveSection()
{
    const QString file = FileDialogs::sectionToSave(this);
    if (!file.isEmpty())
        saveSection(file);
}

void MainWindow::askWhereToSavePage()
{
    const QString file = FileDialogs::pageToSave(this);
    if (!file.isEmpty())
        savePage(file);
}

void MainWindow::askWhereToSaveColors()
{
    const QString file = FileDialogs::colorsToSave(this);
    if (!file.isEmpty())
        saveColors(file);
}

void MainWindow::askWhereToSaveGamut()
{
    const QString file = FileDialogs::gamutToSave(this);
    if (!file.isEmpty())
        saveGamut(file);
}

// --- Sessions -------------------------------------------------------------------------------------

Session MainWindow::session() const
{
    Session session;
    for (const GamutEntry& entry : m_gamuts.entries())
        session.gamuts.append({entry.input, entry.settings, entry.look, entry.automaticOpacity});
    session.active = std::max(0, m_gamuts.activeRow());
    session.view = m_area->view().state();
    session.view.looks.clear(); // stored with each gamut of the session instead
    session.view.settings.clear();
    session.lightness = m_clip->lightness();
    session.section = m_area->view().section().plane;
    session.hueLeaf = m_area->view().section().hue;
    session.sectionKind = m_slice->kind();
    session.sectionHue = m_slice->hue();
    session.sectionFixed = m_slice->isScaleFixed();
    session.sectionColors = m_slice->isColored();
    session.points = m_points.files();
    session.tolerance = m_points.tolerance();
    return session;
}

void MainWindow::restore(const Session& session)
{
    m_gamuts.clear();
    m_points.clear();
    for (const Session::Gamut& gamut : session.gamuts) {
        m_gamuts.add(gamut.input, gamut.settings, gamut.look);
        if (gamut.automaticOpacity)
            m_gamuts.setAutomaticOpacity(m_gamuts.rowCount() - 1, gamut.look.opacity);
    }
    m_gamuts.setActiveRow(session.active);
    for (const QString& file : session.points)
        m_points.open(file);
    m_points.setTolerance(session.tolerance);
    m_pointPanel->showTolerance();
    view().setState(session.view);
    view().setSection({true, session.section, session.hueLeaf});
    m_slice->setKind(session.sectionKind);
    m_slice->setHue(session.sectionHue);
    m_slice->setScaleFixed(session.sectionFixed);
    m_slice->setColored(session.sectionColors);
    m_clip->setLightness(session.lightness);
    keepCamera();
    showViewState();
}

bool MainWindow::saveSession(const QString& file)
{
    if (!isSaved(file, SessionFile::write(file, session())))
        return false;
    remember(QFileInfo(file).absoluteFilePath());
    m_document.setSaved(QFileInfo(file).absoluteFilePath());
    return true;
}

bool MainWindow::saveSession()
{
    return m_document.file().isEmpty() ? askWhereToSaveSession() : saveSession(m_document.file());
}

bool MainWindow::openSession(const QString& file)
{
    return restore(SessionFile::read(file), file);
}

void MainWindow::readSession(const QString& file)
{
    cancelSession();
    m_sessionTask = KVCompletionProtocol::createTask(QFileInfo(file).fileName());
    // A file may answer after the window is gone. QFuture::then() with the window as its context would end
    // the process then; a watcher goes with the window.
    auto* watcher = new QFutureWatcher<Result<Session>>(this);
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, file, task = m_sessionTask] {
        watcher->deleteLater();
        if (task->isCancelled())
            return;
        m_sessionTask.reset();
        restore(watcher->result(), file);
    });
    watcher->setFuture(Threads::run(*QThreadPool::globalInstance(), SessionFile::read, file, m_sessionTask));
}

void MainWindow::cancelSession()
{
    if (m_sessionTask)
        m_sessionTask->cancel();
    m_sessionTask.reset();
}

/// Shows the session of @p file, or why there is none.
bool MainWindow::restore(const Result<Session>& session, const QString& file)
{
    if (!session) {
        say(session.error());
        return false;
    }
    if (!mayReplace())
        return false;
    restore(*session);
    remember(QFileInfo(file).absoluteFilePath());
    m_document.begin(QFileInfo(file).absoluteFilePath());
    m_document.setUnchanged();
    return true;
}

// --- Pictures and the clipboard -------------------------------------------------------------------

bool MainWindow::savePicture(const QString& file, const QSize& size, bool transparent)
{
    const auto format = PictureFile::formatOf(file);
    const bool canBe =
        QFileInfo(file).suffix().isEmpty() || (format && PictureFile::hasTransparency(*format));
    return isSaved(file, writePicture(file, transparent && canBe ? transparentPicture(view(), size)
                                                                 : viewer().picture(size)));
}

bool MainWindow::saveSection(const QString& file)
{
    return isSaved(file, m_slice->save(file));
}

void MainWindow::savePage(const QString& file)
{
    const QList<GamutPage::Gamut> gamuts = PageFile::gamutsOf(m_gamuts, m_loader);
    writeInBackground(file, Threads::run(*QThreadPool::globalInstance(), PageFile::write, file, gamuts));
}

void MainWindow::saveGamut(const QString& file)
{
    const int row = m_gamuts.activeRow();
    if (row < 0 || !m_gamuts.at(row).hasGamut()) {
        say(Problem(ProblemCode::NoGamutToSave));
        return;
    }
    const auto write = [file, gamut = m_gamuts.at(row).gamut, input = m_gamuts.at(row).input] {
        return GamutFile::write(file, gamut, input);
    };
    writeInBackground(file, Threads::run(*QThreadPool::globalInstance(), write));
}

void MainWindow::saveColors(const QString& file)
{
    const auto write = [file, table = m_colors.table()] {
        return writeOutput(file, table.printed(Table::Format::Csv));
    };
    writeInBackground(file, Threads::run(*QThreadPool::globalInstance(), write));
}

void MainWindow::writeInBackground(const QString& file, const QFuture<std::optional<Problem>>& problem)
{
    ++m_unwritten;
    statusBar()->showMessage(tr("Writing %1…").arg(QDir::toNativeSeparators(file)));
    auto* watcher = new QFutureWatcher<std::optional<Problem>>(this); // see readSession()
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, file] {
        watcher->deleteLater();
        --m_unwritten;
        statusBar()->clearMessage();
        isSaved(file, watcher->result());
    });
    watcher->setFuture(problem);
}

/// Tells the user that @p file was saved, or why not.
bool MainWindow::isSaved(const QString& file, const std::optional<Problem>& failure)
{
    if (failure)
        say(*failure);
    else
        sayBriefly(tr("Saved %1").arg(QDir::toNativeSeparators(file)));
    return !failure;
}

void MainWindow::copyPicture()
{
    const QImage picture = viewer().picture();
    if (picture.isNull()) {
        say(Problem(ProblemCode::NoPictureToSave));
        return;
    }
    QGuiApplication::clipboard()->setImage(picture);
    sayBriefly(tr("Copied the picture: %1 x %2 pixels").arg(picture.width()).arg(picture.height()));
}

/// For a few seconds, in the status bar.
void MainWindow::sayBriefly(const QString& message)
{
    constexpr int duration = 5000; // ms
    statusBar()->showMessage(message, duration);
}

void MainWindow::copyFinding()
{
    QGuiApplication::clipboard()->setText(m_finding.text());
    sayBriefly(tr("Copied the clicked colour"));
}

void MainWindow::copyCamera()
{
    QGuiApplication::clipboard()->setText(CameraText::write(m_camera->camera()));
    sayBriefly(tr("Copied the camera"));
}

void MainWindow::pasteCamera()
{
    const auto camera = CameraText::read(QGuiApplication::clipboard()->text());
    if (!camera) {
        say(Problem(ProblemCode::NoCameraInClipboard, {CameraText::write(m_camera->camera())}));
        return;
    }
    m_camera->move(*camera);
}
