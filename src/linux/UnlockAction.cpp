// SPDX-License-Identifier: MIT
#include "linux/UnlockAction.h"

#include <cstring>
#include <unistd.h>

#include "linux/TerminalAgent.h"

namespace pillora {

namespace {

constexpr const char* kService = "org.freedesktop.PolicyKit1";
constexpr const char* kPath = "/org/freedesktop/PolicyKit1/Authority";
constexpr const char* kInterface = "org.freedesktop.PolicyKit1.Authority";
constexpr const char* kAction = "org.pillora.Pillora.unlock";
constexpr const char* kCancellation = "unlock";
constexpr uint32_t kAllowUserInteraction = 1;
constexpr std::chrono::seconds kTidyTime{1};

struct Answer {
  bool isAuthorized = false, isChallenge = false, isDismissed = false;
};

/// Our process, and not our session: a process is found in a graphical session and outside of any, over SSH or in a
/// service, and prompts in the terminal that we run in are registered for it alone. The start time keeps a later
/// process of the same number from being taken for us; where it is unknown polkit looks for itself.
int appendSubject(sd_bus_message* call) {
  return sd_bus_message_append(call, "(sa{sv})", "unix-process", 3, "pid", "u", static_cast<uint32_t>(getpid()),
                               "start-time", "t", ownStartTime(), "uid", "i", static_cast<int32_t>(getuid()));
}

Result<Answer> read(sd_bus_message* reply) {
  int isAuthorized = 0, isChallenge = 0;
  if (sd_bus_message_enter_container(reply, 'r', "bba{ss}") <= 0 ||
      sd_bus_message_read(reply, "bb", &isAuthorized, &isChallenge) <= 0 ||
      sd_bus_message_enter_container(reply, 'a', "{ss}") < 0) {
    return Error{"polkit gave no sense"};
  }
  Answer answer = {isAuthorized != 0, isChallenge != 0, false};
  const char *key = nullptr, *value = nullptr;
  while (sd_bus_message_read(reply, "{ss}", &key, &value) > 0) {
    if (std::strcmp(key, "polkit.dismissed") == 0) answer.isDismissed = true;
  }
  return answer;
}

Result<Answer> check(SystemBus& bus, uint32_t flags, Deadline deadline) {
  const BusMessage call = bus.newCall(kService, kPath, kInterface, "CheckAuthorization");
  // No details: polkit takes them from trusted callers only. So the prompt has the words of the policy file.
  if (!call || appendSubject(call.get()) < 0 ||
      sd_bus_message_append(call.get(), "sa{ss}us", kAction, 0, flags, flags == 0 ? "" : kCancellation) < 0) {
    return Error{"polkit cannot be asked"};
  }
  const auto reply = bus.call(call, deadline);
  return reply ? read(reply->get()) : reply.error();
}

}  // namespace

Result<void> canAuthorizeUnlock(SystemBus& bus, Deadline deadline) {
  const auto answer = check(bus, 0, deadline);
  if (!answer) return Error{"polkit cannot ask for the password: " + answer.error().description};
  if (!answer->isAuthorized && !answer->isChallenge) return Error{"polkit's rules refuse to unlock Pillora"};
  return {};
}

Result<void> authorizeUnlock(SystemBus& bus, Deadline deadline) {
  const auto answer = check(bus, kAllowUserInteraction, deadline);
  if (!answer) {
    bus.ignoreCancel();
    const BusMessage cancel = bus.newCall(kService, kPath, kInterface, "CancelCheckAuthorization");
    if (cancel) sd_bus_message_append(cancel.get(), "s", kCancellation);
    static_cast<void>(bus.call(cancel, after(kTidyTime)));
    return answer.error();
  }
  if (answer->isAuthorized) return {};
  if (answer->isDismissed) return Error{"the prompt was dismissed"};
  return Error{answer->isChallenge ? "no program is there to show the prompt" : "the user was not authenticated"};
}

}  // namespace pillora
