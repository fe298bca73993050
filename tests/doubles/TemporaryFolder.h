// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <string>

namespace pillora {

/// An empty folder that is gone, with all it holds, at the end of the test.
class TemporaryFolder {
 public:
  // mkdtemp puts a random name in place of the X.
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
  std::string file(const std::string& name) const { return path_ + '/' + name; }

  /// Every file with its bytes.
  std::map<std::string, std::string> contents() const {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) {
      if (!entry.is_regular_file()) continue;
      std::ifstream in(entry.path(), std::ios::binary);
      files[entry.path().filename().string()] = {std::istreambuf_iterator<char>(in), {}};
    }
    return files;
  }

 private:
  std::string path_;
};

}  // namespace pillora
