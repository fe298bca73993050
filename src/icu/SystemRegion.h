// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "icu/Language.h"
#include "platform/Calendar.h"
#include "platform/Texts.h"
#include "support/Result.h"

namespace pillora {

/// Calendars and texts for a program that stays while its user travels: those of the system's locale, which no running
/// program sees change, in the time zone that the system is in. They are the same objects all the time and may be used
/// from several threads at once; refresh() lets them go by another zone.
class SystemRegion {
 public:
  /// Own texts are in `language`, as for makeTexts. `etc` is the folder that names the zone, as for systemTimeZone.
  static Result<std::unique_ptr<SystemRegion>> open(std::string language, Catalogues catalogues = {},
                                                    std::string etc = "/etc");
  ~SystemRegion();

  const Calendar& calendar() const;
  const Calendar& gregorian() const;  ///< the Gregorian calendar in the same zone
  const Texts& texts() const;

  /// Looks which zone the system is in; true when it is another than before. One thread at a time.
  bool refresh();

 private:
  class FollowingCalendar;
  class FollowingTexts;

  SystemRegion(std::string language, Catalogues catalogues, std::string etc);
  Result<void> goTo(const std::string& zone);

  std::string language_;
  Catalogues catalogues_;
  std::string etc_, zone_;
  std::unique_ptr<FollowingCalendar> calendar_, gregorian_;
  std::unique_ptr<FollowingTexts> texts_;
};

}  // namespace pillora
