// SPDX-License-Identifier: MIT
#include "agent/AgentService.h"

#include <cerrno>
#include <utility>

#include "agent/Wire.h"

namespace pillora {

namespace {

/// Sends a reply that `write` fills.
template <typename Write>
int replyWith(sd_bus_message* call, Write write) {
  sd_bus_message* message = nullptr;
  if (const int made = sd_bus_message_new_method_return(call, &message); made < 0) return made;
  const MessageHandle reply(message);
  WireWriter writer(message);
  write(writer);
  if (writer.status() < 0) return writer.status();
  return sd_bus_send(nullptr, message, nullptr);
}

int refuse(sd_bus_error* error, const Error& failure) {
  return sd_bus_error_set(error, "org.pillora.Pillora.Error.Failed", failure.description.c_str());
}

/// A listing, or the file's failure as the reply.
template <typename T, typename Write>
int replyWithList(sd_bus_message* call, sd_bus_error* error, const Result<T>& found, Write write) {
  if (!found) return refuse(error, found.error());
  return replyWith(call, [&](WireWriter& writer) { write(writer, *found); });
}

}  // namespace

struct AgentMethods {
  static AgentService& service(void* self) { return *static_cast<AgentService*>(self); }
  static Engine& engine(void* self) { return service(self).engine_; }

  static int apply(sd_bus_message* call, void* self, sd_bus_error* error) {
    WireReader reader(call);
    const auto operations = reader.operations();
    if (reader.status() < 0) {
      return sd_bus_error_set(error, SD_BUS_ERROR_INVALID_ARGS, "an operation is unknown or of the wrong type");
    }
    const OperationErrors errors = engine(self).apply(operations);
    service(self).changed_();
    return replyWith(call, [&](WireWriter& writer) {
      writer.open('a', "s");
      for (const auto& each : errors) writer.text(each ? each->description : "");
      writer.close();
    });
  }

  static int getPendingRequests(sd_bus_message* call, void* self, sd_bus_error* error) {
    return replyWithList(call, error, engine(self).pendingRequests(),
                         [](WireWriter& writer, const auto& requests) { writer.requests(requests); });
  }

  static int getPendingIdentifiers(sd_bus_message* call, void* self, sd_bus_error* error) {
    return replyWithList(call, error, engine(self).pendingIdentifiers(),
                         [](WireWriter& writer, const auto& identifiers) { writer.texts(identifiers); });
  }

  static int getCategories(sd_bus_message* call, void* self, sd_bus_error* error) {
    return replyWithList(call, error, engine(self).categories(),
                         [](WireWriter& writer, const auto& categories) { writer.categories(categories); });
  }

  static int getTasks(sd_bus_message* call, void* self, sd_bus_error* error) {
    return replyWithList(call, error, engine(self).tasks(), [](WireWriter& writer, const auto& tasks) {
      writer.open('a', kTaskType);
      for (const auto& task : tasks) writer.task(task);
      writer.close();
    });
  }

  static int requestAuthorization(sd_bus_message* call, void* self, sd_bus_error*) {
    const std::shared_ptr<sd_bus_message> kept(sd_bus_message_ref(call), &sd_bus_message_unref);
    AgentService& agent = service(self);
    agent.presenter_.findServer([&agent, kept](const Result<void>& found) {
      const auto status = found ? UNAuthorizationStatus::authorized : UNAuthorizationStatus::denied;
      const auto stored = agent.engine_.setAuthorizationStatus(status);
      const std::string failure = !found ? found.error().description : !stored ? stored.error().description : "";
      replyWith(kept.get(), [&](WireWriter& writer) {
        writer.flag(failure.empty());
        writer.text(failure);
      });
    });
    return 1;
  }

  static int getSettings(sd_bus_message* call, void* self, sd_bus_error*) {
    const std::shared_ptr<sd_bus_message> kept(sd_bus_message_ref(call), &sd_bus_message_unref);
    const auto answer = [kept](UNAuthorizationStatus status) {
      replyWith(kept.get(), [&](WireWriter& writer) {
        writer.word(static_cast<uint32_t>(status));
        writer.word(static_cast<uint32_t>(UNNotificationSetting::notSupported));
      });
    };
    if (engine(self).authorizationStatus() == UNAuthorizationStatus::notDetermined) {
      answer(UNAuthorizationStatus::notDetermined);
    } else {
      // Permission once given is worth nothing while there is nobody to show.
      service(self).presenter_.findServer([answer](const Result<void>& found) {
        answer(found ? UNAuthorizationStatus::authorized : UNAuthorizationStatus::denied);
      });
    }
    return 1;
  }

  static int badge(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* self, sd_bus_error*) {
    return sd_bus_message_append(reply, "x", engine(self).badge());
  }
};

namespace {

constexpr uint64_t kOpen = SD_BUS_VTABLE_UNPRIVILEGED;

const sd_bus_vtable kTable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD_WITH_ARGS("Apply", SD_BUS_ARGS("a(sv)", operations), SD_BUS_RESULT("as", errors), AgentMethods::apply,
                            kOpen),
    SD_BUS_METHOD_WITH_ARGS("GetPendingRequests", SD_BUS_NO_ARGS,
                            SD_BUS_RESULT("a(ssssaxa(sv)s(axxxbxxxs)(xyyyy)b)", requests),
                            AgentMethods::getPendingRequests, kOpen),
    SD_BUS_METHOD_WITH_ARGS("GetPendingIdentifiers", SD_BUS_NO_ARGS, SD_BUS_RESULT("as", identifiers),
                            AgentMethods::getPendingIdentifiers, kOpen),
    SD_BUS_METHOD_WITH_ARGS("GetCategories", SD_BUS_NO_ARGS, SD_BUS_RESULT("a(sa(ssbb))", categories),
                            AgentMethods::getCategories, kOpen),
    SD_BUS_METHOD_WITH_ARGS("GetTasks", SD_BUS_NO_ARGS, SD_BUS_RESULT("a(saxbb)", tasks), AgentMethods::getTasks,
                            kOpen),
    SD_BUS_METHOD_WITH_ARGS("RequestAuthorization", SD_BUS_ARGS("u", options), SD_BUS_RESULT("b", granted, "s", error),
                            AgentMethods::requestAuthorization, kOpen),
    SD_BUS_METHOD_WITH_ARGS("GetSettings", SD_BUS_NO_ARGS, SD_BUS_RESULT("u", authorization, "u", criticalAlerts),
                            AgentMethods::getSettings, kOpen),
    SD_BUS_PROPERTY("Badge", "x", AgentMethods::badge, 0, 0),
    SD_BUS_VTABLE_END,
};

}  // namespace

AgentService::AgentService(sd_bus* bus, Engine& engine, FreedesktopPresenter& presenter, std::function<void()> changed)
    : bus_(bus), engine_(engine), presenter_(presenter), changed_(std::move(changed)) {}

Result<void> AgentService::start() {
  sd_bus_slot* slot = nullptr;
  const int added = sd_bus_add_object_vtable(bus_, &slot, kAgentPath, kAgentInterface, kTable, this);
  if (added < 0) return busError(kAgentInterface, added);
  slot_.reset(slot);
  return {};
}

}  // namespace pillora
