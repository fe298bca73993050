// SPDX-License-Identifier: MIT
#include "ui/ContentObject.h"

#include <gtest/gtest.h>

#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QSignalSpy>
#include <memory>

#include "doubles/Instants.h"
#include "ui/RowsModel.h"

namespace pillora {
namespace {

struct Panel {
  std::string title;
  static constexpr auto fields() { return std::tuple(field("title", &Panel::title)); }
};

struct Screen {
  std::string title;
  int64_t count = 0;
  double value = 0;
  bool isOpen = false;
  Instant due = {};
  UUID id = {};
  std::optional<std::string> note = {};
  std::optional<Panel> empty = {};
  Panel panel = {};
  std::vector<Panel> rows = {};
  std::vector<std::string> words = {};
  static constexpr auto fields() {
    return std::tuple(field("title", &Screen::title), field("count", &Screen::count), field("value", &Screen::value),
                      field("isOpen", &Screen::isOpen), field("due", &Screen::due), field("id", &Screen::id),
                      field("note", &Screen::note), field("empty", &Screen::empty), field("panel", &Screen::panel),
                      field("rows", &Screen::rows), field("words", &Screen::words));
  }
};

class ContentObjectTest : public testing::Test {
 protected:
  /// What the expression is in QML, where the content is called so; it stays bound.
  QVariant inQml(const QString& expression) {
    engine_.rootContext()->setContextProperty("content", &object_);
    QQmlComponent component(&engine_);
    component.setData("import QtQml\nQtObject { property var answer: " + expression.toUtf8() + " }", {});
    made_.reset(component.create());
    return made_ ? made_->property("answer") : QVariant(component.errorString());
  }

  ContentObject object_;
  QQmlEngine engine_;
  std::unique_ptr<QObject> made_;
};

TEST_F(ContentObjectTest, membersArePropertiesOfTheirNames) {
  Screen screen{.title = "Today", .count = 3, .value = 0.5, .isOpen = true};
  screen.id = *UUID::parse("6f9619ff-8b86-d011-b42d-00cf4fc964ff");
  screen.panel.title = "None";
  screen.words = {"pill", "puff"};
  object_.setContent(screen);
  EXPECT_EQ(inQml("content.title"), "Today");
  EXPECT_EQ(inQml("content.count + content.value"), 3.5);
  EXPECT_EQ(inQml("content.isOpen"), true);
  EXPECT_EQ(inQml("content.id"), "6F9619FF-8B86-D011-B42D-00CF4FC964FF");
  EXPECT_EQ(inQml("content.panel.title"), "None");
  EXPECT_EQ(inQml("content.words[1]"), "puff");
  EXPECT_EQ(inQml("content.note === null && content.empty === null"), true);
}

TEST_F(ContentObjectTest, anInstantComesBackAsItWas) {
  Screen screen;
  screen.due = at("2025-01-10T10:30:00.000001Z");
  object_.setContent(screen);
  EXPECT_EQ(inQml("content.due").value<Instant>(), screen.due);
}

TEST_F(ContentObjectTest, bindingsFollowAnUpdate) {
  Screen screen{.title = "Today"};
  object_.setContent(screen);
  EXPECT_EQ(inQml("content.title + (content.empty ? content.empty.title : '') + content.rows.count"), "Today0");
  screen.empty = Panel{"Nothing"};
  screen.rows = {{"a"}, {"b"}};
  object_.setContent(screen);
  EXPECT_EQ(made_->property("answer"), "TodayNothing2");
  screen.empty = {};
  object_.setContent(screen);
  EXPECT_EQ(made_->property("answer"), "Today2");
}

TEST_F(ContentObjectTest, objectsAndListsInsideKeepTheirIdentity) {
  Screen screen;
  screen.empty = Panel{"Nothing"};
  object_.setContent(screen);
  const QVariant empty = object_.value("empty"), rows = object_.value("rows");
  screen.empty = {};
  object_.setContent(screen);
  screen.empty = Panel{"Still nothing"};
  screen.rows = {{"a"}};
  object_.setContent(screen);
  EXPECT_EQ(object_.value("empty"), empty);
  EXPECT_EQ(object_.value("rows"), rows);
  EXPECT_EQ(empty.value<ContentObject*>()->value("title"), "Still nothing");
}

TEST_F(ContentObjectTest, qmlCannotWriteIt) {
  object_.setContent(Screen{.title = "Today"});
  EXPECT_EQ(inQml("(function() { content.title = 'x'; return content.title })()"), "Today");
}

}  // namespace
}  // namespace pillora
