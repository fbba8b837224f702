// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringList>
#include <QtWidgets/QFrame>

class QLabel;
class QToolButton;

/// Shows the newest messages above the view, without blocking it, and the others on request. They stay until
/// they are dismissed; new ones are added below.
class MessageBar : public QFrame
{
    Q_OBJECT
public:
    explicit MessageBar(QWidget* parent = nullptr);

    void add(const QString& message);
    void dismiss();
    QString text() const { return m_messages.join(QLatin1Char('\n')); }

private:
    void showAll();

    QStringList m_messages;
    QLabel* m_label;
    QToolButton* m_all;
};
