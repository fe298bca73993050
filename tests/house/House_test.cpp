// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "house/HouseRules.h"
#include "house/SymbolRules.h"

namespace pillora::house {
namespace {

/// The checkout that this program was built from.
const SourceTree& checkout() {
  static const SourceTree tree = SourceTree::read(PILLORA_SOURCE_DIR);
  return tree;
}

std::string listed(const std::vector<std::string>& findings) {
  std::string text;
  for (const std::string& finding : findings) text += "\n" + finding;
  return text;
}

TEST(House, theCheckoutIsReadWhole) {
  for (const char* path :
       {"CMakeLists.txt", "README.md", "run", "test", ".ci/run", "src/support/Instant.cpp", "src/cli/main.cpp",
        "tests/house/House_test.cpp", "docs/architecture.md", "assets/symbols/pills.svg"}) {
    EXPECT_TRUE(checkout().contains(path)) << path;
  }
  EXPECT_FALSE(checkout().contains(".git"));
  EXPECT_FALSE(checkout().contains("build"));
}

TEST(House, importsRunOneWay) { EXPECT_EQ(listed(backwardImports(checkout())), ""); }
TEST(House, foreignLibrariesStayInTheirRooms) { EXPECT_EQ(listed(foreignLibraries(checkout())), ""); }
TEST(House, theCoreIsHandedItsSurroundings) { EXPECT_EQ(listed(ambientReads(checkout())), ""); }
TEST(House, everySourceNamesItsLicence) { EXPECT_EQ(listed(missingLicences(checkout())), ""); }
TEST(House, everyHeaderIsReadOnce) { EXPECT_EQ(listed(missingPragmas(checkout())), ""); }
TEST(House, everySourceIsBuilt) { EXPECT_EQ(listed(unlistedSources(checkout())), ""); }
TEST(House, sourcesAreListedByName) { EXPECT_EQ(listed(globbing(checkout())), ""); }
TEST(House, noFileIsTooLong) { EXPECT_EQ(listed(longFiles(checkout())), ""); }
TEST(House, documentsNameWhatIsThere) { EXPECT_EQ(listed(missingDocumentPaths(checkout())), ""); }
TEST(House, nothingIsLeftUnfinished) { EXPECT_EQ(listed(forbiddenWords(checkout())), ""); }
TEST(House, everySymbolHasItsFile) { EXPECT_EQ(listed(missingSymbols(checkout())), ""); }
TEST(House, symbolsAreDrawnPlainly) { EXPECT_EQ(listed(unfitSymbols(checkout())), ""); }

}  // namespace
}  // namespace pillora::house
