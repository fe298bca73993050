// SPDX-License-Identifier: MIT
#include "icu/IcuTexts.h"

#include <array>
#include <chrono>
#include <mutex>
#include <optional>
#include <unicode/calendar.h>
#include <unicode/coll.h>
#include <unicode/dtfmtsym.h>
#include <unicode/dtptngen.h>
#include <unicode/normalizer2.h>
#include <unicode/numfmt.h>
#include <unicode/reldatefmt.h>
#include <unicode/smpdtfmt.h>
#include <utility>

#include "icu/Language.h"
#include "icu/Locales.h"

namespace pillora {

namespace {

std::string utf8(const icu::UnicodeString& text) {
  std::string out;
  text.toUTF8String(out);
  return out;
}

icu::UnicodeString utf16(std::string_view text) {
  return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
}

UDate toMillis(Instant instant) { return static_cast<double>(floorDiv(instant.microseconds(), 1000)); }

/// A unit of relative time whose length is fixed.
struct ElapsedUnit {
  Instant::Duration length;
  URelativeDateTimeUnit unit;
};
constexpr std::array kElapsedUnits = {
    ElapsedUnit{std::chrono::weeks(1), UDAT_REL_UNIT_WEEK}, ElapsedUnit{std::chrono::days(1), UDAT_REL_UNIT_DAY},
    ElapsedUnit{std::chrono::hours(1), UDAT_REL_UNIT_HOUR}, ElapsedUnit{std::chrono::minutes(1), UDAT_REL_UNIT_MINUTE},
    ElapsedUnit{std::chrono::seconds(1), UDAT_REL_UNIT_SECOND}};

/// The last month of a Coptic or Ethiopic year has five days; an hour may be missing from these.
constexpr Instant::Duration kShorterThanAnyMonth = std::chrono::days(4);

class IcuTexts final : public Texts {
 public:
  IcuTexts(icu::Locale locale, std::unique_ptr<icu::Calendar> calendar, std::unique_ptr<const Language> language)
      : locale_(std::move(locale)), calendar_(std::move(calendar)), language_(std::move(language)) {}

  bool readsRightToLeft() const override { return language_->readsRightToLeft(); }
  std::string shortTime(Instant instant, bool use24HourTime) const override {
    const std::lock_guard lock(mutex_);
    return format(use24HourTime ? time24() : shortTime(), instant);
  }
  std::string fullDate(Instant instant) const override {
    const std::lock_guard lock(mutex_);
    return format(styled(fullDate_, icu::DateFormat::kFull, icu::DateFormat::kNone), instant);
  }
  std::string mediumDate(Instant instant) const override {
    const std::lock_guard lock(mutex_);
    return format(styled(mediumDate_, icu::DateFormat::kMedium, icu::DateFormat::kNone), instant);
  }
  std::string mediumDateAndShortTime(Instant instant, bool use24HourTime) const override {
    const std::lock_guard lock(mutex_);
    const auto* usual = styled(mediumDateShortTime_, icu::DateFormat::kMedium, icu::DateFormat::kShort);
    return format(use24HourTime ? mediumDateTime24(usual) : usual, instant);
  }
  std::string weekdayAndDay(Instant instant) const override {
    const std::lock_guard lock(mutex_);
    if (!weekdayAndDay_) weekdayAndDay_ = patterned(u"EEEE, MMM d");
    return format(weekdayAndDay_.get(), instant);
  }
  std::string monthAndYear(Instant instant) const override {
    const std::lock_guard lock(mutex_);
    return format(skeletal(monthAndYear_, u"yMMMM"), instant);
  }
  std::string dayOfMonth(Instant instant) const override {
    const std::lock_guard lock(mutex_);
    if (!dayOfMonth_) dayOfMonth_ = patterned(u"d");
    return format(dayOfMonth_.get(), instant);
  }
  std::string hour(Instant instant, bool use24HourTime) const override {
    const std::lock_guard lock(mutex_);
    return format(use24HourTime ? skeletal(hour24_, u"H") : skeletal(hour_, u"j"), instant);
  }
  std::string minute(Instant instant) const override {
    const std::lock_guard lock(mutex_);
    if (!minute_) minute_ = patterned(u"mm");
    return format(minute_.get(), instant);
  }
  std::string timestamp(Instant instant) const override {
    const std::lock_guard lock(mutex_);
    if (!timestamp_) timestamp_ = patterned(u"yyyy-MM-dd_HH-mm-ss");
    return format(timestamp_.get(), instant);
  }
  std::string shortWeekdaySymbol(int weekday) const override;
  std::string relative(Instant instant, Instant now) const override;
  int compareNames(std::string_view a, std::string_view b) const override;
  bool containsIgnoringCase(std::string_view text, std::string_view part) const override;

 protected:
  std::string number(double value, int fractionDigits) const override;
  std::string translated(std::string_view context, std::string_view english) const override {
    return language_->translated(context, english);
  }
  std::string translatedCount(int64_t n, std::string_view one, std::string_view other) const override {
    return language_->translatedCount(n, one, other);
  }

 private:
  using Format = std::unique_ptr<icu::DateFormat>;

