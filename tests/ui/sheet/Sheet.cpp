// SPDX-License-Identifier: MIT
#include "ui/sheet/Sheet.h"

#include <QGuiApplication>
#include <QPainter>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlListReference>
#include <QStyleHints>
#include <QTest>
#include <QTextStream>
#include <algorithm>
#include <vector>

#include "ui/SymbolImage.h"

void qml_register_types_Pillora();

namespace pillora {
namespace {

constexpr int kTitleHeight = 22, kPageHeight = 1500;
const QString kFiles = QStringLiteral("qrc:/qt/qml/Pillora/sheet/");

/// Several turns of the event loop: bindings, polishing and animations without a duration come to rest.
void settle() {
  for (int turn = 0; turn < 4; ++turn) QCoreApplication::processEvents();
}

/// The first item in there that the keyboard can reach.
QQuickItem* focusable(QQuickItem* item) {
  if (item->activeFocusOnTab()) return item;
  for (QQuickItem* child : item->childItems()) {
    if (QQuickItem* found = focusable(child)) return found;
  }
  return nullptr;
}

/// Rows of pictures with a title each, cut into pages.
class Pages {
 public:
  explicit Pages(QColor background, QColor ink) : background_(background), ink_(ink) {}

  void add(const QString& title, const std::vector<QImage>& pictures) {
    int height = 0;
    for (const QImage& picture : pictures) height = std::max(height, picture.height());
    if (y_ + height + kTitleHeight > kPageHeight) turnPage();
    QPainter painter(&page());
    painter.setPen(ink_);
    painter.drawText(QRect(16, y_, 1600, kTitleHeight), Qt::AlignVCenter, title);
    y_ += kTitleHeight;
    int x = 0;
    for (const QImage& picture : pictures) {
      painter.drawImage(x, y_, picture);
      x += picture.width();
    }
    width_ = std::max(width_, x);
    y_ += height;
  }

  std::vector<QImage> finished() {
    turnPage();
    return done_;
  }

 private:
  QImage& page() {
    if (current_.isNull()) {
      current_ = QImage(1840, kPageHeight, QImage::Format_RGB32);
      current_.fill(background_);
    }
    return current_;
  }
  void turnPage() {
    if (!current_.isNull()) done_.push_back(current_.copy(0, 0, std::max(width_, 400), y_ + 8));
    current_ = {};
    y_ = 0;
    width_ = 0;
  }

