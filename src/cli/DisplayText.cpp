// SPDX-License-Identifier: MIT
#include "cli/DisplayText.h"

#include <algorithm>
#include <clocale>
#include <cwchar>

namespace pillora {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

constexpr char32_t kMalformed = 0x110000;  // beyond the last code point

/// The code point that begins at `at`, which moves behind it; kMalformed for a byte that begins none.
char32_t decoded(std::string_view text, size_t& at) {
  const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char first = byte(at++);
  if (first < 0x80) return first;
  const size_t more = first >= 0xF0 && first < 0xF5 ? 3 : first >= 0xE0 && first < 0xF0 ? 2 : first >= 0xC2 ? 1 : 0;
  if (more == 0 || first >= 0xF5 || at + more > text.size()) return kMalformed;
  char32_t point = first & (0x3Fu >> more);
  for (size_t i = 0; i < more; ++i) {
    if ((byte(at + i) & 0xC0) != 0x80) return kMalformed;
    point = point << 6 | (byte(at + i) & 0x3Fu);
  }
  static constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
  if (point < kSmallest[more] || point > 0x10FFFF || (point >= 0xD800 && point < 0xE000)) return kMalformed;
  at += more;
  return point;
}

char32_t nextCodePoint(std::string_view text, size_t& at) {
  const char32_t point = decoded(text, at);
  return point == kMalformed ? kReplacement : point;
}

bool isLineBreak(char32_t point) {
  return (point >= '\t' && point <= '\r') || point == 0x85 || point == 0x2028 || point == 0x2029;
}

/// Marks without an end of their own, such as those in Arabic dates (U+200F), reach no further than the next letter.
bool turnsDirection(char32_t point) {
  return (point >= 0x202A && point <= 0x202E) || (point >= 0x2066 && point <= 0x2069);
}

bool isControl(char32_t point) { return point < 0x20 || (point >= 0x7F && point < 0xA0); }

/// The C library's table of widths, which is the one that terminals go by. It needs a UTF-8 locale, whatever the
/// program's own.
size_t widthOf(char32_t point) {
  if (point >= 0x20 && point < 0x7F) return 1;
  static const locale_t kUtf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  if (kUtf8 == nullptr) return 1;
  const locale_t former = uselocale(kUtf8);
  const int width = wcwidth(static_cast<wchar_t>(point));
  uselocale(former);
  return width < 0 ? 1 : static_cast<size_t>(width);
}

/// Chinese and Japanese lines may end between any two letters, but punctuation stays with what it closes or opens.
bool mayBreakBetween(char32_t before, char32_t after) {
  constexpr std::u32string_view kOpening = U"（《「『【“‘(", kClosing = U"，。、；：？！）》」』】”’…,.;:?!)%";
  return (widthOf(before) == 2 || widthOf(after) == 2) && kOpening.find(before) == kOpening.npos &&
         kClosing.find(after) == kClosing.npos;
}

/// The piece of `text` from `at` to where a line may end next, a blank or the end of the text.
std::string_view pieceAt(std::string_view text, size_t at) {
  char32_t before = ' ';
  for (size_t next = at; next < text.size();) {
    const size_t here = next;
    const char32_t point = nextCodePoint(text, next);
    if (point == ' ' || (here > at && mayBreakBetween(before, point))) return text.substr(at, here - at);
    before = point;
  }
  return text.substr(at);
}

}  // namespace

bool isUtf8(std::string_view text) {
  for (size_t at = 0; at < text.size();) {
    if (decoded(text, at) == kMalformed) return false;
  }
  return true;
}

std::string harmless(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t at = 0; at < text.size();) {
    const size_t begin = at;
    const char32_t point = nextCodePoint(text, at);
    if (isLineBreak(point)) {
      out += ' ';
    } else if (point == kReplacement || isControl(point) || turnsDirection(point)) {
      out += "\xEF\xBF\xBD";
    } else {
      out.append(text, begin, at - begin);
    }
  }
  return out;
}

size_t displayWidth(std::string_view text) {
  size_t width = 0;
  for (size_t at = 0; at < text.size();) width += widthOf(nextCodePoint(text, at));
  return width;
}

std::string cutToWidth(std::string_view text, size_t columns) {
  size_t width = 0, fitting = 0;  // `fitting`: the bytes that leave a column for the ellipsis
  for (size_t at = 0; at < text.size();) {
    width += widthOf(nextCodePoint(text, at));
    if (width > columns) return columns == 0 ? std::string() : std::string(text.substr(0, fitting)) + "…";
    if (width < columns) fitting = at;
  }
  return std::string(text);
}

std::vector<std::string> wrapped(std::string_view text, size_t columns) {
  std::vector<std::string> lines(1);
  std::string_view between;  // what parts the next piece from the one before
  for (size_t at = 0; at < text.size();) {
    const std::string_view whole = pieceAt(text, at);
    const std::string piece = cutToWidth(whole, columns);
    if (lines.back().empty()) {
      lines.back() = piece;
    } else if (displayWidth(lines.back()) + between.size() + displayWidth(piece) <= columns) {
      lines.back().append(between).append(piece);
    } else {
      lines.push_back(piece);
    }
    at += whole.size();
    between = at < text.size() && text[at] == ' ' ? " " : "";
    at += between.size();
  }
  return lines;
}

}  // namespace pillora
