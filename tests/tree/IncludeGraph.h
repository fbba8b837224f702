// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace kvtree {

/// Texts of source files by path, relative to the root of the tree and with '/'.
using Sources = std::map<std::string, std::string>;

/// Folders in which an include is looked up besides the folder of the including file; "" is the root.
using IncludeFolders = std::vector<std::string>;
/// Those of the tree: includes in the program are written from apps/kvgamut/, those of the public headers
/// from include/.
inline const IncludeFolders includeFolders{"", "include", "apps/kvgamut"};

/// The names in the include lines of @p text.
std::vector<std::string> includesOf(const std::string& text);

/// Which files of a tree include which others.
class IncludeGraph
{
public:
    IncludeGraph(const Sources& sources, const IncludeFolders& folders);

    struct Arrow
    {
        std::string from; ///< including file
        std::string to;   ///< included file of the tree
    };
    const std::vector<Arrow>& arrows() const { return m_arrows; }

    /// Cycles between units. A unit is a header and a source of the same name. Each cycle is given once, as
    /// "a -> b -> a".
    std::vector<std::string> cycles() const;

private:
    std::vector<Arrow> m_arrows;
};

/// What each folder may include besides itself: other folders (without their subfolders) or single files. A
/// key is a folder or a unit ("folder/Name"); what a unit may include is added to what its folder may.
using Order = std::map<std::string, std::set<std::string>>;

/// Arrows of @p graph that @p order does not allow, as "from includes to".
std::vector<std::string> arrowsAgainst(const Order& order, const IncludeGraph& graph);

/// "a/b.c" for "a/b.c.h".
std::string unitOf(const std::string& path);

/// "a/b" for "a/b/c.h", empty for "c.h".
std::string folderOf(const std::string& path);

} // namespace kvtree
