// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Console.h"

namespace pillora {

/// A console that keeps its lines. Any thread.
class RecordingConsole final : public Console {
 public:
  void print(std::string_view line) override {
    std::string oneLine(line);
    std::replace_if(
        oneLine.begin(), oneLine.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    const std::lock_guard lock(mutex_);
    lines_.push_back(std::move(oneLine));
  }

  std::vector<std::string> lines() const {
    const std::lock_guard lock(mutex_);
    return lines_;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
};

}  // namespace pillora
