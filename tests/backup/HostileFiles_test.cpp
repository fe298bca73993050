// SPDX-License-Identifier: MIT
// Files that are no backups, damaged or made with intent: each is refused with a text that says where it is wrong.
#include <gtest/gtest.h>

#include <array>

#include "backup/SampleBackup.h"

namespace pillora {
namespace {

const std::string kRefused = "This backup cannot be read: ";

/// The place of a value in the sample, and a change of the sample there.
struct Place {
  const char* path;  ///< as errors name it
  const char* pointer;
};

const std::array kTexts = {Place{"medicines[1].name", "/medicines/1/name"},
                           Place{"medicines[1].dosage", "/medicines/1/dosage"},
                           Place{"medicines[1].unit", "/medicines/1/unit"},
                           Place{"medicines[1].instructions", "/medicines/1/instructions"},
                           Place{"medicines[1].color", "/medicines/1/color"},
                           Place{"medicines[1].icon", "/medicines/1/icon"},
                           Place{"appVersion", "/appVersion"}};
const std::array kCodedTexts = {Place{"medicines[1].id", "/medicines/1/id"},
                                Place{"medicines[1].interval.type", "/medicines/1/interval/type"},
                                Place{"medicines[1].startDate", "/medicines/1/startDate"},
                                Place{"settings.notificationSound", "/settings/notificationSound"},
                                Place{"settings.backupFrequency", "/settings/backupFrequency"},
                                Place{"createdAt", "/createdAt"}};
const std::array kIntegers = {
    Place{"medicines[1].snoozeDurationMinutes", "/medicines/1/snoozeDurationMinutes"},
    Place{"medicines[1].maxSnoozeCount", "/medicines/1/maxSnoozeCount"},
    Place{"medicines[1].interval.hourlyInterval", "/medicines/1/interval/hourlyInterval"},
    Place{"medicines[1].interval.customIntervalMinutes", "/medicines/1/interval/customIntervalMinutes"},
    Place{"medicines[1].interval.weeklyDays[1]", "/medicines/1/interval/weeklyDays/1"},
    Place{"medicines[1].interval.monthlyDays[0]", "/medicines/1/interval/monthlyDays/0"},
    Place{"settings.reminderAdvanceMinutes", "/settings/reminderAdvanceMinutes"},
    Place{"settings.autoMarkMissedAfterMinutes", "/settings/autoMarkMissedAfterMinutes"},
    Place{"settings.defaultSnoozeDurationMinutes", "/settings/defaultSnoozeDurationMinutes"},
    Place{"settings.defaultMaxSnoozeCount", "/settings/defaultMaxSnoozeCount"}};
const std::array kTimeParts = {
    Place{"medicines[0].interval.dailyTimes[1].hour", "/medicines/0/interval/dailyTimes/1/hour"},
    Place{"medicines[1].interval.weeklyTime.minute", "/medicines/1/interval/weeklyTime/minute"},
    Place{"medicines[1].interval.monthlyTime.hour", "/medicines/1/interval/monthlyTime/hour"}};
const std::array kBooleans = {Place{"medicines[1].isActive", "/medicines/1/isActive"},
                              Place{"medicines[1].allowSnooze", "/medicines/1/allowSnooze"},
                              Place{"medicines[1].isRepeating", "/medicines/1/isRepeating"},
                              Place{"settings.enableCriticalAlerts", "/settings/enableCriticalAlerts"},
                              Place{"settings.enableiCloudSync", "/settings/enableiCloudSync"},
                              Place{"settings.enableLocalBackup", "/settings/enableLocalBackup"},
                              Place{"settings.use24HourTime", "/settings/use24HourTime"},
                              Place{"settings.showMedicineIcons", "/settings/showMedicineIcons"},
                              Place{"settings.enableHaptics", "/settings/enableHaptics"},
                              Place{"settings.requireAuthentication", "/settings/requireAuthentication"}};
const std::array kObjects = {
    Place{"medicines[1]", "/medicines/1"}, Place{"medicines[1].interval", "/medicines/1/interval"},
    Place{"medicines[0].interval.dailyTimes[0]", "/medicines/0/interval/dailyTimes/0"},
    Place{"medicines[1].interval.weeklyTime", "/medicines/1/interval/weeklyTime"}, Place{"settings", "/settings"}};
const std::array kLists = {Place{"medicines", "/medicines"},
                           Place{"medicines[0].interval.dailyTimes", "/medicines/0/interval/dailyTimes"},
                           Place{"medicines[1].interval.weeklyDays", "/medicines/1/interval/weeklyDays"},
                           Place{"medicines[1].interval.monthlyDays", "/medicines/1/interval/monthlyDays"}};

/// The sample with the JSON text `value` in that place.
std::string sampleWith(const Place& place, const std::string& value) {
  auto document = parseJson(sampleText());
  (*document)[Json::json_pointer(place.pointer)] = "the place";
  return replaced(jsonText(*document), "\"the place\"", value);
}

template <size_t size>
void expectRefused(const std::array<Place, size>& places, std::initializer_list<const char*> values,
                   const std::string& why) {
  for (const Place& place : places) {
    for (const char* value : values) {
      EXPECT_EQ(decodingError(sampleWith(place, value)), kRefused + place.path + ": " + why) << value;
    }
  }
}

TEST(HostileFiles, aTextIsAText) {
  expectRefused(kTexts, {"7", "true", "null", "[]", "{}", "[\"a\"]", "1.5"}, "expected a text");
  expectRefused(kCodedTexts, {"7", "true", "null", "[]", "{}"}, "expected a text");
}

TEST(HostileFiles, aWholeNumberIsALiteralOf64Bits) {
  const auto values = {"10.0",
                       "1e1",
                       "\"10\"",
                       "true",
                       "[1]",
                       "{}",
                       "9223372036854775808",
                       "-9223372036854775809",
                       "1e300",
                       "99999999999999999999999999"};
  expectRefused(kIntegers, values, "expected a whole number");
  expectRefused(kIntegers, {"null"}, "expected a whole number");
  expectRefused(kTimeParts, values, "expected a whole number");
}

TEST(HostileFiles, aBooleanIsTrueOrFalse) {
  expectRefused(kBooleans, {"0", "1", "\"true\"", "null", "[]", "{}", "1.0"}, "expected true or false");
}

TEST(HostileFiles, anObjectIsAnObjectAndAListAList) {
  expectRefused(kObjects, {"7", "true", "\"a\"", "[]", "[1]"}, "expected an object");
  expectRefused(kLists, {"7", "true", "\"a\"", "{}", "null"}, "expected a list");
  expectRefused(std::array{kObjects[0], kObjects[1], kObjects[2], kObjects[3]}, {"null"}, "expected an object");
}

TEST(HostileFiles, aTextHoldsNoNul) {
  expectRefused(kTexts, {"\"a\\u0000b\"", "\"\\u0000\""}, "a text must not contain a NUL character");
  expectRefused(kCodedTexts, {"\"\\u0000\""}, "a text must not contain a NUL character");
}

TEST(HostileFiles, aDateIsWholeSecondsInUtc) {
  const std::array dates = {Place{"medicines[1].startDate", "/medicines/1/startDate"},
                            Place{"medicines[1].endDate", "/medicines/1/endDate"}, Place{"createdAt", "/createdAt"}};
  for (const std::string date : {"2025-01-10T08:00:00.5Z",
                                 "2025-01-10T08:00:00.000Z",
                                 "2025-01-10T08:00:00+00:00",
                                 "2025-01-10T08:00:00+01:00",
                                 "2025-01-10T08:00:00",
                                 "2025-01-10T08:00:00z",
                                 "2025-01-10t08:00:00Z",
                                 "2025-01-10 08:00:00Z",
                                 "2025-01-10T08:00Z",
                                 "2025-01-10T24:00:00Z",
                                 "2025-01-10T23:60:00Z",
                                 "2025-01-10T23:59:60Z",
                                 "2025-02-30T08:00:00Z",
                                 "2025-02-29T08:00:00Z",
                                 "1900-02-29T08:00:00Z",
                                 "2025-04-31T08:00:00Z",
                                 "2025-13-01T08:00:00Z",
                                 "2025-00-10T08:00:00Z",
                                 "2025-01-00T08:00:00Z",
                                 "2025-01-32T08:00:00Z",
                                 " 2025-01-10T08:00:00Z",
                                 "2025-01-10T08:00:00Z ",
                                 "2025-1-10T08:00:00Z",
                                 "+2025-01-10T08:00:0Z",
                                 "-025-01-10T08:00:00Z",
                                 "12025-01-10T08:00:0Z",
                                 "20250110T080000Z",
                                 "2025-W02-5T08:00:00Z",
                                 "2025-01-10",
                                 "",
                                 "now",
                                 "٢٠٢٥-01-10T08Z"}) {
    for (const Place& place : dates) {
      EXPECT_EQ(decodingError(sampleWith(place, '"' + date + '"')),
                kRefused + place.path + ": \"" + date + "\" is no date and time of the form 2025-01-31T08:00:00Z");
    }
  }
  for (const char* date : {"2024-02-29T23:59:59Z", "2000-02-29T00:00:00Z", "0000-01-01T00:00:00Z"}) {
    for (const Place& place : dates) {
      EXPECT_EQ(decodingError(sampleWith(place, '"' + std::string(date) + '"')), "no error") << date;
    }
  }
}

TEST(HostileFiles, anIdentifierHasOneShape) {
  for (const std::string id :
       {"{6F9619FF-8B86-D011-B42D-00CF4FC964FF}", "6F9619FF8B86D011B42D00CF4FC964FF", "", "6F9619FF",
        "6F9619FF-8B86-D011-B42D-00CF4FC964FG", " 6F9619FF-8B86-D011-B42D-00CF4FC964FF"}) {
    const std::string error = decodingError(sampleWith(kCodedTexts[0], '"' + id + '"'));
    EXPECT_TRUE(error.starts_with(kRefused + "medicines[1].id: \"" + id.substr(0, 30))) << error;
    EXPECT_TRUE(error.ends_with(" is no identifier of the form 00000000-0000-0000-0000-000000000000")) << error;
  }
}

TEST(HostileFiles, unknownNamesAreNamed) {
  EXPECT_EQ(decodingError(sampleWith(kCodedTexts[1], "\"daily\"")),
            kRefused + "medicines[1].interval.type: \"daily\" is no kind of schedule");
  EXPECT_EQ(decodingError(sampleWith(kCodedTexts[3], "\"Chime\"")),
            kRefused + "settings.notificationSound: \"Chime\" is no notification sound");
  EXPECT_EQ(decodingError(sampleWith(kCodedTexts[4], "\"yearly\"")),
            kRefused + "settings.backupFrequency: \"yearly\" is no backup frequency");
}

TEST(HostileFiles, aLongTextIsNotRepeatedInTheError) {
  const std::string error = decodingError(sampleWith(kCodedTexts[0], '"' + std::string(1'000'000, 'x') + '"'));
  EXPECT_LT(error.size(), 200u);
}

TEST(HostileFiles, everyRequiredMemberIsRequired) {
  const auto sample = parseJson(sampleText());
  const auto check = [&](const char* pointer, const std::string& path, std::initializer_list<const char*> optional) {
    const Json whole = sample->at(Json::json_pointer(pointer));
    for (const auto& member : whole.items()) {
      Json document = *sample;
      document[Json::json_pointer(pointer)].erase(member.key());
      const bool isOptional = std::find(optional.begin(), optional.end(), member.key()) != optional.end();
      EXPECT_EQ(decodingError(jsonText(document)),
                isOptional ? "no error" : kRefused + path + ": the member \"" + member.key() + "\" is missing");
    }
  };
  check("", "the document", {"settings"});
  check("/medicines/1", "medicines[1]", {"endDate"});
  check("/medicines/1/interval", "medicines[1].interval", {});
  check("/settings", "settings", {});
}

TEST(HostileFiles, theFirstWrongMemberInTheOrderOfTheTablesIsNamed) {
  std::string text = sampleWith(kTexts[6], "1");           // appVersion
  text = replaced(text, "\"2025-03-01T12:34:56Z\"", "1");  // createdAt
  EXPECT_EQ(decodingError(text), kRefused + "createdAt: expected a text");
  text = replaced(text, "\"requireAuthentication\":true", "\"requireAuthentication\":1");
  EXPECT_EQ(decodingError(text), kRefused + "settings.requireAuthentication: expected true or false");
  text = replaced(text, "\"startDate\":\"1969-12-31T23:59:58Z\"", "\"startDate\":1");
  EXPECT_EQ(decodingError(text), kRefused + "medicines[1].startDate: expected a text");
  text = replaced(text, "\"isActive\":true", "\"isActive\":1");
  EXPECT_EQ(decodingError(text), kRefused + "medicines[0].isActive: expected true or false");
  text = replaced(text, "\"hour\":20", "\"hour\":\"20\"");
  EXPECT_EQ(decodingError(text), kRefused + "medicines[0].interval.dailyTimes[1].hour: expected a whole number");
}

TEST(HostileFiles, whatIsNoObjectIsNoBackup) {
  for (const char* text : {"[]", "null", "7", "\"backup\"", "true", "[{}]"}) {
    EXPECT_EQ(decodingError(text), kRefused + "the document: expected an object") << text;
  }
  EXPECT_EQ(decodingError(""), kRefused + "the file is empty");
  EXPECT_EQ(decodingError("<html>"), kRefused + "not valid JSON at byte 1");
  EXPECT_EQ(decodingError("PK\x03\x04"), kRefused + "not valid JSON at byte 1");
  EXPECT_EQ(decodingError(sampleText() + "{}"),
            kRefused + "not valid JSON at byte " + std::to_string(sampleText().size() + 1));
}

TEST(HostileFiles, aSampleCutOffAtAnyByteSaysWhere) {
  const std::string whole = sampleText();
  const size_t end = whole.rfind('}');
  for (size_t length = 1; length <= end; ++length) {
    const std::string error = decodingError(std::string_view(whole).substr(0, length));
    ASSERT_TRUE(error.starts_with(kRefused + "not valid JSON at byte ")) << length << ": " << error;
    // Inside a letter of several bytes or an escape the first wrong byte is the one after the last.
    ASSERT_TRUE(error.ends_with(std::to_string(length + 1) + ", where it ends")) << length << ": " << error;
  }
}

TEST(HostileFiles, aSampleWithAnyByteChangedIsReadOrRefused) {
  const std::string whole = sampleText();
  size_t refused = 0;
  for (size_t at = 0; at < whole.size(); ++at) {
    for (const int bit : {0, 1, 5, 7}) {
      std::string changed = whole;
      changed[at] = static_cast<char>(changed[at] ^ (1 << bit));
      const auto decoded = decodeBackup(changed);
      if (decoded) {
        ASSERT_TRUE(encodeBackup(*decoded)) << at;
      } else {
        ++refused;
        ASSERT_TRUE(decoded.error().description.starts_with(kRefused)) << at;
      }
    }
  }
  EXPECT_GT(refused, whole.size()) << "most changes are noticed";
}

TEST(HostileFiles, textThatIsNotUtf8IsRefusedByItsByte) {
  const std::string whole = sampleText();
  const size_t name = whole.find("Aspirin");
  for (const std::string bytes :
       {"\xFF", "\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\\uD800", "\\uDC00"}) {
    const std::string error = decodingError(replaced(whole, "Aspirin", bytes));
    ASSERT_TRUE(error.starts_with(kRefused + "not valid JSON at byte ")) << error;
    const size_t byte = std::stoul(error.substr(error.rfind(' ') + 1));
    EXPECT_GT(byte, name) << error;
    EXPECT_LE(byte, name + bytes.size() + 2) << error;
  }
  EXPECT_EQ(decodingError(std::string("\xFF\xFE{\0}\0", 6)), kRefused + "not valid JSON at byte 4") << "UTF-16";
}

TEST(HostileFiles, aByteOrderMarkIsNoHarm) { EXPECT_EQ(decodingError("\xEF\xBB\xBF" + sampleText()), "no error"); }

TEST(HostileFiles, whatWouldExhaustTheMachineIsRefused) {
  const auto repeated = [](std::string_view text, size_t times) {
    std::string out;
    for (size_t i = 0; i < times; ++i) out += text;
    return out;
  };
  EXPECT_EQ(decodingError(repeated("[", 10'000'000)), kRefused + "the document nests deeper than 64 levels");
  EXPECT_EQ(decodingError(repeated("{\"medicines\":", 1'000'000)),
            kRefused + "the document nests deeper than 64 levels");
  EXPECT_EQ(decodingError("{\"medicines\":[" + repeated("0,", 2'000'000) + "0]}"),
            kRefused + "the document holds more than 2,000,000 values");
  std::string members;
  for (int i = 0; i < 300; ++i) members += "\"m" + std::to_string(i) + "\":0,";
  EXPECT_EQ(decodingError("{" + members + "\"medicines\":[]}"),
            kRefused + "the document holds an object of more than 256 members");
  EXPECT_EQ(decodingError(sampleWith(kIntegers[0], "1e999")).substr(0, kRefused.size() + 14),
            kRefused + "not valid JSON");
}

}  // namespace
}  // namespace pillora
