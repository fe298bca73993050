// SPDX-License-Identifier: MIT
#include "ui/RowsModel.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QCoreApplication>
#include <QJSEngine>
#include <QPointer>
#include <QSignalSpy>
#include <rapidcheck/gtest.h>

#include "ui/ContentObject.h"

namespace pillora {
namespace {

struct Button {
  std::string id, title;
  static constexpr auto fields() { return std::tuple(field("id", &Button::id), field("title", &Button::title)); }
};

struct Card {
  std::string id, name;
  std::optional<std::string> note = {};
  std::vector<Button> buttons = {};
  static constexpr auto fields() {
    return std::tuple(field("id", &Card::id), field("name", &Card::name), field("note", &Card::note),
                      field("buttons", &Card::buttons));
  }
};

/// What a view was told, one word a signal: "insert 1-2", "remove 0-0", "move 3 to 0", "change 1: name,note".
class RowsModelTest : public testing::Test {
 protected:
  RowsModelTest() {
    const auto span = [](int first, int last) { return QString("%1-%2").arg(first).arg(last).toStdString(); };
    QObject::connect(&model_, &RowsModel::rowsInserted, [=, this](const QModelIndex&, int first, int last) {
      told_.push_back("insert " + span(first, last));
    });
    QObject::connect(&model_, &RowsModel::rowsRemoved, [=, this](const QModelIndex&, int first, int last) {
      told_.push_back("remove " + span(first, last));
    });
    QObject::connect(&model_, &RowsModel::rowsMoved,
                     [this](const QModelIndex&, int first, int, const QModelIndex&, int to) {
                       told_.push_back(QString("move %1 to %2").arg(first).arg(to).toStdString());
                     });
    QObject::connect(&model_, &RowsModel::modelReset, [this] { told_.emplace_back("reset"); });
    QObject::connect(&model_, &RowsModel::dataChanged,
                     [this](const QModelIndex& first, const QModelIndex&, const QList<int>& roles) {
                       std::string names;
                       for (int role : roles)
                         names += (names.empty() ? "" : ",") + model_.roleNames()[role].toStdString();
                       told_.push_back("change " + std::to_string(first.row()) + ": " + names);
                     });
  }

  void show(std::initializer_list<const char*> ids) {
    std::vector<Card> cards;
    for (const char* id : ids) cards.push_back({.id = id, .name = id});
    show(cards);
  }
  void show(const std::vector<Card>& cards) {
    told_.clear();
    model_.setRows(cards);
  }

  QVariant at(int row, const char* role) const {
    return model_.data(model_.index(row), model_.roleNames().key(role, -1));
  }
  std::string ids() const {
    std::string text;
    for (int row = 0; row < model_.count(); ++row) text += at(row, "id").toString().toStdString();
    return text;
  }

