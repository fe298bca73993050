// SPDX-License-Identifier: MIT
#include "linux/CloudFolder.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <vector>

#include "linux/Folders.h"
#include "linux/PosixFileManager.h"

namespace pillora {

namespace {

namespace fs = std::filesystem;

/// Both clients keep their accounts in Qt's INI form, a folder by several lines of the section [Accounts]:
///
///     0\Folders\1\localPath=/srv/ann/Nextcloud/
///     0\Folders\1\targetPath=/
///
/// "0" is the account, "1" the folder's name. The group is "Folders", or "Multifolders" or "FoldersWithPlaceholders"
/// when an older client could not read the folder.
struct SyncedFolder {
  std::string group;  ///< what its lines begin with, "0\Folders\1"
  std::string localPath, targetPath;
};

/// A text in which Qt wrote code units of UTF-16 as "\x20ac", in as many digits as they need.
class Unescaped {
 public:
  explicit Unescaped(std::string_view value) {
    for (size_t at = 0; at < value.size(); ++at) {
      if (value[at] == '"') continue;
      const bool isEscaped = value[at] == '\\' && at + 1 < value.size();
      if (isEscaped) ++at;
      if (isEscaped && value[at] == 'x') {
        uint32_t unit = 0;
        const auto end = std::from_chars(&value[at] + 1, value.data() + value.size(), unit, 16).ptr;
        at = static_cast<size_t>(end - value.data()) - 1;
        add(unit);
      } else {
        text_ += value[at];
      }
    }
  }

  const std::string& text() const { return text_; }

 private:
  void add(uint32_t unit) {
    if (unit >= 0xD800 && unit < 0xDC00) {
      high_ = unit;
    } else if (unit >= 0xDC00 && unit < 0xE000) {
      addCharacter(0x10000 + ((high_ - 0xD800) << 10) + (unit - 0xDC00));
    } else {
      addCharacter(unit);
    }
  }

  void addCharacter(uint32_t character) {
    const auto tail = [&](int shift) { text_ += static_cast<char>(0x80 | ((character >> shift) & 0x3F)); };
    if (character < 0x80) {
      text_ += static_cast<char>(character);
    } else if (character < 0x800) {
      text_ += static_cast<char>(0xC0 | character >> 6);
      tail(0);
    } else if (character < 0x10000) {
      text_ += static_cast<char>(0xE0 | character >> 12);
      tail(6);
      tail(0);
    } else {
      text_ += static_cast<char>(0xF0 | ((character >> 18) & 7));
      tail(12);
      tail(6);
      tail(0);
    }
  }

  std::string text_;
  uint32_t high_ = 0xD800;  ///< the half of a character that came last
};

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  const size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool isFolderGroup(std::string_view group) {
  const size_t first = group.find('\\');
  const size_t last = group.rfind('\\');
  if (first == std::string_view::npos || first == last) return false;
  const std::string_view kind = group.substr(first + 1, last - first - 1);
  return kind == "Folders" || kind == "Multifolders" || kind == "FoldersWithPlaceholders";
}

/// In the order of the file.
std::vector<SyncedFolder> syncedFolders(std::string_view lines) {
  std::vector<SyncedFolder> folders;
  bool isAccounts = false;
  while (!lines.empty()) {
    const std::string_view whole = lines.substr(0, lines.find('\n'));
    lines.remove_prefix(std::min(whole.size() + 1, lines.size()));
    const std::string_view line = trimmed(whole);
    if (line.starts_with('[')) isAccounts = line == "[Accounts]";
    const size_t equals = line.find('=');
    if (!isAccounts || equals == std::string_view::npos) continue;
    const std::string_view key = trimmed(line.substr(0, equals));
    const std::string_view group = key.substr(0, std::min(key.rfind('\\'), key.size()));
    if (!isFolderGroup(group)) continue;
    if (folders.empty() || folders.back().group != group) folders.push_back({std::string(group), {}, {}});
    const std::string value = Unescaped(trimmed(line.substr(equals + 1))).text();
    if (key.ends_with("\\localPath")) folders.back().localPath = value;
    if (key.ends_with("\\targetPath")) folders.back().targetPath = value;
  }
  return folders;
}

std::optional<std::string> folderIn(const fs::path& configuration) {
  const auto lines = readRegularFile(configuration);
  if (!lines) return std::nullopt;
  auto folders = syncedFolders(*lines);
  std::erase_if(folders, [](const SyncedFolder& folder) {
    std::error_code ignored;
    const bool isPath = folder.localPath.starts_with('/') && folder.localPath.find('\0') == std::string::npos;
    return !isPath || !fs::is_directory(folder.localPath, ignored);
  });
  if (folders.empty()) return std::nullopt;
  const auto whole =
      std::find_if(folders.begin(), folders.end(), [](const auto& each) { return each.targetPath == "/"; });
  return (whole == folders.end() ? folders.front() : *whole).localPath;
}

}  // namespace

std::optional<std::string> cloudFolder() {
  const auto home = homeFolder();
  const auto configuration = configurationFolder();
  if (!home || !configuration) return std::nullopt;
  const std::array<fs::path, 4> files = {
      fs::path(*configuration) / "Nextcloud/nextcloud.cfg",
      fs::path(*configuration) / "ownCloud/owncloud.cfg",
      fs::path(*home) / ".var/app/com.nextcloud.desktopclient.nextcloud/config/Nextcloud/nextcloud.cfg",
      fs::path(*home) / "snap/nextcloud-desktop-client/current/.config/Nextcloud/nextcloud.cfg",
  };
  for (const fs::path& file : files) {
    if (auto folder = folderIn(file)) return folder;
  }
  return std::nullopt;
}

}  // namespace pillora
