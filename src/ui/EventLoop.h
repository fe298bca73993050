// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Clock.h"
#include "support/FolderWatch.h"
#include "support/Instant.h"

namespace pillora {

// What lets Qt's event loop drive things that have no loop of their own.

/// A connection that is polled: `process` is called whenever its descriptor can be read, or written while
/// `wantsToWrite`, and once after each turn, before the loop goes to sleep.
class PolledConnection final : public QObject {
  Q_OBJECT

 public:
  PolledConnection(int descriptor, std::function<void()> process, std::function<bool()> wantsToWrite);

 private:
  QSocketNotifier readable_, writable_;
};

/// Calls `changed` when files of these names in the folder were written, made or replaced, by whichever process. A
/// folder that cannot be watched never changes.
class FolderNotifier final : public QObject {
  Q_OBJECT

 public:
  using Names = std::vector<std::string_view>;

  FolderNotifier(const std::string& folder, const Names& names, const std::function<void()>& changed);

 private:
  std::unique_ptr<FolderWatch> watch_;
  std::optional<QSocketNotifier> readable_;
};

/// While it lives, what tells the process to end (SIGTERM, SIGINT) calls `told` from the event loop instead.
/// There is at most one. Programs that we start are told as ever.
class TerminationNotifier final : public QObject {
  Q_OBJECT

 public:
  explicit TerminationNotifier(const std::function<void()>& told);
  ~TerminationNotifier() override;

 private:
  std::optional<QSocketNotifier> signalled_;
};

/// Calls `reached` at the instant that `next` names. It is asked again after each turn; a clock that was set is noticed
/// within a minute.
class DeadlineTimer final : public QObject {
  Q_OBJECT

 public:
  DeadlineTimer(const Clock& clock, std::function<std::optional<Instant>()> next, std::function<void()> reached);

 private:
  void await();

  const Clock& clock_;
  std::function<std::optional<Instant>()> next_;
  std::function<void()> reached_;
  QTimer timer_;
};

}  // namespace pillora
