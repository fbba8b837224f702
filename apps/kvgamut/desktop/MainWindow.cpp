// SPDX-License-Identifier: Apache-2.0
#include "MainWindow.h"

#include "desktop/files/FileDialogs.h"
#include "desktop/files/KeySettings.h"
#include "desktop/files/SettingsFile.h"
#include "desktop/files/WindowMemory.h"
#include "desktop/language/ShownWords.h"
#include "desktop/menus/EditMenu.h"
#include "desktop/menus/FileMenu.h"
#include "desktop/menus/GamutMenu.h"
#include "desktop/menus/HelpMenu.h"
#include "desktop/menus/ToolBar.h"
#include "desktop/menus/ViewMenu.h"
#include "desktop/panels/ClipControl.h"
#include "desktop/panels/ColorsPanel.h"
#include "desktop/panels/ComparisonPanel.h"
#include "desktop/panels/ComparisonTable.h"
#include "desktop/panels/DropFrame.h"
#include "desktop/panels/FindingPanel.h"
#include "desktop/panels/GamutPanel.h"
#include "desktop/panels/MenuCommands.h"
#include "desktop/panels/MessageBar.h"
#include "desktop/panels/OfferBar.h"
#include "desktop/panels/PointPanel.h"
#include "desktop/panels/SectionBar.h"
#include "desktop/panels/WelcomePage.h"
#include "desktop/view/CameraControl.h"
#include "desktop/view/KeyboardCursor.h"
#include "desktop/view/Presentation.h"
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

namespace {

QWidget* below(QWidget* upper, QWidget* lower)
{
    auto* both = new QWidget;
    auto* column = new QVBoxLayout(both);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(upper);
    column->addWidget(lower, 1);
    return both;
}

} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent), m_area(new ViewArea), m_loader(m_gamuts), m_looks(m_gamuts),
      m_binding(m_gamuts, m_area->view()), m_annotations(m_gamuts, m_area->view()),
      m_points(m_gamuts, m_area->viewer()), m_changes(m_gamuts, m_points), m_history(m_gamuts, m_points),
      m_document(m_history), m_autosave([this] {
          return UnsavedWork{session(), m_document.file()};
      }),
      m_checks(m_gamuts, m_points, [this](const QString& id) { return profileOf(id); }),
      m_colors(m_checks, m_gamuts, m_points), m_comparison(m_gamuts), m_pages(new QStackedWidget),
      m_messages(new MessageBar), m_offers(new OfferBar), m_clip(new ClipControl),
      m_gamutPanel(new GamutPanel(m_gamuts)), m_pointPanel(new PointPanel(m_points)),
      m_colorsPanel(new ColorsPanel(m_colors, m_checks, m_pointPanel)),
      m_slice(new SlicePanel(m_gamuts, m_points)), m_sectionBar(new SectionBar(*m_slice)),
      m_table(new ComparisonTable(m_comparison)), m_findingPanel(new FindingPanel),
      m_finding(m_gamuts, m_points, m_checks, [this](const QString& id) { return profileOf(id); },
                {&m_area->view(), m_findingPanel, m_colorsPanel, m_slice}),
      m_progress(new QProgressBar), m_cancel(new QToolButton), m_camera(new CameraControl(*m_area, this)),
      m_cursor(new KeyboardCursor(*m_area, this)),
      m_presentation(new Presentation(*this, m_annotations, {m_clip}))
{
    resize(fitting(QSize(1280, 800)));
    makeCentre();
    makePanels();
    makeStatusBar();
    makeMenus();
    connectLoading();
    connectPanels();
    connectDrops();
    connectDocument();
    connectChanges();
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
           m_history.isUpToDate() && m_autosave.isUpToDate() && m_unwritten == 0;
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
        open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    });
    m_pages->addWidget(welcome);
    m_pages->addWidget(scene);

    auto* centre = new QWidget;
    auto* column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_messages);
    column->addWidget(m_offers);
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
    m_panels.section = makePanel("sectionDock", tr("Section"), below(m_sectionBar, m_slice));
    m_panels.colors = makePanel("pointsDock", tr("Colours"), m_colorsPanel);
    m_panels.comparison =
        makePanel("comparisonDock", tr("Comparison"), new ComparisonPanel(*m_table, m_gamuts));
    m_panels.finding = makePanel("findingDock", tr("Clicked colour"), m_findingPanel);
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
    m_gamutMenu = new GamutMenu(m_gamuts, this);
    m_viewMenu = new ViewMenu(view(), m_annotations, *m_camera, *m_clip, findChildren<QDockWidget*>(), this);
    m_helpMenu = new HelpMenu(this);
    for (QMenu* menu :
         {static_cast<QMenu*>(m_fileMenu), static_cast<QMenu*>(m_editMenu), static_cast<QMenu*>(m_gamutMenu),
          static_cast<QMenu*>(m_viewMenu), static_cast<QMenu*>(m_helpMenu)})
        menuBar()->addMenu(menu);
    auto* tools = new ToolBar(*menuBar(), this);
    addToolBar(tools);
    m_viewMenu->addTools(*tools->toggleViewAction());
    KeySettings::apply(MenuCommands::actionsOf(*menuBar()));
    m_gamutPanel->addCommands(m_gamutMenu->actions());
    connectFileMenu();
    connectEditMenu();
    connectGamutMenu();
    connectViewMenu();
    connectHelpMenu();
    connectCursor();
    makeContextMenus();
}

