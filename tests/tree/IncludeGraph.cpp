// SPDX-License-Identifier: Apache-2.0
#include "IncludeGraph.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <regex>
#include <sstream>

namespace kvtree {
namespace {

std::string joined(const std::string& folder, const std::string& name)
{
    return (std::filesystem::path(folder) / name).lexically_normal().generic_string();
}

std::optional<std::string> resolved(const std::string& name, const std::string& from, const Sources& sources,
                                    const IncludeFolders& folders)
{
    if (const std::string beside = joined(folderOf(from), name); sources.contains(beside))
        return beside;
    for (const std::string& folder : folders)
        if (const std::string path = joined(folder, name); sources.contains(path))
            return path;
    return std::nullopt;
}

using Units = std::map<std::string, std::set<std::string>>;

/// Depth-first search for the arrows that lead back to a unit on the current path.
class CycleSearch
{
public:
    explicit CycleSearch(const Units& units) : m_units(units) {}

    std::vector<std::string> run()
    {
        for (const auto& [unit, included] : m_units)
            visit(unit);
        return m_cycles;
    }

private:
    void visit(const std::string& unit)
    {
        const auto start = std::find(m_path.begin(), m_path.end(), unit);
        if (start != m_path.end()) {
            std::string cycle;
            for (auto at = start; at != m_path.end(); ++at)
                cycle += *at + " -> ";
            m_cycles.push_back(cycle + unit);
            return;
        }
        if (!m_visited.insert(unit).second)
            return;
        m_path.push_back(unit);
        if (const auto found = m_units.find(unit); found != m_units.end())
            for (const std::string& included : found->second)
                visit(included);
        m_path.pop_back();
    }

    const Units& m_units;
    std::set<std::string> m_visited;
    std::vector<std::string> m_path;
    std::vector<std::string> m_cycles;
};

bool allows(const Order& order, const std::string& key, const std::string& to)
{
    const auto rule = order.find(key);
    return rule != order.end() && (rule->second.contains(folderOf(to)) || rule->second.contains(to));
}

} // namespace

std::vector<std::string> includesOf(const std::string& text)
{
    static const std::regex include(R"(^\s*#\s*include\s*["<]([^">]+)[">])");
    std::vector<std::string> names;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        if (std::smatch match; std::regex_search(line, match, include))
            names.push_back(match[1]);
    return names;
}

std::string unitOf(const std::string& path)
{
    return path.substr(0, path.rfind('.'));
}

std::string folderOf(const std::string& path)
{
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

IncludeGraph::IncludeGraph(const Sources& sources, const IncludeFolders& folders)
{
    for (const auto& [path, text] : sources)
        for (const std::string& name : includesOf(text))
            if (const auto included = resolved(name, path, sources, folders))
                m_arrows.push_back({path, *included});
}

std::vector<std::string> IncludeGraph::cycles() const
{
    Units units;
    for (const Arrow& arrow : m_arrows)
        if (unitOf(arrow.from) != unitOf(arrow.to) || arrow.from == arrow.to)
            units[unitOf(arrow.from)].insert(unitOf(arrow.to));
    return CycleSearch(units).run();
}

std::vector<std::string> arrowsAgainst(const Order& order, const IncludeGraph& graph)
{
    std::vector<std::string> found;
    for (const auto& [from, to] : graph.arrows())
        if (folderOf(from) != folderOf(to) && !allows(order, folderOf(from), to) &&
            !allows(order, unitOf(from), to))
            found.push_back(from + " includes " + to);
    return found;
}

} // namespace kvtree
