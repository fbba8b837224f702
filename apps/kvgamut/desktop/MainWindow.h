// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/files/Autosave.h"
#include "desktop/files/FileDrop.h"
#include "desktop/files/Session.h"
#include "desktop/files/SessionDocument.h"
#include "desktop/models/AutomaticLooks.h"
#include "desktop/models/ChangedFiles.h"
#include "desktop/models/ColorTable.h"
#include "desktop/models/ComparisonModel.h"
#include "desktop/models/GamutListModel.h"
#include "desktop/models/GamutQueue.h"
#include "desktop/models/History.h"
#include "desktop/models/MemoryReturn.h"
#include "desktop/models/PointLayer.h"
#include "desktop/panels/FindingControl.h"
#include "desktop/panels/PanelLayout.h"
#include "desktop/panels/SlicePanel.h"
#include "desktop/view/AnnotationBinding.h"
#include "desktop/view/ViewArea.h"
#include "desktop/view/ViewerBinding.h"

#include <QtCore/QFuture>
#include <QtWidgets/QMainWindow>

#include <memory>

class CameraControl;
class ClipControl;
class ColorsPanel;
class ComparisonTable;
class CoverageTable;
class EditMenu;
class FileMenu;
class FindingPanel;
class GamutMenu;
class GamutPanel;
class HelpMenu;
class KeyboardCursor;
class MessageBar;
class OfferBar;
class PointPanel;
class Presentation;
class QProgressBar;
class QStackedWidget;
class QToolButton;
class SectionBar;
class ViewMenu;
struct WindowMemory;

/// The window of `kvgamut view`: puts the viewer, the models, the panels and the menus together. What is
/// shown is stored in the list of gamuts, the point layer and the viewer.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    /// @name Parts and state
    /// @{
    KVGamut3DViewer& viewer() { return m_area->viewer(); }
    KVGamutView& view() { return m_area->view(); }
    GamutListModel& gamuts() { return m_gamuts; }
    PointLayer& points() { return m_points; }
    const ComparisonModel& comparison() const { return m_comparison; }
    const ColorTable& colors() const { return m_colors; }
    /// Whether no load, comparison, file of points, session or page is in progress, and no unsaved change
    /// waits to be kept.
    bool isComplete() const;
    /// @}

    /// @name User actions
    /// @{

    /// Opens files of every kind: gamuts, points, sessions.
    void open(const QStringList& files);
    void addGamut(const QString& input);
    /// @param automaticOpacity whether the opacity, at first that of @p look, follows which gamut is inside
    /// which
    void addGamut(const QString& input, const KVGamut::Settings& settings, const KVGamutLook& look,
                  bool automaticOpacity = false);
    /// Shows @p files of measurements, and the pixels of pictures, as points.
    void addPoints(const QStringList& files);

    Session session() const;
    void restore(const Session& session);
    bool saveSession(const QString& file);
    /// To the file that the session came from; asks for one if it has none. @return whether it was saved
    bool saveSession();
    /// Reads @p file and shows the session. Waits for the file.
    bool openSession(const QString& file);
    /// The same without waiting: the session appears when the file has been read.
    void readSession(const QString& file);

    bool savePicture(const QString& file, const QSize& size, bool transparent = false);
    void copyPicture();
    bool saveSection(const QString& file);
    /// Writes the colours that are listed as CSV, in the background.
    void saveColors(const QString& file);
    /// Writes a page that shows the gamuts in a browser, as `kvgamut export` does, in the background.
    void savePage(const QString& file);
    /// Writes the active gamut as a mesh or a saved gamut, in the background.
    void saveGamut(const QString& file);
    void copyFinding();
    void copyCamera();
    void pasteCamera();
    void cancelLoading();
    /// @}

    /// From now on unsaved changes are not lost: what is shown now counts as saved; the window asks about
    /// later changes before it closes or shows another session, keeps them in case of a crash, and offers
    /// those of a window that crashed. Without it, as with `--no-settings`, the window asks nothing.
    void protectWork();

    /// Updates the controls after the viewer was changed from outside the window.
    void showViewState();
    /// Keeps the current camera when the window is first shown, instead of setting the default one.
    void keepCamera();

    /// @name Size, panels and surroundings
    /// @{

    /// @p wanted, or less if the screen is smaller.
    QSize fitting(const QSize& wanted) const;
    /// What the next window takes over.
    WindowMemory memory() const;
    /// Takes over what an earlier window kept. What is missing, or does not fit, stays as it is.
    void recall(const WindowMemory& memory);
    /// The same from the user's settings. @param size instead of the kept one, if it is not empty
    void recallLast(const QSize& size, bool withBackground);
    void keepForNext();           ///< memory() in the user's settings
    static void ignoreSettings(); ///< from now on: neither reads nor writes any
    /// Shows all panels at their first places.
    void resetPanels();
    /// @}

    /// Shows @p failure in the message bar and emits problem().
    void say(const Problem& failure);

    QMenu* createPopupMenu() override { return nullptr; }

