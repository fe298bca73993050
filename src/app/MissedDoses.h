// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "platform/Calendar.h"
#include "store/ModelContext.h"
#include "support/Instant.h"
#include "support/Result.h"

namespace pillora {

/// Writes a missed log for every dose that fell due on one of the seven days before today and has no log of any status
/// in its minute. Only active medicines, and none of their days before the day of their `startDate`; neither `endDate`
/// nor `isRepeating` plays a part. Today's doses are never marked.
///
/// Looking, marking and saving are one transaction, so that two programs that mark at once write each log once. Answers
/// how many logs were written. After an error nothing of it is in the file; what was marked before a save that failed
/// stays pending in the context.
Result<int64_t> markDosesMissed(ModelContext& context, Instant now, const Calendar& calendar);

}  // namespace pillora