  // All of these want mutex_ held. A formatter that ICU cannot make, for want of its data, gives empty texts.
  std::string format(const icu::DateFormat* format, Instant instant) const;
  const icu::DateFormat* styled(Format& kept, icu::DateFormat::EStyle date, icu::DateFormat::EStyle time) const;
  Format patterned(const icu::UnicodeString& pattern) const;
  const icu::DateFormat* skeletal(Format& kept, const icu::UnicodeString& skeleton) const;
  const icu::DateFormat* shortTime() const {
    return styled(shortTime_, icu::DateFormat::kNone, icu::DateFormat::kShort);
  }
  const icu::DateFormat* time24() const;
  const icu::DateFormat* mediumDateTime24(const icu::DateFormat* usual) const;
  std::pair<int64_t, URelativeDateTimeUnit> distance(Instant instant, Instant now) const;
  int32_t wholeUnits(UCalendarDateFields field, Instant instant, Instant now) const;
  icu::UnicodeString folded(std::string_view text, UErrorCode& status) const;

  const icu::Locale locale_;
  const std::unique_ptr<icu::Calendar> calendar_;
  const std::unique_ptr<const Language> language_;

  mutable std::mutex mutex_;  ///< guards the calendar, in which formatting and counting happen, and what follows
  mutable Format shortTime_, time24_, fullDate_, mediumDate_, mediumDateShortTime_, mediumDateTime24_, weekdayAndDay_;
  mutable Format monthAndYear_, dayOfMonth_, hour_, hour24_, minute_, timestamp_;
  mutable std::unique_ptr<icu::DateFormatSymbols> symbols_;
  mutable std::unique_ptr<icu::RelativeDateTimeFormatter> relative_;
  mutable std::unique_ptr<icu::NumberFormat> number_;
  mutable std::unique_ptr<icu::Collator> collator_;
};

std::string IcuTexts::format(const icu::DateFormat* format, Instant instant) const {
  if (format == nullptr) return {};
  UErrorCode status = U_ZERO_ERROR;
  calendar_->setTime(toMillis(instant), status);
  icu::UnicodeString text;
  icu::FieldPosition nowhere(icu::FieldPosition::DONT_CARE);
  // With a calendar of ours ICU need not clone its own for each text.
  return utf8(format->format(*calendar_, text, nowhere));
}

const icu::DateFormat* IcuTexts::styled(Format& kept, icu::DateFormat::EStyle date,
                                        icu::DateFormat::EStyle time) const {
  if (!kept) kept.reset(icu::DateFormat::createDateTimeInstance(date, time, locale_));
  return kept.get();
}

IcuTexts::Format IcuTexts::patterned(const icu::UnicodeString& pattern) const {
  UErrorCode status = U_ZERO_ERROR;
  auto format = std::make_unique<icu::SimpleDateFormat>(pattern, locale_, status);
  return U_SUCCESS(status) ? std::move(format) : nullptr;
}

/// The locale's own order and words for the fields of the skeleton.
const icu::DateFormat* IcuTexts::skeletal(Format& kept, const icu::UnicodeString& skeleton) const {
  if (kept) return kept.get();
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::DateTimePatternGenerator> generator(
      icu::DateTimePatternGenerator::createInstance(locale_, status));
  if (U_SUCCESS(status)) kept = patterned(generator->getBestPattern(skeleton, status));
  return kept.get();
}

icu::UnicodeString patternOf(const icu::DateFormat* format) {
  icu::UnicodeString pattern;
  if (const auto* simple = dynamic_cast<const icu::SimpleDateFormat*>(format)) simple->toPattern(pattern);
  return pattern;
}

/// The locale's own short time when it counts to 24 already: finding a pattern for another clock takes ICU a while.
const icu::DateFormat* IcuTexts::time24() const {
  if (patternOf(shortTime()).indexOf(u'H') >= 0) return shortTime();
  const auto* best = skeletal(time24_, u"Hmm");
  return best != nullptr ? best : shortTime();
}

/// The usual form with the short time in it exchanged.
const icu::DateFormat* IcuTexts::mediumDateTime24(const icu::DateFormat* usual) const {
  if (!mediumDateTime24_) {
    icu::UnicodeString pattern = patternOf(usual);
    pattern.findAndReplace(patternOf(shortTime()), patternOf(time24()));
    mediumDateTime24_ = patterned(pattern);
  }
  return mediumDateTime24_.get();
}

std::string IcuTexts::shortWeekdaySymbol(int weekday) const {
  const std::lock_guard lock(mutex_);
  UErrorCode status = U_ZERO_ERROR;
  if (!symbols_) symbols_ = std::make_unique<icu::DateFormatSymbols>(locale_, status);
  int32_t count = 0;
  const icu::UnicodeString* symbols = symbols_->getShortWeekdays(count);
  return weekday >= 1 && weekday < count ? utf8(symbols[weekday]) : std::string();
}

std::string IcuTexts::relative(Instant instant, Instant now) const {
  const std::lock_guard lock(mutex_);
  UErrorCode status = U_ZERO_ERROR;
  if (!relative_) {
    relative_ = std::make_unique<icu::RelativeDateTimeFormatter>(locale_, nullptr, UDAT_STYLE_SHORT,
                                                                 UDISPCTX_CAPITALIZATION_NONE, status);
  }
  const auto [amount, unit] = distance(instant, now);
  icu::UnicodeString text;
  relative_->formatNumeric(static_cast<double>(amount), unit, text, status);
  return utf8(text);
}

std::pair<int64_t, URelativeDateTimeUnit> IcuTexts::distance(Instant instant, Instant now) const {
  int64_t elapsed = 0;
  if (__builtin_sub_overflow(instant.microseconds(), now.microseconds(), &elapsed)) {
    elapsed = instant < now ? -INT64_MAX : INT64_MAX;
  }
  const Instant::Duration between(elapsed);
  if (between >= kShorterThanAnyMonth || between <= -kShorterThanAnyMonth) {
    if (const auto years = wholeUnits(UCAL_YEAR, instant, now)) return {years, UDAT_REL_UNIT_YEAR};
    if (const auto months = wholeUnits(UCAL_MONTH, instant, now)) return {months, UDAT_REL_UNIT_MONTH};
  }
  for (const auto& [length, unit] : kElapsedUnits) {
    if (const int64_t whole = between / length) return {whole, unit};
  }
  return {0, UDAT_REL_UNIT_SECOND};
}

int32_t IcuTexts::wholeUnits(UCalendarDateFields field, Instant instant, Instant now) const {
  UErrorCode status = U_ZERO_ERROR;
  calendar_->setTime(toMillis(now), status);
  const int32_t units = calendar_->fieldDifference(toMillis(instant), field, status);
  return U_SUCCESS(status) ? units : 0;
}

std::string IcuTexts::number(double value, int fractionDigits) const {
  const std::lock_guard lock(mutex_);
  UErrorCode status = U_ZERO_ERROR;
  if (!number_) number_.reset(icu::NumberFormat::createInstance(locale_, status));
  if (U_FAILURE(status)) return {};
  number_->setGroupingUsed(false);
  number_->setMaximumFractionDigits(fractionDigits);
  icu::UnicodeString text;
  return utf8(number_->format(value, text));
}

int IcuTexts::compareNames(std::string_view a, std::string_view b) const {
  const std::lock_guard lock(mutex_);
  UErrorCode status = U_ZERO_ERROR;
  if (!collator_) collator_.reset(icu::Collator::createInstance(locale_, status));
  if (U_FAILURE(status)) return a.compare(b);
  return collator_->compareUTF8({a.data(), static_cast<int32_t>(a.size())}, {b.data(), static_cast<int32_t>(b.size())},
                                status);
}

bool IcuTexts::containsIgnoringCase(std::string_view text, std::string_view part) const {
  UErrorCode status = U_ZERO_ERROR;
  const icu::Normalizer2* composing = icu::Normalizer2::getNFCInstance(status);
  const icu::UnicodeString whole = folded(text, status);
  const icu::UnicodeString wanted = folded(part, status);
  if (U_FAILURE(status)) return text.find(part) != std::string_view::npos;
  if (wanted.isEmpty()) return true;
  // Only whole letters count: "e" is not contained in "é", whichever way that is written.
  const auto isBoundary = [&](int32_t at) {
    return at == 0 || at == whole.length() || composing->hasBoundaryBefore(whole.char32At(at));
  };
  for (int32_t at = whole.indexOf(wanted); at >= 0; at = whole.indexOf(wanted, at + 1)) {
    if (isBoundary(at) && isBoundary(at + wanted.length())) return true;
  }
  return false;
}

/// Letters without case and without a choice of how an accent is written. Turkish and Azeri tell the two i apart, which
/// shows in composed letters only.
icu::UnicodeString IcuTexts::folded(std::string_view text, UErrorCode& status) const {
  const std::string_view language = locale_.getLanguage();
  const uint32_t folding = language == "tr" || language == "az" ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT;
  const icu::Normalizer2* composing = icu::Normalizer2::getNFCInstance(status);
  const icu::Normalizer2* decomposing = icu::Normalizer2::getNFDInstance(status);
  if (U_FAILURE(status)) return {};
  icu::UnicodeString composed = composing->normalize(utf16(text), status);
  return decomposing->normalize(composed.foldCase(folding), status);
}

}  // namespace

Result<std::unique_ptr<Texts>> makeTexts(const std::string& localeId, const std::string& timeZoneId,
                                         const std::string& languageId, const Catalogues& catalogues) {
  auto locale = localeNamed(localeId);
  if (!locale) return locale.error();
  auto zone = timeZoneNamed(timeZoneId);
  if (!zone) return zone.error();
  auto language = makeLanguage(languageId, catalogues);
  if (!language) return language.error();
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::Calendar> calendar(icu::Calendar::createInstance(zone->release(), *locale, status));
  if (U_FAILURE(status)) return Error{"no calendar for " + localeId + ": " + u_errorName(status)};
  return std::unique_ptr<Texts>(std::make_unique<IcuTexts>(*locale, std::move(calendar), std::move(*language)));
}

}  // namespace pillora
