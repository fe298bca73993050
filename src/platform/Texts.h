// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "support/Instant.h"

namespace pillora {

/// Marks an own text in a table, which is shown later, for the extraction of texts into catalogues (tools/texts). That
/// reads the sources and finds a text only where it stands as a whole: never build one from pieces, and never choose
/// between two within the brackets of a call.
constexpr std::string_view ownText(std::string_view english) { return english; }
/// The same for Texts::textIn.
constexpr std::string_view ownTextIn(std::string_view /*context*/, std::string_view english) { return english; }

/// Everything shown to a person goes through here: the system's own texts, laid over with a language, and the dates,
/// times, numbers and order of the user's locale. Language and locale are separate choices. No rule ever reads a text
/// that came from here.
class Texts {
 public:
  /// A value put into a text in place of "{name}".
  struct Argument {
    std::string_view name;
    std::string value;
  };
  using Arguments = std::initializer_list<Argument>;

  virtual ~Texts() = default;

  /// An own text in the language in use. `english` is the text as it stands in English, the key and the answer where
  /// no translation is known. Values take the place of "{name}"; a value is data and is never searched for braces.
  std::string text(std::string_view english, Arguments arguments = {}) const {
    return filled(translated({}, english), arguments);
  }
  /// The same for a word that English uses for several things for which other languages have a word each: `context`, a
  /// fixed word, says which is meant. It is a part of the key and is never shown.
  std::string textIn(std::string_view context, std::string_view english, Arguments arguments = {}) const {
    return filled(translated(context, english), arguments);
  }
  /// The same for a text that counts: English uses `one` for 1 alone. A language may know further forms. Both name the
  /// count "{n}", which is filled in as a plain decimal number.
  std::string counted(int64_t n, std::string_view one, std::string_view other, Arguments arguments = {}) const;

  /// Whether the own texts are read from right to left.
  virtual bool readsRightToLeft() const = 0;

  /// The size of a file in decimal units and the locale's digits: "512 bytes", "4 KB", "1.2 MB", "1.25 GB". Kilobytes
  /// are whole, megabytes have one digit after the point, larger units two. A negative size reads as 0.
  std::string fileSize(int64_t bytes) const;

  /// The locale's short time: "9:00 AM", "09:00". With `use24HourTime` the locale's 24-hour form. May hold U+202F.
  virtual std::string shortTime(Instant instant, bool use24HourTime) const = 0;
  /// "Friday, January 10, 2025"
  virtual std::string fullDate(Instant instant) const = 0;
  /// "Jan 10, 2025"
  virtual std::string mediumDate(Instant instant) const = 0;
  /// The two together as the locale joins them: "Jan 10, 2025, 9:00 AM"
  virtual std::string mediumDateAndShortTime(Instant instant, bool use24HourTime) const = 0;
  /// The pattern "EEEE, MMM d" in the locale's words: "Friday, Jan 10"
  virtual std::string weekdayAndDay(Instant instant) const = 0;
  /// The heading of a calendar sheet, in the words and years of the user's calendar: "January 2025", "มกราคม 2568"
  virtual std::string monthAndYear(Instant instant) const = 0;
  /// The day's number alone: "9"
  virtual std::string dayOfMonth(Instant instant) const = 0;
  /// The hour alone, counted as in shortTime: "9 AM", "09"
  virtual std::string hour(Instant instant, bool use24HourTime) const = 0;
  /// The minute alone, with two digits: "05"
  virtual std::string minute(Instant instant) const = 0;
  /// The pattern "yyyy-MM-dd_HH-mm-ss" in the locale's digits and the calendar's years, for names of files:
  /// "2025-01-10_08-00-00", "2568-01-10_08-00-00"
  virtual std::string timestamp(Instant instant) const = 0;
  /// "Sun" for 1 to "Sat" for 7; `weekday` is within that range.
  virtual std::string shortWeekdaySymbol(int weekday) const = 0;
  /// The distance from `now` in the locale's abbreviated style: "in 2 hr.", "3 days ago". The largest unit of year,
  /// month, week, day, hour, minute and second whose whole number is not 0, truncated toward zero. Years and months
  /// are those of the calendar; weeks and below are elapsed time. Less than a second reads as zero seconds ahead.
  virtual std::string relative(Instant instant, Instant now) const = 0;

  /// Order of names for a person of this locale: negative, zero or positive.
  virtual int compareNames(std::string_view a, std::string_view b) const = 0;
  /// Whether `text` contains `part` for a person of this locale: without regard to case, with regard to accents,
  /// composed and decomposed letters alike. An empty `part` is contained in everything.
  virtual bool containsIgnoringCase(std::string_view text, std::string_view part) const = 0;

  // What the texts above are made of, for those alone who implement or forward them.

  /// A number in the locale's digits with at most so many after the point, rounded; without grouping.
  virtual std::string number(double value, int fractionDigits) const = 0;
  /// `context` is empty where there is none.
  virtual std::string translated(std::string_view context, std::string_view english) const = 0;
  virtual std::string translatedCount(int64_t n, std::string_view one, std::string_view other) const = 0;

 private:
  static std::string filled(std::string text, Arguments arguments);
};

}  // namespace pillora
