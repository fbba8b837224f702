// SPDX-License-Identifier: Apache-2.0
#include "SessionDocument.h"

#include <QtCore/QFileInfo>

SessionDocument::SessionDocument(History& history, QObject* parent) : QObject(parent), m_history(history)
{
    connect(&history, &History::recorded, this, &SessionDocument::changed);
    connect(&history, &History::restored, this, &SessionDocument::changed);
    connect(&history.steps(), &QUndoStack::cleanChanged, this, &SessionDocument::changed);
}

QString SessionDocument::title(const QStringList& titles) const
{
    QString name = file().isEmpty() ? titles.join(QStringLiteral(", ")) : QFileInfo(file()).fileName();
    name.replace(QLatin1String("[*]"), QLatin1String("[*][*]")); // in a file name it is no mark
    return name.isEmpty() ? tr("kvgamut") + QLatin1String("[*]") : tr("%1[*] – kvgamut").arg(name);
}

void SessionDocument::begin(const QString& file)
{
    m_history.setDocument(++m_lastNumber);
    m_files.insert(m_lastNumber, file);
    Q_EMIT changed();
}

void SessionDocument::setUnchanged()
{
    m_history.setUnchanged();
    Q_EMIT changed();
}

void SessionDocument::setSaved(const QString& file)
{
    m_files.insert(m_history.document(), file);
    setUnchanged();
}
