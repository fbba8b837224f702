// SPDX-License-Identifier: Apache-2.0
#include "GamutMenu.h"

#include "MenuActions.h"
#include "desktop/language/ShownWords.h"

#include <QtGui/QActionGroup>

#include <algorithm>

using MenuActions::add;
using MenuActions::addCheckable;

namespace {

constexpr float opacityStep = 0.1f;

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

GamutMenu::GamutMenu(GamutListModel& model, QWidget* parent) : QMenu(tr("&Gamut"), parent), m_model(model)
{
    m_next = add(*this, "nextGamut", tr("&Next gamut"), QKeySequence(Qt::Key_N));
    m_remove = add(*this, "removeGamut", tr("&Remove gamut"), QKeySequence(QStringLiteral("Ctrl+Backspace")));
    m_solo = addCheckable(*this, "solo", tr("Only this gamut"), QKeySequence(QStringLiteral("Shift+V")));
    information = add(*this, "information", tr("Information…"), QKeySequence(QStringLiteral("Alt+Return")));
    matrix = add(*this, "matrix", tr("Coverage of all…"), QKeySequence(QStringLiteral("Ctrl+Shift+M")));
    connect(m_solo, &QAction::triggered, &m_model, &GamutListModel::setSolo);
    connect(&m_model, &GamutListModel::soloChanged, m_solo, &QAction::setChecked);
    connect(m_next, &QAction::triggered, this, &GamutMenu::activateNext);
    connect(m_remove, &QAction::triggered, this, &GamutMenu::removeActive);
    addSeparator();
    addIntents();
    addSeparator();
    addLookSwitches();
    addSteps();
    connect(&model, &GamutListModel::activeRowChanged, this, &GamutMenu::showActive);
    connect(&model, &QAbstractItemModel::dataChanged, this, &GamutMenu::showActive);
    connect(&model, &QAbstractItemModel::rowsInserted, this, &GamutMenu::showActive);
    connect(&model, &QAbstractItemModel::rowsRemoved, this, &GamutMenu::showActive);
    showActive();
}

void GamutMenu::addIntents()
{
    auto* group = new QActionGroup(this);
    for (const KVVMRenderType intent : {KVVMRenderPerceptual, KVVMRenderRelativeColorimetric,
                                        KVVMRenderSaturation, KVVMRenderAbsoluteColorimetric}) {
        const QByteArray name = "intent" + QByteArray::number(intent);
        QAction* action = addCheckable(*this, name, ShownWords::intent(intent),
                                       QKeySequence(Qt::Key_F5 + static_cast<int>(intent)));
        connect(action, &QAction::triggered, this, [this, intent] {
            m_model.changeActiveSettings([intent](KVGamut::Settings& s) { s.intent = intent; });
        });
        group->addAction(action);
        m_intents.append(action);
    }
    m_blackPoint =
        addCheckable(*this, "activeBlackPoint", tr("&Black point compensation"), QKeySequence(Qt::Key_F9));
    connect(m_blackPoint, &QAction::triggered, this, [this](bool on) {
        m_model.changeActiveSettings([on](KVGamut::Settings& s) { s.blackPointCompensation = on; });
    });
}

void GamutMenu::addLookSwitches()
{
    m_visible = addLookSwitch("activeVisible", tr("&Visible"), Qt::Key_V, &KVGamutLook::visible);
    m_surface = addLookSwitch("activeSurface", tr("&Surface"), Qt::Key_S, &KVGamutLook::surface);
    m_projection = addLookSwitch("activeProjection", tr("Pro&jection"), Qt::Key_J, &KVGamutLook::projection);
    m_primaries = addLookSwitch("activePrimaries", tr("&Primaries"), Qt::Key_I, &KVGamutLook::primaries);
}

QAction* GamutMenu::addLookSwitch(const char* name, const QString& text, Qt::Key key,
                                  bool KVGamutLook::*member)
{
    QAction* action = addCheckable(*this, name, text, QKeySequence(key));
    connect(action, &QAction::triggered, this, [this, member](bool on) {
        m_model.changeActiveLook([member, on](KVGamutLook& look) { look.*member = on; });
    });
    return action;
}

void GamutMenu::addSteps()
{
    const QAction* mode = add(*this, "nextMode", tr("Smooth, flat, &wireframe"), QKeySequence(Qt::Key_M));
    const QAction* more = add(*this, "moreOpaque", tr("More &opaque"), QKeySequence(Qt::Key_Period));
    const QAction* less = add(*this, "lessOpaque", tr("&Less opaque"), QKeySequence(Qt::Key_Comma));
    chooseColor = add(*this, "gamutColor", tr("&Colour…"), QKeySequence(QStringLiteral("Ctrl+L")));
    m_ownColors =
        add(*this, "ownGamutColors", tr("Own colo&urs"), QKeySequence(QStringLiteral("Ctrl+Shift+L")));
    connect(mode, &QAction::triggered, this, [this] {
        m_model.changeActiveLook([](KVGamutLook& look) { look.mode = modeAfter(look.mode); });
    });
    connect(more, &QAction::triggered, this, [this] { changeOpacity(opacityStep); });
    connect(less, &QAction::triggered, this, [this] { changeOpacity(-opacityStep); });
    connect(m_ownColors, &QAction::triggered, this,
            [this] { m_model.changeActiveLook([](KVGamutLook& look) { look.color = QColor(); }); });
}

void GamutMenu::changeOpacity(float step)
{
    m_model.changeActiveLook(
        [step](KVGamutLook& look) { look.opacity = std::clamp(look.opacity + step, 0.0f, 1.0f); });
}

void GamutMenu::activateNext()
{
    if (m_model.rowCount() > 0)
        m_model.setActiveRow((m_model.activeRow() + 1) % m_model.rowCount());
}

void GamutMenu::removeActive()
{
    if (m_model.activeRow() >= 0)
        m_model.remove(m_model.activeRow());
}

void GamutMenu::showActive()
{
    const int row = m_model.activeRow();
    const bool isPresent = row >= 0 && row < m_model.rowCount();
    const QList<QAction*> all = actions();
    for (QAction* action : all)
        action->setEnabled(isPresent);
    if (!isPresent)
        return;
    const GamutEntry& entry = m_model.at(row);
    m_intents[entry.settings.intent]->setChecked(true);
    m_blackPoint->setChecked(entry.settings.blackPointCompensation);
    m_blackPoint->setEnabled(entry.settings.intent != KVVMRenderAbsoluteColorimetric);
    m_visible->setChecked(entry.look.visible);
    m_surface->setChecked(entry.look.surface);
    m_projection->setChecked(entry.look.projection);
    m_primaries->setChecked(entry.look.primaries);
    m_ownColors->setEnabled(entry.look.color.isValid());
}
