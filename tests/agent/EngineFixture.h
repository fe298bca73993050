// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "agent/Engine.h"
#include "doubles/FakeClock.h"
#include "doubles/Instants.h"
#include "doubles/RecordingLauncher.h"
#include "doubles/RecordingPresenter.h"
#include "doubles/Requests.h"
#include "doubles/ScopedZone.h"
#include "doubles/TemporaryFolder.h"

namespace pillora {

/// An engine over a file of its own, in New York at 07:00 on 2025-01-10 (12:00 UTC).
class EngineFixture : public ::testing::Test {
 protected:
  using Names = std::vector<std::string>;

  EngineFixture() { start(); }

  /// A new engine over the same file, as after a kill or a restart.
  void start() {
    engine.reset();
    auto opened = Engine::open(path(), clock, zone, presenter, launcher);
    ASSERT_TRUE(opened) << opened.error().description;
    engine = *std::move(opened);
  }

  std::string path() const { return folder.path() + "/pillora/reminders.db"; }

  void apply(const std::vector<Operation>& operations) {
    for (const auto& error : engine->apply(operations)) EXPECT_FALSE(error) << error->description;
  }
  std::string refusal(const Operation& operation) {
    const auto errors = engine->apply({operation});
    return errors.front() ? errors.front()->description : "";
  }

  /// Moves the clock and lets pass what fell due.
  Advanced advanceTo(std::string_view instant) {
    clock.set(at(instant));
    return advance();
  }
  Advanced advance() {
    const auto advanced = engine->advance();
    EXPECT_TRUE(advanced) << advanced.error().description;
    return advanced ? *advanced : Advanced();
  }
  Names shownAt(std::string_view instant) { return advanceTo(instant).shown; }
  Names pending() { return *engine->pendingIdentifiers(); }

  ScopedZone timeZone{"America/New_York"};
  TemporaryFolder folder;
  FakeClock clock{at("2025-01-10T12:00:00Z")};
  LibraryZone zone;
  RecordingPresenter presenter;
  RecordingLauncher launcher;
  std::unique_ptr<Engine> engine;
};

}  // namespace pillora
