// SPDX-License-Identifier: Apache-2.0
#include "FileFacts.h"

#include <sys/stat.h>

std::optional<FileFacts> FileFacts::of(const std::filesystem::path& name)
{
    struct stat facts = {};
    if (::stat(name.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode))
        return {};
    constexpr std::int64_t second = 1000000000;
    return FileFacts{facts.st_dev, facts.st_ino, facts.st_size,
                     std::int64_t(facts.st_mtim.tv_sec) * second + facts.st_mtim.tv_nsec};
}
