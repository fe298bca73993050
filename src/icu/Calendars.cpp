// SPDX-License-Identifier: MIT
#include "icu/Calendars.h"

#include "icu/GregorianCalendar.h"
#include "icu/IcuCalendar.h"
#include "icu/Locales.h"

namespace pillora {

Result<std::unique_ptr<Calendar>> makeCalendar(const std::string& localeId, const std::string& timeZoneId) {
  const auto locale = localeNamed(localeId);
  if (!locale) return locale.error();
  const auto zone = timeZoneNamed(timeZoneId);
  if (!zone) return zone.error();
  auto calendar = IcuCalendar::make(*locale, **zone);
  if (!calendar) return calendar.error();
  if ((*calendar)->identifier() != "gregorian") return std::unique_ptr<Calendar>(std::move(*calendar));
  return std::unique_ptr<Calendar>(std::make_unique<GregorianCalendar>(std::move(*calendar), **zone));
}

}  // namespace pillora
