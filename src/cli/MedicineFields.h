// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "cli/CommandLine.h"
#include "cli/Session.h"
#include "model/Medicine.h"

namespace pillora {

/// The values that the words of `add` or `edit` describe, the form's own standing in for what was not given.
struct MedicineFields {
  NewMedicine values;
  std::optional<Error> refused;  ///< the first value that the form could not have produced
};

// Both read all words before they answer. Errors are wrong usage: a word that does not have the shape of its option.

Result<MedicineFields> readAddFields(const CommandLine& line, const Session& session);
Result<MedicineFields> readEditFields(const CommandLine& line, const Session& session);

/// Writes into the medicine those of the values whose words were given.
void writeFields(const MedicineFields& fields, const CommandLine& line, Medicine& medicine);

}  // namespace pillora
