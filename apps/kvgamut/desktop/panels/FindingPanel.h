// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QScrollArea>

class QLabel;

/// The colour that was clicked last, as text.
class FindingPanel : public QScrollArea
{
    Q_OBJECT
public:
    explicit FindingPanel(QWidget* parent = nullptr);

    QString text() const;
    void setText(const QString& text);
    /// Shows the hint that says what to click.
    void clear();

private:
    QLabel* m_label;
};
