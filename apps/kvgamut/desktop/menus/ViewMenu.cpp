// SPDX-License-Identifier: Apache-2.0
#include "ViewMenu.h"

#include "MenuActions.h"
#include "SurroundingsMenus.h"
#include "desktop/panels/ClipControl.h"
#include "desktop/view/AnnotationBinding.h"
#include "desktop/view/CameraControl.h"

#include <QtGui/QActionGroup>
#include <QtWidgets/QDockWidget>

using MenuActions::add;
using MenuActions::addCheckable;

ViewMenu::ViewMenu(KVGamutView& view, AnnotationBinding& annotations, CameraControl& camera,
                   ClipControl& clip, const QList<QDockWidget*>& panels, QWidget* parent)
    : QMenu(tr("&View"), parent), m_view(view), m_annotations(annotations), m_camera(camera)
{
    addCamera();
    addSeparator();
    addSection(clip);
    addSeparator();
    addSurroundings();
    addSeparator();
    addPanels(panels);
    fullScreen = addCheckable(*this, "fullScreen", tr("F&ull screen"), QKeySequence(Qt::Key_F11));
    present = addCheckable(*this, "present", tr("Present"), QKeySequence(Qt::Key_F12));
    present->setToolTip(tr("Only the view and the legend, in large type; Esc returns"));
}

void ViewMenu::addCamera()
{
    const QAction* reset = add(*this, "reset", tr("&Reset camera"), QKeySequence(Qt::Key_R));
    const QAction* frame = add(*this, "frame", tr("&Frame the gamuts"), QKeySequence(Qt::Key_F));
    addDirections();
    m_orthogonal = addCheckable(*this, "orthogonal", tr("&Orthogonal"), QKeySequence(Qt::Key_O));
    const QAction* wider = add(*this, "wider", tr("&Wider angle"), QKeySequence(Qt::Key_W));
    const QAction* narrower =
        add(*this, "narrower", tr("&Narrower angle"), QKeySequence(QStringLiteral("Shift+W")));
    connect(reset, &QAction::triggered, &m_camera, &CameraControl::reset);
    connect(frame, &QAction::triggered, &m_camera, &CameraControl::frameGamuts);
    connect(m_orthogonal, &QAction::triggered, &m_camera, &CameraControl::setOrthogonal);
    connect(wider, &QAction::triggered, &m_camera, &CameraControl::widenAngle);
    connect(narrower, &QAction::triggered, &m_camera, &CameraControl::narrowAngle);
}

void ViewMenu::addDirections()
{
    QMenu* menu = addMenu(tr("&Look from"));
    const auto preset = [&](const char* name, const QString& text, Qt::Key key, KVGamut3DViewer::View view) {
        connect(add(*menu, name, text, QKeySequence(key)), &QAction::triggered, &m_camera,
                [this, view] { m_camera.lookFrom(view); });
    };
    const auto direction = [&](const char* name, const QString& text, Qt::Key key, const QVector3D& from) {
        connect(add(*menu, name, text, QKeySequence(key)), &QAction::triggered, &m_camera,
                [this, from] { m_camera.lookFrom(from); });
    };
    preset("fromTop", tr("&Top"), Qt::Key_T, KVGamut3DViewer::Top);
    preset("fromBottom", tr("&Bottom"), Qt::Key_B, KVGamut3DViewer::Bottom);
    direction("fromFront", tr("&Front: a* across"), Qt::Key_1, {0, 0, -1});
    direction("fromBack", tr("Bac&k"), Qt::Key_2, {0, 0, 1});
    direction("fromRight", tr("&Right: b* across"), Qt::Key_3, {0, 1, 0});
    direction("fromLeft", tr("&Left"), Qt::Key_4, {0, -1, 0});
}

void ViewMenu::addSection(ClipControl& clip)
{
    m_cut = addCheckable(*this, "cut", tr("&Cut at the lightness"), QKeySequence(Qt::Key_C));
    m_section = addCheckable(*this, "showSection", tr("&Section without cutting"),
                             QKeySequence(QStringLiteral("Shift+C")));
    sectionColors = addCheckable(*this, "sectionColors", tr("Section panel in &true colours"),
                                 QKeySequence(QStringLiteral("Shift+S")));
    const QAction* raise =
        add(*this, "raiseCut", tr("Lighter section"), QKeySequence(QStringLiteral("Ctrl+Up")));
    const QAction* lower =
        add(*this, "lowerCut", tr("Darker section"), QKeySequence(QStringLiteral("Ctrl+Down")));
    addSectionKinds();
    cursor = addCheckable(*this, "cursor", tr("Colour cursor"), QKeySequence(Qt::Key_K));
    cursor->setToolTip(tr("Chooses colours with the keyboard: arrow keys, Page Up, Page Down, Enter"));
    connect(m_cut, &QAction::triggered, &clip, &ClipControl::setCutting);
    connect(m_section, &QAction::triggered, &clip, &ClipControl::setSectionShown);
    connect(raise, &QAction::triggered, &clip, [&clip] { clip.step(1); });
    connect(lower, &QAction::triggered, &clip, [&clip] { clip.step(-1); });
    connect(&clip, &ClipControl::changed, m_cut,
            [this, &clip] { m_cut->setChecked(clip.clip().has_value()); });
}

