// SPDX-License-Identifier: Apache-2.0
// There are no include cycles between files, and folders include each other only in the order that
// docs/ARCHITECTURE.md describes.

#include "SourceTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace kvtree;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const std::string model = "apps/kvgamut/model/";
const std::string commands = "apps/kvgamut/commands";
const std::string desktop = "apps/kvgamut/desktop";

/// @p own and the folders of the library that all of the program may include.
std::set<std::string> program(std::set<std::string> own)
{
    own.insert({"include", "platform"});
    return own;
}

const std::set<std::string> modelRooms{
    model + "bodies",  model + "charts", model + "checks",   model + "export", model + "inputs",
    model + "jobs",    model + "photos", model + "pictures", model + "points", model + "problems",
    model + "reports", model + "slices", model + "text"};

std::set<std::string> withModel(std::set<std::string> own)
{
    own.insert(modelRooms.begin(), modelRooms.end());
    return program(std::move(own));
}

Order documentedOrder()
{
    return {
        // the library
        {"platform", {}},
        {"platform/core", {"platform"}},
        {"include", {"platform"}},
        {"scene", {"platform", "glwindow/CameraState.h"}}, // drawn objects use the state of the camera
        {"annotation", {"platform", "include", "scene/Coordinates.h"}},
        {"glwindow", {"platform", "scene", "annotation"}},
        {"gamut", {"platform", "scene"}},
        {"viewer", {"platform", "include", "scene", "glwindow", "gamut", "annotation"}},

        // the viewer as a widget and as an item, which use it as hosts do
        {"widgets", {"include"}},
        {"quick", {"include"}},

        // the colour engine
        {"engine/base", {"platform"}},
        {"engine/profile", {"platform", "engine/base"}},
        {"engine/mesh", {"platform", "engine/base"}},
        {"engine/surface", {"platform", "engine/base", "engine/profile", "engine/mesh"}},
        {"engine/gamut", {"platform", "engine/base", "engine/profile", "engine/mesh", "engine/surface"}},

        // the program: the folders of model/ depend neither on commands/ nor on desktop/
        {model + "text", program({})},
        {model + "problems", program({model + "text"})},
        {model + "jobs", program({})},
        {model + "reports", program({model + "text", model + "problems", model + "jobs"})},
        {model + "inputs", program({model + "text", model + "problems", model + "reports", model + "jobs"})},
        {model + "photos",
         program({model + "text", model + "problems", model + "reports", model + "inputs"})},
        {model + "pictures", program({model + "problems", model + "reports", model + "inputs"})},
        {model + "points", program({model + "text", model + "problems", model + "reports", model + "inputs",
                                    model + "photos"})},
        {model + "charts",
         program({model + "problems", model + "inputs", model + "photos", model + "points"})},
        {model + "bodies", program({model + "problems", model + "reports", model + "inputs", model + "photos",
                                    model + "points"})},
        {model + "inputs/GamutSource", program({model + "bodies", model + "charts", model + "photos",
                                                model + "points"})}, // opens any input
        {model + "checks", program({model + "problems", model + "inputs", model + "photos", model + "points",
                                    model + "jobs", model + "pictures", model + "text"})},
        {model + "slices", program({model + "text", model + "problems", model + "reports", model + "inputs",
                                    model + "points", model + "pictures"})},
        {model + "export", program({model + "bodies", model + "text", model + "problems", model + "reports",
                                    model + "inputs", model + "points", model + "pictures"})},

        {"apps/kvgamut/surfaceless", {}}, // depends on Qt only
        {commands + "/process", withModel({"apps/kvgamut/surfaceless"})},
        {commands + "/options", withModel({commands + "/process"})},
        {commands + "/help", withModel({commands + "/options", commands + "/process"})},
        {commands, withModel({commands + "/process", commands + "/options"})},
        {commands + "/ViewCommand", {desktop, desktop + "/language"}}, // opens the window

        {desktop + "/language", withModel({})},
        {desktop + "/models", withModel({desktop + "/language"})},
        {desktop + "/view", withModel({desktop + "/language", desktop + "/models"})},
        {desktop + "/files", withModel({desktop + "/language", desktop + "/models", desktop + "/view"})},
        {desktop + "/panels", withModel({desktop + "/language", desktop + "/models", desktop + "/view"})},
        {desktop + "/menus", withModel({desktop + "/language", desktop + "/models", desktop + "/view",
                                        desktop + "/files", desktop + "/panels"})},
        {desktop, withModel({desktop + "/language", desktop + "/models", desktop + "/view",
                             desktop + "/files", desktop + "/panels", desktop + "/menus"})},

        {"apps/kvgamut", withModel({commands, commands + "/help", commands + "/process"})},

        // the Python module: the model without commands and window
        {"python/binding", withModel({})},
    };
}

