// SPDX-License-Identifier: Apache-2.0
#include "MainWindow.h"

#include "desktop/files/FileKind.h"
#include "desktop/files/RecentFiles.h"
#include "desktop/language/ShownProblem.h"
#include "desktop/language/ShownWords.h"
#include "desktop/panels/ClipControl.h"
#include "desktop/panels/ComparisonTable.h"
#include "desktop/panels/GamutPanel.h"
#include "desktop/panels/MessageBar.h"
#include "desktop/panels/PointPanel.h"
#include "desktop/panels/SlicePanel.h"
#include "model/export/OutputFile.h"
#include "model/inputs/BuiltInProfiles.h"

#include <QtCore/QBuffer>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QMimeData>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QImageWriter>
#include <QtGui/QShortcut>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace {

constexpr int cameraMoveMs = 300;
constexpr float laterOpacity = 0.35f; // the first gamut is solid, the others let it shine through
constexpr float findingSize = 3.0f;

QString findingSet()
{
    return QStringLiteral("finding");
}

/// Files by their absolute path, since the working folder may differ next time; built-in names as such.
QString lastingName(const QString& input)
{
    return BuiltInProfiles::names().contains(input) ? input : QFileInfo(input).absoluteFilePath();
}

} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent), m_area(new ViewArea), m_loader(m_gamuts), m_binding(m_gamuts, m_area->viewer()),
      m_points(m_gamuts, m_area->viewer()), m_comparison(m_gamuts),
      m_inspector(m_gamuts, m_points, m_area->viewer()), m_pages(new QStackedWidget),
      m_messages(new MessageBar), m_clip(new ClipControl), m_gamutPanel(new GamutPanel(m_gamuts)),
      m_pointPanel(new PointPanel(m_points)), m_slice(new SlicePanel(m_gamuts)),
      m_table(new ComparisonTable(m_comparison)), m_finding(new QLabel), m_progress(new QProgressBar),
      m_cancel(new QToolButton)
{
    setWindowTitle(tr("kvgamut"));
    makeCentre();
    makePanels();
    makeStatusBar();
    makeMenus();
    forgetFinding();
    connectModels();
    showViewState();
    showLoading();
    showPage();
    resize(1280, 800);
}

MainWindow::~MainWindow() = default;

bool MainWindow::isComplete() const
{
    return !m_loader.isBusy() && m_binding.isUpToDate() && m_points.isComplete() && m_comparison.isComplete();
}

// --- Putting together -----------------------------------------------------------------------------

void MainWindow::makeCentre()
{
    auto* scene = new QWidget;
    auto* row = new QHBoxLayout(scene);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_area, 1);
    row->addWidget(m_clip);
    m_pages->addWidget(makeWelcome());
    m_pages->addWidget(scene);

    auto* centre = new QWidget;
    auto* column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_messages);
    column->addWidget(m_pages, 1);
    setCentralWidget(centre);
}

QWidget* MainWindow::makeWelcome()
{
    auto* welcome = new QWidget;
    welcome->setObjectName(QStringLiteral("welcome"));
    auto* head = new QLabel(tr("Open a profile to see its gamut"));
    QFont large = head->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    head->setFont(large);
    head->setAlignment(Qt::AlignHCenter);
    auto* words = new QLabel(
        tr("Drop ICC profiles, pictures with a profile or saved gamuts here.\n"
           "With two gamuts open they are compared. Measurements (CGATS, CxF, CSV) show as points."));
    words->setAlignment(Qt::AlignHCenter);
    words->setWordWrap(true);
    auto* openButton = new QPushButton(tr("&Open a file…"));
    openButton->setObjectName(QStringLiteral("welcomeOpen"));
    connect(openButton, &QPushButton::clicked, this, &MainWindow::askForFiles);
    auto* example = new QPushButton(tr("Compare s&RGB with Display P3"));
    example->setObjectName(QStringLiteral("welcomeExample"));
    connect(example, &QPushButton::clicked, this, [this] {
        addGamut(QStringLiteral("sRGB"));
        addGamut(QStringLiteral("DisplayP3"));
    });
    auto* column = new QVBoxLayout(welcome);
    column->addStretch(2);
    column->addWidget(head);
    column->addSpacing(8);
    column->addWidget(words);
    column->addSpacing(20);
    column->addWidget(openButton, 0, Qt::AlignHCenter);
    column->addWidget(example, 0, Qt::AlignHCenter);
    column->addStretch(3);
    return welcome;
}

