// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "support/Result.h"

namespace pillora {

/// Notices that files in a folder were written, made, replaced, moved or deleted, by whichever process. Nothing runs by
/// itself: an event loop polls descriptor(), which is readable as soon as anything in the folder changed. Not for files
/// that are written through a memory mapping, which the kernel does not report.
class FolderWatch {
 public:
  /// From now on. An error says that the folder cannot be watched.
  static Result<std::unique_ptr<FolderWatch>> open(const std::string& folder);
  ~FolderWatch();
  FolderWatch(const FolderWatch&) = delete;
  FolderWatch& operator=(const FolderWatch&) = delete;

  int descriptor() const { return descriptor_; }
  /// Reads what happened since the last call; whether it was about one of `names`. Where the kernel lost events, it
  /// was.
  bool takeChanges(const std::vector<std::string_view>& names);

 private:
  explicit FolderWatch(int descriptor) : descriptor_(descriptor) {}

  int descriptor_;
};

}  // namespace pillora
