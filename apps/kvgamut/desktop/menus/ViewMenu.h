// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/SectionKind.h"

#include <KVGamutView.h>

#include <QtWidgets/QMenu>

class AnnotationBinding;
class BackgroundMenu;
class CameraControl;
class ClipControl;
class LightMenu;
class QDockWidget;

/// The menu "View": camera, section, surroundings, and the panels of the window.
class ViewMenu : public QMenu
{
    Q_OBJECT
public:
    ViewMenu(KVGamutView& view, AnnotationBinding& annotations, CameraControl& camera, ClipControl& clip,
             const QList<QDockWidget*>& panels, QWidget* parent);

    /// @name Connected by the window
    /// @{
    QAction* fullScreen;
    QAction* present;
    QAction* cursor;
    QAction* sectionColors;
    QAction* nextHue;
    QAction* previousHue;
    QAction* resetPanels;
    /// @}

Q_SIGNALS:
    void sectionKindChosen(SectionKind kind);

public:
    /// Adds the action that shows and hides the bar of tools.
    void addTools(QAction& action);
    /// Checks the action of what the section panel draws.
    void showSectionKind(SectionKind kind);

    /// Checks the actions that @p state corresponds to.
    void showState(const KVViewState& state);

private:
    void addCamera();
    void addDirections();
    void addSection(ClipControl& clip);
    void addSectionKinds();
    void addSurroundings();
    void addPanels(const QList<QDockWidget*>& panels);

    KVGamutView& m_view;
    AnnotationBinding& m_annotations;
    CameraControl& m_camera;
    QAction* m_orthogonal;
    QAction* m_cut;
    QAction* m_section;
    QList<QAction*> m_sectionKinds; ///< index: SectionKind
    QAction* m_axes;
    QAction* m_grid;
    QAction* m_plane;
    QAction* m_annotate;
    BackgroundMenu* m_background;
    LightMenu* m_light;
};
