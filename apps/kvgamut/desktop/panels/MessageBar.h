// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringList>
#include <QtWidgets/QFrame>

class QLabel;

/// Says what went wrong above the view, without stopping the work: it stays until it is closed, and
/// newer messages join those that are there.
class MessageBar : public QFrame
{
    Q_OBJECT
public:
    explicit MessageBar(QWidget* parent = nullptr);

    void say(const QString& message);
    void dismiss();
    QString text() const { return m_messages.join(QLatin1Char('\n')); }

private:
    QStringList m_messages; ///< the last few
    QLabel* m_label;
};