void MainWindow::makePanels()
{
    const auto dock = [this](const QString& name, const QString& title, QWidget* content,
                             Qt::DockWidgetArea place) {
        auto* panel = new QDockWidget(title);
        panel->setObjectName(name);
        panel->setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable);
        panel->setWidget(content);
        addDockWidget(place, panel);
        return panel;
    };
    m_finding->setObjectName(QStringLiteral("finding"));
    m_finding->setAccessibleName(tr("Under the pointer"));
    m_finding->setTextFormat(Qt::PlainText);
    m_finding->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_finding->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    m_finding->setMargin(8);
    m_finding->setWordWrap(true);
    auto* findingScroll = new QScrollArea; // with many gamuts open there are many lines
    findingScroll->setWidget(m_finding);
    findingScroll->setWidgetResizable(true);
    findingScroll->setFrameShape(QFrame::NoFrame);
    findingScroll->setFocusPolicy(Qt::NoFocus);
    findingScroll->setMinimumSize(m_finding->fontMetrics().averageCharWidth() * 38,
                                  m_finding->fontMetrics().lineSpacing() * 6);

    setAnimated(false); // moving panels would redraw the scene at every step
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    dock(QStringLiteral("gamutsDock"), tr("Gamuts"), m_gamutPanel, Qt::LeftDockWidgetArea);
    QDockWidget* section =
        dock(QStringLiteral("sectionDock"), tr("Section"), m_slice, Qt::RightDockWidgetArea);
    QDockWidget* points =
        dock(QStringLiteral("pointsDock"), tr("Points"), m_pointPanel, Qt::RightDockWidgetArea);
    QDockWidget* comparison =
        dock(QStringLiteral("comparisonDock"), tr("Comparison"), m_table, Qt::BottomDockWidgetArea);
    QDockWidget* finding =
        dock(QStringLiteral("findingDock"), tr("Clicked colour"), findingScroll, Qt::BottomDockWidgetArea);
    splitDockWidget(comparison, finding, Qt::Horizontal);
    constexpr int sectionSide = 320;
    resizeDocks({section, points}, {sectionSide, sectionSide / 2}, Qt::Vertical);
    resizeDocks({section}, {sectionSide}, Qt::Horizontal);
    resizeDocks({comparison, finding}, {3 * sectionSide, sectionSide / 2}, Qt::Horizontal);
    resizeDocks({comparison}, {m_table->sizeHint().height()}, Qt::Vertical);
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
    // as high while nothing loads: the view must not change its size with every load
    statusBar()->setMinimumHeight(m_cancel->sizeHint().height() + 8);
    statusBar()->addPermanentWidget(m_progress);
    statusBar()->addPermanentWidget(m_cancel);
    connect(m_cancel, &QToolButton::clicked, this, &MainWindow::cancelLoading);
}