void MainWindow::connectFileMenu()
{
    connect(m_fileMenu->open, &QAction::triggered, this, &MainWindow::askForFiles);
    connect(m_fileMenu, &FileMenu::builtInChosen, this, [this](const QString& name) { addGamut(name); });
    connect(m_fileMenu, &FileMenu::recentChosen, this, [this](const QString& file) { open({file}); });
    connect(m_fileMenu->openPoints, &QAction::triggered, this, &MainWindow::askForPoints);
    connect(m_fileMenu->openSession, &QAction::triggered, this, &MainWindow::askForSession);
    connect(m_fileMenu->saveSession, &QAction::triggered, this, [this] { saveSession(); });
    connect(m_fileMenu->saveSessionAs, &QAction::triggered, this, &MainWindow::askWhereToSaveSession);
    connect(m_fileMenu->savePicture, &QAction::triggered, this, &MainWindow::askWhereToSavePicture);
    connect(m_fileMenu->saveSection, &QAction::triggered, this, &MainWindow::askWhereToSaveSection);
    connect(m_fileMenu->saveColors, &QAction::triggered, this, &MainWindow::askWhereToSaveColors);
    connect(m_fileMenu->savePage, &QAction::triggered, this, &MainWindow::askWhereToSavePage);
    connect(m_fileMenu->saveGamut, &QAction::triggered, this, &MainWindow::askWhereToSaveGamut);
    connect(m_fileMenu->closeAll, &QAction::triggered, this, &MainWindow::closeAll);
    connect(m_fileMenu->quit, &QAction::triggered, this, &QWidget::close);
}

void MainWindow::connectEditMenu()
{
    connect(m_editMenu->copyPicture, &QAction::triggered, this, &MainWindow::copyPicture);
    connect(m_editMenu->copyTable, &QAction::triggered, m_table, &ComparisonTable::copyAll);
    connect(m_editMenu->copyColors, &QAction::triggered, m_colorsPanel, &ColorsPanel::copyAll);
    connect(m_editMenu->copyFinding, &QAction::triggered, this, &MainWindow::copyFinding);
    connect(&m_finding, &FindingControl::changed, m_editMenu->copyFinding,
            [this] { m_editMenu->copyFinding->setEnabled(!m_finding.text().isEmpty()); });
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
    connect(m_colorsPanel, &ColorsPanel::saveRequested, this, &MainWindow::askWhereToSaveColors);
    connect(&m_comparison, &QAbstractItemModel::modelReset, this, [this] {
        constexpr int maxTitle = 240; // pixels; the menu of panels shows the title, too
        const QString active =
            fontMetrics().elidedText(m_comparison.activeTitle(), Qt::ElideMiddle, maxTitle);
        m_panels.comparison->setWindowTitle(m_comparison.rowCount() > 1 ? tr("Comparison with %1").arg(active)
                                                                        : tr("Comparison"));
    });
    connect(m_clip, &ClipControl::changed, this, &MainWindow::applyClip);
    view().setSection(m_clip->section());
    connect(&m_annotations, &AnnotationBinding::described, m_area, &QWidget::setAccessibleDescription);
    m_annotations.update();
    connect(m_camera, &CameraControl::moved, this, &MainWindow::showViewState);
    connect(&view(), &KVGamutView::clicked, this, [this](const KVHit& hit) {
        if (hit.button == Qt::RightButton && !hit.endsDrag)
            m_viewContext->popup(QCursor::pos());
        else
            m_finding.inspect(hit);
    });
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
    connect(&m_drop, &FileDrop::hovered, new DropFrame(*m_pages), &DropFrame::setShown);
    m_pointDrop.watch(m_pointPanel);
    m_pointDrop.watch(m_colorsPanel);
    connect(&m_pointDrop, &FileDrop::dropped, this, &MainWindow::addPoints);
    connect(&m_pointDrop, &FileDrop::hovered, new DropFrame(*m_colorsPanel), &DropFrame::setShown);
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
    const KVSection section = view().section();
    m_clip->setSection(section.hue ? std::optional(m_clip->lightness()) : section.plane);
    m_viewMenu->sectionColors->setChecked(m_slice->isColored());
    m_viewMenu->showSectionKind(m_slice->kind());
    m_sectionBar->showState();
    m_slice->setLightness(m_clip->lightness());
}

void MainWindow::applyClip()
{
    view().setClipping(m_clip->clip());
    view().setSection(shownSection());
    m_slice->setLightness(m_clip->lightness());
}

/// The section in the view is of the same kind as that of the panel.
KVSection MainWindow::shownSection() const
{
    KVSection section = m_clip->section();
    if (section.plane && m_slice->kind() == SectionKind::Hue) {
        section.plane.reset();
        section.hue = m_slice->hue();
    }
    return section;
}

void MainWindow::showPage()
{
    const bool hasGamuts = m_gamuts.rowCount() > 0;
    const bool hasPoints = m_points.rowCount() > 0;
    m_pages->setCurrentIndex(hasGamuts || hasPoints ? 1 : 0);
    m_fileMenu->showContent(hasGamuts, hasPoints);
    m_editMenu->showContent(hasGamuts, hasPoints);
    setWindowTitle(m_document.title(titles()));
    setWindowModified(m_document.isModified());
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
    return {saveGeometry(),
            saveState(),
            m_area->viewer().background(),
            FileDialogs::folder(),
            m_annotations.isShown(),
            m_changes.isAutomatic()};
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
    m_fileMenu->reloadAutomatically->setChecked(memory.reloads);
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

void MainWindow::keepForNext()
{
    m_presentation->setOn(false);
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
    if (m_presentation->isOn())
        m_presentation->setOn(false);
    else if (m_loader.isBusy())
        cancelLoading();
    else
        m_messages->dismiss();
    m_area->setFocus();
}
