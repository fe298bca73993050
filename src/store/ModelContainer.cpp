// SPDX-License-Identifier: MIT
#include "store/ModelContainer.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <utility>

#include "store/StoreFile.h"

namespace pillora {

Result<std::unique_ptr<ModelContainer>> ModelContainer::open(const ModelConfiguration& configuration,
                                                             MainExecutor& executor, const Schema& schema) {
  auto database = openStoreFile(configuration, schema);
  if (!database) return database.error();
  try {
    std::unique_ptr<ModelContext> context(new ModelContext(*std::move(database), executor, configuration.clock));
    return std::unique_ptr<ModelContainer>(new ModelContainer(std::move(context)));
  } catch (const SQLite::Exception& failure) {
    return Error{std::string("the store cannot be read (") + failure.what() + ")"};
  }
}

ModelContainer::ModelContainer(std::unique_ptr<ModelContext> mainContext) : mainContext_(std::move(mainContext)) {}

ModelContainer::~ModelContainer() {
  // There is nobody left to tell: what cannot be written now is lost, as it would be with the process.
  static_cast<void>(mainContext_->save());
}

ModelContext& ModelContainer::mainContext() { return *mainContext_; }

}  // namespace pillora
