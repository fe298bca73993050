// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractListModel>
#include <QHash>
#include <vector>

#include "ui/ContentCell.h"

namespace pillora {

class ContentObject;

/// The rows of a list in a content value, for any view in QML. A row is known by its `id` (or `medicineId` or `day`,
/// else by its place): an update inserts, moves, removes and changes exactly what differs, so that a delegate keeps
/// what it knows, such as that its card is open, while the list around it changes.
///
/// Roles: one per member, under its name; `row`, the whole row as a live ContentObject; `kind`, which tells the rows of
/// a mixed list apart (there `row` and `kind` are the only roles). What lies inside a row is made when it is first
/// asked for, so a long list costs what is shown of it.
class RowsModel : public QAbstractListModel {
  Q_OBJECT
  Q_PROPERTY(int count READ count NOTIFY countChanged)

 public:
  enum Role { rowRole = Qt::UserRole, kindRole, firstMemberRole };

  explicit RowsModel(QObject* parent = nullptr);

  template <Described T>
  void setRows(const std::vector<T>& rows) {
    update(contentCell(rows));
  }
  /// `cell` holds rows, of the same type every time.
  void update(const ContentCell& cell);

  int count() const { return static_cast<int>(rows_.size()); }
  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 signals:
  void countChanged();

 private:
  struct Row {
    QString key;
    ContentRow content;
    ContentObject* object = nullptr;  ///< once something asked for it
  };

  /// The rows of the cell with their keys; a key that occurs twice is told apart by its turn.
  static std::vector<Row> keyed(const std::vector<ContentRow>& rows);
  void removeMissing(const std::vector<Row>& wanted);
  /// Brings the rows that stayed and the new ones into the wanted order with the fewest moves.
  void place(const std::vector<Row>& wanted);
  void insertRun(size_t at, const Row* first, size_t count);
  size_t moveRow(size_t from, size_t to);
  void refresh(size_t at, const ContentRow& content);
  ContentObject* objectOf(Row& row) const;

  mutable std::vector<Row> rows_;  ///< mutable for the objects that are made when asked for
  const ContentShape* shape_ = nullptr;
  bool isFilled_ = false;
};

}  // namespace pillora
