// SPDX-License-Identifier: MIT
#include <csignal>
#include <filesystem>
#include <fstream>

#include "doubles/ChildProcess.h"
#include "doubles/TemporaryFolder.h"
#include "linux/DeviceOwnerTest.h"
#include "linux/QueuedMainExecutor.h"
#include "store/ModelContainer.h"
#include "store/SettingsInUse.h"

namespace pillora {
namespace {

using Words = std::vector<std::string>;

/// The terminal program on the app's own store, which is locked, beside both services.
class Unlocking : public DeviceOwnerTest {
 protected:
  Unlocking() {
    EXPECT_EQ(start({"add", "Aspirin"}).finish().status, 0);
    QueuedMainExecutor executor;
    ModelConfiguration configuration;
    configuration.path = home.path() + "/data/group.org.pillora.Pillora/Pillora.store";
    const auto container = ModelContainer::open(configuration, executor);
    if (!container) std::abort();
    settingsInUse((*container)->mainContext())->requireAuthentication = true;
    executor.drain();
  }

  ChildProcess start(Words words) const {
    words.insert(words.begin(), PILLORACTL);
    return ChildProcess(words, environment());
  }
  Words environment() const {
    return {"HOME=" + home.path(), "XDG_DATA_HOME=" + home.path() + "/data", "TZ=UTC", "LC_ALL=C.UTF-8",
            "DBUS_SYSTEM_BUS_ADDRESS=" + bus.address()};
  }
  /// Runs it while `owner` reacts to what the services were asked.
  ChildProcess::Result run(const Words& words, const std::function<void()>& owner) {
    auto ended = std::async(std::launch::async, [child = start(words)]() mutable { return child.finish(); });
    owner();
    EXPECT_TRUE(waitFor([&] { return ended.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
    return ended.get();
  }
  void touchReader(const std::string& result) {
    EXPECT_TRUE(waitForCall(reader, "VerifyStart:any"));
    reader.tell(result, true);
  }
  void answerPrompt(bool isOwner) {
    EXPECT_TRUE(waitFor([&] { return polkit.isAsking(); }));
    polkit.answer(isOwner, !isOwner, !isOwner);
  }

  TemporaryFolder home;
};

TEST_F(Unlocking, aFingerprintOpensTheTerminal) {
  const auto result = run({"medicines"}, [&] { touchReader("verify-match"); });
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_NE(result.out.find("Aspirin"), std::string::npos);
  EXPECT_EQ(result.err, "");
}

TEST_F(Unlocking, aPasswordOpensItWhenTheReaderFails) {
  const auto result = run({"medicines"}, [&] {
    touchReader("verify-disconnected");
    answerPrompt(true);
  });
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_NE(result.out.find("Aspirin"), std::string::npos);
}

TEST_F(Unlocking, whoIsNotTheOwnerSeesNothing) {
  reader.fingers.clear();
  const auto result = run({"medicines"}, [&] { answerPrompt(false); });
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "pilloractl: Pillora is locked, and its owner did not authenticate\n");
}

TEST_F(Unlocking, withoutPromptsNoServiceIsAsked) {
  const auto result = run({"--no-prompt", "medicines"}, [] {});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "pilloractl: Pillora is locked\n");
  EXPECT_TRUE(reader.calls.empty());
  EXPECT_TRUE(polkit.calls.empty());
}

TEST_F(Unlocking, atATerminalPolkitsOwnAgentIsThereForThisProcessWhileItAsks) {
  reader.fingers.clear();
  const std::string agent = home.path() + "/pkttyagent", seen = home.path() + "/seen";
  std::ofstream(agent) << "#!/bin/sh\necho \"$$ $*\" > " << seen << "\nexec 3>&-\nexec sleep 1000\n";
  std::filesystem::permissions(agent, std::filesystem::perms::owner_all);
  Words withPath = environment();
  withPath.push_back("PATH=" + home.path() + ":/usr/bin:/bin");
  ChildProcess terminal({"/usr/bin/script", "-qec", std::string(PILLORACTL) + " medicines", "/dev/null"}, withPath);
  auto ended = std::async(std::launch::async, [&] { return terminal.finish(); });
  ASSERT_TRUE(waitFor([&] { return polkit.isAsking(); }));
  pid_t process = 0;
  std::string words;
  std::getline(std::ifstream(seen) >> process >> std::ws, words);
  const PolkitService::Check check = polkit.checks.back();
  const std::string expected =
      "--notify-fd 3 --process " + std::to_string(check.process) + "," + std::to_string(check.startTime);
  EXPECT_TRUE(words == expected || words == expected + " --fallback") << words;  // in a login session
  EXPECT_EQ(kill(process, 0), 0);
  polkit.answer(true);
  ASSERT_TRUE(waitFor([&] { return ended.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
  const auto result = ended.get();
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.out.find("Aspirin"), std::string::npos) << result.out;
  EXPECT_NE(kill(process, 0), 0) << "the agent is gone";
}

TEST_F(Unlocking, aDeviceThatCannotAskSaysSoAndEnds) {
  reader.vanish();
  polkit.vanish();
  const auto result = start({"medicines"}).finish();
  EXPECT_EQ(result.status, 3);
  EXPECT_TRUE(result.err.starts_with("pilloractl: Pillora is locked, and this device cannot ask for its owner: "))
      << result.err;
  EXPECT_EQ(result.err.find('\n'), result.err.size() - 1);
}

}  // namespace
}  // namespace pillora
