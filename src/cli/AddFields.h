// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "cli/CommandLine.h"
#include "cli/Session.h"
#include "model/Medicine.h"

namespace pillora {

/// The new medicine that the words of `add` describe, the form's own values standing in for what was not given.
struct AddFields {
  NewMedicine values;
  std::optional<Error> refused;  ///< the first value that the form could not have produced
};

/// Reads all words before it answers. Errors are wrong usage: a word that does not have the shape of its option.
Result<AddFields> readAddFields(const CommandLine& line, const Session& session);

}  // namespace pillora
