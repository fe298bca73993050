// SPDX-License-Identifier: MIT
#include "icu/ZoneFile.h"

#include "support/Instant.h"

namespace pillora {

namespace {

constexpr uint64_t kMostChanges = 2000, kMostTypes = 256;  // real files have less than 300 and 20
constexpr uint64_t kBytesOfType = 6;
constexpr int64_t kSecondsPerDay = 86'400;
constexpr int64_t kEarliest = daysFromCivil(1600, 1, 1) * kSecondsPerDay;
constexpr int64_t kLatest = daysFromCivil(9000, 1, 1) * kSecondsPerDay;
constexpr int32_t kBehindAll = -25 * 3600, kAheadOfAll = 26 * 3600;

/// How many entries of each kind a block of data holds.
struct Counts {
  uint64_t utMarks, standardMarks, leapSeconds, changes, types, letters;

  uint64_t bytes(uint64_t bytesOfTime) const {
    return changes * (bytesOfTime + 1) + types * kBytesOfType + letters + leapSeconds * (bytesOfTime + 4) +
           standardMarks + utMarks;
  }
};

uint64_t bigEndian(std::string_view bytes) {
  uint64_t value = 0;
  for (const char c : bytes) value = value << 8 | static_cast<unsigned char>(c);
  return value;
}

std::optional<std::string_view> take(std::string_view& bytes, uint64_t count) {
  if (count > bytes.size()) return std::nullopt;
  const std::string_view taken = bytes.substr(0, count);
  bytes.remove_prefix(count);
  return taken;
}

std::optional<Counts> takeHeader(std::string_view& bytes) {
  constexpr size_t kSize = 44, kFirstCount = 20;
  const auto header = take(bytes, kSize);
  if (!header || header->substr(0, 4) != "TZif" || (*header)[4] < '2') return std::nullopt;
  const auto count = [&](size_t i) { return bigEndian(header->substr(kFirstCount + 4 * i, 4)); };
  return Counts{count(0), count(1), count(2), count(3), count(4), count(5)};
}

/// The offset of each type of local time; none at all when one is out of bounds.
std::vector<int32_t> offsetsOf(std::string_view types) {
  std::vector<int32_t> offsets;
  for (size_t at = 0; at < types.size(); at += kBytesOfType) {
    const auto offset = static_cast<int32_t>(bigEndian(types.substr(at, 4)));
    if (offset <= kBehindAll || offset >= kAheadOfAll) return {};
    offsets.push_back(offset);
  }
  return offsets;
}

std::optional<ZoneFile> fileOf(std::string_view times, std::string_view types, const std::vector<int32_t>& offsets) {
  if (offsets.empty()) return std::nullopt;
  ZoneFile file{offsets.front(), {}, {}};
  int64_t before = 0;
  for (size_t i = 0; i < types.size(); ++i) {
    const auto second = static_cast<int64_t>(bigEndian(times.substr(8 * i, 8)));
    const auto type = static_cast<unsigned char>(types[i]);
    if ((i > 0 && second <= before) || second > kLatest || type >= offsets.size()) return std::nullopt;
    before = second;
    if (second < kEarliest) {
      file.initial = offsets[type];
    } else {
      file.add({second, offsets[type]});
    }
  }
  return file;
}

std::optional<std::string_view> footerOf(std::string_view bytes) {
  if (bytes.empty() || bytes.front() != '\n') return std::nullopt;
  const size_t end = bytes.find('\n', 1);
  return end != std::string_view::npos ? std::optional(bytes.substr(1, end - 1)) : std::nullopt;
}

}  // namespace

std::optional<ZoneFile> ZoneFile::parse(std::string_view bytes) {
  const auto old = takeHeader(bytes);  // of the block for readers with 32-bit times
  if (!old || !take(bytes, old->bytes(4))) return std::nullopt;
  const auto counts = takeHeader(bytes);
  if (!counts || counts->leapSeconds != 0 || counts->changes > kMostChanges || counts->types > kMostTypes) {
    return std::nullopt;
  }
  auto block = take(bytes, counts->bytes(8));
  const auto footer = footerOf(bytes);
  if (!block || !footer) return std::nullopt;
  const auto times = *take(*block, counts->changes * 8);
  const auto types = *take(*block, counts->changes);
  auto file = fileOf(times, types, offsetsOf(*take(*block, counts->types * kBytesOfType)));
  if (file) file->footer = *footer;
  return file;
}

}  // namespace pillora
