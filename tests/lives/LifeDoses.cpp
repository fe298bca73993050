// SPDX-License-Identifier: MIT
#include <array>
#include <chrono>

#include "lives/Life.h"
#include "screens/DoseActions.h"

namespace pillora {

// What the simulated person does with doses.

namespace {

constexpr std::array kAnswers = {"TAKEN_ACTION", "SNOOZE_ACTION", "SKIP_ACTION", "default", "dismiss"};

}  // namespace

/// Holds what an action answered against the ledger, and enters it there.
void Life::book(const Result<std::optional<UUID>>& log, BookedMedicine& medicine, Instant time, DoseStatus status) {
  if (!log) return expect(false, "the dose could not be logged: " + log.error().description);
  expect(log->has_value() == !ledger_.isDone(medicine, time),
         "whether a dose of " + medicine.values.name + " was open");
  if (*log) ledger_.book(medicine, **log, time, now(), status);
}

void Life::takeToday() {
  const auto cards = process_->today.content().doses;
  if (cards.empty()) return;
  const auto& card = oneOf(cards);
  note("takes " + card.name + " of " + iso8601(card.time) + " on Today");
  // Some people press twice.
  for (uint64_t presses = oneIn(10) ? 2 : 1; presses > 0; --presses) {
    const auto log = process_->today.take(card.medicineId, card.time);
    BookedMedicine& medicine = *ledger_.medicine(card.medicineId);
    book(log, medicine, card.time, DoseStatus::taken);
    if (log && *log) ledger_.plan(medicine, 1, now());
    endTurn();
  }
}

void Life::skipToday() {
  const auto cards = process_->today.content().doses;
  if (cards.empty()) return;
  const auto& card = oneOf(cards);
  note("skips " + card.name + " of " + iso8601(card.time) + " on Today");
  book(process_->today.skip(card.medicineId, card.time), *ledger_.medicine(card.medicineId), card.time,
       DoseStatus::skipped);
}

void Life::snoozeToday() {
  const auto cards = process_->today.content().doses;
  if (cards.empty()) return;
  const auto& card = oneOf(cards);
  note("snoozes " + card.name);
  const BookedMedicine& medicine = *ledger_.medicine(card.medicineId);
  expect(card.actions.size() == (medicine.values.allowSnooze ? 3U : 2U), "whether a card offers snoozing");
  const auto planned = process_->today.snooze(card.medicineId);
  if (!planned) return expect(false, "snoozing failed");
  expect(planned->has_value() == medicine.values.allowSnooze, "whether a dose can be snoozed");
  const Instant time = now() + std::chrono::minutes(medicine.values.snoozeDurationMinutes);
  if (*planned) {
    expect(**planned == reminderName(medicine.id, time), "the name of a snoozed reminder");
    ledger_.planOne(medicine, time, now());
  }
}

void Life::undoToday() {
  const auto rows = process_->today.content().activity;
  if (rows.empty()) return;
  const auto& row = oneOf(rows);
  note("undoes " + row.status + " of " + row.name + " at " + iso8601(row.time));
  expect(static_cast<bool>(process_->today.undo(row.id)), "undoing failed");
  ledger_.undo(row.id);
}

void Life::takeUpcoming() {
  const auto days = process_->upcoming.content().days;
  if (days.empty()) return;
  const auto& card = oneOf(oneOf(days).doses);
  note("takes " + card.name + " of " + iso8601(card.time) + " on Upcoming");
  book(process_->upcoming.take(card.medicineId, card.time), *ledger_.medicine(card.medicineId), card.time,
       DoseStatus::taken);
}

void Life::skipUpcoming() {
  const auto days = process_->upcoming.content().days;
  if (days.empty()) return;
  const auto& card = oneOf(days.front().doses);
  note("skips " + card.name + " of " + iso8601(card.time) + " on Upcoming");
  book(process_->upcoming.skip(card.medicineId, card.time), *ledger_.medicine(card.medicineId), card.time,
       DoseStatus::skipped);
}

/// A second program has the store open: what it does must be seen here, and the same dose cannot be logged by both.
void Life::actElsewhere() {
  const auto cards = process_->today.content().doses;
  if (cards.empty()) return;
  const auto& card = oneOf(cards);
  note("takes " + card.name + " in another program");
  StoppingExecutor executor;
  const auto other = valueOrAbort(ModelContainer::open({.path = world_.storePath()}, executor));
  ScreenEnvironment there{other->mainContext(), world_.clock, world_.calendar, world_.texts, process_->notifications()};
  BookedMedicine& medicine = *ledger_.medicine(card.medicineId);
  book(takeDose(there, card.medicineId, card.time), medicine, card.time, DoseStatus::taken);
  executor.drain();
  if (oneIn(2)) process_->context().refresh();
  book(process_->today.skip(card.medicineId, card.time), medicine, card.time, DoseStatus::skipped);
}

void Life::changeInHistory() {
  process_->history.selectedTimeRange = kAllTimeRanges[below(kAllTimeRanges.size())];
  process_->history.selectedFilter = oneIn(2) ? HistoryFilter::missed : HistoryFilter::all;
  process_->history.rowLimit = 100;
  const auto days = process_->history.content().days;
  if (days.empty()) return;
  const auto& row = oneOf(oneOf(days).logs);
  const DoseStatus status = oneIn(3) ? DoseStatus::skipped : DoseStatus::taken;
  note("marks " + row.status + " of " + row.name + " as " + std::string(rawValue(status)) + " in History");
  BookedLog* log = ledger_.log(row.id);
  if (log == nullptr) return expect(false, "History shows a log that is gone");
  const bool isOffered =
      log->status == DoseStatus::missed || (log->status == DoseStatus::skipped && status == DoseStatus::taken);
  const auto changed = process_->history.onStatusChange(row.id, status);
  expect(changed && *changed == isOffered, "whether a status could be changed in History");
  expect((status == DoseStatus::taken ? row.canTake : row.canSkip) == isOffered, "whether History offers the change");
  if (!isOffered) return;
  log->status = status;
  log->actionTime = now();
}

/// An answer is broadcast and changes nothing.
void Life::answerNotification() {
  auto& deliveries = world_.presenter.deliveries;
  if (deliveries.empty()) return;
  const std::string answer = oneOf(kAnswers);
  note("answers a notification: " + answer);
  process_->center->answered(oneOf(deliveries).bubble, answer);
  deliveries.clear();
}

}  // namespace pillora
