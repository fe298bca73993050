// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/Fields.h"
#include "support/Instant.h"
#include "support/JsonForward.h"
#include "support/Result.h"
#include "support/UUID.h"

namespace pillora {

/// Parses one JSON text (RFC 8259). Of members with the same name the last one wins. Malformed text, invalid UTF-8, a
/// number no double can hold and anything after the value are errors that name the byte, and where the text ends too
/// early say so. So that no file can hang the
/// program or exhaust it, nesting deeper than 64, more than 256 members in one object and more than 2,000,000 values
/// are errors too. Nothing throws.
Result<Json> parseJson(std::string_view text);

/// The JSON text of a value: on one line, or with members on lines of their own, `indent` blanks a level. Texts that
/// are not UTF-8 get U+FFFD in place of what is wrong; Json::dump would throw.
std::string jsonText(const Json& value, int indent = -1);

/// A text as an error message quotes it: in quotation marks, escaped as in JSON, cut after some forty bytes.
std::string quotedExcerpt(std::string_view text);

/// A value inside a parsed document together with its place, so that a reader's error can say where it stands
/// ("medicines[3].interval.type"). Readers are strict about types: an integer is an integer literal that fits 64
/// signed bits (not 10.0, 1e1, "10" or true), a boolean only true or false, a text has no NUL. It refers into the
/// document, which must outlive it.
class JsonPlace {
 public:
  explicit JsonPlace(const Json& document) : value_(&document) {}

  const std::string& path() const { return path_; }

  /// The required member `key` of this object; an error when this is no object or the member is absent.
  Result<JsonPlace> member(std::string_view key) const;
  /// The member if this object has it and it is not null. An error only when this is no object.
  Result<std::optional<JsonPlace>> optionalMember(std::string_view key) const;
  /// The elements of this array.
  Result<std::vector<JsonPlace>> elements() const;

  Result<int64_t> integer() const;
  Result<bool> boolean() const;
  Result<std::string> text() const;

  /// "<path>: <what>" as an error; the root's path reads "the document".
  Error error(std::string_view what) const;

 private:
  JsonPlace(const Json& value, std::string path) : value_(&value), path_(std::move(path)) {}

  const Json* value_;
  std::string path_;
};

// How content and records become JSON: members in the order and under the names of fields(), absent values as null,
// instants as ISO 8601 in UTC, identifiers as upper-case text.

inline Json toJson(bool value) { return value; }
inline Json toJson(double value) { return value; }
inline Json toJson(const std::string& value) { return value; }
inline Json toJson(Instant value) { return iso8601(value); }
inline Json toJson(const UUID& value) { return value.text(); }

template <std::signed_integral T>
Json toJson(T value) {
  return static_cast<int64_t>(value);
}

template <Described T>
Json toJson(const T& value);

template <typename T>
Json toJson(const std::optional<T>& value) {
  return value ? toJson(*value) : Json(nullptr);
}

template <typename T>
Json toJson(const std::vector<T>& values) {
  Json array = Json::array();
  for (const T& value : values) array.push_back(toJson(value));
  return array;
}

template <Described T>
Json toJson(const T& value) {
  Json object = Json::object();
  forEachField<T>([&](std::string_view name, auto member) { object[std::string(name)] = toJson(value.*member); });
  return object;
}

}  // namespace pillora