void MainWindow::connectModels()
{
    connect(&m_loader, &GamutQueue::failed, this, [this](const QString& problem) {
        haveOneSolid();
        say(problem);
    });
    connect(&m_loader, &GamutQueue::progressed, this, &MainWindow::showLoading);
    connect(&m_loader, &GamutQueue::idle, this, &MainWindow::loadingEnded);
    connect(&m_points, &PointLayer::failed, this, &MainWindow::say);
    connect(&m_points, &PointLayer::noted, m_messages,
            [this](const QString& note) { m_messages->say(shownProblem(note)); });
    for (QAbstractItemModel* model :
         {static_cast<QAbstractItemModel*>(&m_gamuts), static_cast<QAbstractItemModel*>(&m_points)}) {
        connect(model, &QAbstractItemModel::rowsInserted, this, &MainWindow::showPage);
        connect(model, &QAbstractItemModel::rowsRemoved, this, &MainWindow::showPage);
        connect(model, &QAbstractItemModel::modelReset, this, &MainWindow::showPage);
    }
    connect(&m_gamuts, &GamutListModel::activeRowChanged, this, &MainWindow::showActiveGamut);
    connect(&m_gamuts, &QAbstractItemModel::dataChanged, this, &MainWindow::showActiveGamut);
    connect(m_gamutPanel, &GamutPanel::removeRequested, this, [this](int row) { m_gamuts.remove(row); });
    connect(m_pointPanel, &PointPanel::openRequested, this, &MainWindow::askForPoints);
    auto* comparisonDock = findChild<QDockWidget*>(QStringLiteral("comparisonDock"));
    connect(&m_comparison, &QAbstractItemModel::modelReset, this, [this, comparisonDock] {
        comparisonDock->setWindowTitle(m_comparison.rowCount() > 1
                                           ? tr("Comparison with %1").arg(m_comparison.activeTitle())
                                           : tr("Comparison"));
    });
    connect(m_clip, &ClipControl::changed, this, &MainWindow::applyClip);
    // a shortcut, since a key that goes to the view passes no widget
    auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(escape, &QShortcut::activated, this, &MainWindow::cancelOrDismiss);
    connect(m_area, &ViewArea::clicked, this, [this](const QVector3D& origin, const QVector3D& direction) {
        inspect({origin, direction});
    });

    connect(m_slice, &SlicePanel::hovered, this, [this](const std::optional<QVector3D>& lab) {
        if (lab)
            statusBar()->showMessage(ShownWords::lab(*lab) + QStringLiteral("      ") +
                                     ShownWords::lch(*lab));
        else
            statusBar()->clearMessage();
    });

    m_drop.watch(this);
    m_drop.watch(&viewer());
    connect(&m_drop, &FileDrop::dropped, this, &MainWindow::open);
    m_pointDrop.watch(m_pointPanel);
    connect(&m_pointDrop, &FileDrop::dropped, this, &MainWindow::addPoints);
}

// --- Opening --------------------------------------------------------------------------------------

void MainWindow::open(const QStringList& files)
{
    for (const QString& file : files) {
        switch (fileKind(file)) {
        case FileKind::Gamut:
            addGamut(file);
            break;
        case FileKind::Points:
            addPoints({file});
            break;
        case FileKind::Session:
            openSession(file);
            break;
        }
    }
}

void MainWindow::addGamut(const QString& input)
{
    GamutLook look;
    look.opacity = m_gamuts.rowCount() == 0 ? 1.0f : laterOpacity;
    addGamut(input, GamutSettings(), look);
}

void MainWindow::addGamut(const QString& input, const GamutSettings& settings, const GamutLook& look)
{
    const QString name = lastingName(input);
    // what does not open is named as the person named it
    m_gamuts.add(QFileInfo::exists(name) ? name : input, settings, look);
    if (QFileInfo::exists(name))
        remember(name);
}

/// When the gamut that was to be solid did not load, the first of the others is.
void MainWindow::haveOneSolid()
{
    const QList<GamutEntry>& entries = m_gamuts.entries();
    const auto isTranslucent = [](const GamutEntry& entry) { return entry.look.opacity < 1.0f; };
    if (entries.isEmpty() || !std::all_of(entries.begin(), entries.end(), isTranslucent) ||
        entries.first().look.opacity != laterOpacity)
        return;
    GamutLook look = entries.first().look;
    look.opacity = 1.0f;
    m_gamuts.setLook(0, look);
}

void MainWindow::addPoints(const QStringList& files)
{
    for (const QString& file : files) {
        m_points.open(QFileInfo(file).absoluteFilePath());
        remember(QFileInfo(file).absoluteFilePath());
    }
}

/// The menu of recent files has keys, which hold before it is opened. It is made anew when the action that
/// opened @p file, perhaps one of its own, has done.
void MainWindow::remember(const QString& file)
{
    RecentFiles::add(file);
    QMetaObject::invokeMethod(this, &MainWindow::showRecentFiles, Qt::QueuedConnection);
}

