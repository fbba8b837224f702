// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QDialog>

class QCheckBox;
class QSpinBox;

/// Asks for the size of a picture in pixels, with the proportions of the view or free, and for its ground.
class PictureDialog : public QDialog
{
    Q_OBJECT
public:
    explicit PictureDialog(const QSize& proposed, QWidget* parent = nullptr);

    QSize size() const;
    bool isTransparent() const;

private:
    void follow(QSpinBox& changed, QSpinBox& other, double factor);

    QSpinBox* m_width;
    QSpinBox* m_height;
    QCheckBox* m_proportions;
    QCheckBox* m_transparent;
};
