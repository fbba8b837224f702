// SPDX-License-Identifier: Apache-2.0
#include "MainWindow.h"
#include "desktop/files/RecentFiles.h"
#include "desktop/language/ShownWords.h"
#include "desktop/panels/ClipControl.h"
#include "desktop/panels/ComparisonTable.h"
#include "desktop/panels/GamutPanel.h"
#include "desktop/panels/KeyList.h"
#include "desktop/panels/MessageBar.h"
#include "desktop/panels/PictureDialog.h"
#include "desktop/panels/SlicePanel.h"
#include "model/inputs/BuiltInProfiles.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSignalBlocker>
#include <QtGui/QAction>
#include <QtGui/QActionGroup>
#include <QtWidgets/QApplication>
#include <QtWidgets/QColorDialog>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

#include <array>

namespace {

constexpr float angleStep = 5.0f;
constexpr float opacityStep = 0.1f;
constexpr float narrowestAngle = 5.0f;
constexpr float widestAngle = 120.0f;

constexpr QRgb darkBackground = qRgb(0x20, 0x22, 0x25);
constexpr QRgb lightBackground = qRgb(0xf2, 0xf2, 0xf2);

/// As keyboards and menus of this language name it.
QString nameOf(const QKeySequence& key)
{
    return key.toString(QKeySequence::NativeText);
}

KVGamut3DViewer::DisplayMode modeAfter(KVGamut3DViewer::DisplayMode mode)
{
    switch (mode) {
    case KVGamut3DViewer::Flat:
        return KVGamut3DViewer::Wireframe;
    case KVGamut3DViewer::Wireframe:
        return KVGamut3DViewer::Smooth;
    default:
        return KVGamut3DViewer::Flat;
    }
}

} // namespace

QAction* MainWindow::addAct(QMenu* menu, const QString& name, const QString& text, const QKeySequence& key,
                            Act act)
{
    QAction* action = menu->addAction(text);
    action->setObjectName(name);
    action->setShortcut(key);
    connect(action, &QAction::triggered, this, [act = std::move(act)] { act(); });
    return action;
}

QAction* MainWindow::addSwitch(QMenu* menu, const QString& name, const QString& text, const QKeySequence& key,
                               Switch act)
{
    QAction* action = menu->addAction(text);
    action->setObjectName(name);
    action->setCheckable(true);
    action->setShortcut(key);
    connect(action, &QAction::triggered, this, [act = std::move(act)](bool on) { act(on); });
    return action;
}

QAction* MainWindow::actionNamed(const char* name) const
{
    return findChild<QAction*>(QLatin1String(name));
}

void MainWindow::makeMenus()
{
    makeFileMenu();
    makeEditMenu();
    makeGamutMenu();
    makeViewMenu();
    makeHelpMenu();
}

