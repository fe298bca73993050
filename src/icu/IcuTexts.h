// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "icu/Language.h"
#include "platform/Texts.h"
#include "support/Result.h"

namespace pillora {

/// Texts on ICU: dates, times and order of `localeId` in its calendar and in `timeZoneId`, own texts in `languageId`.
/// Locale and zone are written as for makeCalendar, the language as for makeLanguage. What is not known is refused by
/// name. Formatters are made when first needed and kept; the object may be used from several threads at once.
Result<std::unique_ptr<Texts>> makeTexts(const std::string& localeId, const std::string& timeZoneId,
                                         const std::string& languageId, const Catalogues& catalogues = {});

}  // namespace pillora
