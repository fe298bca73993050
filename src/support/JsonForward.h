// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json_fwd.hpp>

// Json by name alone, for headers that only mention it: the whole of it costs every source that includes them a second.

namespace pillora {

/// JSON that keeps its members in the order in which they were added.
using Json = nlohmann::ordered_json;

class JsonPlace;

}  // namespace pillora
