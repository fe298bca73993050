// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "model/DoseLog.h"
#include "model/Record.h"
#include "model/ReminderInterval.h"
#include "support/Fields.h"

namespace pillora {

/// The units of a dosage that are offered, in this order. They are stored as these words.
inline constexpr std::array<std::string_view, 17> kUnitWords = {
    ownTextIn("unit", "pill"),    ownTextIn("unit", "pills"),   ownTextIn("unit", "tablet"),
    ownTextIn("unit", "tablets"), ownTextIn("unit", "capsule"), ownTextIn("unit", "capsules"),
    ownTextIn("unit", "ml"),      ownTextIn("unit", "mg"),      ownTextIn("unit", "g"),
    ownTextIn("unit", "oz"),      ownTextIn("unit", "drops"),   ownTextIn("unit", "spray"),
    ownTextIn("unit", "puff"),    ownTextIn("unit", "patch"),   ownTextIn("unit", "injection"),
    ownTextIn("unit", "unit"),    ownTextIn("unit", "dose")};

/// A unit as it is shown: one of these words in the language in use, another as it was stored.
std::string unitText(const std::string& unit, const Texts& texts);

/// The user-settable values of a new medicine. The defaults are those of the schema.
struct NewMedicine {
  std::string name;
  std::string dosage = "1";
  std::string unit = "pill";
  std::string instructions;
  std::string color = "blue";
  std::string icon = "pills";
  ReminderInterval interval;
  bool isActive = true;
  bool allowSnooze = true;
  int64_t snoozeDurationMinutes = 10;
  int64_t maxSnoozeCount = 3;
  bool isRepeating = true;
  Instant startDate;
  std::optional<Instant> endDate;
};

/// One medicine that the user takes. Its schedule is kept as JSON text in `intervalData`.
class Medicine final : public Record, public std::enable_shared_from_this<Medicine> {
 public:
  /// An empty medicine with the schema's defaults and all times 1970: what the store fills in after reading.
  Medicine();

  /// A new medicine with a new identity, created and updated `now`, in no store yet.
  static std::shared_ptr<Medicine> make(NewMedicine values, Instant now);

  Stored<UUID> id;
  Stored<std::string> name;
  Stored<std::string> dosage;  ///< amount per dose as typed
  Stored<std::string> unit;
  Stored<std::string> instructions;
  Stored<std::string> color;         ///< one of the ten colour names; anything else shows as blue
  Stored<std::string> icon;          ///< symbol name
  Stored<std::string> intervalData;  ///< JSON of the ReminderInterval, never rewritten after creation
  Stored<bool> isActive;             ///< inactive medicines have no doses and get no reminders
  Stored<bool> allowSnooze;
  Stored<int64_t> snoozeDurationMinutes;
  Stored<int64_t> maxSnoozeCount;  ///< stored and shown; nothing counts snoozes against it
  Stored<bool> isRepeating;        ///< off: no reminder is planned, doses are still listed and marked
  Stored<Instant> createdAt;
  Stored<Instant> updatedAt;
  Stored<Instant> startDate;               ///< read by the marking of missed doses alone
  Stored<std::optional<Instant>> endDate;  ///< read by the planning of reminders alone; absent: open-ended

  /// The schedule, decoded anew when `intervalData` changed; `fallbackInterval()` when it cannot be read.
  const ReminderInterval& interval() const;
  /// `color`, or "blue" when it is empty.
  std::string resolvedColorName() const;
  /// The next due time after `now`; nothing when the medicine is inactive or its interval yields none.
  std::optional<Instant> nextDoseTime(Instant now, const Calendar& calendar) const;

  /// All logs, or those with from <= scheduledTime < to, in the order of their insertion. Of a stored medicine this
  /// reads the store through its index; ask for a window wherever one will do.
  std::vector<std::shared_ptr<DoseLog>> doseLogs(Instant from = Instant::distantPast(),
                                                 Instant to = Instant::distantFuture()) const;
  /// The scheduled times of all logs in the window, ascending; and of those with status taken or skipped.
  std::vector<Instant> loggedTimes(Instant from, Instant to) const;
  std::vector<Instant> actedOnTimes(Instant from, Instant to) const;
  /// Makes `log` one of this medicine's logs. A log that is one already stays in its place.
  void appendDoseLog(const std::shared_ptr<DoseLog>& log);
  /// Takes `log` out of this medicine's logs; it then belongs to none.
  void removeDoseLog(const std::shared_ptr<DoseLog>& log);

  static constexpr std::string_view kEntityName = "Medicine";
  static constexpr auto fields() {
    return std::tuple(field("id", &Medicine::id), field("name", &Medicine::name), field("dosage", &Medicine::dosage),
                      field("unit", &Medicine::unit), field("instructions", &Medicine::instructions),
                      field("color", &Medicine::color), field("icon", &Medicine::icon),
                      field("intervalData", &Medicine::intervalData), field("isActive", &Medicine::isActive),
                      field("allowSnooze", &Medicine::allowSnooze),
                      field("snoozeDurationMinutes", &Medicine::snoozeDurationMinutes),
                      field("maxSnoozeCount", &Medicine::maxSnoozeCount), field("isRepeating", &Medicine::isRepeating),
                      field("createdAt", &Medicine::createdAt), field("updatedAt", &Medicine::updatedAt),
                      field("startDate", &Medicine::startDate), field("endDate", &Medicine::endDate));
  }

 private:
  explicit Medicine(NewMedicine values);
  /// The logs in the window that no store lists.
  template <typename Visitor>
  void forEachOwnLog(Instant from, Instant to, Visitor visit) const;

  mutable std::optional<ReminderInterval> interval_;
  mutable std::string intervalSource_;                  ///< the data that interval_ was decoded from
  std::vector<std::shared_ptr<DoseLog>> unstoredLogs_;  ///< logs that the store does not list, in order
};

}  // namespace pillora
