// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Session.h"

#include <QtCore/QDateTime>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QThreadPool>
#include <QtCore/QTimer>

#include <functional>
#include <memory>

class QLockFile;

/// Unsaved changes, and the session file that they belong to.
struct UnsavedWork
{
    Session session;
    QString document; ///< see SessionDocument::file()

    QByteArray toJson() const;
    static Result<UnsavedWork> fromJson(const QByteArray& json);

    bool operator==(const UnsavedWork&) const = default;
};

/// Keeps unsaved changes in a file, in case that the program crashes: in `kvgamut/unsaved` in the user's
/// folder for states (`XDG_STATE_HOME`, or `~/.local/state`), readable by the user only. Each window has a
/// file of its own, which it locks as long as it exists, and removes when it is destroyed.
class Autosave : public QObject
{
    Q_OBJECT
public:
    /// @param work gives what is to be kept
    explicit Autosave(std::function<UnsavedWork()> work, QObject* parent = nullptr);
    ~Autosave() override;

    static QString folder();

    /// Call it after each change. Writes in the background when there was no further change for a moment;
    /// removes the file if nothing is unsaved.
    void update(bool isModified);
    /// Whether nothing waits to be written or removed.
    bool isUpToDate() const { return !m_soon.isActive() && m_jobs == 0; }

Q_SIGNALS:
    /// Cannot be written. Emitted once, until writing succeeds again.
    void failed(const Problem& problem);

private:
    struct Place; ///< the file and its lock, which the workers use
    void write();

    std::function<UnsavedWork()> m_work;
    std::shared_ptr<Place> m_place;
    QThreadPool m_pool; ///< one thread: jobs run in their order
    QTimer m_soon;
    int m_jobs = 0;
    bool m_isKept = false;
    bool m_hasFailed = false;
};

/// Unsaved changes of a window that ended without saving or discarding them. Locked for other windows as long
/// as it exists.
class LostWork
{
public:
    /// The newest one; nullptr if there is none. Files of windows that are open are left out.
    static std::unique_ptr<LostWork> newest();
    ~LostWork();
    Q_DISABLE_COPY_MOVE(LostWork)

    const UnsavedWork& work() const { return m_work; }
    QDateTime time() const { return m_time; }
    void remove(); ///< it is not found again

private:
    LostWork(QString file, std::unique_ptr<QLockFile> lock, UnsavedWork work, QDateTime time);

    QString m_file;
    std::unique_ptr<QLockFile> m_lock;
    UnsavedWork m_work;
    QDateTime m_time;
};
