// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "agent/Operation.h"
#include "agent/Presenter.h"
#include "agent/RequestState.h"
#include "agent/TaskLauncher.h"
#include "agent/ZoneRules.h"
#include "platform/Clock.h"

namespace SQLite {
class Database;
}

namespace pillora {

class ReminderFile;

/// What one advance() did, by identifier.
struct Advanced {
  std::vector<std::string> shown;       ///< handed to the presenter
  std::vector<std::string> folded;      ///< overdue and dropped in favour of a newer one of the same medicine
  std::vector<std::string> unreadable;  ///< damaged in the file; they stay pending and never fire
  std::vector<std::string> launched, notLaunched;  ///< background tasks

  bool operator==(const Advanced&) const = default;
};

/// The notification centre's and the task scheduler's rules over one reminder file.
///
/// A request notes when it is added whether its minute lay ahead. Only such a request fires, once: in its minute, or
/// as overdue when the program was stopped, the machine asleep, the clock stepped or the zone changed. Of the overdue
/// requests of a medicine only the newest is shown, the others are dropped; one that fires in its minute is newer than
/// all of them. A request that does not fire stays pending until it is removed or replaced.
///
/// Firing is written down twice: first that the request is being delivered and under which bubble number, then, when
/// the presenter has shown it, that it is gone. A process that is killed in between shows it again under the same
/// number after its restart: none is lost, and the bubble is replaced and not doubled.
///
/// Not for several threads. A failing file makes an operation fail and leaves the state as it was.
class Engine {
 public:
  /// Everything handed in must outlive the engine.
  static Result<std::unique_ptr<Engine>> open(const std::string& path, const Clock& clock, ZoneRules& zone,
                                              Presenter& presenter, TaskLauncher& launcher);
  ~Engine();

  /// Applies the operations in their order in one transaction. A refused one does not keep the others back; when the
  /// file fails, all are refused and none is applied.
  OperationErrors apply(const std::vector<Operation>& operations);

  /// In order of their trigger's wall time, then identifier. What is damaged in the file is left out.
  Result<std::vector<UNNotificationRequest>> pendingRequests();
  /// Their identifiers alone, in the order of their bytes.
  Result<std::vector<std::string>> pendingIdentifiers();
  Result<std::vector<UNNotificationCategory>> categories();
  Result<std::vector<BGProcessingTaskRequest>> tasks();
  int64_t badge();

  UNAuthorizationStatus authorizationStatus();
  Result<void> setAuthorizationStatus(UNAuthorizationStatus status);

  /// When advance() has something to do next; absent when nothing is waiting. May lie in the past.
  std::optional<Instant> nextDeadline();
  /// Shows and launches everything that is due now, and what an earlier attempt failed to show.
  Result<Advanced> advance();
  /// Computes all triggers again by the zone's present rules. advance() then finds what became overdue.
  Result<void> zoneChanged();

  /// The answer `action` to the bubble that `server` shows under this number; nothing when it is none of ours.
  std::optional<UNNotificationResponse> answered(uint32_t bubble, const std::string& server, const std::string& action);
  void bubbleClosed(uint32_t bubble, const std::string& server);

 private:
  struct Due {
    int64_t serial;
    std::string identifier;
    bool onTime;
  };
  struct Begun {
    int64_t serial;
    Delivery delivery;
  };

  static int64_t wholeSeconds(Instant instant) { return floorDiv(instant.microseconds(), 1'000'000); }

  Engine(std::unique_ptr<ReminderFile> file, const Clock& clock, ZoneRules& zone, Presenter& presenter,
         TaskLauncher& launcher);

  std::optional<Error> applyOne(const AddRequest& operation);
  std::optional<Error> applyOne(const RemoveRequests& operation);
  std::optional<Error> applyOne(const SetCategories& operation);
  std::optional<Error> applyOne(const SetBadge& operation);
  std::optional<Error> applyOne(const SubmitTask& operation);

  std::vector<Due> dueRequests();
  std::vector<Begun> beginDelivery(const std::vector<Due>& due, Advanced& advanced);
  std::string contentOf(int64_t serial);
  void setState(int64_t serial, RequestState state);
  void dropRequest(int64_t serial);
  uint32_t bubbleFor(const std::string& dose, const std::string& content);
  uint32_t freshBubble();
  void present(const Begun& begun);
  void endDelivery(const Begun& begun, const std::string& server, uint32_t shownAs);
  void launchTasks(Advanced& advanced);

  std::unique_ptr<ReminderFile> file_;
  SQLite::Database& database_;
  const Clock& clock_;
  ZoneRules& zone_;
  Presenter& presenter_;
  TaskLauncher& launcher_;
  int64_t room_ = 0;               ///< how many more requests the batch under way may add
  std::set<int64_t> inFlight_;     ///< requests handed to the presenter whose completion has not come
  std::set<int64_t> notLaunched_;  ///< tasks that could not be started; tried again by the next process
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace pillora
