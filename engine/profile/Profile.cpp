// SPDX-License-Identifier: Apache-2.0
#include <platform/KVVelmoraFramework.h>

#include "CmsContext.h"
#include "IccTables.h"
#include "ProfileReader.h"
#include <engine/base/Result.h>
#include <engine/base/ThreadEnd.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <new>
#include <optional>
#include <utility>

namespace {

using velmora::failure;
using velmora::Result;

constexpr qint64 maxProfileSize = qint64(256) << 20;

/// The problem of the latest profile of each thread. It needs no memory of its own.
class LastProblem
{
public:
    static void set(std::optional<KVProblem> problem)
    {
        isLost = false;
        reset();
        if (!problem)
            return;
        new (&storage.bytes) KVProblem(*std::move(problem));
        storage.isUsed = true;
        if (threadEnd().ask(&storage))
            return;
        isLost = true; // no memory for the first value of this thread
        reset();
    }

    static std::optional<KVProblem> get()
    {
        if (isLost)
            return KVProblem{KVProblemCode::OutOfMemory, {}, {}};
        return storage.isUsed ? std::optional(*current()) : std::nullopt;
    }

private:
    struct Storage
    {
        alignas(KVProblem) std::byte bytes[sizeof(KVProblem)];
        bool isUsed;
    };
    static const velmora::ThreadEnd& threadEnd()
    {
        static const velmora::ThreadEnd made([](void*) { reset(); });
        return made;
    }

    static KVProblem* current() { return std::launder(reinterpret_cast<KVProblem*>(&storage.bytes)); }

    static void reset()
    {
        if (storage.isUsed)
            current()->~KVProblem();
        storage.isUsed = false;
    }

    static thread_local constinit Storage storage;
    static thread_local constinit bool isLost; ///< there was no memory to keep the problem
};

thread_local constinit LastProblem::Storage LastProblem::storage{};
thread_local constinit bool LastProblem::isLost = false;

Result<void> checkProfile(const QByteArray& bytes)
{
    if (auto checked = velmora::checkIccTables(bytes); !checked)
        return checked;
    const velmora::CmsContext context;
    if (context.hasRunOutOfMemory())
        return failure(KVProblemCode::OutOfMemory);
    const velmora::Task task;
    velmora::ProfileReader reader(context, bytes, task);
    const velmora::CmsProfile opened = reader.open();
    if (opened && !context.hasRunOutOfMemory())
        return {};
    return context.failure(KVProblemCode::NotAProfile, KVProblemCode::UnusableProfile);
}

/// Call it immediately after the operation that failed, because later calls overwrite errno.
tl::unexpected<KVProblem> unreadable(const QFile& file)
{
    const int error = errno;
    return failure(KVProblemCode::FileUnreadable, {file.errorString(), QString::number(error)});
}

/// @param expected the size that the file had; it may change while it is read
Result<QByteArray> contentsOf(QFile& file, qint64 expected)
{
    constexpr qsizetype minPiece = 4096;
    QByteArray bytes;
    bytes.reserve(expected + minPiece);
    for (;;) {
        const qsizetype before = bytes.size();
        bytes.resize(std::max(bytes.capacity(), before + minPiece));
        const qint64 size = file.read(bytes.data() + before, bytes.size() - before);
        if (size < 0)
            return unreadable(file);
        bytes.resize(before + size);
        if (bytes.size() > maxProfileSize)
            return failure(KVProblemCode::FileTooLarge);
        if (size == 0)
            return bytes;
    }
}

Result<QByteArray> contentsOf(const QString& path)
{
    // Reading a pipe or a device may block forever, so only regular files are read.
    const QFileInfo info(path);
    if (!info.exists())
        return failure(KVProblemCode::FileNotFound);
    if (!info.isFile())
        return failure(KVProblemCode::NotAFile);
    if (info.size() > maxProfileSize)
        return failure(KVProblemCode::FileTooLarge);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return unreadable(file);
    return contentsOf(file, info.size());
}

Result<QByteArray> copyOf(const void* data, int size)
{
    if (!data || size <= 0)
        return failure(KVProblemCode::EmptyData);
    if (size > maxProfileSize)
        return failure(KVProblemCode::DataTooLarge);
    return QByteArray(static_cast<const char*>(data), size);
}

// The profile of the bytes that read() returns, or null; then the problem is kept for KVProfileProblem().
template <typename Read>
KVProfile* created(const QString& subject, const Read& read)
{
    const auto checked = [&read]() -> Result<QByteArray> {
        try {
            auto bytes = read();
            if (!bytes)
                return bytes;
            if (const auto sound = checkProfile(*bytes); !sound)
                return failure(sound);
            return bytes;
        } catch (const std::bad_alloc&) {
            return failure(KVProblemCode::OutOfMemory);
        }
    }();
    if (checked) {
        LastProblem::set({});
        return new KVProfile{*checked};
    }
    KVProblem problem = checked.error();
    problem.subject = subject;
    LastProblem::set(std::move(problem));
    return nullptr;
}

} // namespace

KVProfile* KVProfileCreateWithPath(const char* path)
{
    const QString name = QString::fromUtf8(path);
    return created(name, [&name]() -> Result<QByteArray> {
        if (name.isEmpty())
            return failure(KVProblemCode::NoFileName);
        return contentsOf(name);
    });
}

KVProfile* KVProfileCreateWithData(const void* data, int size)
{
    return created({}, [=] { return copyOf(data, size); });
}

void KVProfileRelease(KVProfile* profile)
{
    delete profile;
}

std::optional<KVProblem> KVProfileProblem()
{
    return LastProblem::get();
}

std::optional<KVProblem> KVProfileTableProblem(const KVProfile& profile, KVVMRenderType intent)
{
    if (const auto known = velmora::checkIntent(intent); !known)
        return known.error();
    constexpr bool withBlackPoint = false;
    const auto table = velmora::colorTable(velmora::IccTags(profile.bytes), intent, withBlackPoint);
    return table ? std::nullopt : std::optional(table.error());
}
