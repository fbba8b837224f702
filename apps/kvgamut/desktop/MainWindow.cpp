// SPDX-License-Identifier: Apache-2.0
#include "MainWindow.h"

#include "desktop/files/FileDialogs.h"
#include "desktop/files/SettingsFile.h"
#include "desktop/files/WindowMemory.h"
#include "desktop/language/ShownWords.h"
#include "desktop/menus/EditMenu.h"
#include "desktop/menus/FileMenu.h"
#include "desktop/menus/GamutMenu.h"
#include "desktop/menus/MenuActions.h"
#include "desktop/menus/ViewMenu.h"
#include "desktop/panels/ClipControl.h"
#include "desktop/panels/ColorsPanel.h"
#include "desktop/panels/ComparisonTable.h"
#include "desktop/panels/FindingPanel.h"
#include "desktop/panels/GamutPanel.h"
#include "desktop/panels/KeyList.h"
#include "desktop/panels/MessageBar.h"
#include "desktop/panels/PointPanel.h"
#include "desktop/panels/WelcomePage.h"
#include "desktop/view/CameraControl.h"
#include "model/points/Lab.h"
#include "model/problems/ProblemText.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QScreen>
#include <QtGui/QShortcut>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

#include <array>

namespace {

constexpr float findingSize = 3.0f;

QString findingSet()
{
    return QStringLiteral("finding");
}

} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent), m_area(new ViewArea), m_loader(m_gamuts), m_looks(m_gamuts),
      m_binding(m_gamuts, m_area->view()), m_annotations(m_gamuts, m_area->view()),
      m_points(m_gamuts, m_area->viewer()), m_history(m_gamuts, m_points),
      m_checks(m_gamuts, m_points, [this](const QString& id) { return profileOf(id); }),
      m_colors(m_checks, m_gamuts, m_points), m_comparison(m_gamuts),
      m_inspector(m_gamuts, m_points, [this](const QString& id) { return profileOf(id); }),
      m_pages(new QStackedWidget), m_messages(new MessageBar), m_clip(new ClipControl),
      m_gamutPanel(new GamutPanel(m_gamuts)), m_pointPanel(new PointPanel(m_points)),
      m_colorsPanel(new ColorsPanel(m_colors, m_checks, m_pointPanel)),
      m_slice(new SlicePanel(m_gamuts, m_points)), m_table(new ComparisonTable(m_comparison)),
      m_finding(new FindingPanel), m_progress(new QProgressBar), m_cancel(new QToolButton),
      m_camera(new CameraControl(*m_area, this))
{
    setWindowTitle(tr("kvgamut"));
    resize(fitting(QSize(1280, 800)));
    makeCentre();
    makePanels();
    makeStatusBar();
    makeMenus();
    connectLoading();
    connectPanels();
    connectDrops();
    forgetFinding();
    showViewState();
    showLoading();
    showPage();
    QCoreApplication::instance()->installEventFilter(this);
}

MainWindow::~MainWindow()
{
    cancelSession();
}

bool MainWindow::isComplete() const
{
    return !m_sessionTask && !m_loader.isBusy() && m_binding.isUpToDate() && m_points.isComplete() &&
           m_looks.isComplete() && m_comparison.isComplete() && m_checks.isComplete() &&
           m_history.isUpToDate() && m_unwritten == 0;
}

// --- Construction ---------------------------------------------------------------------------------

void MainWindow::makeCentre()
{
    auto* scene = new QWidget;
    auto* row = new QHBoxLayout(scene);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_area, 1);
    row->addWidget(m_clip);
    auto* welcome = new WelcomePage;
    connect(welcome, &WelcomePage::openRequested, this, &MainWindow::askForFiles);
    connect(welcome, &WelcomePage::exampleRequested, this, [this] {
        addGamut(QStringLiteral("sRGB"));
        addGamut(QStringLiteral("DisplayP3"));
    });
    m_pages->addWidget(welcome);
    m_pages->addWidget(scene);

    auto* centre = new QWidget;
    auto* column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_messages);
    column->addWidget(m_pages, 1);
    setCentralWidget(centre);
}

