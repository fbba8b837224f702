// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/files/FileDrop.h"
#include "desktop/files/Session.h"
#include "desktop/models/ComparisonModel.h"
#include "desktop/models/GamutListModel.h"
#include "desktop/models/GamutQueue.h"
#include "desktop/models/PointLayer.h"
#include "desktop/panels/Inspector.h"
#include "desktop/view/ViewArea.h"
#include "desktop/view/ViewerBinding.h"

#include <QtWidgets/QMainWindow>

#include <functional>

class ClipControl;
class ComparisonTable;
class GamutPanel;
class MessageBar;
class PointPanel;
class QLabel;
class QProgressBar;
class QStackedWidget;
class QToolButton;
class SlicePanel;

/// The window of `kvgamut view`: puts the viewer, the models and the panels together. What is shown
/// lives in the list of gamuts, the point layer and the viewer; the window only passes wishes on.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    /// @name What is shown
    /// @{
    KVGamut3DViewer& viewer() { return m_area->viewer(); }
    GamutListModel& gamuts() { return m_gamuts; }
    PointLayer& points() { return m_points; }
    const ComparisonModel& comparison() const { return m_comparison; }
    /// Whether nothing is on its way: loads, comparisons, points.
    bool isComplete() const;
    /// @}

    /// @name What people ask for
    /// @{

    /// Opens files of every kind: gamuts, points, a session.
    void open(const QStringList& files);
    void addGamut(const QString& input);
    void addGamut(const QString& input, const GamutSettings& settings, const GamutLook& look);
    /// Shows @p files of measurements, and the pixels of pictures, as points.
    void addPoints(const QStringList& files);

    Session session() const;
    void restore(const Session& session);
    bool saveSession(const QString& file);
    bool openSession(const QString& file);

    bool savePicture(const QString& file, const QSize& size);
    void copyPicture();
    bool saveSection(const QString& file);
    void copyFinding() const;
    void copyCamera() const;
    void pasteCamera();
    void cancelLoading();
    /// @}

    /// The controls follow the viewer, which somebody else has changed.
    void showViewState();
    /// The camera was chosen: the window keeps it when it is first shown.
    void keepCamera() { m_cameraChosen = true; }

    /// @param message in English; the message bar says it in the language of the window
    void say(const QString& message);

    QMenu* createPopupMenu() override { return nullptr; }

Q_SIGNALS:
    /// Something could not be done; the message bar says so, too. In English.
    void problem(QString message);
    /// The last load in progress has ended.
    void loadingEnded();

protected:
    void showEvent(QShowEvent* event) override;

private:
    using Act = std::function<void()>;
    using Switch = std::function<void(bool)>;

    void makeCentre();
    QWidget* makeWelcome();
    void makePanels();
    void makeStatusBar();
    void connectModels();

    void makeMenus();
    void makeFileMenu();
    void makeEditMenu();
    void makeGamutMenu();
    void makeViewMenu();
    void makeLookMenu(QMenu* view);
    void makeHelpMenu();
    QAction* addAct(QMenu* menu, const QString& name, const QString& text, const QKeySequence& key, Act act);
    QAction* addSwitch(QMenu* menu, const QString& name, const QString& text, const QKeySequence& key,
                       Switch act);
    QAction* actionNamed(const char* name) const;

    void askForFiles();
    void askForPoints();
    void askForSession();
    void askWhereToSaveSession();
    void askWhereToSavePicture();
    void askWhereToSaveSection();
    void showRecentFiles();
    void remember(const QString& file);
    void showKeys();

    void haveOneSolid();
    void changeActive(const std::function<void(GamutEntry&)>& change);
    void moveCamera(const ViewCamera& camera);
    void lookFrom(const QVector3D& direction);
    void resetCamera();
    void frameGamuts();
    void setBackground(const QColor& color);
    void applyClip();
    void inspect(const Picker::Ray& ray);
    void forgetFinding();
    void cancelOrDismiss();
    void showLoading();
    void showActiveGamut();
    void showPage();

    GamutListModel m_gamuts;
    ViewArea* m_area; ///< owned by the window, as all widgets
    GamutQueue m_loader;
    ViewerBinding m_binding;
    PointLayer m_points;
    ComparisonModel m_comparison;
    Inspector m_inspector;
    FileDrop m_drop;
    FileDrop m_pointDrop;

    QStackedWidget* m_pages;
    MessageBar* m_messages;
    ClipControl* m_clip;
    GamutPanel* m_gamutPanel;
    PointPanel* m_pointPanel;
    SlicePanel* m_slice;
    ComparisonTable* m_table;
    QLabel* m_finding;
    QProgressBar* m_progress;
    QToolButton* m_cancel;
    QMenu* m_recent = nullptr;
    bool m_cameraChosen = false; ///< by somebody, before the window was first shown
    bool m_wasShown = false;
};
