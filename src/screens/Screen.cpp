// SPDX-License-Identifier: MIT
#include "screens/Screen.h"

#include <algorithm>
#include <iterator>

namespace pillora {

const AppSettings& settingsShown(const LiveQuery<AppSettings>& settings) {
  static const AppSettings defaults;
  const auto& records = settings.records();
  return records.empty() ? defaults : *records.front();
}

Medicines activeMedicines(const Medicines& medicines) {
  Medicines active;
  std::copy_if(medicines.begin(), medicines.end(), std::back_inserter(active),
               [](const auto& medicine) { return medicine->isActive(); });
  return active;
}

}  // namespace pillora
