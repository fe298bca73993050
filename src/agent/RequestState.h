// SPDX-License-Identifier: MIT
#pragma once

namespace pillora {

/// Where a pending request stands. The numbers are stored.
enum class RequestState {
  armed = 0,       ///< its minute lay ahead when it was added; it will fire
  delivering = 1,  ///< it has fired and is not known to be on the screen
  past = 2,        ///< its minute did not lie ahead; it stays until it is removed or replaced
};

}  // namespace pillora
