// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "platform/Calendar.h"
#include "support/Result.h"

namespace pillora {

// The live calendars: which locale and zone the running system names, and the calendar for them. A calendar may be
// used from several threads at once. It does not follow the system; who wants to, makes a new one.

/// The calendar of a locale in a time zone.
///
/// `localeId` is written the POSIX way or as a language tag, with or without encoding and keywords: "de_DE", "de-DE",
/// "de_DE.UTF-8", "th_TH@calendar=buddhist", "ar_EG@numbers=arab"; "C" and "POSIX" mean en_US. Without a calendar
/// keyword the region says which calendar it is. `timeZoneId` is a name of the tz database, "America/New_York" or
/// "UTC"; an offset such as "GMT+2" is none. What is not known is refused by name.
Result<std::unique_ptr<Calendar>> makeCalendar(const std::string& localeId, const std::string& timeZoneId);

/// The system's time zone at this moment: TZ, else where /etc/localtime leads, else /etc/timezone. A source that names
/// no known zone is passed over; when all are, "UTC". `etc` is the folder that holds the last two.
std::string systemTimeZone(const std::string& etc = "/etc");

/// The system's locale for dates and times at this moment: the first of LC_ALL, LC_TIME and LANG that is set. "en_US"
/// when none is, or when it names no known locale.
std::string systemLocale();

}  // namespace pillora
