// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/panels/SlicePanel.h"

#include <QtWidgets/QWidget>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;

/// The row of controls above the section: its kind, the hue angle, and whether the scale is fixed.
class SectionBar : public QWidget
{
    Q_OBJECT
public:
    explicit SectionBar(SlicePanel& section, QWidget* parent = nullptr);

    void setKind(SectionKind kind); ///< as the user does
    /// Shows what the section has.
    void showState();

Q_SIGNALS:
    void changed(); ///< the user has changed the section

private:
    void enableFields();

    SlicePanel& m_section;
    QComboBox* m_kind;
    QDoubleSpinBox* m_hue;
    QCheckBox* m_fixed;
};
