// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QVector3D>
#include <QtWidgets/QScrollArea>

class QLabel;

/// The colour that was chosen last, as a swatch and as text.
class FindingPanel : public QScrollArea
{
    Q_OBJECT
public:
    explicit FindingPanel(QWidget* parent = nullptr);

    /// @param lab the colour of the swatch
    void show(const QVector3D& lab, const QString& text);
    /// Shows the hint that says what to click.
    void clear();

private:
    QLabel* m_label;
    QLabel* m_swatch;
};
