// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/GamutListModel.h"

#include <QtWidgets/QWidget>

#include <functional>

class QCheckBox;
class QComboBox;
class QLabel;
class QListView;
class QSlider;
class QSpinBox;
class QToolButton;

/// The list of gamuts and, below it, controls for how the active one is computed and shown. They change the
/// model.
class GamutPanel : public QWidget
{
    Q_OBJECT
public:
    explicit GamutPanel(GamutListModel& model, QWidget* parent = nullptr);

    QListView* list() const { return m_list; }
    /// Asks for a colour for the active gamut.
    void chooseColor();
    /// Adds @p commands to the context menu of the list.
    void addCommands(const QList<QAction*>& commands);

Q_SIGNALS:
    void removeRequested(int row);

private:
    QWidget* makeComputation();
    void makeAdaptation();
    QWidget* makeAppearance();
    void showActive();
    void changeLook(const std::function<void(KVGamutLook&)>& change);
    void changeSettings(const std::function<void(KVGamut::Settings&)>& change);
    void showGrid(const GamutEntry& entry);
    void paintColorButton();

    GamutListModel& m_model;
    bool m_showing = false; ///< ignore signals of controls while they are updated
    QListView* m_list;
    QWidget* m_details;
    QComboBox* m_intent;
    QCheckBox* m_blackPoint;
    QComboBox* m_adaptation;
    QSpinBox* m_grid;
    QLabel* m_conversion;
    QComboBox* m_mode;
    QSlider* m_opacity;
    QSlider* m_ambient;
    QToolButton* m_color;
    QToolButton* m_ownColors;
    QCheckBox* m_surface;
    QCheckBox* m_projection;
    QCheckBox* m_primaries;
};
