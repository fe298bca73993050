// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "support/Result.h"

namespace pillora {

/// The folder that Pillora's programs share, "group.org.pillora.Pillora" in the user's data folder ($XDG_DATA_HOME,
/// else ~/.local/share, as XDG base directories are laid out). It and what leads to it are made when missing,
/// readable by their owner alone; a folder that is there stays as it is.
Result<std::string> groupContainer();

/// The folder "pillora" in the user's state folder ($XDG_STATE_HOME, else ~/.local/state), where what is planned is
/// kept. It is made by whoever writes there.
Result<std::string> stateFolder();

/// The user's home folder and configuration folder ($XDG_CONFIG_HOME, else ~/.config). Nothing when this user has no
/// home folder.
std::optional<std::string> homeFolder();
std::optional<std::string> configurationFolder();

/// The user's documents folder as the desktop has it in user-dirs.dirs of the configuration folder, else ~/Documents.
/// It need not be there yet. Nothing when this user has no home folder.
std::optional<std::string> documentsFolder();

/// Where the catalogues of languages lie for this program, as it is installed or in a build tree: the folder that holds
/// "de/LC_MESSAGES". It need not be there.
std::string cataloguesFolder();
/// The folder of the pages that come with `program`, whether that is installed or in a build tree.
std::string pagesFolder(const std::string& program);

/// Makes a folder and what leads to it where missing, readable by their owner alone; a folder that is there stays as
/// it is.
Result<void> makePrivateFolder(const std::string& path);

}  // namespace pillora