QDockWidget* MainWindow::makePanel(const char* name, const QString& title, QWidget* content)
{
    auto* panel = new QDockWidget(title, this);
    panel->setObjectName(QLatin1String(name));
    panel->setWidget(content);
    return panel;
}

void MainWindow::makePanels()
{
    setAnimated(false); // moving panels would redraw the scene at every step
    m_panels.gamuts = makePanel("gamutsDock", tr("Gamuts"), m_gamutPanel);
    m_panels.section = makePanel("sectionDock", tr("Section"), m_slice);
    m_panels.colors = makePanel("pointsDock", tr("Colours"), m_colorsPanel);
    m_panels.comparison = makePanel("comparisonDock", tr("Comparison"), m_table);
    m_panels.finding = makePanel("findingDock", tr("Clicked colour"), m_finding);
    resetPanels();
}

void MainWindow::resetPanels()
{
    m_panels.arrange(*this, PanelLayout::isSmall(size()));
}

void MainWindow::makeStatusBar()
{
    m_progress->setObjectName(QStringLiteral("progress"));
    m_progress->setAccessibleName(tr("Progress"));
    m_progress->setMaximumWidth(220);
    m_progress->setRange(0, 100);
    m_cancel->setObjectName(QStringLiteral("cancel"));
    m_cancel->setText(tr("Cancel"));
    m_cancel->setToolTip(tr("Cancel (Esc)"));
    m_cancel->setFocusPolicy(Qt::TabFocus);
    // minimum height, so that the view does not change its size at the start and end of each load
    statusBar()->setMinimumHeight(m_cancel->sizeHint().height() + 8);
    statusBar()->addPermanentWidget(m_progress);
    statusBar()->addPermanentWidget(m_cancel);
    connect(m_cancel, &QToolButton::clicked, this, &MainWindow::cancelLoading);
}

void MainWindow::makeMenus()
{
    m_fileMenu = new FileMenu(this);
    m_editMenu = new EditMenu(m_history.steps(), this);
    auto* gamutMenu = new GamutMenu(m_gamuts, this);
    m_viewMenu = new ViewMenu(view(), m_annotations, *m_camera, *m_clip, findChildren<QDockWidget*>(), this);
    for (QMenu* menu : {static_cast<QMenu*>(m_fileMenu), static_cast<QMenu*>(m_editMenu),
                        static_cast<QMenu*>(gamutMenu), static_cast<QMenu*>(m_viewMenu)})
        menuBar()->addMenu(menu);
    QMenu* help = menuBar()->addMenu(tr("&Help"));
    QAction* keys = MenuActions::add(*help, "keys", tr("&Keys"), QKeySequence(Qt::Key_H));
    keys->setShortcuts({QKeySequence(Qt::Key_H), QKeySequence(Qt::Key_Question), QKeySequence(Qt::Key_F1)});

    connectFileMenu();
    connectEditMenu();
    connect(gamutMenu->chooseColor, &QAction::triggered, m_gamutPanel, &GamutPanel::chooseColor);
    connect(m_viewMenu->sectionColors, &QAction::triggered, m_slice, &SlicePanel::setColored);
    connect(m_viewMenu->fullScreen, &QAction::triggered, this,
            [this](bool on) { setWindowState(windowState().setFlag(Qt::WindowFullScreen, on)); });
    connect(keys, &QAction::triggered, this, &MainWindow::showKeys);
    connect(m_viewMenu->resetPanels, &QAction::triggered, this, &MainWindow::resetPanels);
}

