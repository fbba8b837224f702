// SPDX-License-Identifier: Apache-2.0
#include "FileStamp.h"

#include "FileFacts.h"
#include "model/inputs/FileName.h"

#include <chrono>
#include <future>
#include <system_error>
#include <thread>

std::optional<FileStamp> FileStamp::of(const QString& name)
{
    if (name.contains(QChar(0)))
        return {};
    const auto facts = FileFacts::of(FileName::path(name));
    return facts ? std::optional(FileStamp{facts->device, facts->file, facts->size, facts->changed})
                 : std::nullopt;
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
