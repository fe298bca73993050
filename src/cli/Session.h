// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "cli/CliEnvironment.h"
#include "cli/CommandLine.h"
#include "model/Medicine.h"
#include "screens/Screen.h"
#include "store/ModelContainer.h"
#include "support/Result.h"

namespace pillora {

/// One call's zone, locale, instant and store. A call has a single *now*, read once.
class Session {
 public:
  /// Reads the options before the command. Errors are wrong usage.
  static Result<std::unique_ptr<Session>> begin(const CommandLine& line, const CliEnvironment& environment);

  /// Closes the store. What was not saved is given up.
  ~Session();

  bool json() const { return line_.json; }
  const Terminal& terminal() const { return environment_.terminal; }
  Instant now() const { return clock_.now(); }
  const Calendar& calendar() const { return *calendar_; }
  const Texts& texts() const { return *texts_; }

  /// Reads an instant; without an offset it is local time in the zone in use. Errors are wrong usage.
  Result<Instant> instant(std::string_view text) const;

  /// Opens the store at the first call, for the screens to work on.
  Result<ScreenEnvironment> open();
  /// The medicine that `ref` names: its identifier in either case, else a name that only one medicine has, else a
  /// beginning of a name that fits one medicine only, both without regard to case.
  Result<std::shared_ptr<Medicine>> medicine(std::string_view ref);
  /// Writes what the command changed, all of it or nothing.
  Result<void> save();

 private:
  struct FixedClock final : Clock {
    explicit FixedClock(Instant instant) : instant_(instant) {}
    Instant now() const override { return instant_; }
    Instant instant_;
  };

  Session(const CommandLine& line, const CliEnvironment& environment);
  Result<void> prepare();
  Region region() const { return {line_.timeZone, line_.locale}; }

  const CommandLine& line_;
  const CliEnvironment& environment_;
  FixedClock clock_;
  std::unique_ptr<Calendar> calendar_;
  std::unique_ptr<Texts> texts_;
  std::unique_ptr<ModelContainer> container_;
};

}  // namespace pillora
