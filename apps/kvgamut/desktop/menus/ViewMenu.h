// SPDX-License-Identifier: Apache-2.0
#pragma once

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

    QAction* fullScreen;    ///< connected by the window
    QAction* sectionColors; ///< connected by the window
    QAction* resetPanels;   ///< connected by the window

    /// Checks the actions that @p state corresponds to.
    void showState(const KVViewState& state);

private:
    void addCamera();
    void addDirections();
    void addSection(ClipControl& clip);
    void addSurroundings();
    void addPanels(const QList<QDockWidget*>& panels);

    KVGamutView& m_view;
    AnnotationBinding& m_annotations;
    CameraControl& m_camera;
    QAction* m_orthogonal;
    QAction* m_cut;
    QAction* m_section;
    QAction* m_axes;
    QAction* m_grid;
    QAction* m_plane;
    QAction* m_annotate;
    BackgroundMenu* m_background;
    LightMenu* m_light;
};
