// SPDX-License-Identifier: MIT
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <unistd.h>

#include "linux/QueuedMainExecutor.h"
#include "store/ModelContainer.h"

// Takes and undoes doses in a store until it is killed or has done as many steps as it was told:
//
//     pillora_take_loop STORE take|switch SEED DOSES STEPS
//
// The store's first medicine has the doses 0 to DOSES - 1, a minute apart. Each step picks one and takes it if it is
// not taken; "switch" undoes it if it is. Look-up and change are one transaction. After the save has succeeded, and
// never before, it writes the line "+3" when it took dose 3, "-3" when it undid it. "!3" means that it met the dose
// twice.

namespace pillora {
namespace {

/// What the step did, as its line begins; 0 when there was nothing to do or it could not be saved.
char step(ModelContext& context, bool undoes, int64_t dose) {
  if (!context.beginWriting()) return 0;
  const auto medicines = context.fetch<Medicine>(FetchDescriptor<Medicine>().limitedTo(1));
  if (!medicines || medicines->empty()) return 0;
  const auto& medicine = medicines->front();
  const Instant time = Instant::fromSeconds(dose * 60);
  const auto logs = medicine->doseLogs(time, time + std::chrono::minutes(1));
  if (logs.size() > 1) return '!';
  if (!logs.empty() && !undoes) return 0;
  if (logs.empty()) {
    context.insert(DoseLog::make(time, time, DoseStatus::taken, 0, {}, medicine));
  } else {
    medicine->removeDoseLog(logs.front());
    context.delete_(logs.front());
  }
  if (!context.save()) return 0;
  return logs.empty() ? '+' : '-';
}

int run(char** arguments) {
  QueuedMainExecutor queue;
  auto opened = ModelContainer::open({.path = arguments[1]}, queue);
  if (!opened) {
    std::fprintf(stderr, "%s\n", opened.error().description.c_str());
    return 1;
  }
  const bool undoes = std::strcmp(arguments[2], "switch") == 0;
  std::mt19937_64 random(std::strtoull(arguments[3], nullptr, 10));
  std::uniform_int_distribution<int64_t> doses(0, std::atoll(arguments[4]) - 1);
  for (long long left = std::atoll(arguments[5]); left > 0; --left) {
    const int64_t dose = doses(random);
    const char done = step((*opened)->mainContext(), undoes, dose);
    queue.drain();
    if (done == 0) continue;
    const std::string line = done + std::to_string(dose) + '\n';
    if (::write(STDOUT_FILENO, line.data(), line.size()) != static_cast<ssize_t>(line.size())) return 1;
  }
  return 0;
}

}  // namespace
}  // namespace pillora

int main(int count, char** arguments) { return count == 6 ? pillora::run(arguments) : 2; }
