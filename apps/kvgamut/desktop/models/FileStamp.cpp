// SPDX-License-Identifier: Apache-2.0
#include "FileStamp.h"

#include "model/inputs/FileName.h"

#include <chrono>
#include <future>
#include <sys/stat.h>
#include <system_error>
#include <thread>

std::optional<FileStamp> FileStamp::of(const QString& name)
{
    const QByteArray encoded = FileName::encoded(name);
    struct stat facts = {};
    if (encoded.contains('\0') || ::stat(encoded.constData(), &facts) != 0 || !S_ISREG(facts.st_mode))
        return {};
    constexpr qint64 second = 1000000000;
    return FileStamp{facts.st_dev, facts.st_ino, facts.st_size,
                     qint64(facts.st_mtim.tv_sec) * second + facts.st_mtim.tv_nsec};
}

std::optional<FileStamp> FileStamp::of(const QString& name, const KVCompletionProtocolPtr& task)
{
    constexpr std::chrono::milliseconds pause(5);
    std::packaged_task<std::optional<FileStamp>()> work([name] { return of(name); });
    auto stamp = work.get_future();
    try {
        std::thread(std::move(work)).detach();
    } catch (const std::system_error&) { // too many threads
        return of(name);
    }
    while (stamp.wait_for(pause) != std::future_status::ready)
        if (task->isCancelled())
            return {};
    return stamp.get();
}
