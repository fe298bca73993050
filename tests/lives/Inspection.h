// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "lives/Ledger.h"
#include "lives/World.h"

namespace pillora {

/// Holds what a running Pillora shows and keeps against the ledger. The first thing that is wrong is kept as a text.
class Inspection {
 public:
  using Lines = std::vector<std::string>;

  Inspection(Ledger& ledger, Process& process) : ledger_(ledger), process_(process), world_(process.world) {}

  /// Gives the logs that a marking has written the identities that the store chose for them. What was marked must be
  /// what the ledger marked, log for log.
  void adoptMarked();
  /// After each step: Today, the badge, the lock, what comes next, and History in one selection.
  void glance(TimeRange range, HistoryFilter filter);
  void upcoming();
  /// All screens with all that they show.
  void screens();
  /// Every record with every field.
  void records();
  void reminders();
  /// What of the reminders can be compared at once: their names, the category, the background check.
  void reminderNames();

  bool isFine() const { return fault_.empty(); }
  const std::string& fault() const { return fault_; }
  void expect(bool isTrue, std::string_view what);
  void expectEqual(std::string_view what, const Lines& expected, const Lines& actual);

 private:
  Instant now() const { return world_.clock.now(); }

  void today();
  void medicines();
  void details(const BookedMedicine& medicine, const MedicineRowView& row);
  void history(TimeRange range, HistoryFilter filter, bool withRows);
  void settings();

  Ledger& ledger_;
  Process& process_;
  World& world_;
  std::string fault_;
};

/// Every screen as JSON text, by name; History over all time.
std::map<std::string, std::string> screensOf(Process& process);

}  // namespace pillora
