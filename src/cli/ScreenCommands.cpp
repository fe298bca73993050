// SPDX-License-Identifier: MIT
#include <limits>

#include "cli/Commands.h"
#include "cli/Rendering.h"
#include "support/Json.h"

namespace pillora {

namespace {

/// Prints what a screen holds. A store that cannot be read is an error, not an empty screen.
template <typename Content>
Result<std::string> printed(const Content& content, ModelContext& context, const Session& session) {
  if (auto error = context.takeReadError()) return *std::move(error);
  return session.json() ? jsonLine(toJson(content)) : rendered(content, session.terminal(), session.texts());
}

}  // namespace

Result<Action> todayCommand(const CommandLine&, Session& session) {
  return Action([&session]() -> Result<std::string> {
    const auto screens = session.open();
    if (!screens) return screens.error();
    return printed(TodayView(*screens).content(), screens->context, session);
  });
}

Result<Action> upcomingCommand(const CommandLine&, Session& session) {
  return Action([&session]() -> Result<std::string> {
    const auto screens = session.open();
    if (!screens) return screens.error();
    UpcomingView view(*screens);
    view.rowLimit = std::numeric_limits<size_t>::max();
    return printed(view.content(), screens->context, session);
  });
}

Result<Action> medicinesCommand(const CommandLine& line, Session& session) {
  return Action([&session, search = line.search.value_or("")]() -> Result<std::string> {
    const auto screens = session.open();
    if (!screens) return screens.error();
    MedicineListView view(*screens);
    view.searchText = search;
    return printed(view.content(), screens->context, session);
  });
}

}  // namespace pillora
