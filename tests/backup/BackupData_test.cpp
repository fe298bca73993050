// SPDX-License-Identifier: MIT
#include "backup/BackupData.h"

#include <gtest/gtest.h>

#include <rapidcheck/gtest.h>

#include "backup/SampleBackup.h"
#include "doubles/RandomIntervals.h"

namespace pillora {
namespace {

TEST(EncodeBackup, writesTheMembersInTheirOrderOneALine) {
  BackupData backup = sampleBackup();
  backup.medicines.resize(1);
  EXPECT_EQ(*encodeBackup(backup), R"({
  "medicines": [
    {
      "id": "6F9619FF-8B86-D011-B42D-00CF4FC964FF",
      "name": "Aspirin",
      "dosage": "1",
      "unit": "tablet",
      "instructions": "",
      "color": "blue",
      "icon": "pills",
      "interval": {
        "type": "Daily",
        "hourlyInterval": 4,
        "dailyTimes": [
          {
            "hour": 8,
            "minute": 0
          },
          {
            "hour": 20,
            "minute": 30
          }
        ],
        "weeklyDays": [
          2,
          3,
          4,
          5,
          6
        ],
        "weeklyTime": {
          "hour": 9,
          "minute": 0
        },
        "monthlyDays": [
          1
        ],
        "monthlyTime": {
          "hour": 9,
          "minute": 0
        },
        "customIntervalMinutes": 480
      },
      "isActive": true,
      "allowSnooze": true,
      "snoozeDurationMinutes": 10,
      "maxSnoozeCount": 3,
      "isRepeating": true,
      "startDate": "2025-01-10T08:00:00Z"
    }
  ],
  "settings": {
    "weekStartDay": 7,
    "notificationSound": "urgent",
    "enableCriticalAlerts": true,
    "reminderAdvanceMinutes": 15,
    "autoMarkMissedAfterMinutes": 90,
    "defaultSnoozeDurationMinutes": 20,
    "defaultMaxSnoozeCount": 4,
    "backupFrequency": "monthly",
    "enableiCloudSync": false,
    "enableLocalBackup": false,
    "use24HourTime": true,
    "showMedicineIcons": false,
    "enableHaptics": false,
    "requireAuthentication": true
  },
  "createdAt": "2025-03-01T12:34:56Z",
  "appVersion": "1.0.0"
}
)");
}

TEST(EncodeBackup, withoutMedicinesTheListIsEmptyAndWithoutSettingsThereIsNoKey) {
  const BackupData backup{{}, std::nullopt, at("2025-03-01T12:34:56Z"), "1.0"};
  const auto text = encodeBackup(backup);
  ASSERT_TRUE(text);
  EXPECT_EQ(*text,
            "{\n  \"medicines\": [],\n  \"createdAt\": \"2025-03-01T12:34:56Z\",\n  \"appVersion\": \"1.0\"\n}\n");
  const auto back = decodeBackup(*text);
  ASSERT_TRUE(back);
  EXPECT_EQ(*back, backup);
  EXPECT_EQ(back->settings, std::nullopt);
}

TEST(EncodeBackup, anEndDateIsWrittenOnlyWhereThereIsOne) {
  const std::string text = sampleText();
  const size_t endDate = text.find("\"endDate\": \"2026-02-28T22:00:00Z\"");
  ASSERT_NE(endDate, std::string::npos);
  EXPECT_GT(endDate, text.find("Tropfen")) << "the second medicine's";
  EXPECT_EQ(text.find("endDate", endDate + 5), std::string::npos);
  EXPECT_EQ(text.find("null"), std::string::npos);
  EXPECT_EQ(decodeBackup(text)->medicines[0].endDate, std::nullopt);
}

TEST(EncodeBackup, setsAreAscendingAndIdentifiersUpperCase) {
  const std::string text = sampleText();
  EXPECT_LT(text.find("\"weeklyDays\": [\n          1,\n          7\n        ]"), text.size());
  EXPECT_LT(text.find("\"00000000-0000-4000-8000-00000000000A\""), text.size());
}

TEST(EncodeBackup, datesAreFlooredToTheSecondAlsoBefore1970) {
  const struct {
    int64_t microseconds;
    const char* text;
  } kCases[] = {
      {999'999, "1970-01-01T00:00:00Z"},
      {-500'000, "1969-12-31T23:59:59Z"},
      {-1, "1969-12-31T23:59:59Z"},
      {-1'000'000, "1969-12-31T23:59:59Z"},
      {1'736'510'400'250'000, "2025-01-10T12:00:00Z"},
      {253'402'300'799'999'999, "9999-12-31T23:59:59Z"},
      {-62'167'219'200'000'000, "0000-01-01T00:00:00Z"},
  };
  for (const auto& [microseconds, text] : kCases) {
    BackupData backup = sampleBackup();
    backup.createdAt = Instant(Instant::Duration(microseconds));
    const auto encoded = encodeBackup(backup);
    ASSERT_TRUE(encoded) << text;
    EXPECT_LT(encoded->find(std::string("\"createdAt\": \"") + text + '"'), encoded->size()) << text;
    EXPECT_EQ(decodeBackup(*encoded)->createdAt, at(text));
  }
}

TEST(EncodeBackup, whatCouldNotBeReadBackIsNotWritten) {
  for (const Instant date : {at("9999-12-31T23:59:59Z") + std::chrono::seconds(1), Instant::distantFuture(),
                             at("0000-01-01T00:00:00Z") - Instant::Duration(1), Instant::distantPast()}) {
    BackupData backup = sampleBackup();
    backup.medicines[1].endDate = date;
    const auto encoded = encodeBackup(backup);
    ASSERT_FALSE(encoded);
    EXPECT_TRUE(encoded.error().description.starts_with("This backup could not be read back: medicines[1].endDate: "))
        << encoded.error().description;
  }
}

TEST(EncodeBackup, whatIsNoTextIsReplaced) {
  BackupData backup = sampleBackup();
  backup.medicines[0].name = std::string("A\0B\xFF", 4);
  const auto encoded = encodeBackup(backup);
  ASSERT_TRUE(encoded);
  EXPECT_EQ(decodeBackup(*encoded)->medicines[0].name, "A\uFFFDB\uFFFD");
}

TEST(EncodeBackup, aBackupThatNoReaderWouldTakeIsAnError) {
  BackupData backup = sampleBackup();
  backup.medicines[0].instructions = std::string(size_t{65} * 1024 * 1024, 'x');
  const auto encoded = encodeBackup(backup);
  ASSERT_FALSE(encoded);
  EXPECT_EQ(encoded.error().description, "This backup would be too large to be read back.");
}

TEST(DecodeBackup, readsWhatWasWritten) {
  const auto decoded = decodeBackup(sampleText());
  ASSERT_TRUE(decoded) << decoded.error().description;
  EXPECT_EQ(*decoded, sampleBackup());
}

TEST(DecodeBackup, membersMayComeInAnyOrderWithAnyBlanksAndOthersBetween) {
  auto document = parseJson(sampleText());
  ASSERT_TRUE(document);
  Json backwards = Json::object({{"future", {{"a", {1, 2}}}}});
  for (auto member = document->rbegin(); member != document->rend(); ++member) backwards[member.key()] = *member;
  backwards["medicines"][0]["extra"] = 1.5;
  backwards["medicines"][0]["interval"]["extra"] = nullptr;
  backwards["medicines"][0]["interval"]["dailyTimes"][0]["second"] = "any";
  backwards["settings"]["extra"] = true;
  for (const int indent : {-1, 0, 7}) {
    const auto decoded = decodeBackup("\n\t " + jsonText(backwards, indent) + "\r\n ");
    ASSERT_TRUE(decoded) << decoded.error().description;
    EXPECT_EQ(*decoded, sampleBackup());
  }
}

TEST(DecodeBackup, ofMembersWithOneNameTheLastWins) {
  const auto decoded = decodeBackup(replaced(sampleText(), R"("name": "Aspirin",)", R"("name": 7, "name": "Second",)"));
  ASSERT_TRUE(decoded);
  EXPECT_EQ(decoded->medicines[0].name, "Second");
  EXPECT_EQ(decodingError(replaced(sampleText(), R"("name": "Aspirin",)", R"("name": "Aspirin", "name": 7,)")),
            "This backup cannot be read: medicines[0].name: expected a text");
}

TEST(DecodeBackup, nullIsAsGoodAsAbsentForSettingsAndEndDates) {
  std::string text = replaced(sampleText(), R"("endDate": "2026-02-28T22:00:00Z")", R"("endDate": null)");
  EXPECT_EQ(decodeBackup(text)->medicines[1].endDate, std::nullopt);
  auto document = parseJson(text);
  (*document)["settings"] = nullptr;
  const auto decoded = decodeBackup(jsonText(*document));
  ASSERT_TRUE(decoded);
  EXPECT_EQ(decoded->settings, std::nullopt);
}

TEST(DecodeBackup, timesOfDayMayLackTheirPartsOrHaveThemNull) {
  const std::string time = R"("hour": 20,
            "minute": 30)";
  for (const char* instead : {"", R"("hour": null)", R"("second": 5)"}) {
    const auto decoded = decodeBackup(replaced(sampleText(), time, instead));
    ASSERT_TRUE(decoded) << decoded.error().description;
    EXPECT_EQ(decoded->medicines[0].interval.dailyTimes, (std::vector<TimeOfDay>{{8, 0}, {}}));
  }
}

TEST(DecodeBackup, valuesAreTakenAsTheyAre) {
  std::string text = replaced(sampleText(), R"("hour": 20)", R"("hour": 25)");
  text = replaced(text, R"("color": "blue")", R"("color": "plaid")");
  text = replaced(text, R"("snoozeDurationMinutes": 10)", R"("snoozeDurationMinutes": -9223372036854775808)");
  text = replaced(text, R"("maxSnoozeCount": 3)", R"("maxSnoozeCount": 9223372036854775807)");
  text = replaced(text, R"("hourlyInterval": 4)", R"("hourlyInterval": 0)");
  const auto decoded = decodeBackup(text);
  ASSERT_TRUE(decoded) << decoded.error().description;
  const MedicineBackup& medicine = decoded->medicines[0];
  EXPECT_EQ(medicine.interval.dailyTimes[1].hour, 25);
  EXPECT_EQ(medicine.color, "plaid");
  EXPECT_EQ(medicine.snoozeDurationMinutes, INT64_MIN);
  EXPECT_EQ(medicine.maxSnoozeCount, INT64_MAX);
  EXPECT_EQ(medicine.interval.hourlyInterval, 0);
}

TEST(DecodeBackup, anyVersionIsAccepted) {
  for (const std::string version : {"", "99.0", "not a version", "💊"}) {
    const auto decoded = decodeBackup(replaced(sampleText(), "\"1.0.0\"", '"' + version + '"'));
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->appVersion, version);
  }
}

TEST(DecodeBackup, theWeekStartIsANumberOrThatNumberAsAText) {
  const struct {
    const char* written;
    std::optional<WeekStartDay> day;
  } kCases[] = {
      {"1", WeekStartDay::sunday},
      {"2", WeekStartDay::monday},
      {"7", WeekStartDay::saturday},
      {"\"1\"", WeekStartDay::sunday},
      {"\"2\"", WeekStartDay::monday},
      {"\"7\"", WeekStartDay::saturday},
      {"0", {}},
      {"3", {}},
      {"8", {}},
      {"-1", {}},
      {"2.5", {}},
      {"2.0", {}},
      {"\"3\"", {}},
      {"\"\"", {}},
      {"\" 2\"", {}},
      {"\"02\"", {}},
      {"\"2.0\"", {}},
      {"\"monday\"", {}},
      {"true", {}},
      {"null", {}},
      {"[2]", {}},
      {"{}", {}},
      {"4294967297", {}},
  };
  for (const auto& [written, day] : kCases) {
    const std::string text = replaced(sampleText(), "\"weekStartDay\": 7", std::string("\"weekStartDay\": ") + written);
    const auto decoded = decodeBackup(text);
    ASSERT_EQ(static_cast<bool>(decoded), day.has_value()) << written;
    if (day) {
      EXPECT_EQ(decoded->settings->weekStartDay, *day) << written;
    } else {
      EXPECT_EQ(decodingError(text),
                "This backup cannot be read: settings.weekStartDay: expected 1 (Sunday), 2 (Monday) or 7 (Saturday)");
    }
  }
}

TEST(DecodeBackup, enumerationsAreTheirRawValues) {
  for (const NotificationSound sound : kAllNotificationSounds) {
    const auto text = replaced(sampleText(), "\"urgent\"", '"' + std::string(rawValue(sound)) + '"');
    EXPECT_EQ(decodeBackup(text)->settings->notificationSound, sound);
  }
  for (const BackupFrequency frequency : kAllBackupFrequencies) {
    const auto text = replaced(sampleText(), "\"monthly\"", '"' + std::string(rawValue(frequency)) + '"');
    EXPECT_EQ(decodeBackup(text)->settings->backupFrequency, frequency);
  }
  for (const ReminderIntervalType type : kAllReminderIntervalTypes) {
    const auto text = replaced(sampleText(), "\"Daily\"", '"' + std::string(rawValue(type)) + '"');
    EXPECT_EQ(decodeBackup(text)->medicines[0].interval.type, type);
  }
}

TEST(DecodeBackup, identifiersAreReadInEitherCase) {
  const auto decoded = decodeBackup(
      replaced(sampleText(), "6F9619FF-8B86-D011-B42D-00CF4FC964FF", "6f9619ff-8b86-d011-B42D-00cf4fc964ff"));
  ASSERT_TRUE(decoded);
  EXPECT_EQ(decoded->medicines[0].id.text(), "6F9619FF-8B86-D011-B42D-00CF4FC964FF");
}

rc::Gen<std::string> anyText() {
  return rc::gen::element<std::string>("", "Aspirin", "Ä💊", "\"\\/\b\f\n\r\t", "\x01\x1F\x7F", "\u202E", "{\"a\":1}",
                                       std::string(300, 'x'));
}

/// Whole seconds within the years that a file can name.
rc::Gen<Instant> anyDate() {
  return rc::gen::map(rc::gen::inRange<int64_t>(-62'167'219'200, 253'402'300'800),
                      [](int64_t seconds) { return Instant::fromSeconds(seconds); });
}

rc::Gen<MedicineBackup> anyMedicine() {
  return rc::gen::exec([] {
    MedicineBackup medicine;
    for (uint8_t& byte : medicine.id.bytes) byte = *rc::gen::arbitrary<uint8_t>();
    for (auto text : {&MedicineBackup::name, &MedicineBackup::dosage, &MedicineBackup::unit,
                      &MedicineBackup::instructions, &MedicineBackup::color, &MedicineBackup::icon}) {
      medicine.*text = *anyText();
    }
    medicine.interval = *anyInterval();
    medicine.isActive = *rc::gen::arbitrary<bool>();
    medicine.allowSnooze = *rc::gen::arbitrary<bool>();
    medicine.snoozeDurationMinutes = *rc::gen::arbitrary<int64_t>();
    medicine.maxSnoozeCount = *rc::gen::arbitrary<int64_t>();
    medicine.isRepeating = *rc::gen::arbitrary<bool>();
    medicine.startDate = *anyDate();
    if (*rc::gen::arbitrary<bool>()) medicine.endDate = *anyDate();
    return medicine;
  });
}

RC_GTEST_PROP(BackupData, readsBackAsWritten, ()) {
  BackupData backup = sampleBackup();
  backup.medicines = *rc::gen::container<std::vector<MedicineBackup>>(anyMedicine());
  if (*rc::gen::arbitrary<bool>()) backup.settings = std::nullopt;
  backup.createdAt = *anyDate();
  backup.appVersion = *anyText();
  const auto text = encodeBackup(backup);
  RC_ASSERT(static_cast<bool>(text));
  const auto decoded = decodeBackup(*text);
  RC_ASSERT(static_cast<bool>(decoded));
  RC_ASSERT(*decoded == backup);
}

}  // namespace
}  // namespace pillora
