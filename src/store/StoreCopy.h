// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "support/Result.h"

namespace pillora {

/// Copies the store at `path`, as it was when last committed, to `copy`, replacing what is there. The copy is a whole
/// store by itself, readable by its owner alone, and on the disk when this returns. The store may be open, also with a
/// write transaction. On an error `copy` is as it was, or whole where only
/// its folder could not be written to the disk.
Result<void> keepCopy(const std::string& path, const std::string& vfs, const std::string& copy);

}  // namespace pillora
