// SPDX-License-Identifier: MIT
#include "agent/ProgramWatch.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/epoll.h>
#include <unistd.h>
#include <utility>

#include "agent/ProcessLauncher.h"

namespace pillora {

ProgramWatch::ProgramWatch(sd_event* loop, std::string program, std::function<bool()> isBusy, Pauses pauses)
    : loop_(loop), program_(std::move(program)), isBusy_(std::move(isBusy)), pauses_(pauses) {
  const std::filesystem::path path(program_);
  name_ = path.filename().string();
  auto folder = FolderWatch::open(path.parent_path().string());
  if (!folder) return;
  folder_ = *std::move(folder);
  sd_event_source* source = nullptr;
  const auto happened = [](sd_event_source*, int, uint32_t, void* self) {
    auto& watch = *static_cast<ProgramWatch*>(self);
    if (watch.folder_->takeChanges({watch.name_})) watch.lookIn(watch.pauses_.untilSettled);
    return 0;
  };
  if (sd_event_add_io(loop, &source, folder_->descriptor(), EPOLLIN, happened, this) >= 0) changes_.reset(source);
  look();  // it may have changed since this process began
}

void ProgramWatch::lookIn(std::chrono::milliseconds pause) {
  sd_event_source* source = nullptr;
  const auto isTime = [](sd_event_source*, uint64_t, void* self) {
    static_cast<ProgramWatch*>(self)->look();
    return 0;
  };
  const auto microseconds = static_cast<uint64_t>(std::chrono::microseconds(pause).count());
  if (sd_event_add_time_relative(loop_, &source, CLOCK_MONOTONIC, microseconds, 0, isTime, this) >= 0) {
    timer_.reset(source);
  }
}

void ProgramWatch::look() {
  std::error_code failure;
  if (isBusy_() || asked_) {
    lookIn(pauses_.untilSettled);
  } else if (access(program_.c_str(), F_OK) != 0) {
    const bool isRemoved = errno == ENOENT || errno == ENOTDIR;
    isRemoved ? static_cast<void>(sd_event_exit(loop_, 0)) : lookIn(pauses_.untilTriedAgain);
  } else if (!std::filesystem::equivalent("/proc/self/exe", program_, failure)) {
    askForItsVersion();
  }
}

void ProgramWatch::askForItsVersion() {
  const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
  const auto process = spawn({program_, "--version"}, nowhere);
  if (nowhere >= 0) close(nowhere);
  if (!process) return answered(false);
  sd_event_source* source = nullptr;
  const auto ended = [](sd_event_source*, const siginfo_t* how, void* self) {
    auto& watch = *static_cast<ProgramWatch*>(self);
    watch.asked_.reset();
    watch.answered(how->si_code == CLD_EXITED && how->si_status == 0);
    return 0;
  };
  if (sd_event_add_child(loop_, &source, *process, WEXITED, ended, this) >= 0) asked_.reset(source);
}

void ProgramWatch::answered(bool canRun) {
  if (!canRun) return lookIn(pauses_.untilTriedAgain);
  // It may have become busy while it waited.
  if (isBusy_()) return lookIn(pauses_.untilSettled);
  sd_event_exit(loop_, kReplaced);
}

}  // namespace pillora
