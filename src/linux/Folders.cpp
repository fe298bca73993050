// SPDX-License-Identifier: MIT
#include "linux/Folders.h"

#include <cstdlib>
#include <filesystem>
#include <pwd.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace pillora {

namespace {

namespace fs = std::filesystem;

constexpr const char* kGroupContainer = "group.org.pillora.Pillora";

/// The path that a variable holds; in XDG base directories a relative one counts as not set.
fs::path folderFrom(const char* variable) {
  const char* value = std::getenv(variable);
  const fs::path path = value == nullptr ? "" : value;
  return path.is_absolute() ? path : fs::path();
}

fs::path home() {
  if (auto folder = folderFrom("HOME"); !folder.empty()) return folder;
  const passwd* user = getpwuid(getuid());
  return user == nullptr || user->pw_dir == nullptr ? fs::path() : fs::path(user->pw_dir);
}

/// A base directory; empty when the user has no home folder either.
fs::path baseDirectory(const char* variable, const char* belowHome) {
  if (auto folder = folderFrom(variable); !folder.empty()) return folder;
  const fs::path folder = home();
  return folder.empty() ? fs::path() : folder / ".local" / belowHome;
}

Error failed(const fs::path& folder, int error) {
  return {"cannot make the folder " + folder.string() + ": " + std::generic_category().message(error)};
}

Result<void> makePrivateFolder(const fs::path& folder) {
  std::error_code error;
  if (fs::is_directory(folder, error)) return {};
  if (folder.has_parent_path() && folder.parent_path() != folder) {
    if (auto parent = makePrivateFolder(folder.parent_path()); !parent) return parent;
  }
  if (mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST) {
    // Another process may have made it meanwhile; anything but a folder is in the way.
    return fs::is_directory(folder, error) ? Result<void>() : failed(folder, ENOTDIR);
  }
  return failed(folder, errno);
}

}  // namespace

Result<std::string> groupContainer() {
  const fs::path data = baseDirectory("XDG_DATA_HOME", "share");
  if (data.empty()) return Error{"this user has no home folder"};
  const fs::path folder = data / kGroupContainer;
  if (const auto made = makePrivateFolder(folder); !made) return made.error();
  return folder.string();
}

Result<std::string> stateFolder() {
  const fs::path state = baseDirectory("XDG_STATE_HOME", "state");
  if (state.empty()) return Error{"this user has no home folder"};
  return (state / "pillora").string();
}

}  // namespace pillora
