// SPDX-License-Identifier: MIT
#include "model/Medicine.h"

#include <algorithm>

namespace pillora {

std::string unitText(const std::string& unit, const Texts& texts) {
  const bool isOurs = std::find(kUnitWords.begin(), kUnitWords.end(), unit) != kUnitWords.end();
  return isOurs ? texts.textIn("unit", unit) : unit;
}

Medicine::Medicine() : Medicine(NewMedicine()) {}

Medicine::Medicine(NewMedicine values)
    : id(this, UUID::random()),
      name(this, std::move(values.name)),
      dosage(this, std::move(values.dosage)),
      unit(this, std::move(values.unit)),
      instructions(this, std::move(values.instructions)),
      color(this, std::move(values.color)),
      icon(this, std::move(values.icon)),
      intervalData(this, {}),
      isActive(this, values.isActive),
      allowSnooze(this, values.allowSnooze),
      snoozeDurationMinutes(this, values.snoozeDurationMinutes),
      maxSnoozeCount(this, values.maxSnoozeCount),
      isRepeating(this, values.isRepeating),
      createdAt(this, Instant()),
      updatedAt(this, Instant()),
      startDate(this, values.startDate),
      endDate(this, values.endDate) {}

std::shared_ptr<Medicine> Medicine::make(NewMedicine values, Instant now) {
  std::string data = encodeInterval(values.interval);
  std::shared_ptr<Medicine> medicine(new Medicine(std::move(values)));
  medicine->intervalData = std::move(data);
  medicine->createdAt = now;
  medicine->updatedAt = now;
  return medicine;
}

const ReminderInterval& Medicine::interval() const {
  if (!interval_ || intervalSource_ != intervalData()) {
    auto decoded = decodeInterval(intervalData());
    interval_ = decoded ? *std::move(decoded) : fallbackInterval();
    intervalSource_ = intervalData();
  }
  return *interval_;
}

std::string Medicine::resolvedColorName() const { return color().empty() ? "blue" : color(); }

std::optional<Instant> Medicine::nextDoseTime(Instant now, const Calendar& calendar) const {
  return isActive() ? interval().nextOccurrence(now, calendar) : std::nullopt;
}

std::vector<std::shared_ptr<DoseLog>> Medicine::doseLogs(Instant from, Instant to) const {
  std::vector<std::shared_ptr<DoseLog>> logs;
  if (host() != nullptr) logs = host()->doseLogs(id(), from, to);
  forEachOwnLog(from, to, [&](const std::shared_ptr<DoseLog>& log) { logs.push_back(log); });
  return logs;
}

std::vector<Instant> Medicine::loggedTimes(Instant from, Instant to) const {
  std::vector<Instant> times;
  if (host() != nullptr) times = host()->loggedTimes(id(), from, to);
  forEachOwnLog(from, to, [&](const std::shared_ptr<DoseLog>& log) { times.push_back(log->scheduledTime()); });
  std::sort(times.begin(), times.end());
  return times;
}

std::vector<Instant> Medicine::actedOnTimes(Instant from, Instant to) const {
  std::vector<Instant> times;
  if (host() != nullptr) times = host()->actedOnTimes(id(), from, to);
  forEachOwnLog(from, to, [&](const std::shared_ptr<DoseLog>& log) {
    const DoseStatus status = log->status();
    if (status == DoseStatus::taken || status == DoseStatus::skipped) times.push_back(log->scheduledTime());
  });
  std::sort(times.begin(), times.end());
  return times;
}

void Medicine::appendDoseLog(const std::shared_ptr<DoseLog>& log) {
  if (const auto former = log->medicine(); former && former.get() != this) former->removeDoseLog(log);
  log->medicineId = id();
  log->medicine_ = weak_from_this();

  // What the store has taken over since is the store's to list.
  if (host() != nullptr) std::erase_if(unstoredLogs_, [](const auto& each) { return each->host() != nullptr; });
  const bool isListed = (host() != nullptr && log->host() != nullptr) ||
                        std::find(unstoredLogs_.begin(), unstoredLogs_.end(), log) != unstoredLogs_.end();
  if (!isListed) unstoredLogs_.push_back(log);
}

void Medicine::removeDoseLog(const std::shared_ptr<DoseLog>& log) {
  if (log->medicineId() != id()) return;
  std::erase(unstoredLogs_, log);
  log->medicineId = std::nullopt;
  log->medicine_.reset();
}

template <typename Visitor>
void Medicine::forEachOwnLog(Instant from, Instant to, Visitor visit) const {
  for (const auto& log : unstoredLogs_) {
    const bool isStoreds = host() != nullptr && log->host() != nullptr;
    if (isStoreds || log->isDeleted() || log->medicineId() != id()) continue;
    if (log->scheduledTime() >= from && log->scheduledTime() < to) visit(log);
  }
}

}  // namespace pillora
