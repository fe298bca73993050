// SPDX-License-Identifier: MIT
#include "linux/Folders.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <pwd.h>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "linux/PosixFileManager.h"

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
  return folder.empty() ? fs::path() : folder / belowHome;
}

std::optional<std::string> optionalText(const fs::path& path) {
  return path.empty() ? std::nullopt : std::optional(path.string());
}

Error failed(const fs::path& folder, int error) {
  return {"The folder " + folder.string() + " cannot be made: " + std::generic_category().message(error)};
}

Result<void> makeFolder(const fs::path& folder) {
  std::error_code error;
  if (fs::is_directory(folder, error)) return {};
  if (folder.has_parent_path() && folder.parent_path() != folder) {
    if (auto parent = makeFolder(folder.parent_path()); !parent) return parent;
  }
  if (mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST) {
    // Another process may have made it meanwhile; anything but a folder is in the way.
    return fs::is_directory(folder, error) ? Result<void>() : failed(folder, ENOTDIR);
  }
  return failed(folder, errno);
}

/// What the last line `name="..."` of user-dirs.dirs says: a path in double quotes, absolute or beginning with $HOME,
/// in which a backslash stands before what the shell would read otherwise. Empty for any other line.
fs::path userDirectory(std::string_view lines, const std::string& name) {
  fs::path found;
  while (!lines.empty()) {
    const std::string_view line = lines.substr(0, lines.find('\n'));
    lines.remove_prefix(std::min(line.size() + 1, lines.size()));
    if (!line.starts_with(name + "=\"")) continue;
    std::string path;
    for (size_t at = name.size() + 2; at < line.size() && line[at] != '"'; ++at) {
      if (line[at] == '\\' && at + 1 < line.size()) ++at;
      path += line[at];
    }
    constexpr std::string_view kHome = "$HOME";
    if (path == kHome || path.starts_with("$HOME/")) path.replace(0, kHome.size(), home().string());
    found = fs::path(path).is_absolute() ? path : "";
  }
  return found;
}

}  // namespace

std::string pagesFolder(const std::string& program) {
  const fs::path folder = fs::path(program).parent_path();
  std::error_code failure;
  const fs::path built = folder / "pages";
  return fs::is_directory(built, failure) ? built : (folder / "../share/pillora/pages").lexically_normal();
}

Result<void> makePrivateFolder(const std::string& path) { return makeFolder(path); }

std::optional<std::string> homeFolder() { return optionalText(home()); }

std::optional<std::string> configurationFolder() { return optionalText(baseDirectory("XDG_CONFIG_HOME", ".config")); }

std::optional<std::string> documentsFolder() {
  if (const auto configuration = configurationFolder()) {
    if (const auto lines = readRegularFile(*configuration + "/user-dirs.dirs")) {
      if (const auto folder = userDirectory(*lines, "XDG_DOCUMENTS_DIR"); !folder.empty()) return folder.string();
    }
  }
  return optionalText(home().empty() ? fs::path() : home() / "Documents");
}

std::string cataloguesFolder() {
  std::error_code failure;
  const fs::path program = fs::read_symlink("/proc/self/exe", failure).parent_path();
  const fs::path installed = (program / "../share/locale").lexically_normal();
  return fs::exists(installed / "de/LC_MESSAGES/pillora.mo", failure)
             ? installed.string()
             : (program / "../../po").lexically_normal().string();
}

Result<std::string> groupContainer() {
  const fs::path data = baseDirectory("XDG_DATA_HOME", ".local/share");
  if (data.empty()) return Error{"this user has no home folder"};
  const fs::path folder = data / kGroupContainer;
  if (const auto made = makeFolder(folder); !made) return made.error();
  return folder.string();
}

Result<std::string> stateFolder() {
  const fs::path state = baseDirectory("XDG_STATE_HOME", ".local/state");
  if (state.empty()) return Error{"this user has no home folder"};
  return (state / "pillora").string();
}

}  // namespace pillora
