// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Page.h"
#include "platform/Texts.h"
#include "screens/FormContent.h"

namespace pillora {

/// The words that change what a row shows, or carry out what its button does; empty where there are none.
using CommandOf = std::function<std::string(std::string_view row)>;

/// Prints sections of rows: what each row is called, its value, and its command, in columns as wide in every section.
/// Values that are too long for their column stand below. Rows that have no meaning on a terminal are left out.
void addForm(Page& page, const std::vector<FormSection>& sections, const CommandOf& commandOf, const Terminal& terminal,
             const Texts& texts);

}  // namespace pillora