  RowsModel model_;
  QAbstractItemModelTester tester_{&model_, QAbstractItemModelTester::FailureReportingMode::Fatal};
  std::vector<std::string> told_;
};

using Told = std::vector<std::string>;

TEST_F(RowsModelTest, theFirstRowsAreAResetAndTheSameRowsAgainAreNothing) {
  show({"a", "b"});
  EXPECT_EQ(told_, Told{"reset"});
  show({"a", "b"});
  EXPECT_EQ(told_, Told{});
}

TEST_F(RowsModelTest, tellsTheFewestSteps) {
  const struct {
    std::initializer_list<const char*> before, after;
    Told told;
  } cases[] = {
      {{"a", "d"}, {"a", "b", "c", "d"}, {"insert 1-2"}},
      {{}, {"a", "b"}, {"insert 0-1"}},
      {{"a", "b", "c", "d"}, {"a", "d"}, {"remove 1-2"}},
      {{"a", "b", "c", "d"}, {"b", "d"}, {"remove 2-2", "remove 0-0"}},
      {{"a", "b"}, {}, {"remove 0-1"}},
      {{"a", "b", "c", "d"}, {"b", "c", "d", "a"}, {"move 0 to 4"}},
      {{"a", "b", "c", "d"}, {"d", "a", "b", "c"}, {"move 3 to 0"}},
      {{"a", "b", "c", "d"}, {"a", "c", "b", "d"}, {"move 2 to 1"}},
      {{"a", "b"}, {"c", "d"}, {"remove 0-1", "insert 0-1"}},
      {{"a", "b", "c"}, {"c", "x", "a"}, {"remove 1-1", "move 1 to 0", "insert 1-1"}},
  };
  for (const auto& [before, after, told] : cases) {
    show(before);
    show(after);
    std::string wanted;
    for (const char* id : after) wanted += id;
    EXPECT_EQ(told_, told) << "toward " << wanted;
    EXPECT_EQ(ids(), wanted);
  }
}

TEST_F(RowsModelTest, aChangedMemberIsToldForItsRoleAlone) {
  show({{.id = "a", .name = "Aspirin"}, {.id = "b", .name = "Baldrian"}});
  show({{.id = "a", .name = "Aspirin"}, {.id = "b", .name = "Biotin", .note = "with food"}});
  EXPECT_EQ(told_, Told{"change 1: name,note"});
  EXPECT_EQ(at(1, "name"), "Biotin");
  EXPECT_EQ(at(1, "note"), "with food");
  EXPECT_TRUE(at(0, "note").isNull());
}

TEST_F(RowsModelTest, aListInsideARowChangesInPlace) {
  show({{.id = "a", .name = "A", .buttons = {{"take", "Take"}, {"skip", "Skip"}}}});
  auto* const buttons = at(0, "buttons").value<RowsModel*>();
  ASSERT_NE(buttons, nullptr);
  QSignalSpy removed(buttons, &RowsModel::rowsRemoved);
  show({{.id = "a", .name = "A", .buttons = {{"take", "Take"}}}});
  EXPECT_EQ(told_, Told{});
  EXPECT_EQ(at(0, "buttons").value<RowsModel*>(), buttons);
  EXPECT_EQ(removed.count(), 1);
  EXPECT_EQ(buttons->count(), 1);
}

TEST_F(RowsModelTest, theRowAsAnObjectFollowsItsRow) {
  show({"a", "b", "c"});
  auto* const row = at(1, "row").value<ContentObject*>();
  ASSERT_NE(row, nullptr);
  show({{.id = "b", .name = "Biotin"}, {.id = "a", .name = "A"}});
  EXPECT_EQ(at(0, "row").value<ContentObject*>(), row);
  EXPECT_EQ(row->value("name"), "Biotin");
}

TEST_F(RowsModelTest, rowsThatShareAnIdAreToldApart) {
  show({{.id = "a", .name = "1"}, {.id = "a", .name = "2"}, {.id = "b", .name = "3"}});
  show({{.id = "a", .name = "1"}, {.id = "b", .name = "3"}});
  EXPECT_EQ(told_, Told{"remove 1-1"});
}

/// An engine that keeps the object of the model's first row, as a delegate does, in the variable `row`.
struct Keeper {
  explicit Keeper(RowsModel& model) : object(model.data(model.index(0), RowsModel::rowRole).value<QObject*>()) {
    engine.globalObject().setProperty("row", engine.newQObject(object));
  }
  QString ask(const char* question) { return engine.evaluate(QString::fromLatin1(question)).toString(); }

