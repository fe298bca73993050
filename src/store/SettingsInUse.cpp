// SPDX-License-Identifier: MIT
#include "store/SettingsInUse.h"

namespace pillora {

std::shared_ptr<AppSettings> settingsInUse(ModelContext& context) {
  const auto first = [&] { return context.fetch(FetchDescriptor<AppSettings>().limitedTo(1)); };
  auto found = first();
  if (found && found->empty()) {
    // A file that cannot be locked shows by the insert staying pending.
    static_cast<void>(context.beginWriting());
    found = first();
  }
  if (found && !found->empty()) return found->front();
  auto settings = AppSettings::make();
  if (found) context.insert(settings);
  return settings;
}

}  // namespace pillora
