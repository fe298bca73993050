// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

#include "doubles/Instants.h"
#include "lives/Inspection.h"

namespace pillora {
namespace {

/// Takes the doses of Upcoming one after another and tells of each that was reported as taken.
[[noreturn]] void takeDosesUntilKilled(World& world, int reports) {
  Process process(world);
  for (;;) {
    const auto days = process.upcoming.content().days;
    if (days.empty()) break;
    const auto& card = days.front().doses.front();
    const bool isTaken = static_cast<bool>(process.upcoming.take(card.medicineId, card.time));
    process.executor.drain();
    if (!isTaken || process.context().hasChanges() || write(reports, "t", 1) != 1) _exit(1);
  }
  _exit(0);
}

class RealKill : public ::testing::Test {
 protected:
  RealKill() {
    Process process(world);
    EXPECT_TRUE(process.app->rootViewAppeared());
    AddMedicineView form(process.environment());
    form.setText("name", "Aspirin");
    form.choose("intervalType", "Hourly");
    NewMedicine values;
    values.name = "Aspirin";
    values.startDate = world.clock.now();
    values.interval = {ReminderIntervalType::hourly, 4, {{9, 0}}, {2, 3, 4, 5, 6}, {9, 0}, {1}, {9, 0}, 480};
    ledger.records.settings = SettingsBackup();
    ledger.submitCheck(world.clock.now());
    ledger.plan(ledger.add(*form.save(), values, world.clock.now()), 30, world.clock.now());
    process.executor.drain();
  }

  /// How many doses were reported before the child was killed.
  size_t takeAndKillAfter(size_t doses) {
    std::array<int, 2> reports{};
    EXPECT_EQ(pipe(reports.data()), 0);
    const pid_t child = fork();
    if (child == 0) takeDosesUntilKilled(world, reports[1]);
    close(reports[1]);
    char report = 0;
    size_t reported = 0;
    while (reported < doses && read(reports[0], &report, 1) == 1) ++reported;
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    while (read(reports[0], &report, 1) == 1) ++reported;
    close(reports[0]);
    return reported;
  }

  World world{at("2025-03-08T12:00:00Z"), "en_US", "America/New_York"};
  Ledger ledger{world.calendar, world.gregorian};
};

TEST_F(RealKill, everyDoseThatWasReportedIsKeptAndNoneTwice) {
  const Instant now = world.clock.now();
  const auto doses = ledger.upcoming(now);
  size_t taken = 0;
  for (size_t round = 1; taken + 12 < doses.size(); ++round) {
    const size_t reported = takeAndKillAfter(round % 4);
    Process process(world);
    const auto count = process.context().fetchCount<DoseLog>();
    ASSERT_TRUE(count);
    const size_t kept = static_cast<size_t>(*count) - taken;
    EXPECT_GE(kept, reported);
    EXPECT_LE(kept, reported + 1) << "only the turn under way may be kept without a report";
    BookedMedicine& medicine = ledger.records.medicines.front();
    for (size_t i = 0; i < kept; ++i) {
      ledger.book(medicine, std::nullopt, doses.at(taken + i).second, now, DoseStatus::taken);
    }
    taken += kept;
    Inspection inspection(ledger, process);
    inspection.adoptMarked();
    inspection.records();
    inspection.reminders();
    inspection.screens();
    ASSERT_EQ(inspection.fault(), "") << "round " << round;
  }
}

}  // namespace
}  // namespace pillora