void MainWindow::makeFileMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&File"));
    addAct(menu, QStringLiteral("open"), tr("&Open…"), QKeySequence::Open, [this] { askForFiles(); });
    QMenu* builtIn = menu->addMenu(tr("Open &built-in profile"));
    const QStringList names = BuiltInProfiles::names();
    for (qsizetype i = 0; i < names.size(); ++i)
        addAct(builtIn, QStringLiteral("open") + names[i], names[i],
               QKeySequence(QStringLiteral("Ctrl+%1").arg(i + 1)),
               [this, name = names[i]] { addGamut(name); });
    m_recent = menu->addMenu(tr("Open &recent"));
    connect(m_recent, &QMenu::aboutToShow, this, &MainWindow::showRecentFiles);
    connect(menu, &QMenu::aboutToShow, this,
            [this] { m_recent->setEnabled(!RecentFiles::list().isEmpty()); });
    showRecentFiles();
    addAct(menu, QStringLiteral("openPoints"), tr("Add &points or the pixels of a picture…"),
           QKeySequence(QStringLiteral("Ctrl+P")), [this] { askForPoints(); });
    menu->addSeparator();
    addAct(menu, QStringLiteral("openSession"), tr("R&estore session…"),
           QKeySequence(QStringLiteral("Ctrl+Shift+O")), [this] { askForSession(); });
    addAct(menu, QStringLiteral("saveSession"), tr("&Save session…"), QKeySequence::Save,
           [this] { askWhereToSaveSession(); });
    menu->addSeparator();
    addAct(menu, QStringLiteral("savePicture"), tr("Save p&icture…"), QKeySequence(QStringLiteral("Ctrl+E")),
           [this] { askWhereToSavePicture(); });
    addAct(menu, QStringLiteral("saveSection"), tr("Save sec&tion…"),
           QKeySequence(QStringLiteral("Ctrl+Shift+E")), [this] { askWhereToSaveSection(); });
    menu->addSeparator();
    addAct(menu, QStringLiteral("closeAll"), tr("&Close everything"), QKeySequence(QStringLiteral("Ctrl+W")),
           [this] {
               while (m_gamuts.rowCount() > 0)
                   m_gamuts.remove(m_gamuts.rowCount() - 1);
               m_points.clear();
               forgetFinding();
           });
    addAct(menu, QStringLiteral("quit"), tr("&Quit"), QKeySequence(QStringLiteral("Ctrl+Q")),
           [this] { close(); });
}

void MainWindow::showRecentFiles()
{
    m_recent->clear();
    const QStringList files = RecentFiles::list();
    for (qsizetype i = 0; i < files.size(); ++i) {
        QAction* action = m_recent->addAction(QFileInfo(files[i]).fileName());
        action->setToolTip(files[i]);
        action->setShortcut(QKeySequence(QStringLiteral("Alt+%1").arg(i + 1)));
        connect(action, &QAction::triggered, this, [this, file = files[i]] { open({file}); });
    }
}

void MainWindow::makeEditMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&Edit"));
    addAct(menu, QStringLiteral("copyPicture"), tr("Copy &picture"),
           QKeySequence(QStringLiteral("Ctrl+Shift+C")), [this] { copyPicture(); });
    addAct(menu, QStringLiteral("copyTable"), tr("Copy &comparison"),
           QKeySequence(QStringLiteral("Ctrl+Shift+T")), [this] { m_table->copyAll(); });
    addAct(menu, QStringLiteral("copyFinding"), tr("Copy c&licked colour"),
           QKeySequence(QStringLiteral("Ctrl+I")), [this] { copyFinding(); });
    menu->addSeparator();
    addAct(menu, QStringLiteral("copyCamera"), tr("Copy c&amera"), QKeySequence(QStringLiteral("Ctrl+K")),
           [this] { copyCamera(); });
    addAct(menu, QStringLiteral("pasteCamera"), tr("Pa&ste camera"),
           QKeySequence(QStringLiteral("Ctrl+Shift+K")), [this] { pasteCamera(); });
}

