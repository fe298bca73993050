// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "house/SourceTree.h"

namespace pillora::house {

// The rules of the house that a reader of a change would otherwise have to remember. Each returns its findings as
// "path:line: what is wrong", in the order of the tree; none when the tree keeps the rule.

/// Rooms under src/ include only rooms below them, by "room/Header.h". The adapters (icu, linux, agent) are seen by
/// main.cpp files alone, and the agent's sees no ICU.
std::vector<std::string> backwardImports(const SourceTree& tree);

/// A foreign library is included in the rooms that are there to wrap it and nowhere else under src/.
std::vector<std::string> foreignLibraries(const SourceTree& tree);

/// Below the programs nothing reads the clock, the environment or the process's locale, and nothing prints.
std::vector<std::string> ambientReads(const SourceTree& tree);

/// Sources, build files and scripts begin with the licence line (scripts: below their interpreter line).
std::vector<std::string> missingLicences(const SourceTree& tree);

/// Headers are protected by #pragma once.
std::vector<std::string> missingPragmas(const SourceTree& tree);

/// Every source is named in a CMakeLists.txt, by its path from there.
std::vector<std::string> unlistedSources(const SourceTree& tree);

/// Build files name their sources one by one.
std::vector<std::string> globbing(const SourceTree& tree);

/// No source, build file or script has more than 400 lines.
std::vector<std::string> longFiles(const SourceTree& tree);

/// A path into the repository that a document names is there. A path with a placeholder (<, *, …) is passed over.
std::vector<std::string> missingDocumentPaths(const SourceTree& tree);

/// No unfinished work, no check that was switched off, no path of somebody's machine, no comment that sends its reader
/// to a paper outside the repository.
std::vector<std::string> forbiddenWords(const SourceTree& tree);

}  // namespace pillora::house
