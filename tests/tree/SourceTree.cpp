// SPDX-License-Identifier: Apache-2.0
#include "SourceTree.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace kvtree {
namespace {

std::string contents(const std::filesystem::path& file)
{
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

std::vector<std::string> joined(std::vector<std::string> a, const std::vector<std::string>& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

const std::vector<std::string> cxxEndings{".cpp", ".h"};

} // namespace

const std::vector<std::string> productFolders{"annotation", "apps",    "engine",   "gamut",
                                              "glwindow",   "include", "platform", "python",
                                              "quick",      "scene",   "viewer",   "widgets"};
const std::vector<std::string> otherFolders{"benchmarks", "examples", "tests", "tools"};

Sources filesBelow(const std::vector<std::string>& folders, const std::vector<std::string>& endings)
{
    const std::filesystem::path root(KV_SOURCE_ROOT);
    Sources files;
    for (const std::string& folder : folders)
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root / folder)) {
            const std::string name = entry.path().filename().string();
            const bool isWanted = std::any_of(endings.begin(), endings.end(),
                                              [&name](const auto& ending) { return name.ends_with(ending); });
            if (entry.is_regular_file() && isWanted)
                files[entry.path().lexically_relative(root).generic_string()] = contents(entry.path());
        }
    return files;
}

Sources productSources()
{
    return filesBelow(productFolders, cxxEndings);
}

Sources allSources()
{
    return filesBelow(joined(productFolders, otherFolders), cxxEndings);
}

} // namespace kvtree