void MainWindow::makeGamutMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&Gamut"));
    addAct(menu, QStringLiteral("nextGamut"), tr("&Next gamut"), QKeySequence(Qt::Key_N), [this] {
        if (m_gamuts.rowCount() > 0)
            m_gamuts.setActiveRow((m_gamuts.activeRow() + 1) % m_gamuts.rowCount());
    });
    addAct(menu, QStringLiteral("removeGamut"), tr("&Remove gamut"),
           QKeySequence(QStringLiteral("Ctrl+Backspace")), [this] {
               if (m_gamuts.activeRow() >= 0)
                   m_gamuts.remove(m_gamuts.activeRow());
           });
    menu->addSeparator();
    auto* intents = new QActionGroup(this);
    const std::array<std::pair<KVVMRenderType, Qt::Key>, 4> kinds{
        {{KVVMRenderPerceptual, Qt::Key_F5},
         {KVVMRenderRelativeColorimetric, Qt::Key_F6},
         {KVVMRenderSaturation, Qt::Key_F7},
         {KVVMRenderAbsoluteColorimetric, Qt::Key_F8}}};
    for (const auto& [intent, key] : kinds) {
        QAction* action =
            addSwitch(menu, QStringLiteral("intent%1").arg(static_cast<int>(intent)),
                      ShownWords::intent(intent), QKeySequence(key), [this, wished = intent](bool) {
                          changeActive([wished](GamutEntry& entry) { entry.settings.intent = wished; });
                      });
        intents->addAction(action);
    }
    addSwitch(menu, QStringLiteral("activeBlackPoint"), tr("&Black point compensation"),
              QKeySequence(Qt::Key_F9), [this](bool on) {
                  changeActive([on](GamutEntry& entry) { entry.settings.blackPointCompensation = on; });
              });
    menu->addSeparator();
    const auto lookSwitch = [&](const char* name, const QString& text, Qt::Key key, bool GamutLook::*member) {
        addSwitch(menu, QLatin1String(name), text, QKeySequence(key), [this, member](bool on) {
            changeActive([member, on](GamutEntry& entry) { entry.look.*member = on; });
        });
    };
    lookSwitch("activeVisible", tr("&Visible"), Qt::Key_V, &GamutLook::visible);
    lookSwitch("activeSurface", tr("&Surface"), Qt::Key_S, &GamutLook::surface);
    lookSwitch("activeProjection", tr("Pro&jection"), Qt::Key_J, &GamutLook::projection);
    lookSwitch("activePrimaries", tr("&Primaries"), Qt::Key_I, &GamutLook::primaries);
    addAct(menu, QStringLiteral("nextMode"), tr("Smooth, flat, &wireframe"), QKeySequence(Qt::Key_M),
           [this] { changeActive([](GamutEntry& entry) { entry.look.mode = modeAfter(entry.look.mode); }); });
    addAct(menu, QStringLiteral("moreOpaque"), tr("More &opaque"), QKeySequence(Qt::Key_Period), [this] {
        changeActive(
            [](GamutEntry& entry) { entry.look.opacity = std::min(1.0f, entry.look.opacity + opacityStep); });
    });
    addAct(menu, QStringLiteral("lessOpaque"), tr("&Less opaque"), QKeySequence(Qt::Key_Comma), [this] {
        changeActive(
            [](GamutEntry& entry) { entry.look.opacity = std::max(0.0f, entry.look.opacity - opacityStep); });
    });
    addAct(menu, QStringLiteral("gamutColor"), tr("&Colour…"), QKeySequence(QStringLiteral("Ctrl+L")),
           [this] { m_gamutPanel->chooseColor(); });
    addAct(menu, QStringLiteral("ownGamutColors"), tr("Own colo&urs"),
           QKeySequence(QStringLiteral("Ctrl+Shift+L")),
           [this] { changeActive([](GamutEntry& entry) { entry.look.color = QColor(); }); });
}

