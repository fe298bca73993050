// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/Record.h"
#include "store/FetchDescriptor.h"

namespace SQLite {
class Statement;
}

namespace pillora {

/// A set of a table's columns, one bit each in the order of the record's fields().
using Columns = uint32_t;
inline constexpr Columns kAllColumns = ~Columns{0};

/// How the records of one type lie in the store: a table named after the entity, with one column for each field of the
/// record's fields(), of the same name and in that order, the identity first. The row number keeps the order of
/// insertion. This is the whole of the mapping: there are no joins, and relationships are plain identifiers.
class Table {
 public:
  /// The table of a record type: Medicine, DoseLog or AppSettings.
  template <Described T>
  static const Table& of();
  static const Table& of(const Record& record);
  static constexpr size_t kCount = 3;
  static const std::vector<const Table*>& all();

  virtual ~Table() = default;

  virtual std::shared_ptr<Record> makeRecord() const = 0;
  virtual UUID id(const Record& record) const = 0;
  /// Binds the values of `columns` to the parameters from `index` on; the index after the last one.
  virtual int bind(const Record& record, Columns columns, SQLite::Statement& statement, int index) const = 0;
  /// Takes the fields over from a row of select(), except `kept`. Throws SQLite::Exception for a value that no field
  /// can hold.
  virtual void load(Record& record, SQLite::Statement& row, Columns kept) const = 0;
  /// The column of the field at the address `field`.
  virtual Columns columnOf(const Record& record, const void* field) const = 0;

  size_t index() const { return index_; }
  std::string_view name() const { return name_; }
  const std::vector<std::string_view>& columns() const { return columns_; }

  // SQL. `select` has no conditions, `update` sets `columns` of the row whose identity is its last parameter.
  const std::string& select() const { return select_; }
  const std::string& selectById() const { return selectById_; }
  const std::string& upsert() const { return upsert_; }
  const std::string& erase() const { return erase_; }
  std::string update(Columns columns) const;

 protected:
  Table(size_t index, std::string_view name, std::vector<std::string_view> columns);

 private:
  size_t index_;
  std::string_view name_;
  std::vector<std::string_view> columns_;
  std::string select_, selectById_, upsert_, erase_;
};

/// The condition on a DoseLog that its dose was taken or skipped.
std::string isActedOn();

void bindValue(SQLite::Statement& statement, int index, const StoredValue& value);
/// The identity in a row's column. Throws SQLite::Exception when there is none.
UUID readId(SQLite::Statement& row, int column);

}  // namespace pillora
