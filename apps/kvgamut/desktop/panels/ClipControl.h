// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>

#include <QtWidgets/QWidget>

#include <optional>

class QCheckBox;
class QDoubleSpinBox;
class QSlider;

/// Sets the lightness of the section, above which gamuts can be cut off: a vertical slider, a number field,
/// and a check box that cuts the gamuts.
class ClipControl : public QWidget
{
    Q_OBJECT
public:
    explicit ClipControl(QWidget* parent = nullptr);

    float lightness() const;
    /// Shows @p lightness without emitting changed().
    void setLightness(float lightness);
    /// nullopt if the gamuts are not cut.
    std::optional<float> clip() const;
    /// Shows @p clip without emitting changed(). nullopt keeps the lightness.
    void setClip(std::optional<float> clip);
    void setCutting(bool cutting);
    /// Lids on gamuts that are cut; the section at the lightness if it is shown without cutting.
    KVSection section() const;
    /// Whether the section is shown although nothing is cut. False at first.
    void setSectionShown(bool shown);
    /// Shows @p plane as the section without emitting changed(). nullopt keeps the lightness.
    void setSection(std::optional<float> plane);
    /// Changes the lightness by @p by; negative is darker.
    void step(int by);

Q_SIGNALS:
    void changed();

private:
    QSlider* m_slider;
    QDoubleSpinBox* m_number;
    QCheckBox* m_cut;
    bool m_sectionShown = false;
};