void MainWindow::makeViewMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&View"));
    addAct(menu, QStringLiteral("reset"), tr("&Reset camera"), QKeySequence(Qt::Key_R),
           [this] { resetCamera(); });
    addAct(menu, QStringLiteral("frame"), tr("&Frame the gamuts"), QKeySequence(Qt::Key_F),
           [this] { frameGamuts(); });
    QMenu* from = menu->addMenu(tr("&Look from"));
    addAct(from, QStringLiteral("fromTop"), tr("&Top"), QKeySequence(Qt::Key_T), [this] {
        m_cameraChosen = true;
        viewer().resetCamera(KVGamut3DViewer::Top, 300);
    });
    addAct(from, QStringLiteral("fromBottom"), tr("&Bottom"), QKeySequence(Qt::Key_B), [this] {
        m_cameraChosen = true;
        viewer().resetCamera(KVGamut3DViewer::Bottom, 300);
    });
    addAct(from, QStringLiteral("fromFront"), tr("&Front: a* across"), QKeySequence(Qt::Key_1), [this] {
        lookFrom({0, 0, -1});
    });
    addAct(from, QStringLiteral("fromBack"), tr("Bac&k"), QKeySequence(Qt::Key_2), [this] {
        lookFrom({0, 0, 1});
    });
    addAct(from, QStringLiteral("fromRight"), tr("&Right: b* across"), QKeySequence(Qt::Key_3), [this] {
        lookFrom({0, 1, 0});
    });
    addAct(from, QStringLiteral("fromLeft"), tr("&Left"), QKeySequence(Qt::Key_4), [this] {
        lookFrom({0, -1, 0});
    });
    addSwitch(menu, QStringLiteral("orthogonal"), tr("&Orthogonal"), QKeySequence(Qt::Key_O),
              [this](bool on) { viewer().setOrthogonalProjection(on, 0); });
    addAct(menu, QStringLiteral("wider"), tr("&Wider angle"), QKeySequence(Qt::Key_W), [this] {
        viewer().setViewingAngle(std::min(widestAngle, viewer().viewingAngle() + angleStep), 0);
    });
    addAct(menu, QStringLiteral("narrower"), tr("&Narrower angle"), QKeySequence(QStringLiteral("Shift+W")),
           [this] {
               viewer().setViewingAngle(std::max(narrowestAngle, viewer().viewingAngle() - angleStep), 0);
           });
    menu->addSeparator();
    addSwitch(menu, QStringLiteral("cut"), tr("&Cut at the lightness"), QKeySequence(Qt::Key_C),
              [this](bool on) { m_clip->setCutting(on); });
    addAct(menu, QStringLiteral("raiseCut"), tr("Lighter section"), QKeySequence(QStringLiteral("Ctrl+Up")),
           [this] { m_clip->step(1); });
    addAct(menu, QStringLiteral("lowerCut"), tr("Darker section"), QKeySequence(QStringLiteral("Ctrl+Down")),
           [this] { m_clip->step(-1); });
    menu->addSeparator();
    makeLookMenu(menu);
    menu->addSeparator();
    int number = 0;
    const auto docks = findChildren<QDockWidget*>();
    for (QDockWidget* dock : docks) {
        QAction* action = dock->toggleViewAction();
        action->setShortcut(QKeySequence(QStringLiteral("Ctrl+Alt+%1").arg(++number)));
        menu->addAction(action);
    }
    addSwitch(menu, QStringLiteral("fullScreen"), tr("F&ull screen"), QKeySequence(Qt::Key_F11),
              [this](bool on) { setWindowState(windowState().setFlag(Qt::WindowFullScreen, on)); });
}

void MainWindow::makeLookMenu(QMenu* menu)
{
    addSwitch(menu, QStringLiteral("axes"), tr("&Axes"), QKeySequence(Qt::Key_X),
              [this](bool on) { viewer().setDisplayAxes(on); });
    addSwitch(menu, QStringLiteral("gridLines"), tr("&Grid"), QKeySequence(Qt::Key_G),
              [this](bool on) { viewer().setDisplayGrid(on); });
    addSwitch(menu, QStringLiteral("plane"), tr("ab &plane"), QKeySequence(Qt::Key_P),
              [this](bool on) { viewer().setabPlane(on); });

    QMenu* background = menu->addMenu(tr("&Background"));
    auto* grounds = new QActionGroup(this);
    const auto ground = [&](const char* name, const QString& text, const char* key, const QColor& color) {
        QAction* action = addSwitch(background, QLatin1String(name), text, QKeySequence(QLatin1String(key)),
                                    [this, color](bool) { setBackground(color); });
        action->setData(color);
        grounds->addAction(action);
    };
    ground("backgroundDark", tr("&Dark"), "Shift+D", darkBackground);
    ground("backgroundLight", tr("&Light"), "Shift+L", lightBackground);
    ground("backgroundNeutral", tr("&Neutral grey"), "Shift+N", Qt::gray);

    QMenu* light = menu->addMenu(tr("L&ight"));
    auto* lights = new QActionGroup(this);
    const auto from = [&](const char* name, const QString& text, Qt::Key key, const QVector3D& position) {
        QAction* action =
            addSwitch(light, QLatin1String(name), text, QKeySequence(key),
                      [this, position](bool) { setLight(viewer(), position, viewer().lightColor()); });
        action->setData(position);
        lights->addAction(action);
    };
    from("lightAbove", tr("From &above"), Qt::Key_F2, QVector3D(0, 300, 0));
    from("lightLeft", tr("From the &left"), Qt::Key_F3, QVector3D(300, 200, -200));
    from("lightRight", tr("From the &right"), Qt::Key_F4, QVector3D(-300, 200, -200));
    addAct(light, QStringLiteral("lightColor"), tr("&Colour…"), QKeySequence(QStringLiteral("Shift+F2")),
           [this] {
               const QColor color =
                   QColorDialog::getColor(viewer().lightColor(), this, tr("Colour of the light"));
               if (color.isValid())
                   setLight(viewer(), viewer().lightPos(), color);
           });
    addAct(light, QStringLiteral("lightWhite"), tr("&White"), QKeySequence(QStringLiteral("Shift+F3")),
           [this] { setLight(viewer(), viewer().lightPos(), Qt::white); });
}

