// SPDX-License-Identifier: Apache-2.0
#include "ClipControl.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QSlider>
#include <QtWidgets/QVBoxLayout>

namespace {
constexpr int maxLightness = 100;
constexpr double defaultLightness = 50.0;
} // namespace

ClipControl::ClipControl(QWidget* parent)
    : QWidget(parent), m_slider(new QSlider(Qt::Vertical)), m_number(new QDoubleSpinBox),
      m_cut(new QCheckBox(tr("Cu&t")))
{
    m_slider->setObjectName(QStringLiteral("clipSlider"));
    m_slider->setAccessibleName(tr("Lightness of the section"));
    m_slider->setRange(0, maxLightness); // screen readers say the value of the slider
    m_slider->setPageStep(5);
    m_slider->setTickPosition(QSlider::TicksLeft);
    m_slider->setTickInterval(10);
    m_number->setObjectName(QStringLiteral("clipNumber"));
    m_number->setAccessibleName(tr("Lightness of the section"));
    m_number->setRange(0.0, maxLightness);
    m_number->setDecimals(1);
    m_number->setSingleStep(1.0);
    m_number->setToolTip(tr("Lightness of the section"));
    m_cut->setObjectName(QStringLiteral("clipCut"));
    m_cut->setToolTip(tr("Cut the gamuts off above this lightness"));

    auto* column = new QVBoxLayout(this);
    auto* title = new QLabel(tr("&L*"));
    title->setBuddy(m_slider);
    title->setAlignment(Qt::AlignHCenter);
    column->addWidget(title);
    column->addWidget(m_slider, 1, Qt::AlignHCenter);
    column->addWidget(m_number);
    column->addWidget(m_cut, 0, Qt::AlignHCenter);

    m_number->setValue(defaultLightness);
    m_slider->setValue(static_cast<int>(defaultLightness));
    connect(m_slider, &QSlider::valueChanged, this, [this](int value) {
        const QSignalBlocker quiet(m_number);
        m_number->setValue(value);
        Q_EMIT changed();
    });
    connect(m_number, &QDoubleSpinBox::valueChanged, this, [this](double value) {
        const QSignalBlocker quiet(m_slider);
        m_slider->setValue(qRound(value));
        Q_EMIT changed();
    });
    connect(m_cut, &QCheckBox::toggled, this, &ClipControl::changed);
}

float ClipControl::lightness() const
{
    return static_cast<float>(m_number->value());
}

void ClipControl::setLightness(float lightness)
{
    const QSignalBlocker quiet(this);
    m_number->setValue(static_cast<double>(lightness));
}

std::optional<float> ClipControl::clip() const
{
    if (!m_cut->isChecked())
        return {};
    return lightness();
}

void ClipControl::setClip(std::optional<float> clip)
{
    const QSignalBlocker quiet(this);
    m_cut->setChecked(clip.has_value());
    if (clip)
        m_number->setValue(static_cast<double>(*clip));
}

void ClipControl::setCutting(bool cutting)
{
    m_cut->setChecked(cutting);
}

KVSection ClipControl::section() const
{
    return {true, m_sectionShown ? std::optional(lightness()) : std::nullopt};
}

void ClipControl::setSectionShown(bool shown)
{
    m_sectionShown = shown;
    Q_EMIT changed();
}

void ClipControl::setSection(std::optional<float> plane)
{
    const QSignalBlocker quiet(this);
    m_sectionShown = plane.has_value();
    if (plane)
        m_number->setValue(static_cast<double>(*plane));
}

void ClipControl::step(int by)
{
    m_number->setValue(m_number->value() + by);
}