  QColor background_, ink_;
  QImage current_;
  std::vector<QImage> done_;
  int y_ = 0, width_ = 0;
};

}  // namespace

Sheet::Sheet(const QDir& folder) : folder_(folder) {
  qml_register_types_Pillora();
  Sample::registerType(sample_);
  view_.setResizeMode(QQuickView::SizeRootObjectToView);
  view_.engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
  appearance_ = &Appearance::of(*view_.engine());
  appearance_->setProperty("reducedMotion", true);
  // Presses that follow each other quickly are presses all the same.
  QGuiApplication::styleHints()->setMouseDoubleClickInterval(0);
}

bool Sheet::drawAll() {
  bool fine = true;
  for (const bool dark : {false, true}) {
    appearance_->setProperty("dark", dark);
    for (const char* file : {"Controls", "Rows"}) fine = drawStates(QString::fromLatin1(file)) && fine;
    for (const char* file : {"TodayPage", "FormPage", "FormEndPage", "PartsPage", "ListPage", "AlertPage", "SheetPage",
                             "MenuPage", "LockPage"})
      fine = drawPage(QString::fromLatin1(file)) && fine;
    fine = drawSymbols() && fine;
  }
  return fine;
}

QString Sheet::suffix() const {
  return appearance_->property("dark").toBool() ? QStringLiteral("dark") : QStringLiteral("light");
}

QQuickItem* Sheet::show(const QString& source, QSize size) {
  view_.setSource({});
  view_.resize(size);
  view_.setSource(QUrl(kFiles + source + QStringLiteral(".qml")));
  view_.show();
  settle();
  for (const QQmlError& error : view_.errors()) QTextStream(stderr) << error.toString() << '\n';
  return view_.rootObject();
}

QImage Sheet::picture(QQuickItem* item, const QString& state) {
  const QPoint target = item->mapToScene({item->width() * 0.72, item->height() / 2}).toPoint();
  QTest::mouseMove(&view_, state == u"hovered" || state == u"pressed" ? target : QPoint(1, 1));
  QQuickItem* const reached = focusable(item);
  if (reached) reached->setFocus(state == u"focused", Qt::TabFocusReason);
  if (state == u"focused" && reached) reached->forceActiveFocus(Qt::TabFocusReason);
  item->setEnabled(state != u"disabled");
  if (state == u"pressed") QTest::mousePress(&view_, Qt::LeftButton, {}, target);
  settle();
  const QImage image = view_.grabWindow();
  if (state == u"pressed") {
    QTest::mouseMove(&view_, {1, 1});
    QTest::mouseRelease(&view_, Qt::LeftButton, {}, {1, 1});
  }
  item->setEnabled(true);
  return image;
}

bool Sheet::drawStates(const QString& file) {
  QQuickItem* const stage = show(QStringLiteral("Stage"), {360, 80});
  QQmlComponent specimens(view_.engine(), QUrl(kFiles + file + QStringLiteral(".qml")));
  const std::unique_ptr<QObject> made(specimens.create());
  if (!stage || !made) {
    QTextStream(stderr) << specimens.errorString();
    return false;
  }
  const bool dark = appearance_->property("dark").toBool();
  Pages pages(dark ? Qt::black : QColor(0xdd, 0xdd, 0xdd), dark ? Qt::white : Qt::black);
  const QQmlListReference list(made.get(), "specimens");
  for (qsizetype i = 0; i < list.count(); ++i) {
    QObject* const specimen = list.at(i);
    stage->setProperty("onSurface", specimen->property("onSurface"));
    stage->setProperty("body", specimen->property("body"));
    settle();
    auto* const item = stage->property("shown").value<QQuickItem*>();
    if (!item) return false;
    view_.grabWindow();  // texts take their lines
    settle();
    view_.resize(specimen->property("width").toInt() + 32, static_cast<int>(item->height()) + 32);
    settle();
    std::vector<QImage> pictures;
    for (const QString& state : specimen->property("states").toString().split(u' ')) {
      pictures.push_back(picture(item, state));
    }
    pages.add(specimen->property("title").toString(), pictures);
  }
  int number = 0;
  bool fine = true;
  for (const QImage& page : pages.finished()) {
    fine = write(page, QStringLiteral("%1-%2-%3").arg(file.toLower(), suffix()).arg(++number)) && fine;
  }
  return fine;
}

bool Sheet::drawPage(const QString& file) {
  const struct {
    QPoint place;
    QSize size;
    bool mirrored;
    double fontScale;
  } cases[] = {{{0, 0}, {360, 720}, false, 1},
               {{372, 0}, {360, 720}, true, 1},
               {{744, 0}, {360, 720}, false, 1.5},
               {{0, 732}, {1104, 640}, false, 1}};
  QImage image(1104, 1372, QImage::Format_RGB32);
  image.fill(QColor(0x88, 0x88, 0x88));
  QPainter painter(&image);
  bool fine = true;
  for (const auto& [place, size, mirrored, fontScale] : cases) {
    appearance_->setProperty("mirrored", mirrored);
    appearance_->setFontScale(fontScale);
    fine = show(file, size) && fine;
    painter.drawImage(place, view_.grabWindow());
  }
  painter.end();
  appearance_->setProperty("mirrored", false);
  appearance_->setFontScale(1);
  return write(image, QStringLiteral("%1-%2").arg(file.toLower(), suffix())) && fine;
}

bool Sheet::drawSymbols() {
  constexpr int kColumns = 9, kCellWidth = 120, kCellHeight = 96;
  const QStringList names = QDir(QStringLiteral(":/qt/qml/Pillora/symbols")).entryList(QDir::Files, QDir::Name);
  const bool dark = appearance_->property("dark").toBool();
  const int lines = (static_cast<int>(names.size()) + kColumns - 1) / kColumns;
  QImage image(kColumns * kCellWidth, lines * kCellHeight, QImage::Format_RGB32);
  image.fill(dark ? QColor(0x1d, 0x20, 0x25) : Qt::white);
  QPainter painter(&image);
  painter.setPen(dark ? Qt::white : Qt::black);
  painter.setFont(QFont(appearance_->property("fontFamily").toString(), 6));
  int place = 0;
  for (const QString& file : names) {
    const QString name = file.chopped(4);
    const QPoint corner(place % kColumns * kCellWidth, place / kColumns * kCellHeight);
    const QColor color = dark ? QColor(0x74, 0xa6, 0xff) : QColor(0x2f, 0x6f, 0xe0);
    int x = 12;
    for (int size : {48, 24, 16}) {
      painter.drawImage(corner + QPoint(x, 12 + (48 - size) / 2), symbolImage(name, color, size));
      x += size + 4;
    }
    painter.drawText(QRect(corner + QPoint(2, 66), QSize(kCellWidth - 4, 24)), Qt::AlignHCenter | Qt::TextWordWrap,
                     name);
    ++place;
  }
  painter.end();
  return write(image, QStringLiteral("symbols-") + suffix());
}

bool Sheet::write(const QImage& image, const QString& name) {
  const QString path = folder_.filePath(name + QStringLiteral(".png"));
  const bool written = image.save(path);
  QTextStream(written ? stdout : stderr) << (written ? "" : "cannot write ") << path << '\n';
  return written;
}

}  // namespace pillora