void MainWindow::makeHelpMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&Help"));
    QAction* keys =
        addAct(menu, QStringLiteral("keys"), tr("&Keys"), QKeySequence(Qt::Key_H), [this] { showKeys(); });
    keys->setShortcuts({QKeySequence(Qt::Key_H), QKeySequence(Qt::Key_Question), QKeySequence(Qt::Key_F1)});
}

void MainWindow::showKeys()
{
    QList<KeyList::Group> groups;
    const QList<QAction*> menus = menuBar()->actions();
    for (const QAction* menu : menus)
        groups.append({menu->text().remove(QLatin1Char('&')), KeyList::keysOf({menu->menu()->menuAction()})});
    groups.append({tr("In the 3D view"),
                   {{tr("Arrow keys, drag"), tr("Turn")},
                    {tr("+, -, wheel"), tr("Nearer, farther")},
                    {tr("Shift and drag, right drag"), tr("Move the scene")},
                    {tr("Click"), tr("Which colour is this?")},
                    {nameOf(Qt::Key_Tab), tr("On to the next control")}}});
    groups.append(
        {tr("Everywhere"), {{nameOf(Qt::Key_Escape), tr("Cancel loading, then dismiss messages")}}});
    groups.append({tr("In lists and tables"),
                   {{nameOf(Qt::Key_Space), tr("Show or hide the gamut")},
                    {nameOf(Qt::Key_Delete), tr("Remove the gamut or the points")},
                    {nameOf(QKeySequence::Copy), tr("Copy the selected numbers")}}});
    auto* list = new KeyList(groups, this);
    list->setAttribute(Qt::WA_DeleteOnClose);
    list->show();
}

// --- Asking ---------------------------------------------------------------------------------------

void MainWindow::askForFiles()
{
    open(QFileDialog::getOpenFileNames(
        this, tr("Open"), {},
        tr("All that can be opened (*.icc *.icm *.png *.jpg *.jpeg *.tif *.tiff *.kvgamut *.kvsession *.csv "
           "*.txt *.ti3 *.cgats *.cxf)") +
            QStringLiteral(";;") + tr("Profiles (*.icc *.icm)") + QStringLiteral(";;") +
            tr("Pictures with a profile (*.png *.jpg *.jpeg *.tif *.tiff)") + QStringLiteral(";;") +
            tr("Saved gamuts (*.kvgamut)") + QStringLiteral(";;") +
            tr("Measurements (*.csv *.txt *.ti3 *.cgats *.cxf)") + QStringLiteral(";;") +
            tr("All files (*)")));
}

void MainWindow::askForPoints()
{
    addPoints(QFileDialog::getOpenFileNames(
        this, tr("Add points"), {},
        tr("Measurements and pictures (*.csv *.txt *.ti3 *.cgats *.cxf *.png *.jpg *.jpeg *.tif *.tiff)") +
            QStringLiteral(";;") + tr("All files (*)")));
}

