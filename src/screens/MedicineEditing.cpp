// SPDX-License-Identifier: MIT
#include "screens/MedicineEditing.h"

#include <utility>

namespace pillora {

std::shared_ptr<Medicine> addMedicine(const ScreenEnvironment& environment, NewMedicine values) {
  auto medicine = Medicine::make(std::move(values), environment.clock.now());
  environment.context.insert(medicine);
  if (medicine->isActive()) environment.notifications.scheduleUpcomingNotifications(*medicine, kPlannedReminders);
  return medicine;
}

void saveMedicine(const ScreenEnvironment& environment, Medicine& medicine) {
  medicine.updatedAt = environment.clock.now();
  planRemindersAnew(environment, medicine);
}

void planRemindersAnew(const ScreenEnvironment& environment, const Medicine& medicine) {
  environment.notifications.cancelNotifications(medicine);
  if (medicine.isActive()) environment.notifications.scheduleUpcomingNotifications(medicine, kPlannedReminders);
}

void deleteMedicine(const ScreenEnvironment& environment, const std::shared_ptr<Medicine>& medicine) {
  environment.notifications.cancelNotifications(*medicine);
  environment.context.delete_(medicine);
}

}  // namespace pillora
