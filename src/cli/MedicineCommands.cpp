// SPDX-License-Identifier: MIT
#include "cli/AddFields.h"
#include "cli/Commands.h"
#include "support/Json.h"

namespace pillora {

Result<Action> addCommand(const CommandLine& line, Session& session) {
  auto fields = readAddFields(line, session);
  if (!fields) return fields.error();
  return Action([&session, fields = *std::move(fields)]() -> Result<std::string> {
    if (fields.refused) return *fields.refused;
    const auto screens = session.open();
    if (!screens) return screens.error();
    const auto medicine = Medicine::make(fields.values, session.now());
    screens->context.insert(medicine);
    if (const auto saved = session.save(); !saved) return saved.error();
    if (session.json()) return jsonLine(Json::object({{"id", toJson(medicine->id())}}));
    return messageLine(screens->texts.text("Added: {name}", {{"name", medicine->name()}}), session);
  });
}

Result<Action> deleteCommand(const CommandLine& line, Session& session) {
  return Action([&session, ref = *line.ref]() -> Result<std::string> {
    const auto screens = session.open();
    if (!screens) return screens.error();
    if (const auto begun = screens->context.beginWriting(); !begun) return begun.error();
    const auto medicine = session.medicine(ref);
    if (!medicine) return medicine.error();
    screens->context.delete_(*medicine);
    if (const auto saved = session.save(); !saved) return saved.error();
    if (session.json()) return jsonLine(Json::object({{"id", toJson((*medicine)->id())}}));
    return messageLine(screens->texts.text("Deleted: {name}", {{"name", (*medicine)->name()}}), session);
  });
}

}  // namespace pillora