void MainWindow::cancelLoading()
{
    m_loader.cancelAll();
}

// --- Sessions -------------------------------------------------------------------------------------

Session MainWindow::session() const
{
    Session session;
    for (const GamutEntry& entry : m_gamuts.entries())
        session.gamuts.append({entry.input, entry.settings, entry.look});
    session.active = std::max(0, m_gamuts.activeRow());
    session.view = ViewState::of(m_area->viewer());
    session.points = m_points.files();
    session.tolerance = m_points.tolerance();
    return session;
}

void MainWindow::restore(const Session& session)
{
    while (m_gamuts.rowCount() > 0)
        m_gamuts.remove(m_gamuts.rowCount() - 1);
    m_points.clear();
    for (const Session::Gamut& gamut : session.gamuts)
        m_gamuts.add(gamut.input, gamut.settings, gamut.look);
    m_gamuts.setActiveRow(session.active);
    for (const QString& file : session.points)
        m_points.open(file);
    m_points.setTolerance(session.tolerance);
    m_pointPanel->showTolerance();
    session.view.applyTo(viewer());
    keepCamera();
    showViewState();
}

bool MainWindow::saveSession(const QString& file)
{
    const QString trouble = writeOutput(file, session().toJson(QFileInfo(file).absoluteDir()));
    if (!trouble.isEmpty()) {
        say(trouble);
        return false;
    }
    remember(QFileInfo(file).absoluteFilePath());
    statusBar()->showMessage(tr("Saved %1").arg(QDir::toNativeSeparators(file)), 5000);
    return true;
}

bool MainWindow::openSession(const QString& file)
{
    QFile input(file);
    QString trouble;
    if (!input.open(QIODevice::ReadOnly)) {
        say(QStringLiteral("'%1': %2").arg(file, input.errorString()));
        return false;
    }
    const auto session = Session::fromJson(input.readAll(), QFileInfo(file).absoluteDir(), trouble);
    if (!session) {
        say(QStringLiteral("'%1': %2").arg(file, trouble));
        return false;
    }
    restore(*session);
    remember(QFileInfo(file).absoluteFilePath());
    return true;
}

// --- Pictures and the clipboard -------------------------------------------------------------------

bool MainWindow::savePicture(const QString& file, const QSize& size)
{
    const QImage picture = viewer().picture(size);
    if (picture.isNull()) {
        say(QStringLiteral("There is no picture to save: nothing is shown, or memory does not suffice."));
        return false;
    }
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QByteArray format = QFileInfo(file).suffix().toLatin1().toUpper();
    if (format.isEmpty())
        format = "PNG";
    QImageWriter writer(&buffer, format);
    if (!writer.write(picture)) {
        say(QStringLiteral("'%1': %2").arg(file, writer.errorString()));
        return false;
    }
    const QString trouble = writeOutput(file, buffer.data());
    if (!trouble.isEmpty()) {
        say(trouble);
        return false;
    }
    statusBar()->showMessage(tr("Saved %1").arg(QDir::toNativeSeparators(file)), 5000);
    return true;
}

bool MainWindow::saveSection(const QString& file)
{
    const QString trouble = m_slice->save(file);
    if (!trouble.isEmpty()) {
        say(trouble);
        return false;
    }
    statusBar()->showMessage(tr("Saved %1").arg(QDir::toNativeSeparators(file)), 5000);
    return true;
}

void MainWindow::copyPicture()
{
    const QImage picture = viewer().picture();
    if (!picture.isNull())
        QGuiApplication::clipboard()->setImage(picture);
}

void MainWindow::copyFinding() const
{
    QGuiApplication::clipboard()->setText(m_finding->text());
}

void MainWindow::copyCamera() const
{
    QGuiApplication::clipboard()->setText(ViewCamera::of(m_area->viewer()).toText());
}

