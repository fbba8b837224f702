// SPDX-License-Identifier: Apache-2.0
#include "SurroundingsMenus.h"

#include "MenuActions.h"
#include "model/pictures/PictureStyle.h"

#include <QtGui/QActionGroup>
#include <QtWidgets/QColorDialog>

using MenuActions::add;
using MenuActions::addCheckable;

namespace {

constexpr QRgb lightBackground = qRgb(0xf2, 0xf2, 0xf2);

} // namespace

BackgroundMenu::BackgroundMenu(KVGamut3DViewer& viewer, QWidget* parent)
    : QMenu(tr("&Background"), parent), m_viewer(viewer), m_colors(new QActionGroup(this))
{
    // the one for which the key colours on dark ground were chosen
    addColor("backgroundDark", tr("&Dark"), "Shift+D",
             PictureStyle::named(QStringLiteral("dark")).background);
    addColor("backgroundLight", tr("&Light"), "Shift+L", lightBackground);
    addColor("backgroundNeutral", tr("&Neutral grey"), "Shift+N", Qt::gray);
}

void BackgroundMenu::addColor(const char* name, const QString& text, const char* key, const QColor& color)
{
    QAction* action = addCheckable(*this, name, text, QKeySequence(QLatin1String(key)));
    action->setData(color);
    connect(action, &QAction::triggered, this, [this, color] { m_viewer.setBackground(color); });
    m_colors->addAction(action);
}

void BackgroundMenu::showBackground(const QColor& background)
{
    const QList<QAction*> colors = m_colors->actions();
    for (QAction* action : colors)
        action->setChecked(action->data().value<QColor>().rgb() == background.rgb());
}

LightMenu::LightMenu(KVGamutView& view, QWidget* parent)
    : QMenu(tr("L&ight"), parent), m_view(view), m_positions(new QActionGroup(this))
{
    addPosition("lightAbove", tr("From &above"), Qt::Key_F2, {300, 0, 0});
    addPosition("lightLeft", tr("From the &left"), Qt::Key_F3, {200, -300, -200});
    addPosition("lightRight", tr("From the &right"), Qt::Key_F4, {200, 300, -200});
    const QAction* color = add(*this, "lightColor", tr("&Colour…"), QKeySequence(QStringLiteral("Shift+F2")));
    const QAction* white = add(*this, "lightWhite", tr("&White"), QKeySequence(QStringLiteral("Shift+F3")));
    connect(color, &QAction::triggered, this, &LightMenu::chooseColor);
    connect(white, &QAction::triggered, this, [this] { setColor(Qt::white); });
}

void LightMenu::addPosition(const char* name, const QString& text, Qt::Key key, const QVector3D& position)
{
    QAction* action = addCheckable(*this, name, text, QKeySequence(key));
    action->setData(position);
    connect(action, &QAction::triggered, this, [this, position] { setPosition(position); });
    m_positions->addAction(action);
}

void LightMenu::setPosition(const QVector3D& position)
{
    m_view.setLight(position, m_view.state().lightColor);
}

void LightMenu::setColor(const QColor& color)
{
    m_view.setLight(m_view.state().light, color);
}

void LightMenu::chooseColor()
{
    const QColor color =
        QColorDialog::getColor(m_view.state().lightColor, parentWidget(), tr("Colour of the light"));
    if (color.isValid())
        setColor(color);
}

void LightMenu::showPosition(const QVector3D& position)
{
    const QList<QAction*> positions = m_positions->actions();
    for (QAction* action : positions)
        action->setChecked(action->data().value<QVector3D>() == position);
}
