// SPDX-License-Identifier: MIT
#include "screens/UpcomingView.h"

#include <algorithm>

#include "screens/DoseActions.h"
#include "screens/DoseTexts.h"

namespace pillora {

namespace {

using namespace std::chrono_literals;

// The card's wording is its own: Today counts down in other words.
std::string relativeText(Instant::Duration ahead, const Texts& texts) {
  const WholeUnits units(ahead < 0s ? -ahead : ahead);
  if (ahead <= -1h) return texts.text("{hours}h ago", {{"hours", units.hours}});
  if (ahead < 0s) return texts.text("{minutes}m ago", {{"minutes", units.minutes}});
  if (ahead < 1h) return texts.text("in {minutes}m", {{"minutes", units.minutes}});
  if (ahead >= 24h) return texts.counted(units.days, "in {n}d", "in {n}d");
  if (!units.hasMinutesOfHour) return texts.text("in {hours}h", {{"hours", units.hours}});
  return texts.text("in {hours}h {minutes}m", {{"hours", units.hours}, {"minutes", units.minutesOfHour}});
}

/// Headings of days as seen from one instant.
class DayHeadings {
 public:
  DayHeadings(Instant now, const Calendar& calendar, const Texts& texts)
      : texts_(texts), today_(calendar.startOfDay(now)) {
    // From the start of the day: a later time of day may not exist tomorrow and would carry into the day after.
    const auto tomorrow = calendar.adding(CalendarUnit::day, 1, today_);
    if (tomorrow) tomorrow_ = calendar.startOfDay(*tomorrow);
  }

  std::string heading(Instant day) const {
    if (day == today_) return texts_.text("Today");
    if (day == tomorrow_) return texts_.text("Tomorrow");
    return texts_.weekdayAndDay(day);
  }

 private:
  const Texts& texts_;
  Instant today_;
  std::optional<Instant> tomorrow_;
};

}  // namespace

UpcomingDoseCard upcomingDoseCard(const UpcomingDose& dose, Instant now, const AppSettings& settings,
                                  const Texts& texts) {
  const Medicine& medicine = *dose.medicine;
  UpcomingDoseCard card;
  card.id = dose.id;
  card.medicineId = medicine.id();
  card.name = medicine.name();
  card.dosageText = dosageText(medicine, texts);
  card.icon = medicineIcon(medicine, settings);
  card.color = medicineColor(medicine.color());
  card.time = dose.time;
  card.timeText = texts.shortTime(dose.time, settings.use24HourTime());
  card.relative = relativeText(distance(now, dose.time), texts);
  card.relativeColor = dose.time < now ? "red" : "secondary";
  card.actions = {takeAction(texts), skipAction(texts)};
  return card;
}

UpcomingView::UpcomingView(ScreenEnvironment environment)
    : environment_(environment), medicines_(environment.context), settings_(environment.context) {}

UpcomingContent UpcomingView::content() const {
  const auto& [context, clock, calendar, texts, notifications] = environment_;
  UpcomingContent content;
  content.title = texts.text("Upcoming");
  const Medicines active = activeMedicines(medicines_.records());
  if (active.empty()) {
    content.empty =
        Panel{"pills", texts.text("No Medicines"), texts.text("Add medicines to see your upcoming schedule.")};
    return content;
  }
  const Instant now = clock.now();
  const auto doses = upcomingDoses(active, now, calendar);
  if (doses.empty()) {
    content.empty = Panel{"checkmark.circle", texts.text("All Caught Up"), texts.text("No upcoming doses scheduled.")};
    return content;
  }
  const size_t count = std::min(rowLimit, doses.size());
  const size_t first = std::min(firstRow_, doses.size() - count);
  content.hasMore = first + count < doses.size();
  content.hasPrevious = first > 0;
  content.days = daysOf(std::span(doses).subspan(first, count), now);
  return content;
}

void UpcomingView::showMore() {
  if (rowLimit + kRowsAtOnce > kMostRows) {
    firstRow_ += kRowsAtOnce;
  } else {
    rowLimit += kRowsAtOnce;
  }
}

void UpcomingView::showPrevious() { firstRow_ -= std::min(firstRow_, kRowsAtOnce); }

void UpcomingView::showFirst() {
  firstRow_ = 0;
  rowLimit = kRowsAtOnce;
}

std::vector<UpcomingDay> UpcomingView::daysOf(std::span<const UpcomingDose> doses, Instant now) const {
  const auto& [context, clock, calendar, texts, notifications] = environment_;
  const DayHeadings headings(now, calendar, texts);
  const AppSettings& settings = settingsShown(settings_);
  std::vector<UpcomingDay> days;
  std::optional<Instant> lastDay;
  for (const UpcomingDose& dose : doses) {
    const Instant day = calendar.startOfDay(dose.time);
    if (day != lastDay) days.push_back({headings.heading(day), {}});
    lastDay = day;
    days.back().doses.push_back(upcomingDoseCard(dose, now, settings, texts));
  }
  return days;
}

Result<std::optional<UUID>> UpcomingView::take(const UUID& medicine, Instant time) {
  return takeDose(environment_, medicine, time);
}

Result<std::optional<UUID>> UpcomingView::skip(const UUID& medicine, Instant time) {
  return skipDose(environment_, medicine, time);
}

}  // namespace pillora
