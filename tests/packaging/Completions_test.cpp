// SPDX-License-Identifier: MIT
// The completion scripts in the shells that they are for. What bash is offered is tested with the terminal program.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "doubles/ChildProcess.h"
#include "doubles/TemporaryFolder.h"

namespace pillora {
namespace {

using Words = std::vector<std::string>;

class Completions : public testing::Test {
 protected:
  ChildProcess::Result call(const Words& words) {
    const std::string programs = std::string(PILLORACTL).substr(0, std::string(PILLORACTL).rfind('/'));
    return ChildProcess(words, {"PATH=" + programs + ":/usr/bin:/bin", "HOME=" + folder_.path(), "LC_ALL=C.UTF-8",
                                "XDG_DATA_HOME=" + folder_.path(), "TERM=dumb"})
        .finish();
  }
  void add(const std::string& name) { ASSERT_EQ(call({PILLORACTL, "--store", store_, "add", name}).status, 0); }
  void writeScript(const std::string& shell, const std::string& path) {
    std::ofstream(path) << call({PILLORACTL, "completion", shell}).out;
  }

  TemporaryFolder folder_;
  std::string store_ = folder_.file("S");
};

#ifdef PILLORA_FISH
class FishCompletion : public Completions {
 protected:
  FishCompletion() { writeScript("fish", script_); }
  /// What fish offers at the end of this line.
  Words offered(const std::string& line) {
    const auto called =
        call({PILLORA_FISH, "--no-config", "-c", "source " + script_ + "; complete -C \"" + line + "\""});
    EXPECT_EQ(called.err, "");
    Words words;
    std::istringstream lines(called.out);
    for (std::string each; std::getline(lines, each);) words.push_back(each.substr(0, each.find('\t')));
    return words;
  }

  std::string script_ = folder_.file("pilloractl.fish");
};

TEST_F(FishCompletion, commandsOptionsAndValuesAreOffered) {
  EXPECT_EQ(offered("pilloractl tak"), Words{"take"});
  EXPECT_EQ(offered("pilloractl add A --ma"), Words{"--max-snooze"});
  EXPECT_EQ(offered("pilloractl add A --unit pi"), (Words{"pill", "pills"}));
  EXPECT_EQ(offered("pilloractl settings set use"), Words{"use24HourTime"});
  EXPECT_EQ(offered("pilloractl history --range m"), Words{"month"});
  EXPECT_EQ(offered("pilloractl backup "), (Words{"create", "delete", "list", "restore"}));
}

TEST_F(FishCompletion, whatIsChosenOnceIsNotOfferedAgain) {
  std::ofstream(folder_.file("Backup.json")) << "{}";
  EXPECT_EQ(offered("pilloractl backup restore " + folder_.file("B")), Words{folder_.file("Backup.json")});
  EXPECT_EQ(offered("pilloractl completion fish "), Words());
}

TEST_F(FishCompletion, medicinesAreOfferedByName) {
  for (const char* name : {"Vitamin D", "Zinc"}) add(name);
  EXPECT_EQ(offered("pilloractl --store " + store_ + " take "), (Words{"Vitamin D", "Zinc"}));
  EXPECT_EQ(offered("pilloractl --store " + store_ + " delete z"), Words{"Zinc"});
}
#endif

#ifdef PILLORA_ZSH
/// A zsh at a terminal of its own, into which a line and the tabulator key are typed.
class ZshCompletion : public Completions {
 protected:
  ZshCompletion() {
    writeScript("zsh", folder_.file("_pilloractl"));
    std::ofstream(driver_) << "zmodload zsh/zpty\nzpty shell " PILLORA_ZSH " -f -i\n"
                           << "zpty -w shell \"PROMPT=; fpath=(" << folder_.path()
                           << " \\$fpath); autoload -Uz compinit; compinit -u -D; print RE''ADY\"\n"
                           << "zpty -r shell seen '*READY*'\n"
                           << "zpty -n -w shell \"$1\"$'\\t'\n"
                           << "zpty -r shell seen \"*$2*\"\n";
  }
  /// Whether this pattern of zsh's is seen when the line is completed.
  bool appears(const std::string& line, const std::string& wanted) {
    return call({"/usr/bin/timeout", "20", PILLORA_ZSH, "-f", driver_, line, wanted}).status == 0;
  }

  std::string driver_ = folder_.file("driver");
};

TEST_F(ZshCompletion, commandsOptionsAndValuesAreCompleted) {
  EXPECT_TRUE(appears("pilloractl upc", "pilloractl upcoming"));
  EXPECT_TRUE(appears("pilloractl add A --ma", "add A --max-snooze"));
  EXPECT_TRUE(appears("pilloractl settings set use", "settings set use24HourTime"));
  EXPECT_TRUE(appears("pilloractl history --range m", "--range month"));
  EXPECT_TRUE(appears("pilloractl backup ", "restore"));
}

TEST_F(ZshCompletion, medicinesAreCompletedAsHarmlessWords) {
  add("Q $(touch owned)");
  EXPECT_TRUE(appears("pilloractl --store " + store_ + " take Q", R"(\\ \\?\\?touch\\ owned\\?)"));
  EXPECT_FALSE(std::ifstream("owned"));
}
#endif

}  // namespace
}  // namespace pillora