  QJSEngine engine;
  QPointer<QObject> object;
};

TEST_F(RowsModelTest, aRowThatIsRemovedLastsWhileADelegateShowsIt) {
  show(std::vector<Card>{{.id = "a", .name = "Aspirin", .buttons = {{"t", "Take"}}}, {.id = "b", .name = "Biotin"}});
  Keeper delegate(model_);
  show({"b"});
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(delegate.ask("row.name + row.buttons.count"), "Aspirin1");
  delegate.ask("row = null");
  delegate.engine.collectGarbage();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(delegate.object, nullptr);
}

TEST_F(RowsModelTest, aRowThatStaysIsNotCollected) {
  show({"a"});
  Keeper delegate(model_);
  delegate.ask("row = null");
  delegate.engine.collectGarbage();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_NE(delegate.object, nullptr);
}

TEST_F(RowsModelTest, aRemovedRowThatNobodyShowsIsDeleted) {
  show({"a"});
  const QPointer<QObject> row = model_.data(model_.index(0), RowsModel::rowRole).value<QObject*>();
  show({});
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(row, nullptr);
}

struct Heading {
  std::string title;
  static constexpr auto fields() { return std::tuple(field("title", &Heading::title)); }
};

TEST(RowsModelKeys, aRowWithoutAnIdIsKnownByItsPlace) {
  RowsModel model;
  model.setRows(std::vector<Heading>{{"Today"}, {"Tomorrow"}});
  QSignalSpy changed(&model, &RowsModel::dataChanged), removed(&model, &RowsModel::rowsRemoved);
  model.setRows(std::vector<Heading>{{"Tomorrow"}});
  EXPECT_EQ(changed.count(), 1);
  EXPECT_EQ(removed.count(), 1);
  EXPECT_EQ(model.data(model.index(0), RowsModel::firstMemberRole), "Tomorrow");
}

struct Switch {
  static constexpr std::string_view kKind = "switch";
  std::string id;
  bool isOn = false;
  static constexpr auto fields() { return std::tuple(field("id", &Switch::id), field("isOn", &Switch::isOn)); }
};
struct Link {
  static constexpr std::string_view kKind = "link";
  std::string id;
  static constexpr auto fields() { return std::tuple(field("id", &Link::id)); }
};
using Control = std::variant<Switch, Link>;

TEST(RowsModelKeys, rowsOfSeveralTypesHaveAKindAndAnObject) {
  RowsModel model;
  model.update(contentCell(std::vector<Control>{Switch{"a", true}, Link{"b"}}));
  EXPECT_EQ(model.roleNames().size(), 2);
  EXPECT_EQ(model.data(model.index(0), RowsModel::kindRole), "switch");
  EXPECT_EQ(model.data(model.index(1), RowsModel::kindRole), "link");
  auto* const object = model.data(model.index(0), RowsModel::rowRole).value<ContentObject*>();
  ASSERT_NE(object, nullptr);
  EXPECT_EQ(object->value("isOn"), true);
  model.update(contentCell(std::vector<Control>{Switch{"a", false}, Link{"b"}}));
  EXPECT_EQ(object->value("isOn"), false);
}

TEST(RowsModelKeys, aRowThatBecomesAnotherKindIsAnotherRow) {
  RowsModel model;
  model.update(contentCell(std::vector<Control>{Switch{"a", true}}));
  QSignalSpy removed(&model, &RowsModel::rowsRemoved), inserted(&model, &RowsModel::rowsInserted);
  model.update(contentCell(std::vector<Control>{Link{"a"}}));
  EXPECT_EQ(removed.count(), 1);
  EXPECT_EQ(inserted.count(), 1);
}

struct Day {
  Instant day;
  static constexpr auto fields() { return std::tuple(field("day", &Day::day)); }
};

TEST(RowsModelKeys, aDayIsKnownByItsInstant) {
  RowsModel model;
  model.setRows(std::vector<Day>{{Instant::fromSeconds(0)}, {Instant::fromSeconds(86400)}});
  QSignalSpy removed(&model, &RowsModel::rowsRemoved), changed(&model, &RowsModel::dataChanged);
  model.setRows(std::vector<Day>{{Instant::fromSeconds(86400)}});
  ASSERT_EQ(removed.count(), 1);
  EXPECT_EQ(removed.first().at(1).toInt(), 0);
  EXPECT_EQ(changed.count(), 0);
}

TEST(RowsModelKeys, rowsThatAreListsHaveCells) {
  const std::vector<std::vector<Heading>> weeks = {{{"1"}, {"2"}}, {{"3"}}};
  RowsModel model;
  model.update(contentCell(weeks));
  auto* const week = model.data(model.index(0), RowsModel::rowRole).value<ContentObject*>();
  ASSERT_NE(week, nullptr);
  auto* const days = week->value("cells").value<RowsModel*>();
  ASSERT_NE(days, nullptr);
  EXPECT_EQ(days->count(), 2);
  EXPECT_EQ(days->data(days->index(1), RowsModel::firstMemberRole), "2");
}

std::vector<Card> randomCards() {
  const auto letters = *rc::gen::container<std::string>(rc::gen::inRange('a', 'm'));
  std::vector<Card> cards;
  for (char letter : letters) cards.push_back({.id = std::string(1, letter), .name = *rc::gen::element("x", "y")});
  return cards;
}

/// A view that knows only what it was told, row by row.
class Follower {
 public:
  explicit Follower(RowsModel& model) : model_(model) {
    QObject::connect(&model, &RowsModel::modelReset, [this] { rows_ = all(); });
    QObject::connect(&model, &RowsModel::rowsInserted, [this](const QModelIndex&, int first, int last) {
      for (int row = first; row <= last; ++row) rows_.insert(rows_.begin() + row, at(row));
    });
    QObject::connect(&model, &RowsModel::rowsRemoved, [this](const QModelIndex&, int first, int last) {
      rows_.erase(rows_.begin() + first, rows_.begin() + last + 1);
    });
    QObject::connect(&model, &RowsModel::rowsMoved,
                     [this](const QModelIndex&, int from, int, const QModelIndex&, int to) {
                       const std::string row = rows_[static_cast<size_t>(from)];
                       rows_.erase(rows_.begin() + from);
                       rows_.insert(rows_.begin() + (from < to ? to - 1 : to), row);
                     });
    QObject::connect(&model, &RowsModel::dataChanged,
                     [this](const QModelIndex& index) { rows_[static_cast<size_t>(index.row())] = at(index.row()); });
  }

  const std::vector<std::string>& rows() const { return rows_; }
  std::vector<std::string> all() const {
    std::vector<std::string> rows;
    for (int row = 0; row < model_.count(); ++row) rows.push_back(at(row));
    return rows;
  }

 private:
  std::string at(int row) const {
    const auto text = [&](int member) { return model_.data(model_.index(row), RowsModel::firstMemberRole + member); };
    return (text(0).toString() + text(1).toString()).toStdString();
  }

  RowsModel& model_;
  std::vector<std::string> rows_;
};

RC_GTEST_PROP(RowsModelProperties, whoeverFollowsTheSignalsSeesTheWantedRows, ()) {
  RowsModel model;
  QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
  Follower follower(model);
  for (int step = 0; step < 4; ++step) {
    const std::vector<Card> cards = randomCards();
    model.setRows(cards);
    std::vector<std::string> wanted;
    for (const Card& card : cards) wanted.push_back(card.id + card.name);
    RC_ASSERT(follower.all() == wanted);
    RC_ASSERT(follower.rows() == wanted);
  }
}

}  // namespace
}  // namespace pillora
