// SPDX-License-Identifier: MIT
#include "support/Json.h"

#include <gtest/gtest.h>

#include <string>

namespace pillora {
namespace {

std::string repeated(std::string_view text, size_t times) {
  std::string out;
  out.reserve(text.size() * times);
  for (size_t i = 0; i < times; ++i) out += text;
  return out;
}

std::string errorOf(std::string_view text) {
  const auto document = parseJson(text);
  return document ? "no error" : document.error().description;
}

TEST(ParseJson, keepsTypesAndTheOrderOfMembers) {
  const std::string text =
      R"({"z":[],"a":{},"n":null,"yes":true,"no":false,"i":-12,"u":18446744073709551615,"f":1.5,"s":"A\nÄ💊"})";
  const auto document = parseJson(text);
  ASSERT_TRUE(document) << document.error().description;
  EXPECT_EQ(document->dump(), text);
}

TEST(ParseJson, readsNestedListsAndObjects) {
  const std::string text = R"([{"a":[1,[2,{"b":3}],4],"c":{"d":{}}},[],[[5]],"x"])";
  const auto document = parseJson(text);
  ASSERT_TRUE(document) << document.error().description;
  EXPECT_EQ(document->dump(), text);
}

TEST(ParseJson, readsBareValuesAndIgnoresBlanksAndAByteOrderMark) {
  EXPECT_EQ(*parseJson(" 7\n"), Json(7));
  EXPECT_EQ(*parseJson("\"a\""), Json("a"));
  EXPECT_EQ(*parseJson("\t[ 1 ,\r\n2 ] "), Json({1, 2}));
  EXPECT_EQ(*parseJson("\xEF\xBB\xBF{}"), Json::object());
}

TEST(ParseJson, ofMembersWithOneNameTheLastWins) {
  EXPECT_EQ(parseJson(R"({"a":1,"b":2,"a":3})")->dump(), R"({"a":3,"b":2})");
  EXPECT_EQ(parseJson(R"({"a":{"x":1},"a":{"y":2}})")->dump(), R"({"a":{"y":2}})");
  EXPECT_EQ(parseJson(R"({"a":[1,2],"\u0061":null})")->dump(), R"({"a":null})");
}

TEST(ParseJson, namesTheByteAtWhichTheTextIsNoJson) {
  const struct {
    std::string text;
    const char* error;
  } kCases[] = {
      {"", "not valid JSON at byte 1, where it ends"},
      {"   ", "not valid JSON at byte 4, where it ends"},
      {"{", "not valid JSON at byte 2, where it ends"},
      {"[1,]", "not valid JSON at byte 4"},
      {"{\"a\":1,}", "not valid JSON at byte 8"},
      {"{'a':1}", "not valid JSON at byte 2"},
      {"[1] 2", "not valid JSON at byte 5"},
      {"// c\n1", "not valid JSON at byte 1"},
      {"[NaN]", "not valid JSON at byte 2"},
      {"[01]", "not valid JSON at byte 3"},
      {"[+1]", "not valid JSON at byte 2"},
      {"[1e999]", "not valid JSON at byte 6"},
      {"[-1e999]", "not valid JSON at byte 7"},
      {"\"a\nb\"", "not valid JSON at byte 3"},
      {"\"a", "not valid JSON at byte 3, where it ends"},
      {"\"\\q\"", "not valid JSON at byte 3"},
  };
  for (const auto& each : kCases) EXPECT_EQ(errorOf(each.text), each.error) << each.text;
}

TEST(ParseJson, refusesTextThatIsNotUtf8) {
  for (const char* text : {"\"\xFF\"", "\"\xC3\"", "\"\xC0\xAF\"", "\"\xED\xA0\x80\"", "\"\xF5\x80\x80\x80\"",
                           "{\"\x80\":1}", "\xFF\xFE[]", "\"\\uD800\"", "\"\\uDC00\\uD800\""}) {
    EXPECT_TRUE(errorOf(text).starts_with("not valid JSON at byte ")) << text << ": " << errorOf(text);
  }
}

TEST(ParseJson, looksBehindANul) {
  using namespace std::string_literals;
  EXPECT_EQ(errorOf("{}\0"s), "not valid JSON at byte 3");
  EXPECT_EQ(errorOf("{}\0 anything"s), "not valid JSON at byte 3");
  EXPECT_EQ(errorOf("\"a\0b\""s), "not valid JSON at byte 3");
}

TEST(ParseJson, nests64LevelsAndNoMore) {
  EXPECT_TRUE(parseJson(repeated("[", 64) + repeated("]", 64)));
  EXPECT_TRUE(parseJson(repeated("{\"a\":", 64) + "1" + repeated("}", 64)));
  EXPECT_EQ(errorOf(repeated("[", 65) + repeated("]", 65)), "the document nests deeper than 64 levels");
  EXPECT_EQ(errorOf(repeated("[{\"a\":", 33)), "the document nests deeper than 64 levels");
}

TEST(ParseJson, stopsReadingWhereTheDocumentGetsTooDeep) {
  // What follows the 65th bracket is not even looked at: neither the other million nor that it is no JSON.
  EXPECT_EQ(errorOf(repeated("[", 1'000'000)), "the document nests deeper than 64 levels");
  EXPECT_EQ(errorOf(repeated("[", 65) + "\xFF"), "the document nests deeper than 64 levels");
}

TEST(ParseJson, boundsTheMembersOfAnObject) {
  const auto object = [](int members) {
    std::string text = "{";
    for (int i = 0; i < members; ++i) text += (i == 0 ? "\"m" : ",\"m") + std::to_string(i) + "\":0";
    return text + "}";
  };
  EXPECT_TRUE(parseJson(object(256)));
  EXPECT_EQ(errorOf(object(257)), "the document holds an object of more than 256 members");
}

TEST(ParseJson, boundsTheValuesOfADocument) {
  EXPECT_TRUE(parseJson("[" + repeated("0,", 1'999'998) + "0]"));
  EXPECT_EQ(errorOf("[" + repeated("0,", 1'999'999) + "0]"), "the document holds more than 2,000,000 values");
}

TEST(JsonText, replacesWhatIsNoUtf8) {
  EXPECT_EQ(jsonText(Json{{"name",
                           "A\xFF"
                           "B"},
                          {"n", {1}}}),
            "{\"name\":\"A\uFFFDB\",\"n\":[1]}");
}

TEST(QuotedExcerpt, isOneLineOfFortyBytesAndCutsNoLetter) {
  EXPECT_EQ(quotedExcerpt(""), "\"\"");
  EXPECT_EQ(quotedExcerpt("a \"b\"\n\x1B[2J"), R"("a \"b\"\n\u001b[2J")");
  EXPECT_EQ(quotedExcerpt(std::string(40, 'x')), '"' + std::string(40, 'x') + '"');
  EXPECT_EQ(quotedExcerpt(std::string(41, 'x')), '"' + std::string(40, 'x') + "…\"");
  EXPECT_EQ(quotedExcerpt(std::string(39, 'x') + "💊"), '"' + std::string(39, 'x') + "…\"");
  EXPECT_EQ(quotedExcerpt(std::string(1000, '\x80')), "\"…\"");
}

TEST(JsonText, indentsWhereAsked) { EXPECT_EQ(jsonText(Json{{"a", {1}}}, 2), "{\n  \"a\": [\n    1\n  ]\n}"); }

TEST(JsonPlace, integersAreWholeNumberLiteralsOf64SignedBits) {
  const struct {
    const char* text;
    std::optional<int64_t> value;
  } kCases[] = {
      {"0", 0},
      {"-0", 0},
      {"10", 10},
      {"-7", -7},
      {"9223372036854775807", INT64_MAX},
      {"-9223372036854775808", INT64_MIN},
      {"9223372036854775808", std::nullopt},
      {"-9223372036854775809", std::nullopt},
      {"18446744073709551615", std::nullopt},
      {"18446744073709551616", std::nullopt},
      {"10.0", std::nullopt},
      {"10.7", std::nullopt},
      {"1e1", std::nullopt},
      {"\"10\"", std::nullopt},
      {"true", std::nullopt},
      {"null", std::nullopt},
      {"[1]", std::nullopt},
  };
  for (const auto& each : kCases) {
    const auto document = parseJson(each.text);
    ASSERT_TRUE(document) << each.text;
    const auto value = JsonPlace(*document).integer();
    ASSERT_EQ(static_cast<bool>(value), each.value.has_value()) << each.text;
    if (value) {
      EXPECT_EQ(*value, *each.value) << each.text;
    } else {
      EXPECT_EQ(value.error().description, "the document: expected a whole number") << each.text;
    }
  }
}

TEST(JsonPlace, booleansAreOnlyTrueAndFalse) {
  EXPECT_EQ(*JsonPlace(Json(true)).boolean(), true);
  EXPECT_EQ(*JsonPlace(Json(false)).boolean(), false);
  for (const Json& other : {Json(0), Json(1), Json("true"), Json(nullptr), Json::array(), Json::object()}) {
    EXPECT_FALSE(JsonPlace(other).boolean()) << other.dump();
  }
}

TEST(JsonPlace, textsHoldNoNul) {
  EXPECT_EQ(*JsonPlace(*parseJson(R"("Pill \u00e9")")).text(), "Pill é");
  const auto document = parseJson(R"("a\u0000b")");
  ASSERT_TRUE(document);
  const auto text = JsonPlace(*document).text();
  ASSERT_FALSE(text);
  EXPECT_EQ(text.error().description, "the document: a text must not contain a NUL character");
  EXPECT_FALSE(JsonPlace(Json(7)).text());
}

TEST(JsonPlace, errorsTellThePlace) {
  const Json document = *parseJson(R"({"medicines":[{"name":"A"},{"name":7,"interval":{"type":true}}]})");
  const auto medicines = JsonPlace(document).member("medicines")->elements();
  ASSERT_TRUE(medicines);
  ASSERT_EQ(medicines->size(), 2U);
  const JsonPlace& second = (*medicines)[1];
  EXPECT_EQ(second.member("name")->text().error().description, "medicines[1].name: expected a text");
  EXPECT_EQ(second.member("interval")->member("type")->text().error().description,
            "medicines[1].interval.type: expected a text");
  EXPECT_EQ(second.member("unit").error().description, "medicines[1]: the member \"unit\" is missing");
  EXPECT_EQ(second.member("name")->member("x").error().description, "medicines[1].name: expected an object");
  EXPECT_EQ(second.elements().error().description, "medicines[1]: expected a list");
}

TEST(JsonPlace, anOptionalMemberMayBeMissingOrNull) {
  const Json document = *parseJson(R"({"hour":null,"minute":5})");
  const JsonPlace place(document);
  EXPECT_FALSE(place.optionalMember("hour")->has_value());
  EXPECT_FALSE(place.optionalMember("second")->has_value());
  const auto minute = place.optionalMember("minute");
  ASSERT_TRUE(minute->has_value());
  EXPECT_EQ((*minute)->path(), "minute");
  EXPECT_EQ(*(*minute)->integer(), 5);
  EXPECT_FALSE(JsonPlace(Json::array()).optionalMember("hour"));
}

}  // namespace
}  // namespace pillora