void MainWindow::pasteCamera()
{
    const auto camera = ViewCamera::fromText(QGuiApplication::clipboard()->text());
    if (!camera) {
        say(QStringLiteral("The clipboard holds no camera. One looks like this: %1")
                .arg(ViewCamera::of(viewer()).toText()));
        return;
    }
    moveCamera(*camera);
}

// --- Camera and look ------------------------------------------------------------------------------

void MainWindow::moveCamera(const ViewCamera& camera)
{
    m_cameraChosen = true;
    camera.applyTo(viewer(), m_wasShown ? cameraMoveMs : 0);
    showViewState();
}

void MainWindow::resetCamera()
{
    moveCamera(obliqueCamera(m_area->aspect()));
}

/// From as far away as now, along @p direction.
void MainWindow::lookFrom(const QVector3D& direction)
{
    ViewCamera camera = ViewCamera::of(viewer());
    camera.interest = QVector3D(50, 0, 0);
    const float distance = (obliqueCamera(m_area->aspect()).eye - camera.interest).length();
    camera.eye = camera.interest + direction * distance;
    moveCamera(camera);
}

void MainWindow::frameGamuts()
{
    QList<QVector3D> positions;
    for (const GamutEntry& entry : m_gamuts.entries()) {
        if (!entry.look.visible)
            continue;
        const auto faces = viewer().faceList(entry.id);
        for (const auto& face : faces)
            positions.append(face);
    }
    moveCamera(framing(ViewCamera::of(viewer()), positions, m_area->aspect()));
}

void MainWindow::setBackground(const QColor& color)
{
    viewer().setBackground(color);
}

void MainWindow::applyClip()
{
    setClip(viewer(), m_clip->clip());
    m_slice->setLightness(m_clip->lightness());
    actionNamed("cut")->setChecked(m_clip->clip().has_value());
}

void MainWindow::changeActive(const std::function<void(GamutEntry&)>& change)
{
    const int row = m_gamuts.activeRow();
    if (row < 0)
        return;
    GamutEntry wished = m_gamuts.at(row);
    change(wished);
    m_gamuts.setLook(row, wished.look);
    m_gamuts.setSettings(row, wished.settings);
}

// --- What is under the pointer --------------------------------------------------------------------

void MainWindow::inspect(const Picker::Ray& ray)
{
    const auto finding = m_inspector.look(ray);
    if (!finding) {
        forgetFinding();
        return;
    }
    m_finding->setText(finding->text);
    actionNamed("copyFinding")->setEnabled(true);
    const QColor mark = finding->lab.x() > 50.0f ? Qt::black : Qt::white;
    viewer().addMarkerSet(findingSet(), KVGamut3DViewer::Sphere, {{mark, finding->lab}}, findingSize, 1.0f);
}

void MainWindow::forgetFinding()
{
    viewer().removeMarkerSet(findingSet());
    actionNamed("copyFinding")->setEnabled(false);
    m_finding->setText(tr("Click a gamut or a point to see its colour here."));
}

// --- Following ------------------------------------------------------------------------------------

void MainWindow::showPage()
{
    m_pages->setCurrentIndex(m_gamuts.rowCount() + m_points.rowCount() > 0 ? 1 : 0);
    QStringList titles;
    for (const GamutEntry& entry : m_gamuts.entries())
        titles.append(entry.title);
    setWindowTitle(titles.isEmpty() ? tr("kvgamut")
                                    : tr("%1 – kvgamut").arg(titles.join(QStringLiteral(", "))));
    showActiveGamut();
}

void MainWindow::showLoading()
{
    m_progress->setVisible(m_loader.isBusy());
    m_cancel->setVisible(m_loader.isBusy());
    m_progress->setValue(qRound(m_loader.progress() * 100.0f));
}

void MainWindow::say(const QString& message)
{
    m_messages->say(shownProblem(message));
    Q_EMIT problem(message);
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (m_wasShown)
        return;
    if (!m_cameraChosen)
        resetCamera();
    m_wasShown = true;
}

void MainWindow::cancelOrDismiss()
{
    if (m_loader.isBusy())
        cancelLoading();
    else
        m_messages->dismiss();
}