void MainWindow::connectFileMenu()
{
    connect(m_fileMenu->open, &QAction::triggered, this, &MainWindow::askForFiles);
    connect(m_fileMenu, &FileMenu::builtInChosen, this, [this](const QString& name) { addGamut(name); });
    connect(m_fileMenu, &FileMenu::recentChosen, this, [this](const QString& file) { open({file}); });
    connect(m_fileMenu->openPoints, &QAction::triggered, this, &MainWindow::askForPoints);
    connect(m_fileMenu->openSession, &QAction::triggered, this, &MainWindow::askForSession);
    connect(m_fileMenu->saveSession, &QAction::triggered, this, &MainWindow::askWhereToSaveSession);
    connect(m_fileMenu->savePicture, &QAction::triggered, this, &MainWindow::askWhereToSavePicture);
    connect(m_fileMenu->saveSection, &QAction::triggered, this, &MainWindow::askWhereToSaveSection);
    connect(m_fileMenu->saveColors, &QAction::triggered, this, &MainWindow::askWhereToSaveColors);
    connect(m_fileMenu->savePage, &QAction::triggered, this, &MainWindow::askWhereToSavePage);
    connect(m_fileMenu->closeAll, &QAction::triggered, this, &MainWindow::closeAll);
    connect(m_fileMenu->quit, &QAction::triggered, this, &QWidget::close);
}

void MainWindow::connectEditMenu()
{
    connect(m_editMenu->copyPicture, &QAction::triggered, this, &MainWindow::copyPicture);
    connect(m_editMenu->copyTable, &QAction::triggered, m_table, &ComparisonTable::copyAll);
    connect(m_editMenu->copyColors, &QAction::triggered, m_colorsPanel, &ColorsPanel::copyAll);
    connect(m_editMenu->copyFinding, &QAction::triggered, this, &MainWindow::copyFinding);
    connect(m_editMenu->copyCamera, &QAction::triggered, this, &MainWindow::copyCamera);
    connect(m_editMenu->pasteCamera, &QAction::triggered, this, &MainWindow::pasteCamera);
}

void MainWindow::connectLoading()
{
    connect(&m_loader, &GamutQueue::failed, this, &MainWindow::say);
    connect(&m_loader, &GamutQueue::progressed, this, &MainWindow::showLoading);
    connect(&m_loader, &GamutQueue::idle, this, &MainWindow::loadingEnded);
    connect(&m_binding, &ViewerBinding::failed, this, &MainWindow::say);
    connect(&view(), &KVGamutView::drawableChanged, this, [this] {
        if (const auto problem = view().drawingProblem())
            say(*problem);
    });
    connect(&m_points, &PointLayer::failed, this, &MainWindow::say);
    connect(&m_points, &PointLayer::noted, m_messages,
            [this](const Problem& note) { m_messages->add(ProblemText::translated(note)); });
    for (QAbstractItemModel* model :
         {static_cast<QAbstractItemModel*>(&m_gamuts), static_cast<QAbstractItemModel*>(&m_points)}) {
        connect(model, &QAbstractItemModel::rowsInserted, this, &MainWindow::showPage);
        connect(model, &QAbstractItemModel::rowsRemoved, this, &MainWindow::showPage);
        connect(model, &QAbstractItemModel::modelReset, this, &MainWindow::showPage);
    }
    // a QShortcut, because keys that the view handles do not reach the widgets of the window
    auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(escape, &QShortcut::activated, this, &MainWindow::cancelOrDismiss);
}

void MainWindow::connectPanels()
{
    connect(m_gamutPanel, &GamutPanel::removeRequested, this, [this](int row) { m_gamuts.remove(row); });
    connect(&m_history, &History::restored, m_pointPanel, &PointPanel::showTolerance);
    connect(m_pointPanel, &PointPanel::openRequested, this, &MainWindow::askForPoints);
    connect(m_pointPanel, &PointPanel::maskRequested, this, &MainWindow::showMask);
    connect(m_colorsPanel, &ColorsPanel::chosen, this, &MainWindow::showChosen);
    connect(m_colorsPanel, &ColorsPanel::saveRequested, this, &MainWindow::askWhereToSaveColors);
    connect(&m_comparison, &QAbstractItemModel::modelReset, this, [this] {
        m_panels.comparison->setWindowTitle(m_comparison.rowCount() > 1
                                                ? tr("Comparison with %1").arg(m_comparison.activeTitle())
                                                : tr("Comparison"));
    });
    connect(m_clip, &ClipControl::changed, this, &MainWindow::applyClip);
    view().setSection(m_clip->section());
    connect(m_camera, &CameraControl::moved, this, &MainWindow::showViewState);
    connect(&view(), &KVGamutView::clicked, this, &MainWindow::inspect);
    connect(m_slice, &SlicePanel::hovered, this, [this](const std::optional<QVector3D>& lab) {
        if (lab)
            statusBar()->showMessage(ShownWords::lab(*lab) + QStringLiteral("      ") +
                                     ShownWords::lch(*lab));
        else
            statusBar()->clearMessage();
    });
}

