// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>

namespace pillora {

/// An empty folder that is gone, with all it holds, at the end of the test.
class TemporaryFolder {
 public:
  TemporaryFolder() : path_((std::filesystem::temp_directory_path() / "pillora-test-XXXXXX").string()) {
    if (mkdtemp(path_.data()) == nullptr) {
      std::cerr << "cannot make a temporary folder\n";
      std::abort();
    }
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace pillora
