// SPDX-License-Identifier: MIT
#include "linux/LoginStart.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <vector>

#include "linux/Folders.h"

namespace pillora {

namespace {

namespace fs = std::filesystem;

constexpr const char* kUnit = "pillora-agent.service";
constexpr const char* kEntry = "org.pillora.Pillora.Agent.desktop";

/// The person's own folder of this name comes first, so that they can overrule the system's.
std::vector<fs::path> foldersOf(const fs::path& own, const std::string& root,
                                std::initializer_list<const char*> systems) {
  std::vector<fs::path> folders;
  if (const auto configuration = configurationFolder()) folders.push_back(*configuration / own);
  for (const char* folder : systems) folders.emplace_back(root + folder);
  return folders;
}

bool isThere(const fs::path& path) {
  std::error_code failure;
  return fs::exists(fs::symlink_status(path, failure));
}

bool isUnitWanted(const std::string& root) {
  const auto folders =
      foldersOf("systemd/user", root, {"/etc/systemd/user", "/usr/local/lib/systemd/user", "/usr/lib/systemd/user"});
  const auto unit = std::ranges::find_if(folders, [](const fs::path& folder) { return isThere(folder / kUnit); });
  std::error_code failure;
  // A masked unit is a link to nothing.
  if (unit == folders.end() || fs::read_symlink(*unit / kUnit, failure) == "/dev/null") return false;
  return std::ranges::any_of(
      folders, [](const fs::path& folder) { return isThere(folder / "graphical-session.target.wants" / kUnit); });
}

bool isInAutostart(const std::string& root) {
  for (const fs::path& folder : foldersOf("autostart", root, {"/etc/xdg/autostart"})) {
    std::ifstream entry(folder / kEntry);
    if (!entry) continue;
    for (std::string line; std::getline(entry, line);) {
      if (line == "Hidden=true") return false;
    }
    return true;
  }
  return false;
}

}  // namespace

bool agentStartsAtLogin(const std::string& root) { return isUnitWanted(root) || isInAutostart(root); }

}  // namespace pillora
