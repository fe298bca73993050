// SPDX-License-Identifier: MIT
// The decoder of stored intervals, and the JSON parser under it: no bytes break it, and what it reads it writes and
// reads again as the same.
#include <string_view>

#include "Target.h"
#include "model/ReminderInterval.h"
#include "support/Json.h"

namespace {

using namespace pillora;

void checkDocument(std::string_view text) {
  const auto document = parseJson(text);
  require(document || !document.error().description.empty(), "a refused document has an error");
  if (!document) return;
  const auto again = parseJson(jsonText(*document));
  require(again && *again == *document, "a document reads back as written");
}

void checkInterval(std::string_view text) {
  const auto interval = decodeInterval(text);
  require(interval || !interval.error().description.empty(), "a refused interval has an error");
  if (!interval) return;
  const std::string encoded = encodeInterval(*interval);
  const auto again = decodeInterval(encoded);
  require(again && *again == *interval, "an interval reads back as written");
  require(encodeInterval(*again) == encoded, "an interval is always written the same way");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  checkDocument(text);
  checkInterval(text);
  return 0;
}
