// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "IncludeGraph.h"

#include <string>
#include <vector>

namespace kvtree {

/// Folders of the library and the program, and those of tests, examples and tools.
extern const std::vector<std::string> productFolders;
extern const std::vector<std::string> otherFolders;

/// The files below @p folders of the tree whose names end in one of @p endings.
Sources filesBelow(const std::vector<std::string>& folders, const std::vector<std::string>& endings);

/// C++ sources and headers of the library and the program.
Sources productSources();
/// All C++ sources and headers.
Sources allSources();

} // namespace kvtree
