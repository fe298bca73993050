// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "agent/AgentClient.h"
#include "agent/InProcessCenter.h"
#include "agent/ProcessLauncher.h"
#include "cli/Run.h"
#include "icu/Calendars.h"
#include "icu/IcuTexts.h"
#include "linux/CloudFolder.h"
#include "linux/DeviceOwnerAuthentication.h"
#include "linux/Folders.h"
#include "linux/LoginStart.h"
#include "linux/PosixFileManager.h"
#include "linux/QueuedMainExecutor.h"
#include "linux/StandardErrorConsole.h"
#include "linux/SystemClock.h"
#include "linux/TerminationWatch.h"

namespace {

using namespace pillora;

/// See https://no-color.org for NO_COLOR.
Terminal standardOutput() {
  Terminal terminal;
  if (isatty(STDOUT_FILENO) == 0) return terminal;
  const auto variable = [](const char* name) {
    const char* value = std::getenv(name);
    return std::string_view(value == nullptr ? "" : value);
  };
  terminal.hasColor = variable("NO_COLOR").empty() && !variable("TERM").empty() && variable("TERM") != "dumb";
  winsize size{};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
    terminal.columns = std::clamp<size_t>(size.ws_col, 40, 120);
  }
  return terminal;
}

Result<std::string> defaultStore() {
  const auto folder = groupContainer();
  return folder ? Result<std::string>(*folder + "/Pillora.store") : folder.error();
}

/// A centre in a file.
Result<Reminders> inFile(const std::string& file, const RemindersPlace& place) {
  struct Opened {
    explicit Opened(const Calendar& gregorian) : zone(gregorian) {}
    CalendarZone zone;
    SilentPresenter presenter;
    std::unique_ptr<InProcessCenter> center;
  };
  const auto opened = std::make_shared<Opened>(place.gregorian);
  auto center = InProcessCenter::open(file, place.clock, opened->zone, place.executor, opened->presenter);
  if (!center) return center.error();
  opened->center = *std::move(center);
  if (place.file) {
    if (const auto passed = opened->center->advance(); !passed) return passed.error();
  }
  return Reminders{*opened->center, *opened->center, opened, [opened] { return opened->center->finish(); }};
}

/// The session's centre is the agent. Without a session bus its file takes its place, and there nothing is shown or
/// dropped: that is left to the agent.
Result<Reminders> openReminders(const RemindersPlace& place) {
  if (place.file) return inFile(*place.file, place);
  auto connected = AgentClient::connect(place.executor, {siblingProgram("pillora-agent")});
  if (!connected) return connected.error();
  if (*connected != nullptr) {
    const std::shared_ptr<AgentClient> agent = *std::move(connected);
    return Reminders{*agent, *agent, agent, [agent] { return agent->finish(); }};
  }
  const auto folder = stateFolder();
  if (!folder) return folder.error();
  return inFile(*folder + "/reminders.db", place);
}

std::unique_ptr<FileManager> makeFileManager(const BackupPlaces& places) {
  using Folder = std::optional<std::string>;
  const auto place = [&](const Folder& given, Folder (*own)()) -> PosixFileManager::Place {
    return [given, own, orOwn = places.orOwn] { return given || !orOwn ? given : own(); };
  };
  return std::make_unique<PosixFileManager>(place(places.documents, documentsFolder), place(places.cloud, cloudFolder));
}

/// On the terminal itself, which standard output and error need not be.
void tellTerminal(const std::string& line) {
  if (std::ofstream terminal("/dev/tty"); terminal) terminal << line << std::endl;
}

std::string localeOf(const Region& region) { return region.locale ? *region.locale : systemLocale(); }
std::string zoneOf(const Region& region) { return region.timeZone ? *region.timeZone : systemTimeZone(); }

}  // namespace

int main(int argc, char** argv) {
  umask(077);
  const SystemClock clock;
  StandardErrorConsole console;
  QueuedMainExecutor executor;
  DeviceOwnerAuthentication owner({.terminalAgent = "pkttyagent"});
  CliEnvironment environment{clock,
                             console,
                             executor,
                             standardOutput(),
                             [](const Region& region) { return makeCalendar(localeOf(region), zoneOf(region)); },
                             [&console](const Region& region, const std::optional<std::string>& language) {
                               return makeTexts(localeOf(region), zoneOf(region),
                                                language ? *language : systemLanguage(),
                                                {cataloguesFolder(), &console});
                             },
                             defaultStore,
                             openReminders,
                             [&executor] { executor.drain(); }};
  environment.whenToldToEnd = [](std::function<void()> ended) -> std::shared_ptr<void> {
    return std::make_shared<TerminationWatch>(std::move(ended));
  };
  environment.deviceOwner = {owner.contextFactory(), [&executor] { executor.wait(); }, tellTerminal};
  environment.agentStartsAtLogin = [] { return agentStartsAtLogin(); };
  environment.makeFileManager = makeFileManager;
  const int status = run(std::vector<std::string>(argv + 1, argv + argc), environment, std::cout);
  executor.drain();
  if (!std::cout.flush()) {
    console.print("pilloractl: standard output cannot be written");
    return kRefused;
  }
  return status;
}
