// SPDX-License-Identifier: Apache-2.0
// Most builds precompile common headers. There a source compiles even if it does not include them, so this
// test looks for sources that use such a header and do not include it, neither directly nor by a header of
// the tree.

#include "SourceTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QRegularExpression>

using namespace kvtree;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// What a source writes that needs a header.
const std::map<std::string, QString> usesOfHeaders{
    {"algorithm",
     QStringLiteral(
         R"(\bstd::(ranges::)?(adjacent_find|all_of|any_of|binary_search|clamp|copy|copy_if|count|)"
         R"(count_if|equal|equal_range|fill|fill_n|find|find_if|find_if_not|for_each|generate|)"
         R"(is_sorted|lower_bound|max|max_element|min|min_element|minmax|minmax_element|mismatch|)"
         R"(none_of|nth_element|partial_sort|partition|remove|remove_if|replace|reverse|rotate|)"
         R"(sort|stable_sort|transform|unique|upper_bound)\()")},
    {"cmath", QStringLiteral(R"(\bstd::(acos|asin|atan|atan2|cbrt|ceil|copysign|cos|exp|fabs|floor|fmod|)"
                             R"(hypot|isfinite|isinf|isnan|lerp|llround|log|log10|log2|lround|nextafter|pow|)"
                             R"(remainder|round|sin|sqrt|tan|trunc)\()")},
    {"functional", QStringLiteral(R"(\bstd::(function|greater|hash|invoke|less|ref|reference_wrapper)\b)")},
    {"memory", QStringLiteral(R"(\bstd::(make_shared|make_unique|shared_ptr|unique_ptr|weak_ptr)\b)")},
    {"optional", QStringLiteral(R"(\bstd::(make_optional|nullopt|optional)\b)")},
    {"span", QStringLiteral(R"(\bstd::(as_bytes|span)\b)")},
    {"string", QStringLiteral(R"(\bstd::(getline|string|to_string)\b)")},
    {"vector", QStringLiteral(R"(\bstd::vector\b)")},
    {"QtCore/QHash", QStringLiteral(R"(\bQHash\b)")},
    {"QtCore/QList", QStringLiteral(R"(\bQList\b)")},
    {"QtCore/QObject", QStringLiteral(R"(\bQObject\b)")},
    {"QtCore/QVariant", QStringLiteral(R"(\bQVariant\b)")},
};

/// @p text without comments and the contents of strings.
QString codeOf(const std::string& text)
{
    static const QRegularExpression strings(QStringLiteral(R"("(\\.|[^"\\\n])*")"));
    static const QRegularExpression comments(QStringLiteral(R"(//[^\n]*)"));
    return QString::fromStdString(text).remove(strings).remove(comments);
}

using Names = std::set<std::string>;

/// All names that the file @p path includes, also by files of the tree.
Names includedBy(const std::string& path, const Sources& sources, const std::map<std::string, Names>& files)
{
    Names names, visited;
    std::vector<std::string> open{path};
    while (!open.empty()) {
        const std::string file = open.back();
        open.pop_back();
        if (!visited.insert(file).second)
            continue;
        for (const std::string& name : includesOf(sources.at(file)))
            names.insert(name);
        if (const auto found = files.find(file); found != files.end())
            open.insert(open.end(), found->second.begin(), found->second.end());
    }
    return names;
}

/// "path: header" for each header that a file of @p sources uses and does not include.
std::vector<std::string> missingIncludes(const Sources& sources)
{
    std::map<std::string, Names> files;
    const IncludeGraph graph(sources, includeFolders);
    for (const auto& [from, to] : graph.arrows())
        files[from].insert(to);
    std::vector<std::string> missing;
    for (const auto& [path, text] : sources) {
        const QString code = codeOf(text);
        const Names names = includedBy(path, sources, files);
        for (const auto& [header, use] : usesOfHeaders)
            if (!names.contains(header) && code.contains(QRegularExpression(use)))
                missing.push_back(path + ": " + header);
    }
    return missing;
}

TEST(PrecompiledHeaders, thatAreNotIncludedAreFound)
{
    const std::string sort = "int f() { std::sort(1); std::vector<int> a; }\n";
    EXPECT_THAT(missingIncludes({{"a.cpp", "#include <vector>\n" + sort}}), ElementsAre("a.cpp: algorithm"));
    EXPECT_THAT(missingIncludes({{"a.cpp", sort}}), ElementsAre("a.cpp: algorithm", "a.cpp: vector"));
}

TEST(PrecompiledHeaders, mayBeIncludedByAHeaderOfTheTree)
{
    EXPECT_THAT(missingIncludes({{"a.cpp", "#include \"a.h\"\nstd::vector<int> v;\n"},
                                 {"a.h", "#include <b.h>\n"},
                                 {"include/b.h", "#include <vector>\n"}}),
                IsEmpty());
}

TEST(PrecompiledHeaders, areNotUsedByCommentsAndTexts)
{
    EXPECT_THAT(missingIncludes({{"a.cpp", "// std::vector\nauto a = \"std::vector \\\" std::span\";\n"}}),
                IsEmpty());
}

TEST(PrecompiledHeaders, areIncludedByTheProductsSourcesThatUseThem)
{
    EXPECT_THAT(missingIncludes(productSources()), IsEmpty());
}

// QString comes with every header of Qt.
TEST(PrecompiledHeaders, areAllLookedFor)
{
    const std::string targets = filesBelow({"cmake"}, {"KVTargets.cmake"}).begin()->second;
    const auto start = targets.find("target_precompile_headers(");
    ASSERT_NE(start, std::string::npos);
    const QRegularExpression name(QStringLiteral("<([^>]+)>"));
    auto headers = name.globalMatch(
        QString::fromStdString(targets.substr(start, targets.find("${ARGN}", start) - start)));
    EXPECT_TRUE(headers.hasNext());
    while (headers.hasNext()) {
        const std::string header = headers.next().captured(1).toStdString();
        EXPECT_TRUE(header == "QtCore/QString" || usesOfHeaders.contains(header)) << header;
    }
}

} // namespace
