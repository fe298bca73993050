// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "platform/Texts.h"

namespace CLI {
class App;
}

namespace pillora {

/// What stands above the examples at the end of a help text.
inline constexpr std::string_view kExamples = ownText("Examples:");

/// Puts all that the help of `app` and its commands says into the language of `texts`. The examples and the words for
/// values, such as FILE, stay as they are.
void translateHelp(CLI::App& app, const Texts& texts);

}  // namespace pillora
