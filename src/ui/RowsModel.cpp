// SPDX-License-Identifier: MIT
#include "ui/RowsModel.h"

#include <QQmlEngine>
#include <QSet>
#include <algorithm>
#include <utility>

#include "ui/ContentObject.h"

namespace pillora {
namespace {

QString keyOf(const ContentRow& row, size_t place) {
  const int member = row.shape->keyMember();
  const QVariant value =
      member < 0 ? QVariant(static_cast<qint64>(place)) : row.cells[static_cast<size_t>(member)].scalar;
  const QString key = value.metaType() == QMetaType::fromType<Instant>()
                          ? QString::number(value.value<Instant>().microseconds())
                          : value.toString();
  return row.shape->kind.empty() ? key : nameOf(row.shape->kind) + u':' + key;
}

/// Which of `places` are on the longest part of it that ascends already: the rows that need not move.
std::vector<bool> longestAscending(const std::vector<size_t>& places) {
  std::vector<size_t> tails;  // of the best ascending part of each length, the index of its last element
  std::vector<size_t> before(places.size(), places.size());
  for (size_t i = 0; i < places.size(); ++i) {
    const auto tail = std::ranges::lower_bound(tails, places[i], {}, [&](size_t index) { return places[index]; });
    if (tail != tails.begin()) before[i] = *(tail - 1);
    if (tail == tails.end()) {
      tails.push_back(i);
    } else {
      *tail = i;
    }
  }
  std::vector<bool> stays(places.size(), false);
  for (size_t i = tails.empty() ? places.size() : tails.back(); i < places.size(); i = before[i]) stays[i] = true;
  return stays;
}

/// Views take their delegates away when they come to it, which may be turns later, and until then these look at their
/// row, and at the lists inside it. So it lasts as long as QML refers to it.
void leaveToDelegates(QObject* row) {
  row->setParent(nullptr);
  if (qjsEngine(row)) {
    QQmlEngine::setObjectOwnership(row, QQmlEngine::JavaScriptOwnership);
  } else {
    row->deleteLater();
  }
}

}  // namespace

RowsModel::RowsModel(QObject* parent) : QAbstractListModel(parent) {}

int RowsModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : count(); }

QHash<int, QByteArray> RowsModel::roleNames() const {
  QHash<int, QByteArray> names{{rowRole, "row"}, {kindRole, "kind"}};
  if (!shape_) return names;
  for (size_t i = 0; i < shape_->names.size(); ++i) {
    names[firstMemberRole + static_cast<int>(i)] = nameOf(shape_->names[i]).toLatin1();
  }
  return names;
}

QVariant RowsModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  Row& row = rows_[static_cast<size_t>(index.row())];
  if (role == rowRole) return QVariant::fromValue<QObject*>(objectOf(row));
  if (role == kindRole) return nameOf(row.content.shape->kind);
  const auto member = static_cast<size_t>(role - firstMemberRole);
  if (role < firstMemberRole || !shape_ || member >= row.content.cells.size()) return {};
  const ContentCell& cell = row.content.cells[member];
  return cell.kind == ContentCell::Kind::scalar ? cell.scalar : objectOf(row)->value(nameOf(shape_->names[member]));
}

void RowsModel::update(const ContentCell& cell) {
  std::vector<Row> wanted = keyed(cell.rows);
  const int before = count();
  if (!isFilled_) {
    beginResetModel();
    isFilled_ = true;
    shape_ = cell.elementShape;
    rows_ = std::move(wanted);
    endResetModel();
  } else {
    Q_ASSERT(shape_ == cell.elementShape);
    removeMissing(wanted);
    place(wanted);
    for (size_t i = 0; i < wanted.size(); ++i) refresh(i, wanted[i].content);
  }
  if (count() != before) emit countChanged();
}

std::vector<RowsModel::Row> RowsModel::keyed(const std::vector<ContentRow>& rows) {
  std::vector<Row> keyed;
  keyed.reserve(rows.size());
  QHash<QString, int> turns;
  for (const ContentRow& row : rows) {
    QString key = keyOf(row, keyed.size());
    if (const int turn = turns[key]++; turn > 0) key += u'\n' + QString::number(turn);
    keyed.push_back({std::move(key), row});
  }
  return keyed;
}

