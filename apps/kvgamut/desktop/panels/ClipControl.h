// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QWidget>

#include <optional>

class QCheckBox;
class QDoubleSpinBox;
class QSlider;

/// Chooses the lightness above which gamuts are cut off, and at which the flat section is taken: a
/// slider that stands as the L* axis does, its number, and whether the gamuts are cut at all.
class ClipControl : public QWidget
{
    Q_OBJECT
public:
    explicit ClipControl(QWidget* parent = nullptr);

    float lightness() const;
    /// Nothing while the gamuts are whole.
    std::optional<float> clip() const;
    /// Shows @p clip without announcing it. Nothing leaves the lightness where it is.
    void setClip(std::optional<float> clip);
    void setCutting(bool cutting);
    /// One step of the slider up or down.
    void step(int by);

Q_SIGNALS:
    void changed();

private:
    QSlider* m_slider;
    QDoubleSpinBox* m_number;
    QCheckBox* m_cut;
};
