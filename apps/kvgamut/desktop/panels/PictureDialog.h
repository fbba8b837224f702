// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QDialog>

class QSpinBox;

/// Asks for the size of a picture in pixels.
class PictureDialog : public QDialog
{
    Q_OBJECT
public:
    explicit PictureDialog(const QSize& proposed, QWidget* parent = nullptr);

    QSize size() const;

private:
    QSpinBox* m_width;
    QSpinBox* m_height;
};
