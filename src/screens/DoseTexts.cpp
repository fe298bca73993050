// SPDX-License-Identifier: MIT
#include "screens/DoseTexts.h"

#include <algorithm>
#include <array>

#include "screens/MedicineForm.h"

namespace pillora {

namespace {

struct StatusLook {
  DoseStatus status;
  std::string_view symbol, color, inSentence;
};

constexpr std::array kStatusLooks = {
    StatusLook{DoseStatus::taken, "checkmark.circle.fill", "green", ownText("taken")},
    StatusLook{DoseStatus::missed, "xmark.circle.fill", "red", ownText("missed")},
    StatusLook{DoseStatus::skipped, "forward.circle.fill", "orange", ownText("skipped")},
    StatusLook{DoseStatus::snoozed, "clock.arrow.circlepath", "yellow", ownText("snoozed")},
    StatusLook{DoseStatus::pending, "circle", "grey", ownText("pending")},
};

const StatusLook& lookOf(DoseStatus status) {
  return *std::find_if(kStatusLooks.begin(), kStatusLooks.end(),
                       [&](const StatusLook& look) { return look.status == status; });
}

std::string timingText(Instant::Duration off, bool isLate, const Texts& texts) {
  using namespace std::chrono_literals;
  const WholeUnits units(off);
  const auto worded = [&](std::string_view late, std::string_view early, Texts::Arguments arguments) {
    return texts.text(isLate ? late : early, arguments);
  };
  if (off < 1h) return worded(ownText("{minutes}m late"), ownText("{minutes}m early"), {{"minutes", units.minutes}});
  if (off >= 24h) {
    return isLate ? texts.counted(units.days, "{n}d late", "{n}d late")
                  : texts.counted(units.days, "{n}d early", "{n}d early");
  }
  if (!units.hasMinutesOfHour) {
    return worded(ownText("{hours}h late"), ownText("{hours}h early"), {{"hours", units.hours}});
  }
  return worded(ownText("{hours}h {minutes}m late"), ownText("{hours}h {minutes}m early"),
                {{"hours", units.hours}, {"minutes", units.minutesOfHour}});
}

}  // namespace

std::string medicineColor(std::string_view name) { return std::string(isOffered(kColorNames, name) ? name : "blue"); }

std::optional<std::string> medicineIcon(const Medicine& medicine, const AppSettings& settings) {
  return settings.showMedicineIcons() ? std::optional(medicine.icon()) : std::nullopt;
}

std::string dosageText(const Medicine& medicine, const Texts& texts) {
  return texts.text("{dosage} {unit}", {{"dosage", medicine.dosage()}, {"unit", unitText(medicine.unit(), texts)}});
}

std::string medicineName(const DoseLog& log, const Texts& texts) {
  const auto medicine = log.medicine();
  return medicine ? medicine->name() : texts.text("Unknown");
}

std::string statusSymbol(DoseStatus status) { return std::string(lookOf(status).symbol); }

std::string statusColor(DoseStatus status) { return std::string(lookOf(status).color); }

std::string statusText(DoseStatus status, const Texts& texts) { return texts.text(rawValue(status)); }

std::string dosesText(int64_t count, DoseStatus status, const Texts& texts) {
  if (status == DoseStatus::taken) return texts.counted(count, "Taken", "Taken");
  if (status == DoseStatus::missed) return texts.counted(count, "Missed", "Missed");
  return texts.counted(count, "Skipped", "Skipped");
}

std::string statusTextInSentence(DoseStatus status, const Texts& texts) {
  return texts.text(lookOf(status).inSentence);
}

std::optional<DoseTiming> doseTiming(const DoseLog& log, const Texts& texts) {
  if (log.status() != DoseStatus::taken || !log.actionTime()) return std::nullopt;
  const auto late = distance(log.scheduledTime(), *log.actionTime());
  const bool isLate = late > late.zero();
  const auto off = isLate ? late : -late;
  if (off < std::chrono::minutes(1)) return std::nullopt;
  return DoseTiming{timingText(off, isLate, texts), isLate ? "orange" : "blue"};
}

Instant::Duration distance(Instant from, Instant to) {
  using Duration = Instant::Duration;
  Duration::rep microseconds = 0;
  if (__builtin_sub_overflow(to.microseconds(), from.microseconds(), &microseconds)) {
    return from < to ? Duration::max() : -Duration::max();
  }
  return std::max(Duration(microseconds), -Duration::max());
}

WholeUnits::WholeUnits(Instant::Duration distance)
    : minutes(std::to_string(distance / std::chrono::minutes(1))),
      hours(std::to_string(distance / std::chrono::hours(1))),
      days(distance / std::chrono::hours(24)),
      minutesOfHour(std::to_string(distance % std::chrono::hours(1) / std::chrono::minutes(1))),
      hasMinutesOfHour(distance % std::chrono::hours(1) >= std::chrono::minutes(1)) {}

ActionItem takeAction(const Texts& texts) { return {"take", texts.text("Take"), "checkmark"}; }

ActionItem snoozeAction(const Texts& texts) { return {"snooze", texts.text("Snooze"), "clock.arrow.circlepath"}; }

ActionItem skipAction(const Texts& texts) { return {"skip", texts.text("Skip"), "forward.fill"}; }

}  // namespace pillora
