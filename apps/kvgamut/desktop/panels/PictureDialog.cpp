// SPDX-License-Identifier: Apache-2.0
#include "PictureDialog.h"

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
      m_height(makeSide(QStringLiteral("pictureHeight"), proposed.height()))
{
    setWindowTitle(tr("Size of the picture"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* form = new QFormLayout(this);
    form->addRow(tr("&Width"), m_width);
    form->addRow(tr("&Height"), m_height);
    form->addRow(buttons);
    m_width->setFocus(); // the focus selects the number, so that typing replaces it
}

QSize PictureDialog::size() const
{
    return {m_width->value(), m_height->value()};
}
