// SPDX-License-Identifier: MIT
#include "cli/Commands.h"
#include "cli/MedicineFields.h"
#include "screens/MedicineEditing.h"
#include "support/Json.h"

namespace pillora {

Result<Action> addCommand(const CommandLine& line, Session& session) {
  auto fields = readAddFields(line, session);
  if (!fields) return fields.error();
  return Action([&session, fields = *std::move(fields)]() -> Result<std::string> {
    if (fields.refused) return *fields.refused;
    const auto screens = session.open();
    if (!screens) return screens.error();
    const auto medicine = addMedicine(*screens, fields.values);
    if (const auto saved = session.save(); !saved) return saved.error();
    if (session.json()) return jsonLine(Json::object({{"id", toJson(medicine->id())}}));
    return messageLine(screens->texts.text("Added: {name}", {{"name", medicine->name()}}), session);
  });
}

Result<Action> editCommand(const CommandLine& line, Session& session) {
  auto fields = readEditFields(line, session);
  if (!fields) return fields.error();
  return Action([&session, &line, fields = *std::move(fields)]() -> Result<std::string> {
    if (fields.refused) return *fields.refused;
    const auto screens = session.open();
    if (!screens) return screens.error();
    if (const auto begun = screens->context.beginWriting(); !begun) return begun.error();
    const auto medicine = session.medicine(*line.ref);
    if (!medicine) return medicine.error();
    writeFields(fields, line, **medicine);
    saveMedicine(*screens, **medicine);
    if (const auto saved = session.save(); !saved) return saved.error();
    if (session.json()) return jsonLine(Json::object({{"id", toJson((*medicine)->id())}}));
    return messageLine(screens->texts.text("Saved: {name}", {{"name", (*medicine)->name()}}), session);
  });
}

Result<Action> deleteCommand(const CommandLine& line, Session& session) {
  return Action([&session, ref = *line.ref]() -> Result<std::string> {
    const auto screens = session.open();
    if (!screens) return screens.error();
    if (const auto begun = screens->context.beginWriting(); !begun) return begun.error();
    const auto medicine = session.medicine(ref);
    if (!medicine) return medicine.error();
    deleteMedicine(*screens, *medicine);
    if (const auto saved = session.save(); !saved) return saved.error();
    if (session.json()) return jsonLine(Json::object({{"id", toJson((*medicine)->id())}}));
    return messageLine(screens->texts.text("Deleted: {name}", {{"name", (*medicine)->name()}}), session);
  });
}

}  // namespace pillora
