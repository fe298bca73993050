// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>
#include <string>
#include <tuple>
#include <vector>

#include "screens/Content.h"
#include "screens/Screen.h"
#include "support/Fields.h"
#include "support/Instant.h"
#include "support/Result.h"

namespace pillora {

/// The card of one open dose of the coming seven days.
struct UpcomingDoseCard {
  std::string id;  ///< names the dose: medicine and due time
  UUID medicineId;
  std::string name;
  std::string dosageText;
  std::optional<std::string> icon;  ///< absent when icons are switched off in the settings
  std::string color;
  Instant time;  ///< what take and skip are called with, also when the list has been computed anew meanwhile
  std::string timeText;
  std::string relative;
  std::string relativeColor;
  std::vector<ActionItem> actions;  ///< "take", "skip"

  static constexpr auto fields() {
    using Card = UpcomingDoseCard;
    return std::tuple(field("id", &Card::id), field("medicineId", &Card::medicineId), field("name", &Card::name),
                      field("dosageText", &Card::dosageText), field("icon", &Card::icon), field("color", &Card::color),
                      field("time", &Card::time), field("timeText", &Card::timeText),
                      field("relative", &Card::relative), field("relativeColor", &Card::relativeColor),
                      field("actions", &Card::actions));
  }
};

struct UpcomingDay {
  std::string title;
  std::vector<UpcomingDoseCard> doses;

  static constexpr auto fields() {
    return std::tuple(field("title", &UpcomingDay::title), field("doses", &UpcomingDay::doses));
  }
};

struct UpcomingContent {
  std::string title;
  std::vector<UpcomingDay> days;
  std::optional<Panel> empty;
  bool hasMore = false;      ///< doses beyond the row limit: showMore() brings them
  bool hasPrevious = false;  ///< earlier doses that gave way: showPrevious() brings them back

  static constexpr auto fields() {
    return std::tuple(field("title", &UpcomingContent::title), field("days", &UpcomingContent::days),
                      field("empty", &UpcomingContent::empty), field("hasMore", &UpcomingContent::hasMore),
                      field("hasPrevious", &UpcomingContent::hasPrevious));
  }
};

/// The card of a dose, as seen at `now`.
UpcomingDoseCard upcomingDoseCard(const UpcomingDose& dose, Instant now, const AppSettings& settings,
                                  const Texts& texts);

/// The tab that lists every open dose of the coming seven days by day.
class UpcomingView {
 public:
  explicit UpcomingView(ScreenEnvironment environment);

  UpcomingContent content() const;

  /// As on Today, but no reminder follows: logs the dose as taken unless it is done already.
  Result<std::optional<UUID>> take(const UUID& medicine, Instant time);
  Result<std::optional<UUID>> skip(const UUID& medicine, Instant time);

  /// A one-minute interval has some ten thousand doses a week: content() holds the first `rowLimit` of them.
  size_t rowLimit = kRowsAtOnce;
  /// A hundred doses more. From four hundred on the first ones give way to them.
  void showMore();
  /// Brings back what gave way last.
  void showPrevious();
  /// The first hundred again.
  void showFirst();

 private:
  static constexpr size_t kRowsAtOnce = 100, kMostRows = 400;

  /// `doses` is ascending by time.
  std::vector<UpcomingDay> daysOf(std::span<const UpcomingDose> doses, Instant now) const;

  ScreenEnvironment environment_;
  size_t firstRow_ = 0;  ///< how many gave way
  LiveQuery<Medicine> medicines_;
  LiveQuery<AppSettings> settings_;
};

}  // namespace pillora
