// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "FileWatch.h"
#include "GamutListModel.h"
#include "PointLayer.h"

/// The files of the gamuts and points of the window that have changed on disk since they were read. The gamut
/// list and the points must outlive it.
class ChangedFiles : public QObject
{
    Q_OBJECT
public:
    ChangedFiles(GamutListModel& gamuts, PointLayer& points, QObject* parent = nullptr);

    QStringList files() const { return m_changed; }
    /// The files by their names, for a sentence; of many the first ones.
    QString names() const;

    bool isAutomatic() const { return m_isAutomatic; }
    /// Whether files are read again as soon as they change. Those that have changed are read at once.
    void setAutomatic(bool automatic);
    void readAgain(); ///< those that have changed
    void readAll();   ///< all files, changed or not
    void ignore();    ///< until they change again

Q_SIGNALS:
    void changed(); ///< files() is another list

private:
    void watch();
    void add(const QString& file);
    void read(const QStringList& files);
    void forget(QStringList files);
    void forgetComputed(int row);

    GamutListModel& m_gamuts;
    PointLayer& m_points;
    FileWatch m_watch;
    QStringList m_changed;
    bool m_isAutomatic = false;
};
