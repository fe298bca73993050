// SPDX-License-Identifier: MIT
#include "agent/InProcessCenter.h"

#include <algorithm>
#include <utility>

namespace pillora {

Result<std::unique_ptr<InProcessCenter>> InProcessCenter::open(const std::string& path, const Clock& clock,
                                                               ZoneRules& zone, MainExecutor& executor,
                                                               Presenter& presenter) {
  std::unique_ptr<InProcessCenter> center(new InProcessCenter(executor, presenter));
  auto engine = Engine::open(path, clock, zone, *center, *center);
  if (!engine) return engine.error();
  center->engine_ = *std::move(engine);
  return center;
}

InProcessCenter::InProcessCenter(MainExecutor& executor, Presenter& presenter)
    : presenter_(presenter), queue_(executor, [this](const TurnQueue::Batch& batch) {
        queue_.complete(batch, engine_->apply(batch.operations));
      }) {}

InProcessCenter::~InProcessCenter() {
  if (engine_) queue_.flush();
}

void InProcessCenter::requestAuthorization(unsigned, std::function<void(bool, std::optional<Error>)> completion) {
  const auto kept = engine_->setAuthorizationStatus(UNAuthorizationStatus::authorized);
  completion(static_cast<bool>(kept), kept ? std::nullopt : std::optional(kept.error()));
}

void InProcessCenter::getNotificationSettings(std::function<void(UNNotificationSettings)> completion) {
  completion({engine_->authorizationStatus(), UNNotificationSetting::notSupported});
}

void InProcessCenter::setNotificationCategories(std::vector<UNNotificationCategory> categories) {
  queue_.push(SetCategories{std::move(categories)});
}

void InProcessCenter::getNotificationCategories(std::function<void(std::vector<UNNotificationCategory>)> completion) {
  queue_.flush();
  completion(queue_.foundOrNone(engine_->categories()));
}

void InProcessCenter::add(UNNotificationRequest request, std::function<void(std::optional<Error>)> completion) {
  queue_.push(AddRequest{std::move(request)}, std::move(completion));
}

void InProcessCenter::getPendingNotificationRequests(
    std::function<void(std::vector<UNNotificationRequest>)> completion) {
  queue_.flush();
  completion(queue_.foundOrNone(engine_->pendingRequests()));
}

void InProcessCenter::getPendingNotificationRequestIdentifiers(
    std::function<void(std::vector<std::string>)> completion) {
  queue_.flush();
  completion(queue_.foundOrNone(engine_->pendingIdentifiers()));
}

void InProcessCenter::removePendingNotificationRequests(std::vector<std::string> identifiers) {
  queue_.push(RemoveRequests{std::move(identifiers)});
}

void InProcessCenter::setBadgeCount(int64_t count) { queue_.push(SetBadge{count}); }

void InProcessCenter::getBadgeCount(std::function<void(int64_t)> completion) {
  queue_.flush();
  completion(engine_->badge());
}

void InProcessCenter::registerForTaskWithIdentifier(const std::string& identifier,
                                                    std::function<void(std::shared_ptr<BGTask>)> launchHandler) {
  handlers_.registerHandler(identifier, std::move(launchHandler));
}

Result<void> InProcessCenter::submit(BGProcessingTaskRequest request) {
  queue_.flush();
  const OperationErrors errors = engine_->apply({SubmitTask{std::move(request)}});
  if (errors.front()) return *errors.front();
  return {};
}

Result<void> InProcessCenter::finish() {
  queue_.flush();
  return queue_.takeFailure();
}

void InProcessCenter::answered(uint32_t bubble, const std::string& action) {
  const auto response = engine_->answered(bubble, server(), action);
  if (response && delegate_ != nullptr) delegate_->didReceive(*response, [] {});
}

std::optional<Instant> InProcessCenter::nextDeadline() {
  queue_.flush();
  return engine_->nextDeadline();
}

Result<Advanced> InProcessCenter::advance() {
  queue_.flush();
  std::erase_if(running_, [](const auto& task) { return task->outcome().has_value(); });
  return engine_->advance();
}

std::vector<BGProcessingTaskRequest> InProcessCenter::tasks() {
  queue_.flush();
  return queue_.foundOrNone(engine_->tasks());
}

Result<void> InProcessCenter::launch(const std::string& identifier) {
  auto task = handlers_.launch(identifier);
  if (!task) return Error{"no handler is registered for " + identifier};
  running_.push_back(std::move(task));
  return {};
}

void InProcessCenter::show(const Delivery& delivery, std::function<void(Result<uint32_t>)> completion) {
  if (delegate_ == nullptr) return presenter_.show(delivery, std::move(completion));
  delegate_->willPresent(delivery.request, [this, delivery, completion](unsigned options) {
    if ((options & un_options::kBanner) == 0) return completion(0);
    presenter_.show(delivery, completion);
  });
}

}  // namespace pillora
