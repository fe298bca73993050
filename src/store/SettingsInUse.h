// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "model/AppSettings.h"
#include "store/ModelContext.h"

namespace pillora {

/// The settings record that every reader goes by: the first that was ever inserted. When the store holds none, one
/// with the defaults is inserted; looking and inserting are one transaction, so that two processes that start together
/// do not make two. When the store cannot be read (see ModelContext::takeReadError) the answer holds the defaults and
/// belongs to no store. Never null.
std::shared_ptr<AppSettings> settingsInUse(ModelContext& context);

}  // namespace pillora
