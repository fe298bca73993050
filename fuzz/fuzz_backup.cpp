// SPDX-License-Identifier: MIT
// The decoder of backup files: no bytes break it, what it refuses it says in one short line, and what it reads it
// writes and reads again as the same.
#include <string_view>

#include "Target.h"
#include "backup/BackupData.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace pillora;
  const auto backup = decodeBackup({reinterpret_cast<const char*>(data), size});
  if (!backup) {
    const std::string& why = backup.error().description;
    require(why.starts_with("This backup cannot be read: ") && why.size() < 1000,
            "a refusal says why and not too much");
    require(why.find('\n') == std::string::npos, "a refusal is one line");
    return 0;
  }
  const auto text = encodeBackup(*backup);
  require(static_cast<bool>(text), "what was read can be written");
  const auto again = decodeBackup(*text);
  require(again && *again == *backup, "a backup reads back as written");
  require(*encodeBackup(*again) == *text, "a backup is always written the same way");
  return 0;
}
