// SPDX-License-Identifier: MIT
#include "agent/FreedesktopPresenter.h"

#include <string_view>
#include <utility>

#include "agent/AsyncCall.h"
#include "agent/Wire.h"

namespace pillora {

namespace {

constexpr const char* kServerName = "org.freedesktop.Notifications";
constexpr const char* kServerPath = "/org/freedesktop/Notifications";
constexpr std::chrono::seconds kPatience{25};
constexpr size_t kMostTokens = 64;

std::string escaped(std::string_view text) {
  std::string out;
  for (const char c : text) {
    if (c == '&') {
      out += "&amp;";
    } else if (c == '<') {
      out += "&lt;";
    } else if (c == '>') {
      out += "&gt;";
    } else {
      out += c;
    }
  }
  return out;
}

std::string senderOf(sd_bus_message* message) {
  const char* sender = sd_bus_message_get_sender(message);
  return sender != nullptr ? sender : "";
}

}  // namespace

FreedesktopPresenter::FreedesktopPresenter(sd_bus* bus, AppLink& app, BubbleObserver& observer)
    : bus_(bus), app_(app), observer_(observer) {}

Result<void> FreedesktopPresenter::start() {
  sd_bus_slot* slot = nullptr;
  const int watched = sd_bus_add_match(bus_, &slot,
                                       "type='signal',sender='org.freedesktop.DBus',path='/org/freedesktop/DBus',"
                                       "interface='org.freedesktop.DBus',member='NameOwnerChanged',"
                                       "arg0='org.freedesktop.Notifications'",
                                       &FreedesktopPresenter::ownerChanged, this);
  if (watched < 0) return busError("watching for a notification server", watched);
  ownerSlot_.reset(slot);
  const int matched = sd_bus_match_signal(bus_, &slot, kServerName, kServerPath, kServerName, nullptr,
                                          &FreedesktopPresenter::signalCame, this);
  if (matched < 0) return busError("listening to the notification server", matched);
  signalSlot_.reset(slot);

  sd_bus_message* reply = nullptr;
  const int asked = sd_bus_call_method(bus_, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                       "GetNameOwner", nullptr, &reply, "s", kServerName);
  const MessageHandle kept(reply);
  const char* owner = nullptr;
  if (asked >= 0 && sd_bus_message_read(reply, "s", &owner) > 0) owner_ = owner;
  return {};
}

std::string FreedesktopPresenter::server() const {
  sd_id128_t id{};
  if (owner_.empty() || sd_bus_get_bus_id(bus_, &id) < 0) return "";
  char text[SD_ID128_STRING_MAX];
  return std::string(sd_id128_to_string(id, text)) + owner_;
}

int FreedesktopPresenter::ownerChanged(sd_bus_message* signal, void* self, sd_bus_error*) {
  WireReader reader(signal);
  reader.text();
  reader.text();
  const std::string owner = reader.text();
  const bool isBus = senderOf(signal) == "org.freedesktop.DBus";
  if (isBus && reader.status() >= 0) static_cast<FreedesktopPresenter*>(self)->ownerBecame(owner);
  return 0;
}

void FreedesktopPresenter::ownerBecame(const std::string& owner) {
  if (owner == owner_) return;
  owner_ = owner;
  capabilities_.reset();
  tokens_.clear();
  if (!owner.empty()) observer_.serverAppeared();
}

int FreedesktopPresenter::signalCame(sd_bus_message* signal, void* self, sd_bus_error*) {
  auto& presenter = *static_cast<FreedesktopPresenter*>(self);
  // Anybody may send such a signal straight to us; only the server's own count.
  if (presenter.owner_.empty() || senderOf(signal) != presenter.owner_) return 0;
  const std::string_view member = sd_bus_message_get_member(signal);
  WireReader reader(signal);
  const uint32_t bubble = reader.word();
  if (member == "ActivationToken") {
    std::string token = reader.text();
    if (reader.status() < 0) return 0;
    if (presenter.tokens_.size() >= kMostTokens) presenter.tokens_.clear();
    presenter.tokens_[bubble] = std::move(token);
  } else if (member == "ActionInvoked") {
    const std::string action = reader.text();
    if (reader.status() < 0) return 0;
    const auto token = presenter.tokens_.extract(bubble);
    presenter.observer_.bubbleAnswered(bubble, presenter.server(), action, token ? token.mapped() : "");
  } else if (member == "NotificationClosed" && reader.status() >= 0) {
    presenter.tokens_.erase(bubble);
    presenter.observer_.bubbleClosed(bubble, presenter.server());
  }
  return 0;
}

void FreedesktopPresenter::findServer(std::function<void(Result<void>)> completion) {
  if (capabilities_) return completion({});
  sd_bus_message* message = nullptr;
  sd_bus_message_new_method_call(bus_, &message, kServerName, kServerPath, kServerName, "GetCapabilities");
  const MessageHandle call(message);
  callAsync(bus_, message, kPatience, [this, completion = std::move(completion)](sd_bus_message* reply) {
    if (reply == nullptr) return completion(Error{"no notification server: the session bus is gone"});
    if (const auto failure = errorOf(reply)) {
      return completion(Error{"no notification server: " + failure->description});
    }
    WireReader reader(reply);
    const auto names = reader.texts();
    if (reader.status() < 0) return completion(Error{"the notification server does not say what it can do"});
    owner_ = senderOf(reply);
    capabilities_ = Capabilities(names.begin(), names.end());
    completion({});
  });
}

void FreedesktopPresenter::show(const Delivery& delivery, std::function<void(Result<uint32_t>)> completion) {
  app_.willPresent(delivery.request, [this, delivery, completion = std::move(completion)](unsigned options) {
    if ((options & un_options::kBanner) == 0) return completion(0);
    deliver(delivery, options, completion);
  });
}

/// A failure is tried again when another server has come up meanwhile: its coming found this delivery under way.
void FreedesktopPresenter::deliver(const Delivery& delivery, unsigned options,
                                   const std::function<void(Result<uint32_t>)>& completion) {
  const auto ended = [this, delivery, options, completion, asked = owner_](Result<uint32_t> shown) {
    if (!shown && !owner_.empty() && owner_ != asked) return deliver(delivery, options, completion);
    completion(std::move(shown));
  };
  findServer([this, delivery, options, ended](const Result<void>& found) {
    if (!found) return ended(found.error());
    notify(delivery, options, ended);
  });
}

void FreedesktopPresenter::notify(const Delivery& delivery, unsigned options,
                                  std::function<void(Result<uint32_t>)> completion) {
  const MessageHandle call = notifyCall(delivery, options);
  callAsync(bus_, call.get(), kPatience, [completion = std::move(completion)](sd_bus_message* reply) {
    if (reply == nullptr) return completion(Error{"the notification could not be sent"});
    if (const auto failure = errorOf(reply)) return completion(*failure);
    WireReader reader(reply);
    const uint32_t bubble = reader.word();
    if (reader.status() < 0 || bubble == 0) return completion(Error{"the notification server gave no number"});
    completion(bubble);
  });
}

void FreedesktopPresenter::close(uint32_t bubble) {
  sd_bus_message* message = nullptr;
  sd_bus_message_new_method_call(bus_, &message, kServerName, kServerPath, kServerName, "CloseNotification");
  const MessageHandle call(message);
  WireWriter(message).word(bubble);
  sd_bus_message_set_auto_start(message, 0);
  callAsync(bus_, message, kPatience, [](sd_bus_message*) {});
}

MessageHandle FreedesktopPresenter::notifyCall(const Delivery& delivery, unsigned options) const {
  sd_bus_message* message = nullptr;
  sd_bus_message_new_method_call(bus_, &message, kServerName, kServerPath, kServerName, "Notify");
  MessageHandle call(message);
  const auto can = [this](std::string_view capability) { return capabilities_ && capabilities_->contains(capability); };
  const UNNotificationContent& content = delivery.request.content;

  WireWriter writer(message);
  writer.text("Pillora");
  writer.word(delivery.bubble);
  writer.text(kAppName);
  // A server that shows summaries alone would leave out which medicine it is about.
  writer.text(can("body") ? content.title : content.title + ": " + content.body);
  writer.text(can("body-markup") ? escaped(content.body) : content.body);

  std::vector<std::string> actions;
  if (can("actions")) {
    actions = {"default", "Open"};
    for (const UNNotificationAction& action : delivery.actions) {
      actions.push_back(action.identifier);
      actions.push_back(action.title);
    }
  }
  writer.texts(actions);
  if (writer.status() < 0) return nullptr;

  constexpr int kNormalUrgency = 1;
  constexpr int32_t kNeverByItself = 0;
  const bool isSilent = (options & un_options::kSound) == 0 || content.sound.empty();
  sd_bus_message_open_container(message, 'a', "{sv}");
  sd_bus_message_append(message, "{sv}{sv}{sv}", "desktop-entry", "s", kAppName, "urgency", "y", kNormalUrgency,
                        "category", "s", "x-pillora.reminder");
  if (isSilent) {
    sd_bus_message_append(message, "{sv}", "suppress-sound", "b", 1);
  } else {
    sd_bus_message_append(message, "{sv}", "sound-name", "s", "message-new-instant");
  }
  sd_bus_message_close_container(message);
  const int appended = sd_bus_message_append(message, "i", kNeverByItself);
  return appended < 0 ? nullptr : std::move(call);
}

}  // namespace pillora
