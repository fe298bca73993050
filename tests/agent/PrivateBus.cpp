// SPDX-License-Identifier: MIT
#include "agent/PrivateBus.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace pillora {

namespace {

constexpr std::chrono::seconds kLongest{10};

std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (const std::string& text : texts) pointers.push_back(const_cast<char*>(text.c_str()));
  pointers.push_back(nullptr);
  return pointers;
}

std::string configuration(const std::string& folder) {
  return "<busconfig><type>session</type><listen>unix:path=" + folder +
         "/bus</listen><auth>EXTERNAL</auth><servicedir>" + folder +
         "/services</servicedir><policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
         "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>\n";
}

}  // namespace

StartedProgram::StartedProgram(const std::vector<std::string>& command, const std::vector<std::string>& environment,
                               int inherited) {
  process_ = fork();
  if (process_ != 0) return;
  if (inherited >= 0) fcntl(inherited, F_SETFD, 0);
  for (const std::string& each : environment) putenv(const_cast<char*>(each.c_str()));
  const auto arguments = pointersTo(command);
  execvp(arguments[0], arguments.data());
  _exit(127);
}

StartedProgram& StartedProgram::operator=(StartedProgram&& other) noexcept {
  std::swap(process_, other.process_);
  return *this;
}

void StartedProgram::kill() {
  if (process_ <= 0) return;
  ::kill(process_, SIGKILL);
  waitpid(std::exchange(process_, -1), nullptr, 0);
}

int StartedProgram::wait() {
  int status = 0;
  waitpid(std::exchange(process_, -1), &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

PrivateBus::PrivateBus() {
  std::filesystem::create_directories(services());
  const std::string file = folder_.path() + "/bus.conf";
  std::ofstream(file) << configuration(folder_.path());
  int ends[2] = {-1, -1};
  if (pipe2(ends, O_CLOEXEC) != 0) ADD_FAILURE() << "no pipe";
  daemon_ = StartedProgram(
      {"dbus-daemon", "--nofork", "--nopidfile", "--config-file=" + file, "--print-address=" + std::to_string(ends[1])},
      {}, ends[1]);
  close(ends[1]);
  char letter = 0;
  while (read(ends[0], &letter, 1) == 1 && letter != '\n') address_ += letter;
  close(ends[0]);
  EXPECT_FALSE(address_.empty()) << "the message bus did not start";
}

BusHandle PrivateBus::connect() const {
  sd_bus* bus = nullptr;
  const bool opened = sd_bus_new(&bus) >= 0 && sd_bus_set_address(bus, address_.c_str()) >= 0 &&
                      sd_bus_set_bus_client(bus, 1) >= 0 && sd_bus_start(bus) >= 0;
  EXPECT_TRUE(opened) << "no connection to the private bus";
  return BusHandle(bus);
}

bool PrivateBus::pumpUntil(const std::vector<sd_bus*>& connections, const std::function<bool()>& happened) {
  const auto deadline = std::chrono::steady_clock::now() + kLongest;
  while (!happened()) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    if (left.count() <= 0) return false;
    bool handled = false;
    for (sd_bus* bus : connections) handled = sd_bus_process(bus, nullptr) > 0 || handled;
    if (handled) continue;
    std::vector<pollfd> sockets;
    for (sd_bus* bus : connections) {
      sockets.push_back({sd_bus_get_fd(bus), static_cast<short>(sd_bus_get_events(bus)), 0});
    }
    // What is waited for may also show in an answer that comes without a message to us.
    poll(sockets.data(), sockets.size(), static_cast<int>(std::min<int64_t>(left.count(), 10)));
  }
  return true;
}

bool PrivateBus::isOwned(sd_bus* connection, const std::string& name) {
  const auto owned = pillora::isOwned(connection, name.c_str());
  return owned && *owned;
}

}  // namespace pillora