Q_SIGNALS:
    /// Something failed; the message bar shows it, too.
    void problem(const Problem& failure);
    /// The last load in progress has ended.
    void loadingEnded();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeCentre();
    void makePanels();
    QDockWidget* makePanel(const char* name, const QString& title, QWidget* content);
    void makeStatusBar();
    void makeMenus();
    void connectFileMenu();
    void connectEditMenu();
    void connectLoading();
    void connectPanels();
    void connectDrops();
    void connectDocument();
    void connectChanges();

    void askForFiles();
    void askForPoints();
    void askForSession();
    bool askWhereToSaveSession();
    void askWhereToSavePicture();
    void askWhereToSaveSection();
    void askWhereToSavePage();
    void askWhereToSaveColors();
    void askWhereToSaveGamut();
    void writeInBackground(const QString& file, const QFuture<std::optional<Problem>>& problem);
    void closeAll();
    bool mayReplace();
    void offerLostWork();
    void offerChanges();
    void restoreLostWork();
    void cancelSession();
    bool restore(const Result<Session>& session, const QString& file);
    void remember(const QString& file);
    void sayBriefly(const QString& message);
    bool isSaved(const QString& file, const std::optional<Problem>& failure);
    void connectGamutMenu();
    void connectViewMenu();
    void connectHelpMenu();
    void connectCursor();
    void makeContextMenus();
    QList<QAction*> actionsNamed(std::initializer_list<const char*> names) const;
    void showKeys();
    void findCommand();
    void showInformation();
    void showCoverage();
    void showAbout();
    void setSectionKind(SectionKind kind);
    void turnHue(float degrees);
    void sayPlace(const QVector3D& cursor);

    void applyClip();
    KVSection shownSection() const;
    KVProfilePtr profileOf(const QString& id) const;
    void cancelOrDismiss();
    void showMask(int row);
    void showLoading();
    void showPage();
    QStringList titles() const;

    GamutListModel m_gamuts;
    ViewArea* m_area; ///< owned by the window, as all widgets
    GamutQueue m_loader;
    MemoryReturn m_memory{m_gamuts, m_area->view()};
    AutomaticLooks m_looks;
    ViewerBinding m_binding;
    AnnotationBinding m_annotations;
    PointLayer m_points;
    ChangedFiles m_changes;
    History m_history;
    SessionDocument m_document;
    Autosave m_autosave;
    std::unique_ptr<LostWork> m_lost; ///< that is offered; may be null
    bool m_isProtected = false;       ///< see protectWork()
    ColorChecks m_checks;
    ColorTable m_colors;
    ComparisonModel m_comparison;
    FileDrop m_drop;
    FileDrop m_pointDrop;
    KVCompletionProtocolPtr m_sessionTask; ///< of the session that is being read; may be null
    int m_unwritten = 0;                   ///< files that are being written

    QStackedWidget* m_pages;
    MessageBar* m_messages;
    OfferBar* m_offers;
    ClipControl* m_clip;
    GamutPanel* m_gamutPanel;
    PointPanel* m_pointPanel;
    ColorsPanel* m_colorsPanel;
    SlicePanel* m_slice;
    SectionBar* m_sectionBar;
    ComparisonTable* m_table;
    FindingPanel* m_findingPanel;
    FindingControl m_finding;
    QProgressBar* m_progress;
    QToolButton* m_cancel;
    PanelLayout m_panels{};
    CameraControl* m_camera;
    FileMenu* m_fileMenu;
    EditMenu* m_editMenu;
    GamutMenu* m_gamutMenu;
    ViewMenu* m_viewMenu;
    HelpMenu* m_helpMenu;
    QMenu* m_viewContext; ///< of the view
    KeyboardCursor* m_cursor;
    Presentation* m_presentation;
};
