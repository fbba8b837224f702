// SPDX-License-Identifier: Apache-2.0
#include "ChangedFiles.h"

#include "model/inputs/BuiltInNames.h"
#include "model/inputs/InputName.h"
#include "model/text/SafeText.h"

#include <QtCore/QFileInfo>

#include <utility>

namespace {

/// The file that a gamut is read from; empty for a built-in one.
QString fileOf(const GamutEntry& entry)
{
    if (BuiltInNames::all().contains(entry.input))
        return {};
    const Result<InputName> name = InputName::of(entry.input);
    return name ? name->file : QString();
}

} // namespace

ChangedFiles::ChangedFiles(GamutListModel& gamuts, PointLayer& points, QObject* parent)
    : QObject(parent), m_gamuts(gamuts), m_points(points)
{
    connect(&m_watch, &FileWatch::changed, this, &ChangedFiles::add);
    for (const QAbstractItemModel* model :
         {static_cast<QAbstractItemModel*>(&gamuts), static_cast<QAbstractItemModel*>(&points)}) {
        connect(model, &QAbstractItemModel::rowsInserted, this, &ChangedFiles::watch);
        connect(model, &QAbstractItemModel::rowsRemoved, this, &ChangedFiles::watch);
        connect(model, &QAbstractItemModel::modelReset, this, &ChangedFiles::watch);
    }
    connect(&gamuts, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex& first, const QModelIndex&, const QList<int>& roles) {
                if (roles.contains(GamutListModel::GamutRole))
                    forgetComputed(first.row());
            });
}

QString ChangedFiles::names() const
{
    constexpr qsizetype maxNames = 4;
    QStringList names;
    for (const QString& file : m_changed.mid(0, maxNames))
        names.append(SafeText::shown(QFileInfo(file).fileName()));
    return names.join(QStringLiteral(", ")) +
           (m_changed.size() > maxNames ? QStringLiteral(", …") : QString());
}

void ChangedFiles::watch()
{
    QStringList files = m_points.files();
    for (const GamutEntry& entry : m_gamuts.entries())
        if (const QString file = fileOf(entry); QFileInfo(file).isAbsolute())
            files.append(file);
    m_watch.setFiles(files);
    QStringList closed = m_changed;
    closed.removeIf([&files](const QString& file) { return files.contains(file); });
    forget(closed);
}

void ChangedFiles::add(const QString& file)
{
    if (m_isAutomatic) {
        read({file});
        return;
    }
    if (!m_changed.contains(file))
        m_changed.append(file);
    Q_EMIT changed();
}

void ChangedFiles::forget(QStringList files)
{
    if (files.isEmpty())
        return;
    m_changed.removeIf([files = std::move(files)](const QString& file) { return files.contains(file); });
    Q_EMIT changed();
}

/// A gamut that was computed with other settings has read its file again.
void ChangedFiles::forgetComputed(int row)
{
    const QString file = fileOf(m_gamuts.at(row));
    qsizetype readers = m_points.files().count(file);
    for (const GamutEntry& entry : m_gamuts.entries())
        readers += fileOf(entry) == file;
    if (readers == 1 && m_changed.contains(file))
        forget({file});
}

void ChangedFiles::read(const QStringList& files)
{
    for (int row = 0; row < m_gamuts.rowCount(); ++row)
        if (files.contains(fileOf(m_gamuts.at(row))))
            m_gamuts.computeAgain(row);
    for (const QString& file : m_points.files())
        if (files.contains(file))
            m_points.open(file);
}

void ChangedFiles::setAutomatic(bool automatic)
{
    m_isAutomatic = automatic;
    if (automatic)
        readAgain();
}

void ChangedFiles::readAgain()
{
    const QStringList files = m_changed;
    forget(files);
    read(files);
}

void ChangedFiles::readAll()
{
    forget(m_changed);
    QStringList files = m_points.files();
    for (const GamutEntry& entry : m_gamuts.entries())
        files.append(fileOf(entry));
    files.removeAll(QString());
    read(files);
}

void ChangedFiles::ignore()
{
    forget(m_changed);
}
