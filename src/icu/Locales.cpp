// SPDX-License-Identifier: MIT
#include "icu/Locales.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unicode/calendar.h>
#include <unicode/coll.h>
#include <unicode/localebuilder.h>
#include <unicode/numsys.h>
#include <unicode/strenum.h>
#include <unicode/uchar.h>
#include <unicode/ures.h>

namespace pillora {

namespace {

/// Names that ICU still knows from the first Java releases. "BST" is Bangladesh to it and Britain to everybody else.
constexpr std::array<std::string_view, 25> kJavaZones = {"ACT", "AET", "AGT", "ART", "AST", "BET", "BST", "CAT", "CNT",
                                                         "CST", "CTT", "EAT", "ECT", "IET", "IST", "JST", "MIT", "NET",
                                                         "NST", "PLT", "PNT", "PRT", "PST", "SST", "VST"};

bool hasData(const char* bundle) {
  UErrorCode status = U_ZERO_ERROR;
  icu::LocalUResourceBundlePointer found(ures_open(nullptr, bundle, &status));
  return status == U_ZERO_ERROR;  // a fallback to the parent or the root succeeds too, with a warning
}

bool lists(icu::StringEnumeration* values, std::string_view value) {
  const std::unique_ptr<icu::StringEnumeration> owned(values);
  UErrorCode status = U_ZERO_ERROR;
  while (const char* next = owned ? owned->next(nullptr, status) : nullptr) {
    if (value == next) return true;
  }
  return false;
}

bool isKnownKeyword(std::string_view key, const std::string& value) {
  UErrorCode status = U_ZERO_ERROR;
  if (key == "calendar") {
    return lists(icu::Calendar::getKeywordValuesForLocale("calendar", icu::Locale::getRoot(), false, status), value);
  }
  if (key == "numbers") {
    const std::unique_ptr<icu::NumberingSystem> system(
        icu::NumberingSystem::createInstanceByName(value.c_str(), status));
    return U_SUCCESS(status);
  }
  return key == "collation" && lists(icu::Collator::getKeywordValues("collation", status), value);
}

bool keywordsAreKnown(const icu::Locale& locale) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::StringEnumeration> keys(locale.createKeywords(status));
  while (const char* key = keys ? keys->next(nullptr, status) : nullptr) {
    const auto value = locale.getKeywordValue<std::string>(key, status);
    if (U_FAILURE(status) || !isKnownKeyword(key, value)) return false;
  }
  return U_SUCCESS(status);
}

bool isKnownRegion(const icu::Locale& locale) {
  const std::string_view region = locale.getCountry();
  if (region.empty()) return true;
  for (const char* const* country = icu::Locale::getISOCountries(); *country != nullptr; ++country) {
    if (region == *country) return true;
  }
  return hasData(locale.getBaseName());  // es_419: a part of the world
}

bool isKnownScript(const char* script) {
  return *script == '\0' || u_getPropertyValueEnum(UCHAR_SCRIPT, script) != UCHAR_INVALID_CODE;
}

/// Takes the C library's modifiers ("sr_RS@latin", "de_DE@euro"), which ICU reads as variants, for what they mean.
icu::Locale withoutModifier(const icu::Locale& locale) {
  const std::string_view variant = locale.getVariant();
  const char* script = variant == "LATIN"        ? "Latn"
                       : variant == "CYRILLIC"   ? "Cyrl"
                       : variant == "DEVANAGARI" ? "Deva"
                                                 : nullptr;
  if (script == nullptr && variant != "EURO") return locale;
  icu::LocaleBuilder builder;
  builder.setLanguage(locale.getLanguage()).setRegion(locale.getCountry());
  builder.setScript(script != nullptr ? script : locale.getScript());
  UErrorCode status = U_ZERO_ERROR;
  return builder.build(status);
}

/// Whether the name consists of nothing but the parts that ICU took from it.
bool isWhole(const icu::Locale& locale) {
  std::string parts = locale.getLanguage();
  for (const char* part : {locale.getScript(), locale.getCountry(), locale.getVariant()}) {
    if (*part != '\0') parts.append("_").append(part);
  }
  return parts == locale.getBaseName();
}

bool isLegacy(const std::string& zone) {
  return std::find(kJavaZones.begin(), kJavaZones.end(), zone) != kJavaZones.end() || zone.rfind("SystemV/", 0) == 0;
}

std::unique_ptr<icu::BasicTimeZone> zoneOfIcu(const std::string& id) {
  const icu::UnicodeString name = icu::UnicodeString::fromUTF8(id);
  icu::UnicodeString canonical;
  UBool isSystemId = false;
  UErrorCode status = U_ZERO_ERROR;
  icu::TimeZone::getCanonicalID(name, canonical, isSystemId, status);
  std::unique_ptr<icu::TimeZone> zone(isSystemId ? icu::TimeZone::createTimeZone(name) : nullptr);
  auto* basic = dynamic_cast<icu::BasicTimeZone*>(zone.get());
  if (basic != nullptr) static_cast<void>(zone.release());
  return std::unique_ptr<icu::BasicTimeZone>(basic);
}

}  // namespace

Result<icu::Locale> localeNamed(const std::string& id) {
  const std::string name = id.substr(0, id.find_first_of(".@"));
  if (name == "C" || name == "POSIX") return icu::Locale::getUS();
  const icu::Locale locale = withoutModifier(icu::Locale::createCanonical(id.c_str()));
  const std::string_view variant = locale.getVariant();
  const bool known = !locale.isBogus() && *locale.getLanguage() != '\0' && isWhole(locale) &&
                     (variant.empty() || hasData(locale.getBaseName()) || variant == "VALENCIA") &&
                     hasData(locale.getLanguage()) && isKnownScript(locale.getScript()) && isKnownRegion(locale) &&
                     keywordsAreKnown(locale);
  if (!known || id.find('\0') != std::string::npos) return Error{"unknown locale: " + id};
  return locale;
}

Result<std::unique_ptr<icu::BasicTimeZone>> timeZoneNamed(const std::string& id, const std::string& folder) {
  if (!isLegacy(id)) {
    if (auto zone = readZone(id, folder)) return zone;
    if (auto zone = zoneOfIcu(id)) return zone;
  }
  return Error{"unknown time zone: " + id};
}

}  // namespace pillora
