// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <fstream>

#include "cli/CliFixture.h"
#include "cli/CommandLine.h"
#include "doubles/ChildProcess.h"

namespace pillora {
namespace {

class Completion : public Cli {
 protected:
  ChildProcess::Result bash(const Words& words) {
    return ChildProcess(Words{"/bin/bash"} + words, {"PATH=/usr/bin:/bin", "HOME=" + folder.path(), "LC_ALL=C.UTF-8"})
        .finish();
  }
  /// What bash offers for the last of these words of a line.
  Words offered(const Words& typed) {
    const std::string script = folder.path() + "/script";
    std::ofstream(script) << run({"completion", "bash"}).out
                          << "COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); _pilloractl \"$1\"\n"
                          << "((${#COMPREPLY[@]} == 0)) || printf '%s\\n' \"${COMPREPLY[@]}\"\n";
    const auto completed = bash(Words{script, PILLORACTL} + typed);
    EXPECT_EQ(completed.err, "");
    Words words;
    std::istringstream lines(completed.out);
    for (std::string line; std::getline(lines, line);) words.push_back(line);
    return words;
  }
};

TEST_F(Completion, everyScriptNamesEveryCommandAndOption) {
  for (const std::string shell : {"bash", "zsh", "fish"}) {
    const Called called = run({"completion", shell});
    EXPECT_EQ(called.status, kDone);
    for (const CommandWords& command : knownWords(*textsOf("en_US", "UTC"))) {
      EXPECT_NE(called.out.find(command.name), std::string::npos) << shell << ' ' << command.name;
      for (const OptionWords& option : command.options) {
        const std::string name = shell == "fish" ? "-l " + option.name.substr(2) : option.name;
        EXPECT_NE(called.out.find(name), std::string::npos) << shell << ' ' << name;
      }
    }
    EXPECT_EQ(called.out.find('@' + std::string("GLOBALS")), std::string::npos) << shell;
    EXPECT_EQ(json({"completion", shell}).at("script"), called.out);
  }
}

TEST_F(Completion, bashAcceptsItsScript) {
  const std::string script = folder.path() + "/script";
  std::ofstream(script) << run({"completion", "bash"}).out;
  const auto checked = bash({"-n", script});
  EXPECT_EQ(checked.status, 0);
  EXPECT_EQ(checked.err, "");
}

TEST_F(Completion, commandsOptionsAndValuesAreOffered) {
  EXPECT_EQ(offered({"ta"}), (Words{"take"}));
  EXPECT_EQ(offered({"--store", "x", "up"}), (Words{"upcoming"}));
  EXPECT_EQ(offered({"add", "A", "--ma"}), (Words{"--max-snooze"}));
  EXPECT_EQ(offered({"add", "A", "--active", ""}), (Words{"yes", "no"}));
  EXPECT_EQ(offered({"add", "A", "--unit", "pi"}), (Words{"pill", "pills"}));
  EXPECT_EQ(offered({"--reminders", "x", "la"}), (Words{"launch"}));
  EXPECT_EQ(offered({"edit", "A", "--na"}), (Words{"--name"}));
  EXPECT_EQ(offered({"edit", "A", "--unit", "pi"}), (Words{"pill", "pills"}));
  EXPECT_EQ(offered({"completion", "f"}), (Words{"fish"}));
  EXPECT_EQ(offered({"history", "--range", ""}), (Words{"today", "week", "month", "all"}));
  EXPECT_EQ(offered({"history", "--filter", "m"}), (Words{"missed"}));
  EXPECT_EQ(offered({"settings", "s"}), (Words{"set"}));
  EXPECT_EQ(offered({"settings", "set", "use"}), (Words{"use24HourTime"}));
  EXPECT_EQ(offered({"settings", "set", "enable"}), (Words{"enableHaptics", "enableiCloudSync", "enableLocalBackup"}));
  EXPECT_EQ(offered({"settings", "set", "use24HourTime", ""}), Words());
  EXPECT_EQ(offered({"--documents", "d", "--cloud", "c", "backup", "cr"}), (Words{"create"}));
  EXPECT_EQ(offered({"backup", "create", "--cl"}), (Words{"--cloud"}));
  EXPECT_EQ(offered({"add", "A", "--daily", ""}), Words());
}

TEST_F(Completion, filesAreOfferedWhereABackupIsNamed) {
  std::ofstream(folder.file("Pillora_Backup.json")) << "";
  EXPECT_EQ(offered({"backup", "restore", folder.file("Pil")}), (Words{folder.file("Pillora_Backup.json")}));
  EXPECT_EQ(offered({"backup", "delete", folder.file("Pil")}), (Words{folder.file("Pillora_Backup.json")}));
  EXPECT_EQ(offered({"backup", "list", folder.file("Pil")}), Words());
}

TEST_F(Completion, medicinesAreOfferedByNameAsHarmlessWords) {
  for (const std::string name : {"Vitamin D", "$(touch owned)", "Zinc"}) add({name});
  EXPECT_EQ(offered({"--store", store, "take", "vit"}), (Words{"Vitamin\\ D"}));
  EXPECT_EQ(offered({"--store", store, "take", "\"vit"}), (Words{"Vitamin D"}));
  EXPECT_EQ(offered({"--store", store, "delete", "$"}), (Words{"\\$\\(touch\\ owned\\)"}));
  EXPECT_EQ(offered({"--store", store, "delete", "\"$"}), Words()) << "within quotes it could not be made harmless";
  EXPECT_EQ(offered({"--store", store, "logs", ""}).size(), 3u);
}

TEST_F(Completion, markOffersTheRecordsOfHistoryAndThenWhatTheyMayBecome) {
  add({"Zinc", "--daily", "08:00"});
  const std::string log = json({"skip", "Zinc", "2999-01-01T08:00:00Z"}).at("log");  // within a week of any clock
  EXPECT_EQ(offered({"--store", store, "mark", ""}), (Words{log}));
  EXPECT_EQ(offered({"--store", store, "mark", log, ""}), (Words{"taken", "skipped"}));
}

}  // namespace
}  // namespace pillora