void RowsModel::removeMissing(const std::vector<Row>& wanted) {
  QSet<QString> keys;
  for (const Row& row : wanted) keys.insert(row.key);
  const auto isMissing = [&](size_t at) { return !keys.contains(rows_[at].key); };
  for (size_t end = rows_.size(); end > 0; --end) {
    if (!isMissing(end - 1)) continue;
    size_t first = end - 1;
    while (first > 0 && isMissing(first - 1)) --first;
    beginRemoveRows({}, static_cast<int>(first), static_cast<int>(end - 1));
    for (size_t i = first; i < end; ++i) {
      if (rows_[i].object) leaveToDelegates(rows_[i].object);
    }
    rows_.erase(rows_.begin() + static_cast<qsizetype>(first), rows_.begin() + static_cast<qsizetype>(end));
    endRemoveRows();
    end = first + 1;
  }
}

void RowsModel::place(const std::vector<Row>& wanted) {
  QHash<QString, size_t> placeOf;
  for (size_t i = 0; i < rows_.size(); ++i) placeOf[rows_[i].key] = i;
  std::vector<size_t> kept;
  for (const Row& row : wanted) {
    if (const auto found = placeOf.constFind(row.key); found != placeOf.cend()) kept.push_back(*found);
  }
  const std::vector<bool> stays = longestAscending(kept);
  const auto isNew = [&](size_t i) { return !placeOf.contains(wanted[i].key); };
  size_t at = 0;  // behind the row that was placed last
  size_t nextKept = 0;
  for (size_t i = 0; i < wanted.size();) {
    size_t run = i;
    while (run < wanted.size() && isNew(run)) ++run;
    if (run > i) {
      insertRun(at, &wanted[i], run - i);
      at += run - i;
      i = run;
      continue;
    }
    const auto found = std::ranges::find(rows_, wanted[i].key, &Row::key);
    const auto from = static_cast<size_t>(found - rows_.begin());
    at = stays[nextKept++] ? from + 1 : moveRow(from, at) + 1;
    ++i;
  }
}

void RowsModel::insertRun(size_t at, const Row* first, size_t count) {
  beginInsertRows({}, static_cast<int>(at), static_cast<int>(at + count) - 1);
  rows_.insert(rows_.begin() + static_cast<qsizetype>(at), first, first + count);
  endInsertRows();
}

/// Moves the row in front of the one that is at `to`; answers where it is then.
size_t RowsModel::moveRow(size_t from, size_t to) {
  if (from == to || from + 1 == to) return from;
  beginMoveRows({}, static_cast<int>(from), static_cast<int>(from), {}, static_cast<int>(to));
  const auto row = rows_.begin();
  const auto f = static_cast<qsizetype>(from), t = static_cast<qsizetype>(to);
  if (from < to) {
    std::rotate(row + f, row + f + 1, row + t);
  } else {
    std::rotate(row + t, row + f, row + f + 1);
  }
  endMoveRows();
  return from < to ? to - 1 : to;
}

void RowsModel::refresh(size_t at, const ContentRow& content) {
  Row& row = rows_[at];
  if (row.content == content) return;
  const ContentRow before = std::exchange(row.content, content);
  if (row.object) row.object->update(content);
  if (!shape_) return;
  QList<int> roles;
  for (size_t i = 0; i < content.cells.size(); ++i) {
    const ContentCell &old = before.cells[i], &now = content.cells[i];
    // A list or an object that is there before and after is the same one, with other contents.
    if (old.scalar == now.scalar && (now.kind != ContentCell::Kind::object || old.rows.empty() == now.rows.empty()))
      continue;
    roles.append(firstMemberRole + static_cast<int>(i));
  }
  const QModelIndex place = index(static_cast<int>(at));
  if (!roles.isEmpty()) emit dataChanged(place, place, roles);
}

ContentObject* RowsModel::objectOf(Row& row) const {
  if (!row.object) {
    row.object = new ContentObject(const_cast<RowsModel*>(this));
    row.object->update(row.content);
  }
  return row.object;
}

}  // namespace pillora
