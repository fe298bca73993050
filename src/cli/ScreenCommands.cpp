// SPDX-License-Identifier: MIT
#include <limits>

#include "cli/Commands.h"
#include "cli/Rendering.h"
#include "cli/Words.h"
#include "screens/ReminderHistoryView.h"
#include "support/Json.h"

namespace pillora {

namespace {

/// Prints what a screen holds. A store that cannot be read is an error, not an empty screen.
template <typename Content>
Result<std::string> printed(const Content& content, ModelContext& context, const Session& session) {
  if (auto error = context.takeReadError()) return *std::move(error);
  return session.json() ? jsonLine(toJson(content)) : rendered(content, session.terminal(), session.texts());
}

/// The one of `all` whose raw value, in small letters, is the word; without a word the standard.
template <typename Choices>
Result<typename Choices::value_type> chosen(const CommandLine::Word& word, const Choices& all,
                                            typename Choices::value_type standard, const std::string& option,
                                            const Texts& texts) {
  if (!word) return standard;
  std::string offered;
  for (const auto choice : all) {
    std::string name(rawValue(choice));
    name[0] = static_cast<char>(name[0] - 'A' + 'a');
    if (name == *word) return choice;
    offered += (offered.empty() ? "" : ", ") + name;
  }
  return Error{notOffered(option, *word, offered, texts)};
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

Result<Action> historyCommand(const CommandLine& line, Session& session) {
  const auto range = chosen(line.range, kAllTimeRanges, TimeRange::week, "--range", session.texts());
  if (!range) return range.error();
  const auto filter = chosen(line.filter, kAllHistoryFilters, HistoryFilter::all, "--filter", session.texts());
  if (!filter) return filter.error();
  return Action([&session, range = *range, filter = *filter]() -> Result<std::string> {
    const auto screens = session.open();
    if (!screens) return screens.error();
    ReminderHistoryView view(*screens);
    view.selectedTimeRange = range;
    view.selectedFilter = filter;
    view.rowLimit = std::numeric_limits<size_t>::max();
    return printed(view.content(), screens->context, session);
  });
}

}  // namespace pillora
