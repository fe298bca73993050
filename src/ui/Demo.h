// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "store/ModelContext.h"

namespace pillora {

/// A Friday morning that never ends, for pictures that are the same whenever they are drawn.
class DemoClock final : public Clock {
 public:
  explicit DemoClock(const Calendar& gregorian);

  Instant now() const override { return now_; }

 private:
  Instant now_;
};

/// Fills an empty store with a believable month up to `now`: a handful of medicines of every kind of schedule and what
/// became of their doses. The same for the same instant. Saving is left to the context.
void fillWithDemo(ModelContext& context, const Calendar& calendar, Instant now);

}  // namespace pillora
