// SPDX-License-Identifier: Apache-2.0
// The rules of CONTRIBUTING.md and the glossary that a program can check.

#include "SourceTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QProcess>

#include <algorithm>
#include <regex>
#include <sstream>

using namespace kvtree;
using testing::IsEmpty;

namespace {

constexpr std::ptrdiff_t maxLines = 500;

/// Whether one of the first @p count lines of @p text names the licence.
bool namesLicence(const std::string& text, int count)
{
    std::istringstream lines(text);
    std::string line;
    for (int i = 0; i < count && std::getline(lines, line); ++i)
        if (line.find("SPDX-License-Identifier: Apache-2.0") != std::string::npos)
            return true;
    return false;
}

/// "path:number: line" for each line of @p sources in which @p pattern is found.
std::vector<std::string> linesWith(const std::string& pattern, const Sources& sources)
{
    const std::regex expression(pattern);
    std::vector<std::string> found;
    for (const auto& [path, text] : sources) {
        std::istringstream lines(text);
        int number = 1;
        for (std::string line; std::getline(lines, line); ++number)
            if (std::regex_search(line, expression))
                found.push_back(path + ":" + std::to_string(number) + ": " + line);
    }
    return found;
}

QString clangFormat()
{
    return QStringLiteral(KV_CLANG_FORMAT);
}

QByteArray outputOf(const QString& program, const QStringList& arguments, int* exitCode = nullptr)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setWorkingDirectory(QStringLiteral(KV_SOURCE_ROOT));
    process.start(program, arguments);
    process.waitForFinished(-1);
    if (exitCode)
        *exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    return process.readAll();
}

TEST(SourceFiles, beginWithTheirLicence)
{
    for (const auto& [path, text] : allSources())
        EXPECT_TRUE(namesLicence(text, 1)) << path;
}

TEST(SourceFiles, ofScriptsAndShadersNameTheirLicence)
{
    const Sources files = filesBelow(
        {"apps", "benchmarks", "cmake", "engine", "examples", "platform", "python", "quick", "resources",
         "tests", "tools", "viewer", "widgets"},
        {"CMakeLists.txt", ".cmake", ".sh", ".vert", ".frag", ".js", ".css", ".html", ".py", ".pyi"});
    ASSERT_GT(files.size(), 30u);
    for (const auto& [path, text] : files)
        EXPECT_TRUE(namesLicence(text, 2)) << path; // line 1 may be the interpreter or #version
}

TEST(SourceFiles, ofTheProductAreShort)
{
    for (const auto& [path, text] : productSources())
        EXPECT_LE(std::count(text.begin(), text.end(), '\n'), maxLines) << path;
}

// Each *_posix.cpp has a *_windows.cpp behind the same header. Some of these headers exist there, too.
TEST(SourceFiles, outsideOfPosixFilesIncludeNoPosixHeader)
{
    const std::regex posix(
        R"(#\s*include\s*<(sys/|linux/|(unistd|fcntl|poll|dlfcn|pthread|langinfo|execinfo|termios|pwd|grp|dirent)\.h>))");
    for (const auto& [path, text] : productSources())
        EXPECT_TRUE(path.ends_with("_posix.cpp") || path.ends_with("_windows.cpp") ||
                    !std::regex_search(text, posix))
            << path;
}

TEST(SourceFiles, ofPosixHaveACounterpartForWindows)
{
    const Sources sources = productSources();
    const std::string ending = "_posix.cpp";
    int count = 0;
    for (const auto& [path, text] : sources)
        if (path.ends_with(ending)) {
            const std::string stem = path.substr(0, path.size() - ending.size());
            EXPECT_EQ(sources.count(stem + "_windows.cpp"), 1u) << path;
            EXPECT_EQ(sources.count(stem + ".h"), 1u) << path;
            ++count;
        }
    EXPECT_GT(count, 0);
}

TEST(SourceFiles, areFormatted)
{
    const QByteArray version = outputOf(clangFormat(), {QStringLiteral("--version")});
    if (!version.contains("version 14."))
        GTEST_SKIP() << "clang-format 14 is not installed: " << version.trimmed().constData();
    QStringList arguments{QStringLiteral("--dry-run"), QStringLiteral("-Werror"),
                          QStringLiteral("--style=file")};
    for (const auto& [path, text] : allSources())
        arguments.append(QString::fromStdString(path));
    int exitCode = 0;
    const QByteArray findings = outputOf(clangFormat(), arguments, &exitCode);
    EXPECT_EQ(exitCode, 0) << findings.constData();
}

TEST(SourceFiles, ofTheProgramConnectByPointer)
{
    EXPECT_THAT(linesWith(R"(\b(SIGNAL|SLOT)\s*\()", filesBelow({"apps"}, {".cpp", ".h"})), IsEmpty());
}

TEST(SourceFiles, ofTheProductUseMaxMinAndDefaultInNames)
{
    EXPECT_THAT(linesWith(R"(\b(most|fewest|usual)[A-Z]\w*)", productSources()), IsEmpty());
}

TEST(SourceFiles, ofTheProductAvoidWordsThatTheGlossaryReplaces)
{
    EXPECT_THAT(
        linesWith(R"(//.*\b(contract|is told|passes through itself|no colou?rs?|of one's own|the dearest)\b)",
                  productSources()),
        IsEmpty());
}

} // namespace
