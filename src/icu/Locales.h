// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <unicode/basictz.h>
#include <unicode/locid.h>

#include "icu/ZoneInfo.h"
#include "support/Result.h"

namespace pillora {

// The one place that reads the names of locales and time zones. ICU takes any text for either and goes on with some
// default; a medicine would then be due at the wrong hour.

/// "de_DE", "de-DE", "de_DE.UTF-8", "sr_RS@latin", "th_TH@calendar=buddhist", "C". Language, script, region, variant
/// and keywords must all be known; errors name the text.
Result<icu::Locale> localeNamed(const std::string& id);

/// A zone of the tz database, as the files in `folder` have it, or as ICU has it when there is no file that can be
/// used. Errors name the text.
Result<std::unique_ptr<icu::BasicTimeZone>> timeZoneNamed(const std::string& id,
                                                          const std::string& folder = kZoneInfoFolder);

}  // namespace pillora
