// SPDX-License-Identifier: MIT
#include "ui/DoseModels.h"

namespace pillora {

namespace {

template <typename T>
bool wasDone(const Result<std::optional<T>>& outcome) {
  return outcome && *outcome;
}

}  // namespace

void DoseModel::finishAction(bool isDone) {
  if (isDone && settingsShown(settings_).enableHaptics()) desktop_.vibrate();
  emit acted();
}

void TodayModel::take(const QString& medicine, Instant time) {
  finishAction(wasDone(view_.take(uuidOf(medicine), time)));
}

void TodayModel::snooze(const QString& medicine) { finishAction(wasDone(view_.snooze(uuidOf(medicine)))); }

void TodayModel::skip(const QString& medicine, Instant time) {
  finishAction(wasDone(view_.skip(uuidOf(medicine), time)));
}

void TodayModel::undo(const QString& log) { finishAction(static_cast<bool>(view_.undo(uuidOf(log)))); }

void UpcomingModel::take(const QString& medicine, Instant time) {
  finishAction(wasDone(view_.take(uuidOf(medicine), time)));
}

void UpcomingModel::skip(const QString& medicine, Instant time) {
  finishAction(wasDone(view_.skip(uuidOf(medicine), time)));
}

void UpcomingModel::showMore() {
  view_.showMore();
  emit acted();
}

void UpcomingModel::showPrevious() {
  view_.showPrevious();
  emit acted();
}

void UpcomingModel::showFirst() {
  view_.showFirst();
  emit acted();
}

void HistoryModel::selectRange(const QString& range) {
  for (const TimeRange each : kAllTimeRanges) {
    if (rawValue(each) == range.toStdString()) view_.selectedTimeRange = each;
  }
  view_.showLatest();
  emit acted();
}

void HistoryModel::selectFilter(const QString& filter) {
  for (const HistoryFilter each : kAllHistoryFilters) {
    if (rawValue(each) == filter.toStdString()) view_.selectedFilter = each;
  }
  view_.showLatest();
  emit acted();
}

void HistoryModel::act(const QString& log, const QString& action) {
  const DoseStatus status = action == QStringLiteral("take") ? DoseStatus::taken : DoseStatus::skipped;
  const auto changed = view_.onStatusChange(uuidOf(log), status);
  finishAction(changed && *changed);
}

void HistoryModel::showMore() {
  view_.showMore();
  emit acted();
}

void HistoryModel::showPrevious() {
  view_.showPrevious();
  emit acted();
}

void HistoryModel::showFirst() {
  view_.showLatest();
  emit acted();
}

}  // namespace pillora
