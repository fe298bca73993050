// SPDX-License-Identifier: MIT
#include "cli/Commands.h"
#include "cli/MedicineFields.h"
#include "cli/RecordJson.h"
#include "cli/Rendering.h"
#include "screens/MedicineDetailView.h"
#include "screens/MedicineEditing.h"
#include "support/Json.h"

namespace pillora {

namespace {

/// What the screen holds after the stored record, whose schedule is spelled out.
std::string detailJson(const MedicineDetailContent& content, const Medicine& medicine) {
  Json record = Json::object();
  const Json stored = recordJson(medicine);
  for (const auto& [name, value] : stored.items()) {
    if (name == "intervalData") {
      record["interval"] = intervalToJson(medicine.interval());
    } else {
      record[name] = value;
    }
  }
  Json json = Json::object({{"title", content.title}, {"record", std::move(record)}});
  const Json shown = toJson(content);
  for (const auto& [name, value] : shown.items()) json[name] = value;
  return jsonLine(json);
}

}  // namespace

Result<Action> medicineCommand(const CommandLine& line, Session& session) {
  return Action([&session, ref = *line.ref]() -> Result<std::string> {
    const auto screens = session.open();
    if (!screens) return screens.error();
    const auto medicine = session.medicine(ref);
    if (!medicine) return medicine.error();
    const MedicineDetailContent content = MedicineDetailView(*screens, (*medicine)->id()).content();
    if (auto error = screens->context.takeReadError()) return *std::move(error);
    if (session.json()) return detailJson(content, **medicine);
    return rendered(content, session.terminal(), session.texts());
  });
}

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
    MedicineDetailView details(*screens, (*medicine)->id());
    details.edit();
    writeFields(fields, line, **medicine);
    details.save();
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
    MedicineDetailView details(*screens, (*medicine)->id());
    details.askToDelete();
    details.delete_();
    if (const auto saved = session.save(); !saved) return saved.error();
    if (session.json()) return jsonLine(Json::object({{"id", toJson((*medicine)->id())}}));
    return messageLine(screens->texts.text("Deleted: {name}", {{"name", (*medicine)->name()}}), session);
  });
}

}  // namespace pillora
