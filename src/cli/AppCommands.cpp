// SPDX-License-Identifier: MIT
#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "app/MissedDoses.h"
#include "cli/Commands.h"
#include "platform/RunningTask.h"
#include "support/Json.h"

namespace pillora {

namespace {

/// Hands lines on and keeps them.
class KeepingConsole final : public Console {
 public:
  explicit KeepingConsole(Console& console) : console_(console) {}

  void print(std::string_view line) override {
    console_.print(line);
    std::string oneLine(line);
    std::replace_if(
        oneLine.begin(), oneLine.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    lines_.push_back(std::move(oneLine));
  }

  const std::vector<std::string>& lines() const { return lines_; }

 private:
  Console& console_;
  std::vector<std::string> lines_;
};

std::string missedText(int64_t count, const Session& session) {
  const Texts& texts = session.texts();
  return messageLine(count == 0 ? texts.text("No doses were missed in the past seven days.")
                                : texts.counted(count, "Marked {n} dose as missed.", "Marked {n} doses as missed."),
                     session);
}

std::string nextCheckText(Instant check, Session& session) {
  const Texts& texts = session.texts();
  return messageLine(
      texts.text("Next check for missed doses: {date}, {time}",
                 {{"date", texts.mediumDate(check)}, {"time", texts.shortTime(check, session.use24HourTime())}}),
      session);
}

}  // namespace

Result<Action> launchCommand(const CommandLine&, Session& session) {
  return Action([&session]() -> Result<std::string> {
    KeepingConsole console(session.console());
    const auto app = session.startApp(console);
    if (!app) return app.error();
    const auto missed = (*app)->rootViewAppeared();
    static_cast<void>(session.endTurn());  // the app goes on when its badge cannot be reset
    if (!missed) return missed.error();
    const Instant nextCheck = (*app)->nextMissedDoseCheck();
    if (!session.json()) return missedText(*missed, session) + nextCheckText(nextCheck, session);
    return jsonLine(
        Json::object({{"console", toJson(console.lines())}, {"missed", *missed}, {"nextCheck", toJson(nextCheck)}}));
  });
}

Result<Action> markMissedCommand(const CommandLine&, Session& session) {
  return Action([&session]() -> Result<std::string> {
    const auto screens = session.open();
    if (!screens) return screens.error();
    const auto missed = markDosesMissed(screens->context, session.now(), session.calendar());
    if (!missed) return Error{"Error marking missed doses: " + missed.error().description};
    if (!session.json()) return missedText(*missed, session);
    return jsonLine(Json::object({{"missed", *missed}}));
  });
}

Result<Action> runTaskCommand(const CommandLine& line, Session& session) {
  return Action([&session, identifier = *line.taskIdentifier, isScheduled = line.isScheduled]() -> Result<std::string> {
    // Deliberate: a run that is told to expire has failed, yet its marking goes on until it is done or the process is
    // ended; what it saves is saved.
    const auto task = std::make_shared<RunningTask>(identifier);
    const auto watch = session.whenToldToEnd([task] { task->expire(); });
    const auto app = session.startApp(session.console());
    if (!app) return app.error();
    if (identifier != (*app)->missedDoseCheckIdentifier()) {
      return Error{"there is no background task '" + identifier + "'"};
    }
    (*app)->handleMissedDoseCheck(task);
    static_cast<void>(session.endTurn());
    if (!task->outcome().value_or(false)) return Error{"the background task '" + identifier + "' did not succeed"};
    if (isScheduled) return std::string();
    if (session.json()) return jsonLine(Json::object({{"identifier", identifier}, {"success", true}}));
    return nextCheckText((*app)->nextMissedDoseCheck(), session);
  });
}

}  // namespace pillora
