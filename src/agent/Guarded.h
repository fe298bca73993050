// SPDX-License-Identifier: MIT
#pragma once

#include <SQLiteCpp/Exception.h>

#include "support/Result.h"

namespace pillora {

/// Runs statements; SQLite's exception ends here as an error.
template <typename T, typename Work>
Result<T> guarded(Work work) {
  try {
    return work();
  } catch (const SQLite::Exception& failure) {
    return Error{std::string("reminder file: ") + failure.what()};
  }
}

}  // namespace pillora
