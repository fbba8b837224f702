// SPDX-License-Identifier: Apache-2.0
#include "SectionBar.h"

#include "desktop/view/Accessibility.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QHBoxLayout>

SectionBar::SectionBar(SlicePanel& section, QWidget* parent)
    : QWidget(parent), m_section(section), m_kind(new QComboBox), m_hue(new QDoubleSpinBox),
      m_fixed(new QCheckBox(tr("Fixed scale")))
{
    m_kind->setObjectName(QStringLiteral("sectionKind"));
    m_kind->addItem(tr("Lightness"), static_cast<int>(SectionKind::Lightness));
    m_kind->addItem(tr("Hue"), static_cast<int>(SectionKind::Hue));
    m_kind->addItem(tr("Rings"), static_cast<int>(SectionKind::Rings));
    m_hue->setObjectName(QStringLiteral("sectionHue"));
    m_hue->setAccessibleName(tr("Hue angle"));
    m_hue->setRange(0.0, 359.9);
    m_hue->setDecimals(1);
    m_hue->setSingleStep(5.0);
    m_hue->setWrapping(true);
    m_hue->setSuffix(QStringLiteral("°"));
    m_hue->setToolTip(tr("Hue angle: 0° is +a*, 90° is +b*"));
    m_fixed->setObjectName(QStringLiteral("sectionFixed"));
    m_fixed->setToolTip(tr("All sections have the same scale"));

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(4, 2, 4, 0);
    row->addWidget(m_kind);
    row->addWidget(m_hue);
    row->addWidget(m_fixed);
    row->addStretch();
    setUnseenLabel(*m_kind, tr("Kind of section"));
    showState();

    connect(m_kind, &QComboBox::currentIndexChanged, this, [this] {
        m_section.setKind(static_cast<SectionKind>(m_kind->currentData().toInt()));
        enableFields();
        Q_EMIT changed();
    });
    connect(m_hue, &QDoubleSpinBox::valueChanged, this, [this](double degrees) {
        m_section.setHue(static_cast<float>(degrees));
        Q_EMIT changed();
    });
    connect(m_fixed, &QCheckBox::toggled, this, [this](bool fixed) {
        m_section.setScaleFixed(fixed);
        Q_EMIT changed();
    });
}

void SectionBar::setKind(SectionKind kind)
{
    m_kind->setCurrentIndex(m_kind->findData(static_cast<int>(kind)));
}

void SectionBar::showState()
{
    const QSignalBlocker quietKind(m_kind);
    const QSignalBlocker quietHue(m_hue);
    const QSignalBlocker quietScale(m_fixed);
    setKind(m_section.kind());
    m_hue->setValue(static_cast<double>(m_section.hue()));
    m_fixed->setChecked(m_section.isScaleFixed());
    enableFields();
}

void SectionBar::enableFields()
{
    m_hue->setVisible(m_section.kind() == SectionKind::Hue);
    m_fixed->setVisible(m_section.kind() != SectionKind::Rings);
}