TEST(IncludeGraph, resolvesFilesBesideAndBelowTheFolders)
{
    const IncludeGraph graph({{"a/A.cpp", "#include \"A.h\"\n  #  include <Public.h>\n#include <vector>\n"},
                              {"a/A.h", "#include \"room/B.h\"\n"},
                              {"include/Public.h", ""},
                              {"program/room/B.h", "// #include \"A.h\"\n"}},
                             {"", "include", "program"});
    std::vector<std::string> arrows;
    for (const auto& [from, to] : graph.arrows())
        arrows.push_back(from + " " + to);
    EXPECT_THAT(arrows, ElementsAre("a/A.cpp a/A.h", "a/A.cpp include/Public.h", "a/A.h program/room/B.h"));
}

TEST(IncludeGraph, findsACycleOfHeaders)
{
    const IncludeGraph graph(
        {{"A.h", "#include \"B.h\"\n"}, {"B.h", "#include \"C.h\"\n"}, {"C.h", "#include \"A.h\"\n"}}, {});
    EXPECT_THAT(graph.cycles(), ElementsAre("A -> B -> C -> A"));
}

TEST(IncludeGraph, findsACycleThroughSources)
{
    const IncludeGraph graph({{"a/A.cpp", "#include \"A.h\"\n#include \"B.h\"\n"},
                              {"a/A.h", ""},
                              {"a/B.cpp", "#include \"A.h\"\n#include \"B.h\"\n"},
                              {"a/B.h", ""}},
                             {});
    EXPECT_THAT(graph.cycles(), ElementsAre("a/A -> a/B -> a/A"));
}

TEST(IncludeGraph, findsAFileThatIncludesItself)
{
    EXPECT_THAT(IncludeGraph({{"A.h", "#include \"A.h\"\n"}}, {}).cycles(), ElementsAre("A -> A"));
}

TEST(IncludeGraph, findsNoCycleWherePathsOnlyMeetAgain)
{
    const IncludeGraph graph({{"A.h", "#include \"B.h\"\n#include \"C.h\"\n"},
                              {"B.h", "#include \"D.h\"\n"},
                              {"C.h", "#include \"D.h\"\n"},
                              {"D.h", ""}},
                             {});
    EXPECT_THAT(graph.cycles(), IsEmpty());
}

TEST(IncludeGraph, findsArrowsAgainstTheOrder)
{
    const IncludeGraph graph({{"low/A.h", "#include \"high/B.h\"\n"},
                              {"low/Record.h", ""},
                              {"low/hidden/D.h", ""},
                              {"high/B.h", ""},
                              {"high/C.cpp", "#include <low/A.h>\n#include <low/hidden/D.h>\n"},
                              {"side/E.h", "#include <low/Record.h>\n#include <low/A.h>\n"}},
                             {""});
    const Order order{{"low", {}}, {"high", {"low"}}, {"side", {"low/Record.h"}}};
    EXPECT_THAT(arrowsAgainst(order, graph),
                ElementsAre("high/C.cpp includes low/hidden/D.h", "low/A.h includes high/B.h",
                            "side/E.h includes low/A.h"));
}

TEST(IncludeGraph, allowsASingleUnitMoreThanItsFolder)
{
    const IncludeGraph graph(
        {{"a/Opens.cpp", "#include \"b/B.h\"\n"}, {"a/Other.cpp", "#include \"b/B.h\"\n"}, {"b/B.h", ""}},
        {""});
    EXPECT_THAT(arrowsAgainst({{"a/Opens", {"b"}}}, graph), ElementsAre("a/Other.cpp includes b/B.h"));
}

TEST(SourceTree, hasNoIncludeCycles)
{
    const Sources sources = productSources();
    ASSERT_GT(sources.size(), 200u);
    EXPECT_THAT(IncludeGraph(sources, includeFolders).cycles(), IsEmpty());
}

TEST(SourceTree, keepsTheDocumentedOrderOfFolders)
{
    const IncludeGraph graph(productSources(), includeFolders);
    ASSERT_GT(graph.arrows().size(), 400u);
    EXPECT_THAT(arrowsAgainst(documentedOrder(), graph), IsEmpty());
}

// Each folder becomes a file that includes those of the folders that it may include. Only the state of the
// camera, a single file, is included by scene/ from glwindow/.
TEST(SourceTree, hasADocumentedOrderWithoutCycles)
{
    Sources folders;
    for (const auto& [folder, mayInclude] : documentedOrder())
        for (const std::string& included : mayInclude) {
            folders[included + ".h"];
            folders[folder + ".h"] += "#include <" + included + ".h>\n";
        }
    EXPECT_THAT(IncludeGraph(folders, {""}).cycles(), IsEmpty());
}

TEST(SourceTree, hasNoRulesForFoldersThatDoNotExist)
{
    std::set<std::string> names;
    for (const auto& [path, text] : productSources()) {
        names.insert(folderOf(path));
        names.insert(unitOf(path));
    }
    for (const auto& [name, rule] : documentedOrder())
        EXPECT_TRUE(names.contains(name)) << name;
}

} // namespace
