// SPDX-License-Identifier: MIT
#include "app/AppFixture.h"

#include <sqlite3.h>

namespace pillora {

ForeignConnection::ForeignConnection(const std::string& path) {
  if (sqlite3_open(path.c_str(), &database_) != SQLITE_OK) std::abort();
}

ForeignConnection::~ForeignConnection() { sqlite3_close(database_); }

int ForeignConnection::run(const std::string& sql) {
  return sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr);
}

std::unique_ptr<ModelContainer> openStore(MainExecutor& executor, const std::string& path) {
  ModelConfiguration configuration;
  configuration.path = path;
  configuration.isStoredInMemoryOnly = path.empty();
  return valueOrAbort(ModelContainer::open(configuration, executor));
}

std::shared_ptr<Medicine> addMedicine(ModelContext& context, const ReminderInterval& interval, Instant startDate) {
  NewMedicine values;
  values.name = "Aspirin";
  values.interval = interval;
  values.startDate = startDate;
  auto medicine = Medicine::make(std::move(values), startDate);
  context.insert(medicine);
  return medicine;
}

std::vector<std::shared_ptr<DoseLog>> allLogs(ModelContext& context) {
  auto logs = context.fetch(FetchDescriptor<DoseLog>().sortedBy(&DoseLog::scheduledTime));
  if (!logs) {
    std::cerr << logs.error().description << '\n';
    std::abort();
  }
  return *std::move(logs);
}

std::vector<Instant> scheduledTimes(ModelContext& context) {
  std::vector<Instant> times;
  for (const auto& log : allLogs(context)) times.push_back(log->scheduledTime());
  return times;
}

}  // namespace pillora