/// What the section panel draws.
void ViewMenu::addSectionKinds()
{
    QMenu* menu = addMenu(tr("Section panel"));
    auto* group = new QActionGroup(this);
    const auto addKind = [&](const char* name, const QString& text, const char* key, SectionKind kind) {
        QAction* action = addCheckable(*menu, name, text, QKeySequence(QLatin1String(key)));
        connect(action, &QAction::triggered, this, [this, kind] { Q_EMIT sectionKindChosen(kind); });
        group->addAction(action);
        m_sectionKinds.append(action);
    };
    addKind("sectionOfLightness", tr("At a &lightness"), "Shift+G", SectionKind::Lightness);
    addKind("sectionOfHue", tr("At a &hue"), "Shift+H", SectionKind::Hue);
    addKind("sectionOfRings", tr("Gamut &rings"), "Shift+R", SectionKind::Rings);
    menu->addSeparator();
    nextHue = add(*menu, "nextHue", tr("&Next hue"), QKeySequence(QStringLiteral("Ctrl+Right")));
    previousHue = add(*menu, "previousHue", tr("&Previous hue"), QKeySequence(QStringLiteral("Ctrl+Left")));
}

void ViewMenu::showSectionKind(SectionKind kind)
{
    m_sectionKinds[static_cast<int>(kind)]->setChecked(true);
}

void ViewMenu::addSurroundings()
{
    m_axes = addCheckable(*this, "axes", tr("&Axes"), QKeySequence(Qt::Key_X));
    m_grid = addCheckable(*this, "gridLines", tr("&Grid"), QKeySequence(Qt::Key_G));
    m_plane = addCheckable(*this, "plane", tr("ab &plane"), QKeySequence(Qt::Key_P));
    m_annotate = addCheckable(*this, "annotate", tr("Scales and l&egend"), QKeySequence(Qt::Key_E));
    connect(m_annotate, &QAction::triggered, &m_annotations, &AnnotationBinding::setShown);
    connect(m_axes, &QAction::triggered, m_view.viewer(), &KVGamut3DViewer::setDisplayAxes);
    connect(m_axes, &QAction::triggered, &m_annotations, &AnnotationBinding::update);
    connect(m_grid, &QAction::triggered, m_view.viewer(), &KVGamut3DViewer::setDisplayGrid);
    connect(m_plane, &QAction::triggered, m_view.viewer(), &KVGamut3DViewer::setabPlane);
    m_background = new BackgroundMenu(*m_view.viewer(), parentWidget());
    addMenu(m_background);
    m_light = new LightMenu(m_view, parentWidget());
    addMenu(m_light);
}

void ViewMenu::addPanels(const QList<QDockWidget*>& panels)
{
    int number = 0;
    for (const QDockWidget* panel : panels) {
        QAction* action = panel->toggleViewAction();
        action->setObjectName(panel->objectName() + QStringLiteral("Shown"));
        action->setShortcut(QKeySequence(QStringLiteral("Ctrl+Alt+%1").arg(++number)));
        addAction(action);
    }
    resetPanels = add(*this, "resetPanels", tr("Reset panels"), QKeySequence(QStringLiteral("Ctrl+Alt+0")));
}

void ViewMenu::addTools(QAction& action)
{
    action.setObjectName(QStringLiteral("toolsShown"));
    action.setShortcut(QKeySequence(QStringLiteral("Ctrl+Alt+T")));
    insertAction(resetPanels, &action);
}

void ViewMenu::showState(const KVViewState& state)
{
    m_orthogonal->setChecked(state.camera.orthogonal);
    m_axes->setChecked(state.axes);
    m_annotations.update(); // the scales follow the axes
    m_annotate->setChecked(m_annotations.isShown());
    m_grid->setChecked(state.grid);
    m_plane->setChecked(state.plane);
    m_cut->setChecked(state.clipping.has_value());
    const KVSection section = m_view.section();
    m_section->setChecked(section.plane || section.hue);
    m_background->showBackground(state.theme.background);
    m_light->showPosition(state.light);
}