void MainWindow::connectDrops()
{
    m_drop.watch(this);
    m_drop.watch(&viewer());
    connect(&m_drop, &FileDrop::dropped, this, &MainWindow::open);
    m_pointDrop.watch(m_pointPanel);
    m_pointDrop.watch(m_colorsPanel);
    connect(&m_pointDrop, &FileDrop::dropped, this, &MainWindow::addPoints);
}

void MainWindow::showKeys()
{
    auto* list = new KeyList(KeyList::groupsOf(*menuBar()), this);
    list->setAttribute(Qt::WA_DeleteOnClose);
    list->show();
}

// --- What is under the pointer --------------------------------------------------------------------

void MainWindow::inspect(const KVHit& clicked)
{
    if (clicked.endsDrag)
        return;
    // the marker of the last finding hides what is below it
    const bool isMarker = clicked.kind == KVHit::Kind::Marker && clicked.id == findingSet();
    viewer().removeMarkerSet(findingSet());
    const KVHit hit = isMarker ? view().hitAt(clicked.pixel) : clicked;
    const bool isPoint = hit.kind == KVHit::Kind::Point || hit.kind == KVHit::Kind::Marker;
    const auto place = isPoint ? m_points.placeOf(hit.id, hit.index) : std::nullopt;
    const auto finding = m_inspector.describe(hit);
    m_colorsPanel->deselect();
    if (place && m_checks.colorAt(*place) >= 0)
        m_colorsPanel->select(m_checks.colorAt(*place));
    else if (finding)
        showFinding(*finding, {});
    else
        forgetFinding();
}

/// Marks the colour, and draws a line to the nearest place on the surface of the active gamut.
void MainWindow::showFinding(const Inspector::Finding& finding, const std::optional<QVector3D>& nearest)
{
    m_finding->show(finding.lab, finding.text);
    m_editMenu->copyFinding->setEnabled(true);
    const QColor mark = finding.lab.x() > 50.0f ? Qt::black : Qt::white;
    viewer().addMarkerSet(findingSet(), KVGamut3DViewer::Sphere, {{mark, finding.lab}}, findingSize, 1.0f);
    viewer().removeSegmentSet(findingSet());
    if (nearest)
        viewer().addSegmentSet(findingSet(), {{{mark, finding.lab}, {mark, *nearest}}});
    m_slice->setMark(SlicePanel::Mark{finding.lab, nearest});
}

void MainWindow::forgetFinding()
{
    viewer().removeMarkerSet(findingSet());
    viewer().removeSegmentSet(findingSet());
    m_slice->setMark({});
    m_editMenu->copyFinding->setEnabled(false);
    m_finding->clear();
}

/// Follows the table of colours: its current row, and the results for it.
void MainWindow::showChosen(std::optional<qsizetype> color)
{
    if (!color) {
        if (m_chosen)
            forgetFinding();
        m_chosen.reset();
        return;
    }
    const Inspector::Finding finding = m_inspector.describe(m_checks.place(*color));
    const Chosen chosen{*color, finding.text, nearestOf(*color)};
    if (m_chosen == chosen)
        return;
    m_chosen = chosen;
    showFinding(finding, chosen.nearest);
}

