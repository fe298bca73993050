// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace pillora {

/// The folder that an installed Nextcloud or ownCloud client keeps in sync, as its own configuration file says: the one
/// that stands for the whole of the account where there is one, else the first. Nextcloud's comes first, then
/// ownCloud's, then that of Nextcloud installed as a Flatpak or a snap. Only a folder that is there counts; nothing
/// when there is none.
std::optional<std::string> cloudFolder();

}  // namespace pillora
