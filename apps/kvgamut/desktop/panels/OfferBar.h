// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtWidgets/QWidget>

#include <functional>

/// Questions above the view that need no answer at once: each is a sentence with buttons, which the keyboard
/// reaches, too.
class OfferBar : public QWidget
{
    Q_OBJECT
public:
    struct Answer
    {
        QString name; ///< object name of the button
        QString text;
        std::function<void()> act; ///< called after the offer has gone
    };

    explicit OfferBar(QWidget* parent = nullptr);

    /// Shows an offer, instead of an earlier one with this @p id.
    void offer(const QString& id, const QString& sentence, const QList<Answer>& answers);
    void withdraw(const QString& id);
    /// The sentence of an offer; empty if there is none.
    QString sentence(const QString& id) const;

private:
    QHash<QString, QWidget*> m_offers;
};
