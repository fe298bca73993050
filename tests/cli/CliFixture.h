// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "agent/InProcessCenter.h"
#include "cli/Run.h"
#include "doubles/FakeClock.h"
#include "doubles/FakeNotificationCenter.h"
#include "doubles/FakeTaskScheduler.h"
#include "doubles/Instants.h"
#include "doubles/Places.h"
#include "doubles/RecordingConsole.h"
#include "doubles/ScriptedAuthenticator.h"
#include "doubles/TemporaryFolder.h"
#include "icu/Calendars.h"
#include "icu/IcuTexts.h"
#include "linux/PosixFileManager.h"
#include "linux/QueuedMainExecutor.h"
#include "store/ModelContainer.h"
#include "store/SettingsInUse.h"
#include "support/Json.h"

namespace pillora {

/// What one call of pilloractl left behind.
struct Called {
  int status = -1;
  std::string out;
  std::vector<std::string> lines;  ///< of the console

  /// The JSON object on standard output; null when there is none.
  Json json() const {
    const auto parsed = parseJson(out);
    return parsed ? *parsed : Json();
  }
  /// Wrong usage or a refusal as it must look: the status, one line that tells why, and nothing else.
  bool failedWith(int expected) const {
    return status == expected && out.empty() && lines.size() == 1 && lines[0].starts_with("pilloractl: ") &&
           lines[0].size() > 14;
  }
};

inline void PrintTo(const Called& called, std::ostream* out) {
  *out << "status " << called.status << ", output \"" << called.out << "\"";
  for (const std::string& line : called.lines) *out << ", line \"" << line << "\"";
}

using Words = std::vector<std::string>;

inline Words operator+(Words words, const Words& more) {
  words.insert(words.end(), more.begin(), more.end());
  return words;
}

/// pilloractl within the test, on the real calendar, texts and store: 2025-01-10T10:30:00Z, UTC, en_US, and a store in
/// a folder of its own.
class Cli : public ::testing::Test {
 protected:
  Cli() { store = folder.path() + "/Pillora.store"; }

  /// Runs these words just as they are.
  Called run(const Words& words) {
    RecordingConsole console;
    QueuedMainExecutor executor;
    CliEnvironment environment{clock,
                               console,
                               executor,
                               terminal,
                               [](const Region& region) {
                                 return makeCalendar(region.locale.value_or("en_US"), region.timeZone.value_or("UTC"));
                               },
                               [](const Region& region, const std::optional<std::string>& language) {
                                 return makeTexts(region.locale.value_or("en_US"), region.timeZone.value_or("UTC"),
                                                  language.value_or("en"));
                               },
                               [this] { return Result<std::string>(store); },
                               [this](const RemindersPlace& place) { return openReminders(place); },
                               [&executor] { executor.drain(); }};
    environment.deviceOwner = {device.factory(), [this, &executor] { answerPrompt(executor); },
                               [this](const std::string& line) { told.push_back(line); }};
    environment.makeFileManager = [this](const BackupPlaces& places) -> std::unique_ptr<FileManager> {
      const auto place = [&](const std::optional<std::string>& given, const std::string& own) {
        return [folder = given || !places.orOwn ? given : std::optional(own)] { return folder; };
      };
      return std::make_unique<PosixFileManager>(place(places.documents, folder.file("own-documents")),
                                                place(places.cloud, folder.file("own-cloud")));
    };
    std::ostringstream out;
    const int status = pillora::run(words, environment, out);
    executor.drain();
    return {status, out.str(), console.lines()};
  }
  /// The same with --json before them, and the JSON that it printed.
  Json json(const Words& words) { return run(Words{"--json"} + words).json(); }

  /// Adds a medicine and answers its identifier.
  std::string add(const Words& words) { return json(Words{"add"} + words).value("id", ""); }
  Json logs() { return json({"logs"}).at("logs"); }
  /// The names in the list of medicines, in its order.
  Words names() {
    Words found;
    const Json list = json({"medicines"});
    for (const Json& section : list.at("sections")) {
      for (const Json& row : section.at("rows")) found.push_back(row.at("name"));
    }
    return found;
  }

  /// The engine where a file is named; the session's own centre is a double that lasts as long as the test.
  Result<Reminders> openReminders(const RemindersPlace& place) {
    ++openings;
    if (refusal) return *refusal;
    if (!place.file) return Reminders{center, scheduler, nullptr};
    struct Opened {
      explicit Opened(const Calendar& gregorian) : zone(gregorian) {}
      CalendarZone zone;
      SilentPresenter presenter;
      std::unique_ptr<InProcessCenter> center;
    };
    const auto opened = std::make_shared<Opened>(place.gregorian);
    opened->center =
        valueOrAbort(InProcessCenter::open(*place.file, place.clock, opened->zone, place.executor, opened->presenter));
    EXPECT_TRUE(opened->center->advance());
    return Reminders{*opened->center, *opened->center, opened};
  }

  /// The owner answers the open prompt from elsewhere, as `answers` say, and refuses when they are used up.
  void answerPrompt(QueuedMainExecutor& executor) {
    if (!device.prompts.empty() && !device.last().isAnswered) {
      const bool success = !answers.empty() && answers.front();
      if (!answers.empty()) answers.erase(answers.begin());
      std::thread([&] { device.last().answer(success); }).join();
    }
    executor.drain();
  }
  /// Lets `store` ask for its owner, or no more.
  void lock(bool isLocked = true) {
    QueuedMainExecutor executor;
    ModelConfiguration configuration;
    configuration.path = store;
    const auto container = valueOrAbort(ModelContainer::open(configuration, executor));
    settingsInUse(container->mainContext())->requireAuthentication = isLocked;
    executor.drain();
  }

  TemporaryFolder folder;
  std::string store;
  ScriptedAuthenticator device;
  std::vector<bool> answers;
  Words told;                     ///< to the person at the terminal
  FakeNotificationCenter center;  ///< the session's own
  FakeTaskScheduler scheduler;
  int openings = 0;              ///< how often a centre was opened
  std::optional<Error> refusal;  ///< of opening one
  FakeClock clock{at("2025-01-10T10:30:00Z")};
  Terminal terminal;
};

/// The members of an object, in their order.
inline Words membersOf(const Json& object) {
  Words members;
  for (const auto& [name, value] : object.items()) members.push_back(name);
  return members;
}

/// Whether the object has all of these members; it may have more.
inline ::testing::AssertionResult hasMembers(const Json& object, const Words& members) {
  for (const std::string& name : members) {
    if (!object.is_object() || !object.contains(name)) {
      return ::testing::AssertionFailure() << "no \"" << name << "\" in " << object.dump();
    }
  }
  return ::testing::AssertionSuccess();
}

}  // namespace pillora
