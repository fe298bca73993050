// SPDX-License-Identifier: MIT
#include "icu/SystemRegion.h"

#include "icu/Calendars.h"
#include "icu/IcuTexts.h"

namespace pillora {

namespace {

/// What is in use. What was stays until the end: another thread may be in the middle of it. A journey has few zones.
template <typename T>
class Latest {
 public:
  void use(std::unique_ptr<T> next) {
    all_.push_back(std::move(next));
    inUse_ = all_.back().get();
  }
  const T* operator->() const { return inUse_; }

 private:
  std::vector<std::unique_ptr<T>> all_;
  std::atomic<const T*> inUse_ = nullptr;
};

}  // namespace

class SystemRegion::FollowingCalendar final : public Calendar {
 public:
  Latest<Calendar> latest;

  std::string identifier() const override { return latest->identifier(); }
  DateComponents components(Instant instant) const override { return latest->components(instant); }
  std::optional<Instant> date(const DateComponents& components) const override { return latest->date(components); }
  std::optional<Instant> dateOfTime(int64_t hour, int64_t minute) const override {
    return latest->dateOfTime(hour, minute);
  }
  std::optional<Instant> adding(CalendarUnit unit, int64_t amount, Instant instant) const override {
    return latest->adding(unit, amount, instant);
  }
  int weekday(Instant instant) const override { return latest->weekday(instant); }
  Instant startOfDay(Instant instant) const override { return latest->startOfDay(instant); }
  Instant startOfMinute(Instant instant) const override { return latest->startOfMinute(instant); }
  std::chrono::seconds utcOffset(Instant instant) const override { return latest->utcOffset(instant); }
};

class SystemRegion::FollowingTexts final : public Texts {
 public:
  Latest<Texts> latest;

  bool readsRightToLeft() const override { return latest->readsRightToLeft(); }
  std::string shortTime(Instant instant, bool in24) const override { return latest->shortTime(instant, in24); }
  std::string fullDate(Instant instant) const override { return latest->fullDate(instant); }
  std::string mediumDate(Instant instant) const override { return latest->mediumDate(instant); }
  std::string mediumDateAndShortTime(Instant instant, bool in24) const override {
    return latest->mediumDateAndShortTime(instant, in24);
  }
  std::string weekdayAndDay(Instant instant) const override { return latest->weekdayAndDay(instant); }
  std::string monthAndYear(Instant instant) const override { return latest->monthAndYear(instant); }
  std::string dayOfMonth(Instant instant) const override { return latest->dayOfMonth(instant); }
  std::string hour(Instant instant, bool in24) const override { return latest->hour(instant, in24); }
  std::string minute(Instant instant) const override { return latest->minute(instant); }
  std::string timestamp(Instant instant) const override { return latest->timestamp(instant); }
  std::string shortWeekdaySymbol(int weekday) const override { return latest->shortWeekdaySymbol(weekday); }
  std::string relative(Instant instant, Instant now) const override { return latest->relative(instant, now); }
  int compareNames(std::string_view a, std::string_view b) const override { return latest->compareNames(a, b); }
  bool containsIgnoringCase(std::string_view text, std::string_view part) const override {
    return latest->containsIgnoringCase(text, part);
  }
  std::string number(double value, int fractionDigits) const override { return latest->number(value, fractionDigits); }
  std::string translated(std::string_view context, std::string_view english) const override {
    return latest->translated(context, english);
  }
  std::string translatedCount(int64_t n, std::string_view one, std::string_view other) const override {
    return latest->translatedCount(n, one, other);
  }
};

SystemRegion::SystemRegion(std::string language, Catalogues catalogues, std::string etc)
    : language_(std::move(language)),
      catalogues_(std::move(catalogues)),
      etc_(std::move(etc)),
      calendar_(std::make_unique<FollowingCalendar>()),
      gregorian_(std::make_unique<FollowingCalendar>()),
      texts_(std::make_unique<FollowingTexts>()) {}

SystemRegion::~SystemRegion() = default;

Result<std::unique_ptr<SystemRegion>> SystemRegion::open(std::string language, Catalogues catalogues, std::string etc) {
  std::unique_ptr<SystemRegion> region(new SystemRegion(std::move(language), std::move(catalogues), std::move(etc)));
  if (const auto there = region->goTo(systemTimeZone(region->etc_)); !there) return there.error();
  return region;
}

const Calendar& SystemRegion::calendar() const { return *calendar_; }
const Calendar& SystemRegion::gregorian() const { return *gregorian_; }
const Texts& SystemRegion::texts() const { return *texts_; }

bool SystemRegion::refresh() {
  const std::string zone = systemTimeZone(etc_);
  return zone != zone_ && goTo(zone);
}

Result<void> SystemRegion::goTo(const std::string& zone) {
  const std::string locale = systemLocale();
  auto calendar = makeCalendar(locale, zone);
  if (!calendar) return calendar.error();
  auto gregorian = makeCalendar("en_US", zone);
  if (!gregorian) return gregorian.error();
  auto texts = makeTexts(locale, zone, language_, catalogues_);
  if (!texts) return texts.error();
  calendar_->latest.use(*std::move(calendar));
  gregorian_->latest.use(*std::move(gregorian));
  texts_->latest.use(*std::move(texts));
  zone_ = zone;
  return {};
}

}  // namespace pillora
