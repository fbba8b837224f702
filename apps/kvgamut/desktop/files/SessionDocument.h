// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/History.h"

#include <QtCore/QHash>
#include <QtCore/QObject>

/// The session that the window shows as a document: the file that it came from, and whether it has unsaved
/// changes. Only what undo covers is a change: to turn the view is none.
class SessionDocument : public QObject
{
    Q_OBJECT
public:
    explicit SessionDocument(History& history, QObject* parent = nullptr);

    /// Where the session was read or saved last, an absolute path; empty if never. It follows undo and redo
    /// over the opening of another session.
    QString file() const { return m_files.value(m_history.document()); }
    bool isModified() const { return !m_history.isUnchanged(); }
    /// Of the window: the name of the file, or else the @p titles of the gamuts, with the place where the
    /// system marks unsaved changes.
    QString title(const QStringList& titles) const;

    /// To be called when another session, of @p file, was opened. An empty name means that it has no file.
    void begin(const QString& file);
    /// The content is what @p file, or the command line, says.
    void setUnchanged();
    /// Moves to @p file, where the content was saved.
    void setSaved(const QString& file);

Q_SIGNALS:
    void changed(); ///< file() or isModified() may have changed

private:
    History& m_history;
    QHash<int, QString> m_files; ///< of the numbers of documents
    int m_lastNumber = 0;
};
