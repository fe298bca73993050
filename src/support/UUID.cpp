// SPDX-License-Identifier: MIT
#include "support/UUID.h"

#include <cstdlib>
#include <sys/random.h>

namespace pillora {

namespace {

constexpr size_t kTextLength = 36;

constexpr bool isHyphenPlace(size_t index) { return index == 8 || index == 13 || index == 18 || index == 23; }

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

UUID UUID::random() {
  UUID id;
  // At most 256 bytes are always delivered whole once the source is seeded; an identity must never repeat.
  if (getrandom(id.bytes.data(), id.bytes.size(), 0) != static_cast<ssize_t>(id.bytes.size())) std::abort();
  id.bytes[6] = static_cast<uint8_t>((id.bytes[6] & 0x0F) | 0x40);
  id.bytes[8] = static_cast<uint8_t>((id.bytes[8] & 0x3F) | 0x80);
  return id;
}

std::optional<UUID> UUID::parse(std::string_view text) {
  if (text.size() != kTextLength) return std::nullopt;
  UUID id;
  size_t digit = 0;
  for (size_t i = 0; i < kTextLength; ++i) {
    if (isHyphenPlace(i)) {
      if (text[i] != '-') return std::nullopt;
      continue;
    }
    const int value = hexValue(text[i]);
    if (value < 0) return std::nullopt;
    uint8_t& byte = id.bytes[digit / 2];
    byte = static_cast<uint8_t>(byte << 4 | value);
    ++digit;
  }
  return id;
}

std::string UUID::text() const {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string out;
  out.reserve(kTextLength);
  for (const uint8_t byte : bytes) {
    if (isHyphenPlace(out.size())) out += '-';
    out += kDigits[byte >> 4];
    out += kDigits[byte & 0x0F];
  }
  return out;
}

}  // namespace pillora
