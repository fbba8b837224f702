// SPDX-License-Identifier: Apache-2.0
#include "MainWindow.h"

#include "desktop/files/KeySettings.h"
#include "desktop/language/ShownWords.h"
#include "desktop/menus/GamutMenu.h"
#include "desktop/menus/HelpMenu.h"
#include "desktop/menus/ViewMenu.h"
#include "desktop/panels/ClipControl.h"
#include "desktop/panels/CommandSearch.h"
#include "desktop/panels/ComparisonTable.h"
#include "desktop/panels/CoverageTable.h"
#include "desktop/panels/FindingPanel.h"
#include "desktop/panels/GamutInformation.h"
#include "desktop/panels/GamutPanel.h"
#include "desktop/panels/HelpPages.h"
#include "desktop/panels/KeyList.h"
#include "desktop/panels/SectionBar.h"
#include "desktop/view/KeyboardCursor.h"
#include "desktop/view/Presentation.h"
#include "model/problems/ProblemText.h"

#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QStatusBar>

#include <cmath>

// What the menus "Gamut", "View" and "Help" do with the window itself.

namespace {

constexpr float hueStep = 5.0f; // degrees

/// Shows @p dialog, which deletes itself when it is closed.
void showOnce(QDialog* dialog)
{
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
}

} // namespace

void MainWindow::connectGamutMenu()
{
    connect(m_gamutMenu->chooseColor, &QAction::triggered, m_gamutPanel, &GamutPanel::chooseColor);
    connect(m_gamutMenu->information, &QAction::triggered, this, &MainWindow::showInformation);
    connect(m_gamutMenu->matrix, &QAction::triggered, this, &MainWindow::showCoverage);
}

void MainWindow::connectViewMenu()
{
    connect(m_viewMenu->sectionColors, &QAction::triggered, m_slice, &SlicePanel::setColored);
    connect(m_viewMenu, &ViewMenu::sectionKindChosen, this, &MainWindow::setSectionKind);
    connect(m_viewMenu->nextHue, &QAction::triggered, this, [this] { turnHue(hueStep); });
    connect(m_viewMenu->previousHue, &QAction::triggered, this, [this] { turnHue(-hueStep); });
    connect(m_sectionBar, &SectionBar::changed, this, [this] {
        applyClip();
        m_viewMenu->showSectionKind(m_slice->kind());
    });
    connect(m_viewMenu->fullScreen, &QAction::triggered, this,
            [this](bool on) { setWindowState(windowState().setFlag(Qt::WindowFullScreen, on)); });
    connect(m_viewMenu->resetPanels, &QAction::triggered, this, &MainWindow::resetPanels);
    connect(m_viewMenu->present, &QAction::triggered, m_presentation, &Presentation::setOn);
    connect(m_presentation, &Presentation::switched, this, [this](bool on) {
        m_viewMenu->present->setChecked(on);
        m_area->setFocus();
    });
}

void MainWindow::connectHelpMenu()
{
    connect(m_helpMenu->keys, &QAction::triggered, this, &MainWindow::showKeys);
    connect(m_helpMenu->findCommand, &QAction::triggered, this, &MainWindow::findCommand);
    connect(m_helpMenu->tour, &QAction::triggered, this, [this] { showOnce(HelpPages::tour(this)); });
    connect(m_helpMenu->about, &QAction::triggered, this, &MainWindow::showAbout);
}

void MainWindow::connectCursor()
{
    connect(m_viewMenu->cursor, &QAction::triggered, m_cursor, &KeyboardCursor::setOn);
    connect(m_cursor, &KeyboardCursor::switched, this, [this](bool on) {
        m_viewMenu->cursor->setChecked(on);
        statusBar()->clearMessage();
        m_area->setAccessibleDescription({});
        if (!on)
            m_finding.forget();
    });
    connect(m_cursor, &KeyboardCursor::moved, this, &MainWindow::sayPlace);
    connect(m_cursor, &KeyboardCursor::moved, this, [this](const QVector3D& lab) {
        m_clip->setLightness(lab.x()); // the section shows the colours around the cursor
        applyClip();
    });
    connect(m_cursor, &KeyboardCursor::moved, &m_finding, &FindingControl::showPlace);
    connect(m_cursor, &KeyboardCursor::picked, &m_finding, &FindingControl::pickNear);
}

/// The commands of the menus that belong to a part of the window, in the context menu of that part.
void MainWindow::makeContextMenus()
{
    m_viewContext = new QMenu(this);
    m_viewContext->setObjectName(QStringLiteral("viewContext"));
    m_viewContext->addActions(
        actionsNamed({"frame", "reset", "fromTop", "fromFront", "fromRight", "orthogonal", "cut",
                      "showSection", "annotate", "axes", "gridLines", "present", "copyPicture", "savePicture",
                      "copyCamera", "pasteCamera"}));
    m_area->setContextMenuPolicy(Qt::CustomContextMenu); // for the keyboard; a click reaches the viewer
    connect(m_area, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& place) { m_viewContext->popup(m_area->mapToGlobal(place)); });
    const auto give = [](QWidget* widget, const QList<QAction*>& actions) {
        widget->addActions(actions);
        widget->setContextMenuPolicy(Qt::ActionsContextMenu);
    };
    give(m_slice, actionsNamed({"sectionOfLightness", "sectionOfHue", "sectionOfRings", "sectionColors",
                                "showSection", "saveSection"}));
    give(m_table, actionsNamed({"copyTable", "matrix", "information", "nextGamut"}));
    give(m_findingPanel, actionsNamed({"copyFinding"}));
}

QList<QAction*> MainWindow::actionsNamed(std::initializer_list<const char*> names) const
{
    QList<QAction*> actions;
    for (const char* name : names)
        actions.append(findChild<QAction*>(QLatin1String(name)));
    return actions;
}

/// Where the cursor is: in the status bar, and for screen readers.
void MainWindow::sayPlace(const QVector3D& cursor)
{
    const QString place = ShownWords::lab(cursor) + QStringLiteral("      ") + ShownWords::lch(cursor);
    statusBar()->showMessage(place);
    m_area->setAccessibleDescription(place);
}

void MainWindow::setSectionKind(SectionKind kind)
{
    m_slice->setKind(kind);
    applyClip();
    showViewState();
}

/// Shows the section at a hue, if it is of another kind.
void MainWindow::turnHue(float degrees)
{
    const float turned = std::fmod(m_slice->hue() + degrees + 360.0f, 360.0f);
    m_slice->setHue(turned);
    setSectionKind(SectionKind::Hue);
}

void MainWindow::showKeys()
{
    auto* list = new KeyList(MenuCommands::of(*menuBar()), KeySettings::defaultKeys, this);
    connect(list, &KeyList::keysChanged, this,
            [this] { KeySettings::keep(MenuCommands::actionsOf(*menuBar())); });
    showOnce(list);
}

void MainWindow::findCommand()
{
    showOnce(new CommandSearch(MenuCommands::of(*menuBar()), this));
}

void MainWindow::showInformation()
{
    const int row = m_gamuts.activeRow();
    if (row >= 0)
        showOnce(new GamutInformation(m_gamuts.at(row), m_loader.source(m_gamuts.at(row).id), this));
}

void MainWindow::showCoverage()
{
    showOnce(new CoverageTable(m_gamuts, this));
}

void MainWindow::showAbout()
{
    const auto problem = view().drawingProblem();
    showOnce(HelpPages::about(problem ? ProblemText::translated(*problem) : QString(), this));
}
