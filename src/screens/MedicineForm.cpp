// SPDX-License-Identifier: MIT
#include "screens/MedicineForm.h"

namespace pillora {

namespace {

/// The tab and Unicode's space separators (general category Zs), as UTF-8.
constexpr std::array<std::string_view, 18> kBlanks = {"\t",     " ",      "\u00A0", "\u1680", "\u2000", "\u2001",
                                                      "\u2002", "\u2003", "\u2004", "\u2005", "\u2006", "\u2007",
                                                      "\u2008", "\u2009", "\u200A", "\u202F", "\u205F", "\u3000"};

}  // namespace

std::string trimmedName(std::string_view name) {
  const auto atStart = [&](std::string_view blank) { return name.starts_with(blank); };
  const auto atEnd = [&](std::string_view blank) { return name.ends_with(blank); };
  for (const auto* at = kBlanks.end(); (at = std::find_if(kBlanks.begin(), kBlanks.end(), atStart)) != kBlanks.end();) {
    name.remove_prefix(at->size());
  }
  for (const auto* at = kBlanks.end(); (at = std::find_if(kBlanks.begin(), kBlanks.end(), atEnd)) != kBlanks.end();) {
    name.remove_suffix(at->size());
  }
  return std::string(name);
}

ReminderInterval initialInterval(Instant now, const Calendar& calendar) {
  const auto nine = calendar.components(calendar.dateOfTime(9, 0).value_or(now));
  const TimeOfDay time{nine.hour, nine.minute};
  ReminderInterval interval = fallbackInterval();
  interval.dailyTimes = {time};
  interval.weeklyTime = time;
  interval.monthlyTime = time;
  return interval;
}

}  // namespace pillora
