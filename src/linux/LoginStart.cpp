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

enum class Unit { unwanted, wanted, masked };

Unit stateOfUnit(const std::string& root) {
  const auto folders =
      foldersOf("systemd/user", root, {"/etc/systemd/user", "/usr/local/lib/systemd/user", "/usr/lib/systemd/user"});
  const auto unit = std::ranges::find_if(folders, [](const fs::path& folder) { return isThere(folder / kUnit); });
  if (unit == folders.end()) return Unit::unwanted;
  std::error_code failure;
  if (fs::read_symlink(*unit / kUnit, failure) == "/dev/null") return Unit::masked;
  const bool isWanted = std::ranges::any_of(
      folders, [](const fs::path& folder) { return isThere(folder / "graphical-session.target.wants" / kUnit); });
  return isWanted ? Unit::wanted : Unit::unwanted;
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

bool agentStartsAtLogin(const std::string& root) {
  const Unit unit = stateOfUnit(root);
  return unit != Unit::masked && (unit == Unit::wanted || isInAutostart(root));
}

}  // namespace pillora
