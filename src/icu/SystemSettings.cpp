// SPDX-License-Identifier: MIT
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>

#include "icu/Calendars.h"
#include "icu/Locales.h"

namespace pillora {

namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 16;

/// The zone that a file of the tz database holds, by its place: "/usr/share/zoneinfo/Europe/Berlin".
std::optional<std::string> zoneAt(const std::string& path) {
  constexpr std::string_view kFolder = "zoneinfo/";
  const size_t at = path.rfind(kFolder);
  if (at == std::string::npos) return std::nullopt;
  std::string id = path.substr(at + kFolder.size());
  for (const std::string_view tree : {"posix/", "right/"}) {
    if (id.rfind(tree, 0) == 0) id.erase(0, tree.size());
  }
  return timeZoneNamed(id) ? std::optional(id) : std::nullopt;
}

/// TZ as the C library reads it: a zone's name or file, after an optional colon.
std::optional<std::string> zoneFromEnvironment() {
  const char* variable = std::getenv("TZ");
  if (variable == nullptr) return std::nullopt;
  std::string id = variable;
  if (id.rfind(':', 0) == 0) id.erase(0, 1);
  if (id.empty()) return "UTC";
  return timeZoneNamed(id) ? std::optional(id) : zoneAt(id);
}

/// Follows the links one by one: a zone may itself be a link to another name of the same rules.
std::optional<std::string> zoneFromLink(fs::path link) {
  std::error_code failed;
  for (int i = 0; i < kMostLinks; ++i) {
    const fs::path target = fs::read_symlink(link, failed);
    if (failed) return std::nullopt;
    link = link.parent_path() / target;
    if (auto zone = zoneAt(link.string())) return zone;
  }
  return std::nullopt;
}

std::optional<std::string> zoneFromFile(const fs::path& path) {
  std::ifstream file(path);
  std::string id;
  file >> id;
  return timeZoneNamed(id) ? std::optional(id) : std::nullopt;
}

}  // namespace

std::string systemTimeZone(const std::string& etc) {
  if (auto zone = zoneFromEnvironment()) return *zone;
  if (auto zone = zoneFromLink(fs::path(etc) / "localtime")) return *zone;
  return zoneFromFile(fs::path(etc) / "timezone").value_or("UTC");
}

std::string systemLocale() {
  for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value == nullptr || *value == '\0') continue;
    return localeNamed(value) ? value : "en_US";
  }
  return "en_US";
}

}  // namespace pillora
