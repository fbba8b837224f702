// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>

#include <QtWidgets/QMenu>

class QActionGroup;

/// The menu of background colours.
class BackgroundMenu : public QMenu
{
    Q_OBJECT
public:
    BackgroundMenu(KVGamut3DViewer& viewer, QWidget* parent);

    void showBackground(const QColor& background);

private:
    void addColor(const char* name, const QString& text, const char* key, const QColor& color);

    KVGamut3DViewer& m_viewer;
    QActionGroup* m_colors;
};

/// The menu of the light's direction and colour.
class LightMenu : public QMenu
{
    Q_OBJECT
public:
    LightMenu(KVGamutView& view, QWidget* parent);

    void showPosition(const QVector3D& position); ///< (L*, a*, b*)

private:
    void addPosition(const char* name, const QString& text, Qt::Key key, const QVector3D& position);
    void setPosition(const QVector3D& position);
    void setColor(const QColor& color);
    void chooseColor();

    KVGamutView& m_view;
    QActionGroup* m_positions;
};
