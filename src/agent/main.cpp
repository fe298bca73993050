// SPDX-License-Identifier: MIT
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include "agent/Agent.h"
#include "agent/ProcessLauncher.h"
#include "agent/ProgramWatch.h"
#include "agent/TimerFd.h"
#include "agent/ZoneWatch.h"
#include "linux/Folders.h"
#include "linux/SystemClock.h"
#include "platform/Bundle.h"

namespace pillora {
namespace {

Result<int> run(const std::string& program) {
  sd_event* loop = nullptr;
  sd_bus* session = nullptr;
  if (const int made = sd_event_default(&loop); made < 0) return busError("event loop", made);
  const EventHandle event(loop);
  if (const int opened = sd_bus_open_user(&session); opened < 0) return busError("no session bus", opened);
  const BusHandle bus(session);
  if (const int attached = sd_bus_attach_event(session, loop, SD_EVENT_PRIORITY_NORMAL); attached < 0) {
    return busError("session bus", attached);
  }
  sd_bus_set_exit_on_disconnect(session, 1);
  sd_bus_set_close_on_exit(session, 0);  // what lies in its queue is still handled
  sd_event_add_signal(loop, nullptr, SIGTERM, nullptr, nullptr);
  sd_event_add_signal(loop, nullptr, SIGINT, nullptr, nullptr);

  const auto folder = stateFolder();
  if (!folder) return folder.error();
  const auto timer = TimerFd::open(loop);
  if (!timer) return timer.error();
  const SystemClock clock;
  LibraryZone zone;
  ProcessLauncher launcher(loop, siblingProgram("pilloractl"));
  const auto agent = Agent::start({session, clock, **timer, zone, launcher}, *folder + "/reminders.db");
  if (!agent) return agent.error();
  if (*agent == nullptr) {
    std::fputs("pillora-agent: another one is running already\n", stderr);
    return 0;
  }
  const ZoneWatch zoneWatch(loop, "/etc", [&agent = **agent] { agent.zoneChanged(); });
  const ProgramWatch programWatch(loop, program, [&launcher] { return launcher.running() > 0; });
  const int ended = sd_event_loop(loop);
  (*agent)->retire();
  return ended;
}

constexpr std::string_view kHelp = R"(Shows the reminders that Pillora has planned.
Usage: pillora-agent

It is started by the message bus or at login and takes no arguments but these.

Options:
  --help                      Print this help and end.
  --version                   Print the version and end.
)";

/// What the program does with arguments, which end it.
int answer(std::string_view argument) {
  if (argument == "--version") {
    std::cout << "pillora-agent " << Bundle().shortVersion << '\n';
  } else if (argument == "--help") {
    std::cout << kHelp;
  } else {
    std::cerr << "pillora-agent: there is no option '" << argument << "'; see pillora-agent --help\n";
    return 2;
  }
  return EXIT_SUCCESS;
}

}  // namespace
}  // namespace pillora

int main(int count, char** arguments) {
  if (count > 1) return pillora::answer(arguments[1]);
  umask(077);
  std::signal(SIGPIPE, SIG_IGN);  // whoever listened to our standard error may be gone
  // The event loop asks for these.
  sigset_t awaited;
  sigemptyset(&awaited);
  for (const int signal : {SIGTERM, SIGINT, SIGCHLD}) sigaddset(&awaited, signal);
  sigprocmask(SIG_BLOCK, &awaited, nullptr);

  const std::string program = pillora::ownProgram();
  const auto ended = pillora::run(program);
  // The same process goes on with the new program: whoever watches over it sees no end.
  if (ended && *ended == pillora::ProgramWatch::kReplaced) execv(program.c_str(), arguments);
  if (ended) return *ended == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
  std::fprintf(stderr, "pillora-agent: %s\n", ended.error().description.c_str());
  return EXIT_FAILURE;
}