/// On the surface of the active gamut: outside by CIEDE2000, as in the table, inside by the distance in Lab.
std::optional<QVector3D> MainWindow::nearestOf(qsizetype color) const
{
    const int row = m_gamuts.activeRow();
    const auto* check =
        row < 0 || row >= m_gamuts.rowCount() ? nullptr : m_checks.check(m_gamuts.at(row).revision, color);
    if (!check)
        return {};
    if (check->distance > 0.0f)
        return vectorOf(check->nearest);
    const KVGamut::LabPoint lab = m_checks.point(color).lab;
    const std::array<float, 3> values{lab.L, lab.a, lab.b};
    return vectorOf(m_gamuts.at(row).gamut.nearest(values.data()).point);
}

KVProfilePtr MainWindow::profileOf(const QString& id) const
{
    const std::optional<GamutSource> source = m_loader.source(id);
    return source ? source->profile() : KVProfilePtr();
}

// --- Updates after changes ------------------------------------------------------------------------

void MainWindow::keepCamera()
{
    m_camera->keep();
}

void MainWindow::showViewState()
{
    const KVViewState state = view().state();
    m_viewMenu->showState(state);
    m_clip->setClip(state.clipping);
    m_clip->setSection(view().section().plane);
    m_viewMenu->sectionColors->setChecked(m_slice->isColored());
    m_slice->setLightness(m_clip->lightness());
}

void MainWindow::applyClip()
{
    view().setClipping(m_clip->clip());
    view().setSection(m_clip->section());
    m_slice->setLightness(m_clip->lightness());
}

void MainWindow::showPage()
{
    m_pages->setCurrentIndex(m_gamuts.rowCount() + m_points.rowCount() > 0 ? 1 : 0);
    QStringList titles;
    for (const GamutEntry& entry : m_gamuts.entries())
        titles.append(entry.title);
    setWindowTitle(titles.isEmpty() ? tr("kvgamut")
                                    : tr("%1 – kvgamut").arg(titles.join(QStringLiteral(", "))));
}

void MainWindow::showLoading()
{
    m_progress->setVisible(m_loader.isBusy());
    m_cancel->setVisible(m_loader.isBusy());
    m_progress->setValue(qRound(m_loader.progress() * 100.0f));
}

void MainWindow::say(const Problem& failure)
{
    m_messages->add(ProblemText::translated(failure));
    Q_EMIT problem(failure);
}

QSize MainWindow::fitting(const QSize& wanted) const
{
    constexpr QSize frame(8, 40); // borders and title, which are not known before the window is shown
    return wanted.boundedTo(screen()->availableSize() - frame);
}

WindowMemory MainWindow::memory() const
{
    return {saveGeometry(), saveState(), m_area->viewer().background(), FileDialogs::folder(),
            m_annotations.isShown()};
}

void MainWindow::recall(const WindowMemory& memory)
{
    if (restoreGeometry(memory.geometry)) // within the present screens
        resize(fitting(size()));
    if (!restoreState(memory.panels))
        resetPanels();
    if (memory.background.isValid())
        viewer().setBackground(memory.background);
    FileDialogs::setFolder(memory.folder);
    m_annotations.setShown(memory.isAnnotated);
    showViewState();
}

void MainWindow::recallLast(const QSize& size, bool withBackground)
{
    WindowMemory memory = WindowMemory::read();
    if (!size.isEmpty())
        memory.geometry.clear();
    if (!withBackground)
        memory.background = QColor();
    recall(memory);
    if (!size.isEmpty())
        resize(fitting(size));
}

void MainWindow::keepForNext() const
{
    memory().write();
}

void MainWindow::ignoreSettings()
{
    SettingsFile::ignoreAll();
}

/// After Enter in a field for a number or a text the keys of the view work again.
bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && isAncestorOf(qobject_cast<QWidget*>(watched))) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const bool isField = qobject_cast<QAbstractSpinBox*>(watched) || qobject_cast<QLineEdit*>(watched);
        if (isField && (key == Qt::Key_Return || key == Qt::Key_Enter))
            QMetaObject::invokeMethod(
                m_area, [this] { m_area->setFocus(); }, Qt::QueuedConnection);
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    m_camera->showFirst();
}

void MainWindow::cancelOrDismiss()
{
    if (m_loader.isBusy())
        cancelLoading();
    else
        m_messages->dismiss();
    m_area->setFocus();
}
