// SPDX-License-Identifier: MIT
#include "cli/Commands.h"
#include "cli/Page.h"
#include "cli/Words.h"
#include "model/ReminderInterval.h"
#include "support/Json.h"

namespace pillora {

namespace {

constexpr int64_t kLargestCount = 1'000'000;

std::vector<Instant> occurrences(const ReminderInterval& interval, Instant after, int64_t count,
                                 const Calendar& calendar) {
  std::vector<Instant> times;
  for (Instant last = after; static_cast<int64_t>(times.size()) < count; last = times.back()) {
    const auto next = interval.nextOccurrence(last, calendar);
    if (!next || *next <= last) break;
    times.push_back(*next);
  }
  return times;
}

std::string occurrencesText(const std::vector<Instant>& times, const Session& session) {
  const Texts& texts = session.texts();
  Page page(session.terminal());
  for (const Instant time : times)
    page.line({texts.text("{date}, {time}", {{"date", texts.fullDate(time)}, {"time", texts.shortTime(time, false)}})});
  if (times.empty()) page.line({texts.text("Never again.")});
  return page.text();
}

}  // namespace

Result<Action> nextCommand(const CommandLine& line, Session& session) {
  const auto interval = readInterval(*line.interval);
  if (!interval) return interval.error();
  const auto after = line.after ? session.instant(*line.after) : Result<Instant>(session.now());
  if (!after) return after.error();
  const auto count = line.count ? wholeNumber(*line.count) : std::optional<int64_t>(1);
  if (!count || *count < 0 || *count > kLargestCount) {
    return Error{"--count takes a whole number from 0 to " + std::to_string(kLargestCount)};
  }
  return Action([&session, interval = *interval, after = *after, count = *count]() -> Result<std::string> {
    const auto times = occurrences(interval, after, count, session.calendar());
    return session.json() ? jsonLine(Json::object({{"occurrences", toJson(times)}})) : occurrencesText(times, session);
  });
}

}  // namespace pillora
