// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "doubles/RecordingConsole.h"
#include "doubles/TemporaryFolder.h"
#include "icu/Language.h"

namespace pillora {
namespace {

class DamagedCatalogue : public testing::Test {
 protected:
  DamagedCatalogue() {
    std::filesystem::create_directories(folder_.file("de/LC_MESSAGES"));
    std::ifstream file(PILLORA_CATALOGUES "/de/LC_MESSAGES/pillora.mo", std::ios::binary);
    whole_ = {std::istreambuf_iterator<char>(file), {}};
  }

  /// What these bytes make of "Take"; nothing may happen but that it is German or English.
  std::string take(const std::string& bytes) {
    std::ofstream(folder_.file("de/LC_MESSAGES/pillora.mo"), std::ios::binary) << bytes;
    const auto language = makeLanguage("de", {folder_.path(), &console_});
    EXPECT_TRUE(language);
    static_cast<void>((*language)->translatedCount(5, "Every {n} hour", "Every {n} hours"));
    return (*language)->translated({}, "Take");
  }

  TemporaryFolder folder_;
  RecordingConsole console_;
  std::string whole_;
};

TEST_F(DamagedCatalogue, aWholeOneIsRead) {
  EXPECT_EQ(take(whole_), "Einnehmen");
  EXPECT_TRUE(console_.lines().empty());
}

TEST_F(DamagedCatalogue, oneCutShortIsEnglishAndSaidOnce) {
  for (const size_t size : {size_t{1}, size_t{27}, size_t{1000}, whole_.size() / 2, whole_.size() - 1}) {
    const size_t before = console_.lines().size();
    EXPECT_EQ(take(whole_.substr(0, size)), "Take") << size;
    EXPECT_EQ(console_.lines().size(), before + 1) << size;
  }
}

TEST_F(DamagedCatalogue, anyWrongByteIsHarmless) {
  ASSERT_GT(whole_.size(), 10'000u);
  for (size_t at = 0; at < whole_.size(); at += at < 400 ? 1 : 97) {
    for (const char byte : {'\x00', '\x7f', '\xff'}) {
      std::string bytes = whole_;
      bytes[at] = byte;
      static_cast<void>(take(bytes));
    }
  }
}

}  // namespace
}  // namespace pillora
