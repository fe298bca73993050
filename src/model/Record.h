// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "support/Instant.h"
#include "support/UUID.h"

namespace pillora {

class DoseLog;
class Medicine;
class Record;

/// What a record needs of the context that holds it. The store's ModelContext is the one implementation; a record that
/// was never inserted has none and keeps everything itself.
class RecordHost {
 public:
  virtual ~RecordHost() = default;

  /// The stored field of `record` at the address `field` got a new value.
  virtual void fieldChanged(Record& record, const void* field) = 0;
  /// The medicine with this identifier, or null when there is none any more.
  virtual std::shared_ptr<Medicine> medicineWithId(const UUID& id) = 0;
  /// The medicine's logs with from <= scheduledTime < to, in the order of their insertion.
  virtual std::vector<std::shared_ptr<DoseLog>> doseLogs(const UUID& medicine, Instant from, Instant to) = 0;
  /// The scheduled times of those of these logs whose status is taken or skipped, ascending. Reads no records.
  virtual std::vector<Instant> actedOnTimes(const UUID& medicine, Instant from, Instant to) = 0;
  /// The scheduled times of all these logs, ascending. Reads no records.
  virtual std::vector<Instant> loggedTimes(const UUID& medicine, Instant from, Instant to) = 0;
};

/// A persistent object with identity: one object per record and context. Records live in shared pointers; whoever
/// holds one keeps the object alive, but not the record, which another screen or process may delete at any time.
/// Main thread only.
class Record {
 public:
  Record(const Record&) = delete;
  Record& operator=(const Record&) = delete;
  virtual ~Record() = default;

  /// The record is no longer in the store. The fields keep their last values; writing them has no effect on the store.
  bool isDeleted() const { return isDeleted_; }

 protected:
  Record() = default;
  RecordHost* host() const { return host_; }

 private:
  template <typename T>
  friend class Stored;
  friend class ModelContext;

  void fieldChanged(const void* field) {
    if (host_ != nullptr && !isDeleted_) host_->fieldChanged(*this, field);
  }

  RecordHost* host_ = nullptr;
  bool isDeleted_ = false;
};

/// One stored field of a record. Read with `medicine.name()`, written with `medicine.name = "Aspirin"`; a write of a
/// different value tells the record's context, which makes every open screen follow.
template <typename T>
class Stored {
 public:
  using Value = T;

  Stored(Record* record, T value) : record_(record), value_(std::move(value)) {}
  Stored(const Stored&) = delete;
  Stored& operator=(const Stored&) = delete;

  const T& operator()() const { return value_; }

  Stored& operator=(T value) {
    if (value_ == value) return *this;
    value_ = std::move(value);
    record_->fieldChanged(this);
    return *this;
  }

 private:
  template <typename R>
  friend class TableOf;
  /// Sets a value that was read from the store.
  void load(T value) { value_ = std::move(value); }

  Record* record_;
  T value_;
};

}  // namespace pillora
