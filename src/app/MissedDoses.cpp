// SPDX-License-Identifier: MIT
#include "app/MissedDoses.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <set>

namespace pillora {

namespace {

constexpr int64_t kDaysBack = 7;

/// The marking of one medicine.
class Marking {
 public:
  Marking(ModelContext& context, std::shared_ptr<Medicine> medicine, Instant today, const Calendar& calendar)
      : context_(context), medicine_(std::move(medicine)), today_(today), calendar_(calendar) {}

  Result<int64_t> run() {
    const Instant firstDay = std::max(calendar_.adding(CalendarUnit::day, -kDaysBack, today_).value_or(today_),
                                      calendar_.startOfDay(medicine_->startDate()));
    if (firstDay >= today_) return int64_t{0};
    if (auto read = readLoggedMinutes(firstDay); !read) return read.error();
    for (Instant day = firstDay; day < today_;) {
      const Instant nextDay = calendar_.adding(CalendarUnit::day, 1, day).value_or(day);
      if (nextDay <= day) break;
      markBetween(day, nextDay);
      day = nextDay;
    }
    return marked_;
  }

 private:
  Result<void> readLoggedMinutes(Instant firstDay) {
    // A day whose midnight is skipped makes the days after it begin later than at midnight: the last may reach into
    // today.
    const auto end = checkedAdd(today_, 2, std::chrono::hours(24)).value_or(Instant::distantFuture());
    for (const Instant time : medicine_->loggedTimes(calendar_.startOfMinute(firstDay), end)) {
      loggedMinutes_.insert(calendar_.startOfMinute(time));
    }
    if (auto error = context_.takeReadError()) return *std::move(error);
    return {};
  }

  /// Deliberate: the search begins at midnight and answers only what is later, so a dose at midnight itself is never
  /// marked. It ends at the first time that is not later than the one before, and that one is not marked either.
  void markBetween(Instant day, Instant nextDay) {
    Instant after = day;
    for (;;) {
      const auto time = medicine_->interval().nextOccurrence(after, calendar_);
      if (!time || *time <= after || *time >= nextDay) return;
      if (loggedMinutes_.insert(calendar_.startOfMinute(*time)).second) insertLog(*time);
      after = *time;
    }
  }

  void insertLog(Instant time) {
    // Deliberate: the day of the marking, not its moment. All that one marking finds bears the same time.
    context_.insert(DoseLog::make(time, today_, DoseStatus::missed, 0, "", medicine_));
    ++marked_;
  }

  ModelContext& context_;
  std::shared_ptr<Medicine> medicine_;
  Instant today_;
  const Calendar& calendar_;
  std::set<Instant> loggedMinutes_;  ///< the starts of the local minutes in which a dose has a log
  int64_t marked_ = 0;
};

}  // namespace

Result<int64_t> markDosesMissed(ModelContext& context, Instant now, const Calendar& calendar) {
  const Instant today = calendar.startOfDay(now);
  if (auto begun = context.beginWriting(); !begun) return begun.error();
  static_cast<void>(context.takeReadError());  // of an earlier read, which says nothing about those to come
  const auto medicines = context.fetch(FetchDescriptor<Medicine>().where(&Medicine::isActive, Comparison::equal, true));
  if (!medicines) return medicines.error();
  int64_t marked = 0;
  for (const auto& medicine : *medicines) {
    const auto markedOfOne = Marking(context, medicine, today, calendar).run();
    if (!markedOfOne) return markedOfOne.error();
    marked += *markedOfOne;
  }
  if (auto saved = context.save(); !saved) return saved.error();
  return marked;
}

}  // namespace pillora
