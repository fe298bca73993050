// SPDX-License-Identifier: MIT
#include "store/Table.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <cassert>
#include <cstring>
#include <optional>
#include <sqlite3.h>
#include <typeinfo>
#include <utility>

#include "model/AppSettings.h"
#include "model/DoseLog.h"
#include "model/Medicine.h"

namespace pillora {

namespace {

/// "id, name, dosage" from the columns' names, each through `term`.
template <typename Term>
std::string listed(const std::vector<std::string_view>& columns, Columns chosen, Term term) {
  std::string list;
  for (size_t i = 0; i < columns.size(); ++i) {
    if ((chosen >> i & 1U) == 0) continue;
    if (!list.empty()) list += ", ";
    list += term(std::string(columns[i]));
  }
  return list;
}

std::string plain(std::string column) { return column; }
std::string marker(std::string) { return "?"; }
std::string assigned(std::string column) { return column + " = ?"; }
std::string taken(std::string column) { return column + " = excluded." + column; }

void read(const SQLite::Column& column, bool& value) { value = column.getInt64() != 0; }
void read(const SQLite::Column& column, int64_t& value) { value = column.getInt64(); }
void read(const SQLite::Column& column, Instant& value) { value = Instant(Instant::Duration(column.getInt64())); }
void read(const SQLite::Column& column, std::string& value) { value = column.getString(); }
void read(const SQLite::Column& column, UUID& value) {
  if (column.getBytes() != static_cast<int>(value.bytes.size())) {
    throw SQLite::Exception("a record has no valid identifier", SQLITE_CORRUPT);
  }
  std::memcpy(value.bytes.data(), column.getBlob(), value.bytes.size());
}
template <typename T>
void read(const SQLite::Column& column, std::optional<T>& value) {
  value.reset();
  if (!column.isNull()) read(column, value.emplace());
}

template <Described T>
std::vector<std::string_view> columnNames() {
  std::vector<std::string_view> names;
  forEachField<T>([&](std::string_view name, auto) { names.push_back(name); });
  return names;
}

}  // namespace

template <typename T>
class TableOf final : public Table {
 public:
  explicit TableOf(size_t index) : Table(index, T::kEntityName, columnNames<T>()) {}

  std::shared_ptr<Record> makeRecord() const override { return std::make_shared<T>(); }

  UUID id(const Record& record) const override { return static_cast<const T&>(record).id(); }

  int bind(const Record& record, Columns columns, SQLite::Statement& statement, int index) const override {
    const T& typed = static_cast<const T&>(record);
    forEachField<T>([&](std::string_view, auto member) {
      if ((columns & 1U) != 0) bindValue(statement, index++, toStoredValue((typed.*member)()));
      columns >>= 1;
    });
    return index;
  }

  void load(Record& record, SQLite::Statement& row, Columns kept) const override {
    T& typed = static_cast<T&>(record);
    int column = 0;
    forEachField<T>([&](std::string_view, auto member) {
      if ((kept >> column & 1U) == 0) {
        typename std::remove_reference_t<decltype(typed.*member)>::Value value{};
        read(row.getColumn(column), value);
        (typed.*member).load(std::move(value));
      }
      ++column;
    });
  }

  Columns columnOf(const Record& record, const void* field) const override {
    const T& typed = static_cast<const T&>(record);
    Columns found = 0;
    Columns bit = 1;
    forEachField<T>([&](std::string_view, auto member) {
      if (static_cast<const void*>(&(typed.*member)) == field) found = bit;
      bit <<= 1;
    });
    assert(found != 0);
    return found;
  }
};

Table::Table(size_t index, std::string_view name, std::vector<std::string_view> columns)
    : index_(index), name_(name), columns_(std::move(columns)) {
  assert(columns_.size() < 32 && columns_.front() == "id");
  const std::string table(name_);
  select_ = "SELECT " + listed(columns_, kAllColumns, plain) + " FROM " + table;
  selectById_ = select_ + " WHERE id = ?";
  upsert_ = "INSERT INTO " + table + " (" + listed(columns_, kAllColumns, plain) + ") VALUES (" +
            listed(columns_, kAllColumns, marker) + ") ON CONFLICT (id) DO UPDATE SET " +
            listed(columns_, kAllColumns, taken);
  erase_ = "DELETE FROM " + table + " WHERE id = ?";
}

std::string Table::update(Columns columns) const {
  return "UPDATE " + std::string(name_) + " SET " + listed(columns_, columns, assigned) + " WHERE id = ?";
}

template <Described T>
const Table& Table::of() {
  constexpr size_t kIndex = std::is_same_v<T, Medicine> ? 0 : std::is_same_v<T, DoseLog> ? 1 : 2;
  static const TableOf<T> table(kIndex);
  return table;
}
template const Table& Table::of<Medicine>();
template const Table& Table::of<DoseLog>();
template const Table& Table::of<AppSettings>();

const Table& Table::of(const Record& record) {
  if (typeid(record) == typeid(DoseLog)) return of<DoseLog>();
  if (typeid(record) == typeid(Medicine)) return of<Medicine>();
  assert(typeid(record) == typeid(AppSettings));
  return of<AppSettings>();
}

const std::vector<const Table*>& Table::all() {
  static const std::vector<const Table*> tables = {&of<Medicine>(), &of<DoseLog>(), &of<AppSettings>()};
  return tables;
}

std::string isActedOn() {
  return "statusRaw IN ('" + std::string(rawValue(DoseStatus::taken)) + "', '" +
         std::string(rawValue(DoseStatus::skipped)) + "')";
}

void bindValue(SQLite::Statement& statement, int index, const StoredValue& value) {
  if (const auto* number = std::get_if<int64_t>(&value)) {
    statement.bind(index, *number);
  } else if (const auto* text = std::get_if<std::string>(&value)) {
    statement.bind(index, *text);
  } else if (const auto* id = std::get_if<UUID>(&value)) {
    statement.bind(index, id->bytes.data(), static_cast<int>(id->bytes.size()));
  } else {
    statement.bind(index);
  }
}

UUID readId(SQLite::Statement& row, int column) {
  UUID id;
  read(row.getColumn(column), id);
  return id;
}

}  // namespace pillora
