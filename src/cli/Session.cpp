// SPDX-License-Identifier: MIT
#include "cli/Session.h"

#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "support/Instant.h"
#include "support/UUID.h"

namespace pillora {

namespace {

/// Whether `name` is `ref`, or begins with it, without regard to case. Texts look for a part anywhere; a mark that is
/// in no name holds the part to the ends.
constexpr std::string_view kMark = "\xEE\x80\x80";  // U+E000, a private-use letter

bool isNamed(const std::string& name, const std::string& ref, const Texts& texts) {
  const std::string mark(kMark);
  return texts.containsIgnoringCase(mark + name + mark, mark + ref + mark);
}

bool beginsWith(const std::string& name, const std::string& ref, const Texts& texts) {
  const std::string mark(kMark);
  return texts.containsIgnoringCase(mark + name, mark + ref);
}

template <typename Fits>
Medicines fitting(const Medicines& medicines, Fits fits) {
  Medicines found;
  std::copy_if(medicines.begin(), medicines.end(), std::back_inserter(found), fits);
  return found;
}

}  // namespace

Session::Session(const CommandLine& line, const CliEnvironment& environment)
    : line_(line),
      environment_(environment),
      clock_(environment.clock.now()),
      heldCenter_([this] { return reminders(); }) {}

Session::~Session() {
  if (container_) container_->mainContext().discardChanges();
}

Result<std::unique_ptr<Session>> Session::begin(const CommandLine& line, const CliEnvironment& environment) {
  std::unique_ptr<Session> session(new Session(line, environment));
  if (const auto prepared = session->prepare(); !prepared) return prepared.error();
  return session;
}

Result<void> Session::prepare() {
  if (line_.now && !line_.store) return Error{"--now works only together with --store"};
  if (line_.authenticator && !line_.store) return Error{"--authenticator works only together with --store"};
  if (line_.authenticator && *line_.authenticator != "allow" && *line_.authenticator != "refuse") {
    return Error{"--authenticator is 'allow' or 'refuse', not '" + *line_.authenticator + "'"};
  }
  if (line_.store && line_.store->empty()) return Error{"--store needs the name of a file"};
  if (line_.reminders && line_.reminders->empty()) return Error{"--reminders needs the name of a file"};
  if (line_.documents && line_.documents->empty()) return Error{"--documents needs the name of a folder"};
  if (line_.cloud && line_.cloud->empty()) return Error{"--cloud needs the name of a folder"};
  auto calendar = environment_.makeCalendar(region());
  if (!calendar) return calendar.error();
  calendar_ = *std::move(calendar);
  // What scripts read must not depend on who runs them.
  const auto language = line_.json && !line_.language ? std::optional<std::string>("en") : line_.language;
  auto texts = environment_.makeTexts(region(), language);
  if (!texts) return texts.error();
  texts_ = *std::move(texts);
  if (line_.now) {
    const auto now = instant(*line_.now);
    if (!now) return now.error();
    clock_.instant_ = *now;
  }
  return {};
}

Result<Instant> Session::instant(std::string_view text) const {
  const Error malformed{texts_->text("'{word}' is no instant such as 2026-03-08T07:30 or 2026-03-08T07:30:00Z",
                                     {{"word", std::string(text)}})};
  const auto parsed = parseTime(text);
  if (!parsed) return malformed;
  if (parsed->offset) return utcInstant(parsed->wall) - *parsed->offset;
  const auto local = instantOf(parsed->wall);
  return local ? Result<Instant>(*local) : malformed;
}

Result<const Calendar*> Session::gregorian() const {
  if (!gregorian_) {
    auto calendar = environment_.makeCalendar({line_.timeZone, "en_US@calendar=gregorian"});
    if (!calendar) return calendar.error();
    gregorian_ = *std::move(calendar);
  }
  return gregorian_.get();
}

std::optional<Instant> Session::instantOf(const WallTime& wall) const {
  const auto calendar = gregorian();
  if (!calendar) return std::nullopt;
  DateComponents components;
  components.era = (*calendar)->components(Instant()).era;  // the era that 1970 lies in
  components.year = wall.year;
  components.month = wall.month;
  components.day = wall.day;
  components.hour = wall.hour;
  components.minute = wall.minute;
  const auto minute = (*calendar)->date(components);
  return minute ? std::optional(*minute + wall.second) : std::nullopt;
}

Result<ModelConfiguration> Session::storeConfiguration() const {
  const auto file = line_.store ? Result<std::string>(*line_.store) : environment_.defaultStore();
  if (!file) return file.error();
  ModelConfiguration configuration;
  std::error_code withoutFolder;  // as an absolute path no name has a meaning of its own to SQLite
  configuration.path = std::filesystem::absolute(*file, withoutFolder).string();
  if (withoutFolder) return Error{withoutFolder.message()};
  return configuration;
}

Result<ModelContext*> Session::openStore() {
  if (!container_) {
    const auto refused = [](const Error& error) {
      return Error{std::string(PilloraApp::kStoreFailure) + error.description};
    };
    const auto configuration = storeConfiguration();
    if (!configuration) return refused(configuration.error());
    auto container = ModelContainer::open(*configuration, environment_.executor);
    if (!container) return refused(container.error());
    container_ = *std::move(container);
  }
  return &container_->mainContext();
}

Result<ScreenEnvironment> Session::open() {
  if (const auto opened = openStore(); !opened) return opened.error();
  if (!notifications_) {
    notifications_.emplace(NotificationEnvironment{heldCenter_, clock_, *calendar_, *texts_, environment_.executor,
                                                   environment_.console, broadcasts_});
  }
  if (line_.reminders) {
    if (const auto center = notificationCenter(); !center) return center.error();
  }
  return ScreenEnvironment{container_->mainContext(), clock_, *calendar_, *texts_, *notifications_};
}

Result<UNUserNotificationCenter*> Session::notificationCenter() {
  const auto opened = reminders();
  if (!opened) return opened.error();
  return &(*opened)->notificationCenter;
}

Result<Reminders*> Session::reminders() {
  if (!reminders_ && line_.store && !line_.reminders) reminders_.emplace(inMemoryReminders());
  if (!reminders_) {
    const auto calendar = gregorian();
    if (!calendar) return calendar.error();
    auto opened = environment_.openReminders({line_.reminders, clock_, **calendar, environment_.executor});
    if (!opened) return Error{"the reminders cannot be opened: " + opened.error().description};
    reminders_.emplace(*std::move(opened));
  }
  return &*reminders_;
}

Result<void> Session::readPermission() {
  if (auto opened = heldCenter_.open(); !opened) return opened;
  notifications_->checkAuthorizationStatus();
  static_cast<void>(endTurn());
  return {};
}

BackupEnvironment Session::backupEnvironment() {
  if (!files_) {
    const auto absolute = [](const CommandLine::Word& folder) -> std::optional<std::string> {
      std::error_code ignored;  // without a working folder the name stays as it is
      return folder ? std::optional(std::filesystem::absolute(*folder, ignored).string()) : std::nullopt;
    };
    files_ = environment_.makeFileManager({absolute(line_.documents), absolute(line_.cloud), !line_.store});
  }
  return {*files_, background_, environment_.executor, clock_, *texts_, Bundle()};
}

Result<std::unique_ptr<PilloraApp>> Session::startApp(Console& console) {
  const auto configuration = storeConfiguration();
  if (!configuration) return Error{std::string(PilloraApp::kStoreFailure) + configuration.error().description};
  if (const auto center = notificationCenter(); !center) return center.error();
  return PilloraApp::start({clock_,
                            *calendar_,
                            *texts_,
                            reminders_->notificationCenter,
                            reminders_->taskScheduler,
                            environment_.executor,
                            console,
                            {},
                            Bundle()},
                           *configuration);
}

bool Session::use24HourTime() {
  const auto screens = open();
  return screens && settingsShown(LiveQuery<AppSettings>(screens->context)).use24HourTime();
}

Result<std::shared_ptr<Medicine>> Session::medicine(std::string_view ref) {
  const auto screens = open();
  if (!screens) return screens.error();
  ModelContext& context = screens->context;
  if (const auto id = UUID::parse(ref)) {
    if (auto medicine = context.find<Medicine>(*id)) return medicine;
  }
  const auto medicines = context.fetch<Medicine>();
  if (!medicines) return medicines.error();
  const std::string name(ref);
  // Deliberate: the empty text begins every name, but a script's unset variable must not pick a person's one medicine.
  if (name.empty()) return Error{texts().text("no medicine has an empty name")};
  auto found = fitting(*medicines, [&](const auto& one) { return isNamed(one->name(), name, texts()); });
  if (found.size() != 1) {
    found = fitting(*medicines, [&](const auto& one) { return beginsWith(one->name(), name, texts()); });
  }
  if (found.size() == 1) return found.front();
  if (found.empty()) return Error{texts().text("no medicine fits '{word}'", {{"word", name}})};
  std::string identifiers;
  for (const auto& one : found) identifiers += (identifiers.empty() ? "" : ", ") + one->id().text();
  return Error{texts().text("several medicines fit '{word}': name one by its identifier, {identifiers}",
                            {{"word", name}, {"identifiers", identifiers}})};
}

Result<void> Session::save() {
  ModelContext& context = container_->mainContext();
  if (auto error = context.takeReadError()) return *std::move(error);
  if (const auto prepared = heldCenter_.prepare(); !prepared) return prepared;
  if (const auto saved = context.save(); !saved) return saved;
  const auto planned = heldCenter_.commit();
  static_cast<void>(endTurn());
  if (!planned) return Error{"saved, but the reminders are as they were: " + planned.error().description};
  return {};
}

Result<void> Session::endTurn() {
  environment_.endTurn();
  const auto finished = reminders_ && reminders_->finish ? reminders_->finish() : Result<void>();
  environment_.endTurn();
  return finished;
}

std::shared_ptr<void> Session::whenToldToEnd(std::function<void()> ended) const {
  return environment_.whenToldToEnd ? environment_.whenToldToEnd(std::move(ended)) : nullptr;
}

}  // namespace pillora
