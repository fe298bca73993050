// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unicode/basictz.h>

namespace pillora {

// Time zones as the system's tz database has them. ICU brings a database of its own, which a distribution freezes with
// the library while it keeps the system's up to date: Debian 12 pairs the rules of 2022e with files of 2025b, and some
// twenty zones have gone other ways in between. The C library, and with it every timer that wakes us, goes by the
// files.

/// Where the C library looks for the files.
inline constexpr const char* kZoneInfoFolder = "/usr/share/zoneinfo";

/// The zone whose file `id` lies in `folder`. Null when there is none that can be used: it is not a regular file, is
/// too large, malformed or counts leap seconds, or `id` does not look like the name of a zone. The offsets are those of
/// the file; none of them is told to be daylight saving time. Thread-safe.
std::unique_ptr<icu::BasicTimeZone> readZone(const std::string& id, const std::string& folder = kZoneInfoFolder);

/// The same for the bytes of such a file.
std::unique_ptr<icu::BasicTimeZone> zoneFromBytes(const std::string& id, std::string_view bytes);

}  // namespace pillora
