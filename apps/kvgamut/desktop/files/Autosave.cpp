// SPDX-License-Identifier: Apache-2.0
#include "Autosave.h"

#include "desktop/models/Threads.h"
#include "model/export/OutputFile.h"
#include "model/inputs/InputGate.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QLockFile>
#include <QtCore/QUuid>

#include <utility>

namespace {

constexpr int quietMs = 2000;
constexpr qsizetype maxFiles = 100; // of lost work that are looked at
constexpr QFile::Permissions ownerOnly = QFile::ReadOwner | QFile::WriteOwner;

QString documentKey()
{
    return QStringLiteral("unsavedOf");
}

QString lockName(const QString& file)
{
    return file + QStringLiteral(".lock");
}

/// A lock never becomes old: it is free when its process has ended.
std::unique_ptr<QLockFile> makeLock(const QString& file)
{
    auto lock = std::make_unique<QLockFile>(lockName(file));
    lock->setStaleLockTime(0);
    return lock;
}

} // namespace

QByteArray UnsavedWork::toJson() const
{
    QJsonObject json = QJsonDocument::fromJson(session.toJson(QDir(Autosave::folder()))).object();
    if (!document.isEmpty())
        json.insert(documentKey(), document);
    return QJsonDocument(json).toJson();
}

Result<UnsavedWork> UnsavedWork::fromJson(const QByteArray& json)
{
    const Result<Session> session = Session::fromJson(json, QDir(Autosave::folder()));
    if (!session)
        return failure(session.error());
    return UnsavedWork{*session, QJsonDocument::fromJson(json).object()[documentKey()].toString()};
}

struct Autosave::Place
{
    QString file;
    std::unique_ptr<QLockFile> lock;

    /// Runs on a worker.
    std::optional<Problem> write(const QByteArray& json)
    {
        const QString folder = Autosave::folder();
        QDir().mkpath(folder);
        QFile::setPermissions(folder, ownerOnly | QFile::ExeOwner);
        if (!lock)
            lock = makeLock(file);
        if (!lock->isLocked())
            lock->tryLock(0); // fails where the file cannot be written either
        auto problem = writeOutput(file, json);
        QFile::setPermissions(file, ownerOnly);
        return problem;
    }

    bool remove()
    {
        const bool isGone = QFile::remove(file);
        lock.reset();
        return isGone;
    }
};

QString Autosave::folder()
{
    // QStandardPaths knows the folder for states from Qt 6.7 on
    QString states = qEnvironmentVariable("XDG_STATE_HOME");
    if (!QDir::isAbsolutePath(states))
        states = QDir::home().filePath(QStringLiteral(".local/state"));
    return QDir(states).filePath(QStringLiteral("kvgamut/unsaved"));
}

Autosave::Autosave(std::function<UnsavedWork()> work, QObject* parent)
    : QObject(parent), m_work(std::move(work)), m_place(std::make_shared<Place>())
{
    m_pool.setMaxThreadCount(1);
    m_soon.setSingleShot(true);
    m_soon.setInterval(quietMs);
    connect(&m_soon, &QTimer::timeout, this, &Autosave::write);
}

Autosave::~Autosave()
{
    m_pool.waitForDone();
    if (m_isKept)
        m_place->remove();
}

void Autosave::update(bool isModified)
{
    if (isModified) {
        m_soon.start();
        return;
    }
    m_soon.stop();
    if (!std::exchange(m_isKept, false))
        return;
    ++m_jobs;
    Threads::run(m_pool, [place = m_place] { return place->remove(); }).then(this, [this](bool) {
        --m_jobs;
    });
}

void Autosave::write()
{
    if (m_place->file.isEmpty())
        m_place->file = QDir(folder()).filePath(QUuid::createUuid().toString(QUuid::WithoutBraces) +
                                                QStringLiteral(".kvsession"));
    m_isKept = true;
    ++m_jobs;
    const auto job = [place = m_place, json = m_work().toJson()] { return place->write(json); };
    Threads::run(m_pool, job).then(this, [this](const std::optional<Problem>& problem) {
        --m_jobs;
        if (problem && !m_hasFailed)
            Q_EMIT failed(*problem);
        m_hasFailed = problem.has_value();
    });
}

LostWork::LostWork(QString file, std::unique_ptr<QLockFile> lock, UnsavedWork work, QDateTime time)
    : m_file(std::move(file)), m_lock(std::move(lock)), m_work(std::move(work)), m_time(std::move(time))
{
}

LostWork::~LostWork() = default;

std::unique_ptr<LostWork> LostWork::newest()
{
    const QFileInfoList files =
        QDir(Autosave::folder())
            .entryInfoList({QStringLiteral("*.kvsession")}, QDir::Files | QDir::NoSymLinks, QDir::Time);
    for (const QFileInfo& file : files.mid(0, maxFiles)) {
        auto lock = makeLock(file.filePath());
        if (!lock->tryLock(0)) // a window that is open
            continue;
        const auto json = InputGate::read(file.filePath(), InputKind::Session);
        if (!json)
            continue;
        if (auto work = UnsavedWork::fromJson(*json))
            return std::unique_ptr<LostWork>(
                new LostWork(file.filePath(), std::move(lock), *std::move(work), file.lastModified()));
    }
    return nullptr;
}

void LostWork::remove()
{
    QFile::remove(m_file);
}
