// SPDX-License-Identifier: Apache-2.0
// Code in the embedding guide is copied from the examples, which are built and run.

#include "SourceTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

using namespace kvtree;
using testing::IsEmpty;

namespace {

/// The C++ blocks of a Markdown text.
std::vector<std::string> codeBlocks(const std::string& markdown)
{
    std::vector<std::string> blocks;
    std::istringstream lines(markdown);
    bool inside = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("```")) {
            inside = line == "```cpp";
            if (inside)
                blocks.emplace_back();
        } else if (inside) {
            blocks.back() += line + '\n';
        }
    }
    return blocks;
}

/// The blocks that are not in any of @p sources, character by character.
std::vector<std::string> blocksMissingIn(const Sources& sources, const std::vector<std::string>& blocks)
{
    std::vector<std::string> missing = blocks;
    for (const auto& [path, text] : sources)
        std::erase_if(missing,
                      [&](const std::string& block) { return text.find(block) != std::string::npos; });
    return missing;
}

TEST(CodeBlocks, areFoundBetweenTheirMarks)
{
    EXPECT_THAT(codeBlocks("text\n```cpp\na;\nb;\n```\n```sh\nc\n```\n```cpp\nd;\n```\n"),
                testing::ElementsAre("a;\nb;\n", "d;\n"));
}

TEST(CodeBlocks, thatAreNowhereAreMissing)
{
    EXPECT_THAT(blocksMissingIn({{"a.cpp", "x;\na;\nb;\n"}}, {"a;\nb;\n", "b;\nx;\n"}),
                testing::ElementsAre("b;\nx;\n"));
}

TEST(CodeBlocks, ofTheEmbeddingGuideAreInTheExamples)
{
    const Sources guide = filesBelow({"docs"}, {"EMBEDDING.md"});
    ASSERT_EQ(guide.size(), 1u);
    const std::vector<std::string> blocks = codeBlocks(guide.begin()->second);
    EXPECT_GT(blocks.size(), 8u);
    EXPECT_THAT(blocksMissingIn(filesBelow({"examples"}, {".cpp", ".h"}), blocks), IsEmpty());
}

} // namespace
