// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "ui/ContentCell.h"

namespace pillora {

/// `content` with its sections as one list, so that a view of it makes the rows in sight alone, however many a section
/// has. `list` is the member of `content` that holds the sections, `rows` the member of a section that holds its rows,
/// all of `shape`. In the result `list` holds the rows themselves, each with three members more: `heading`, the section
/// without its rows, on the first of them; `group`, what tells the section apart; `isGroupsLast`.
ContentRow flattened(ContentRow content, std::string_view list, std::string_view rows, const ContentShape& shape);

}  // namespace pillora
