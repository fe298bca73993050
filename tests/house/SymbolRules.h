// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "house/SourceTree.h"

namespace pillora::house {

// The rules of assets/symbols/. Findings are those of HouseRules.h.

/// The symbols that the sources of the screens, the app and the window name have their files. A name is known by its
/// dots, by its place in the table of medicine icons, as what a QML property "symbol" is given, or as what follows an
/// id and its title; a single word elsewhere is not told from other texts, and a symbol that is asked for in vain is a
/// warning of the running window.
std::vector<std::string> missingSymbols(const SourceTree& tree);

/// A symbol is on the grid, in one colour, small, and made of nothing but the elements and attributes that the window's
/// renderer draws as they are meant.
std::vector<std::string> unfitSymbols(const SourceTree& tree);

}  // namespace pillora::house
