// SPDX-License-Identifier: Apache-2.0
#include "PictureDialog.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QSpinBox>

namespace {

constexpr int smallestSide = 16;
constexpr int largestSide = 8192;

QSpinBox* makeSide(const QString& name, int value)
{
    auto* box = new QSpinBox;
    box->setObjectName(name);
    box->setRange(smallestSide, largestSide);
    box->setSuffix(QStringLiteral(" px"));
    box->setValue(value);
    return box;
}

} // namespace

PictureDialog::PictureDialog(const QSize& proposed, QWidget* parent)
    : QDialog(parent), m_width(makeSide(QStringLiteral("pictureWidth"), proposed.width())),
      m_height(makeSide(QStringLiteral("pictureHeight"), proposed.height())),
      m_proportions(new QCheckBox(tr("&Keep the proportions of the view"))),
      m_transparent(new QCheckBox(tr("&Transparent ground")))
{
    setWindowTitle(tr("Size of the picture"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* form = new QFormLayout(this);
    form->addRow(tr("&Width"), m_width);
    form->addRow(tr("&Height"), m_height);
    m_proportions->setObjectName(QStringLiteral("pictureProportions"));
    m_transparent->setObjectName(QStringLiteral("pictureTransparent"));
    m_transparent->setToolTip(tr("Not in JPEG files"));
    form->addRow(m_proportions);
    form->addRow(m_transparent);
    form->addRow(buttons);
    const double aspect = proposed.isEmpty() ? 1.0 : double(proposed.width()) / proposed.height();
    const auto followWidth = [this, aspect] { follow(*m_width, *m_height, 1.0 / aspect); };
    connect(m_width, &QSpinBox::valueChanged, this, followWidth);
    connect(m_height, &QSpinBox::valueChanged, this, [this, aspect] { follow(*m_height, *m_width, aspect); });
    connect(m_proportions, &QCheckBox::toggled, this, followWidth);
    m_width->setFocus(); // the focus selects the number, so that typing replaces it
}

QSize PictureDialog::size() const
{
    return {m_width->value(), m_height->value()};
}

bool PictureDialog::isTransparent() const
{
    return m_transparent->isChecked();
}

/// Where the other side has reached its limit, the changed one returns to the proportions.
void PictureDialog::follow(QSpinBox& changed, QSpinBox& other, double factor)
{
    if (!m_proportions->isChecked())
        return;
    const QSignalBlocker noChange(changed), noOther(other);
    other.setValue(qRound(changed.value() * factor));
    if (other.value() == other.minimum() || other.value() == other.maximum())
        changed.setValue(qRound(other.value() / factor));
}
