// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "support/Result.h"

namespace pillora {

/// A language for the system's own texts. The English text is the key; a language that does not know it answers with
/// the English. Implementations never change after they are made and may be used from several threads.
class Language {
 public:
  virtual ~Language() = default;

  virtual std::string translated(std::string_view english) const = 0;
  /// The form that this language uses for the count `n`. English knows two, `one` and `other`.
  virtual std::string translatedCount(int64_t n, std::string_view one, std::string_view other) const = 0;
};

/// "en", or "en-XA" (also "en_XA"): English made longer and accented, so that a test of the layout sees which texts do
/// not pass through here and which do not fit. Any other language is refused by name.
Result<std::unique_ptr<const Language>> makeLanguage(const std::string& id);

}  // namespace pillora
