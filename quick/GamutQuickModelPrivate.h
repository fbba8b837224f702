// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutQuickModel.h>
#include <KVGamutView.h>

#include <QtCore/QList>

/// The rows, and what changes them.
class Q_DECL_HIDDEN KVGamutQuickModel::Private
{
public:
    Private(KVGamutQuickModel& model, KVGamutView& view) : m_model(model), m_view(view) {}

    struct Row
    {
        QString id;
        QString source;
        QString error;
        bool isLoaded = false;
    };

    KVGamutView& view() const { return m_view; }
    const QList<Row>& rows() const { return m_rows; }
    int rowOf(const QString& id) const;

    void begin(const QString& id, const QString& source); ///< a load starts
    void succeed(const QString& id);                      ///< it has ended
    void fail(const QString& id, const QString& text);    ///< it has ended, or could not start
    void remove(const QString& id);
    void notify(const QString& id, const QList<int>& roles);

private:
    Row& findOrAdd(const QString& id);

    KVGamutQuickModel& m_model;
    KVGamutView& m_view;
    QList<Row> m_rows;
};
