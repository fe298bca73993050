// SPDX-License-Identifier: MIT
#include "support/Json.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace pillora {

namespace {

constexpr size_t kDeepestNesting = 64;
constexpr size_t kMostMembers = 256;
constexpr size_t kMostValues = 2'000'000;

/// Builds a document out of the parser's events. The library's own builder neither stops early nor bounds anything,
/// and members of an ordered object are found one by one: an object of a million would take hours.
class Builder {
 public:
  explicit Builder(size_t length) : length_(length) {}

  Json document;
  Error error;

  bool null() { return add(nullptr); }
  bool boolean(bool value) { return add(value); }
  bool number_integer(Json::number_integer_t value) { return add(value); }
  bool number_unsigned(Json::number_unsigned_t value) { return add(value); }
  bool number_float(Json::number_float_t value, const std::string&) { return add(value); }
  bool string(std::string& value) { return add(std::move(value)); }
  bool binary(Json::binary_t& value) { return add(std::move(value)); }
  bool start_object(size_t) { return open(Json::object()); }
  bool start_array(size_t) { return open(Json::array()); }
  bool end_object() { return close(); }
  bool end_array() { return close(); }

  bool key(std::string& name) {
    auto& members = open_.back()->get_ref<Json::object_t&>();
    if (members.size() == kMostMembers) return refuse("the document holds an object of more than 256 members");
    place_ = &members[name];
    return true;
  }

  bool parse_error(size_t position, const std::string&, const Json::exception&) {
    return refuse("not valid JSON at byte " + std::to_string(position) + (position > length_ ? ", where it ends" : ""));
  }

 private:
  bool refuse(std::string why) {
    error.description = std::move(why);
    return false;
  }

  bool add(Json value) {
    if (++count_ > kMostValues) return refuse("the document holds more than 2,000,000 values");
    if (open_.empty()) {
      place_ = &document;
    } else if (open_.back()->is_array()) {
      place_ = &open_.back()->emplace_back();
    }
    *place_ = std::move(value);
    return true;
  }

  bool open(Json container) {
    if (open_.size() == kDeepestNesting) return refuse("the document nests deeper than 64 levels");
    if (!add(std::move(container))) return false;
    open_.push_back(place_);
    return true;
  }

  bool close() {
    open_.pop_back();
    return true;
  }

  size_t length_;            ///< of the text
  std::vector<Json*> open_;  ///< the containers that are not finished, outermost first
  Json* place_ = nullptr;    ///< where the latest value or the value of the latest key belongs
  size_t count_ = 0;
};

}  // namespace

Result<Json> parseJson(std::string_view text) {
  // The parser takes a NUL for the end and would not look at what follows.
  if (const size_t nul = text.find('\0'); nul != std::string_view::npos) {
    return Error{"not valid JSON at byte " + std::to_string(nul + 1)};
  }
  Builder builder(text.size());
  if (!Json::sax_parse(text.begin(), text.end(), &builder)) return builder.error;
  return std::move(builder.document);
}

std::string jsonText(const Json& value, int indent) {
  return value.dump(indent, ' ', false, Json::error_handler_t::replace);
}

std::string quotedExcerpt(std::string_view text) {
  constexpr size_t kMostBytes = 40;
  size_t length = std::min(text.size(), kMostBytes);
  if (length == text.size()) return jsonText(std::string(text));
  while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) --length;  // between two letters
  return jsonText(std::string(text.substr(0, length)) + "…");
}

Error JsonPlace::error(std::string_view what) const {
  return Error{(path_.empty() ? std::string("the document") : path_) + ": " + std::string(what)};
}

Result<JsonPlace> JsonPlace::member(std::string_view key) const {
  if (!value_->is_object()) return error("expected an object");
  const auto found = value_->find(std::string(key));
  if (found == value_->end()) return error("the member \"" + std::string(key) + "\" is missing");
  return JsonPlace(*found, path_.empty() ? std::string(key) : path_ + '.' + std::string(key));
}

Result<std::optional<JsonPlace>> JsonPlace::optionalMember(std::string_view key) const {
  if (!value_->is_object()) return error("expected an object");
  const auto found = value_->find(std::string(key));
  if (found == value_->end() || found->is_null()) return std::optional<JsonPlace>();
  const auto place = member(key);
  return std::optional<JsonPlace>(*place);
}

Result<std::vector<JsonPlace>> JsonPlace::elements() const {
  if (!value_->is_array()) return error("expected a list");
  std::vector<JsonPlace> places;
  places.reserve(value_->size());
  for (size_t i = 0; i < value_->size(); ++i) {
    places.push_back(JsonPlace((*value_)[i], path_ + '[' + std::to_string(i) + ']'));
  }
  return places;
}

Result<int64_t> JsonPlace::integer() const {
  const bool fits = value_->is_number_integer() &&
                    (!value_->is_number_unsigned() ||
                     value_->get<uint64_t>() <= static_cast<uint64_t>(std::numeric_limits<int64_t>::max()));
  if (!fits) return error("expected a whole number");
  return value_->get<int64_t>();
}

Result<bool> JsonPlace::boolean() const {
  if (!value_->is_boolean()) return error("expected true or false");
  return value_->get<bool>();
}

Result<std::string> JsonPlace::text() const {
  if (!value_->is_string()) return error("expected a text");
  const auto& text = value_->get_ref<const std::string&>();
  if (text.find('\0') != std::string::npos) return error("a text must not contain a NUL character");
  return text;
}

}  // namespace pillora