void MainWindow::askForSession()
{
    const QString file = QFileDialog::getOpenFileName(this, tr("Restore session"), {},
                                                      tr("Sessions (*.kvsession)") + QStringLiteral(";;") +
                                                          tr("All files (*)"));
    if (!file.isEmpty())
        openSession(file);
}

void MainWindow::askWhereToSaveSession()
{
    QFileDialog dialog(this, tr("Save session"), {}, tr("Sessions (*.kvsession)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("kvsession"));
    if (dialog.exec() == QDialog::Accepted)
        saveSession(dialog.selectedFiles().constFirst());
}

void MainWindow::askWhereToSavePicture()
{
    PictureDialog size(viewer().picture().size(), this);
    if (size.exec() != QDialog::Accepted)
        return;
    QFileDialog dialog(this, tr("Save picture"), {}, tr("Pictures (*.png *.jpg *.tif)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("png"));
    if (dialog.exec() == QDialog::Accepted)
        savePicture(dialog.selectedFiles().constFirst(), size.size());
}

void MainWindow::askWhereToSaveSection()
{
    QFileDialog dialog(this, tr("Save section"), {}, tr("Drawings (*.svg *.pdf)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("svg"));
    if (dialog.exec() == QDialog::Accepted)
        saveSection(dialog.selectedFiles().constFirst());
}

// --- Following ------------------------------------------------------------------------------------

void MainWindow::showViewState()
{
    const ViewState state = ViewState::of(viewer());
    actionNamed("orthogonal")->setChecked(state.camera.orthogonal);
    actionNamed("axes")->setChecked(state.axes);
    actionNamed("gridLines")->setChecked(state.grid);
    actionNamed("plane")->setChecked(state.plane);
    actionNamed("cut")->setChecked(state.clip.has_value());
    for (const char* name : {"backgroundDark", "backgroundLight", "backgroundNeutral"}) {
        QAction* action = actionNamed(name);
        action->setChecked(action->data().value<QColor>().rgb() == state.background.rgb());
    }
    for (const char* name : {"lightAbove", "lightLeft", "lightRight"}) {
        QAction* action = actionNamed(name);
        action->setChecked(action->data().value<QVector3D>() == state.light);
    }
    m_clip->setClip(state.clip);
    m_slice->setLightness(m_clip->lightness());
}

void MainWindow::showActiveGamut()
{
    const int row = m_gamuts.activeRow();
    const bool present = row >= 0 && row < m_gamuts.rowCount();
    for (const char* name : {"nextGamut", "removeGamut", "activeBlackPoint", "activeVisible", "activeSurface",
                             "activeProjection", "activePrimaries", "nextMode", "moreOpaque", "lessOpaque",
                             "gamutColor", "ownGamutColors", "intent0", "intent1", "intent2", "intent3"})
        actionNamed(name)->setEnabled(present);
    if (!present)
        return;
    const GamutEntry& entry = m_gamuts.at(row);
    actionNamed("activeBlackPoint")->setChecked(entry.settings.blackPointCompensation);
    actionNamed("activeBlackPoint")->setEnabled(entry.settings.intent != KVVMRenderAbsoluteColorimetric);
    actionNamed("activeVisible")->setChecked(entry.look.visible);
    actionNamed("activeSurface")->setChecked(entry.look.surface);
    actionNamed("activeProjection")->setChecked(entry.look.projection);
    actionNamed("activePrimaries")->setChecked(entry.look.primaries);
    actionNamed("ownGamutColors")->setEnabled(entry.look.color.isValid());
    for (int intent = KVVMRenderPerceptual; intent <= KVVMRenderAbsoluteColorimetric; ++intent)
        findChild<QAction*>(QStringLiteral("intent%1").arg(intent))
            ->setChecked(entry.settings.intent == intent);
}
