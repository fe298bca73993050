// SPDX-License-Identifier: MIT
// The program itself, as it is built: it shows every screen and ends, and QML has nothing to complain of.
#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "doubles/ChildProcess.h"
#include "ui/ScreenPictures.h"

namespace pillora {
namespace {

/// A program that draws, and the home folder that it finds.
class Program : public testing::Test {
 protected:
  /// What became of drawing into this folder of the home.
  ChildProcess::Result draw(const std::string& folder, const std::vector<std::string>& options = {},
                            const std::string& program = PILLORA_PROGRAM) {
    std::vector<std::string> words = {"/usr/bin/dbus-run-session", "--", program, "--pictures=" + path(folder)};
    words.insert(words.end(), options.begin(), options.end());
    ChildProcess pillora(words, {"HOME=" + path(""), "XDG_RUNTIME_DIR=" + path(""), "PATH=/usr/bin:/bin",
                                 "LANG=en_US.UTF-8", "TZ=America/New_York"});
    return pillora.finish();
  }
  /// The picture of Today, the first that is drawn. The second cannot be written, which saves the time for all others.
  QByteArray today(const std::string& language, const std::string& program = PILLORA_PROGRAM) {
    std::filesystem::remove_all(path("first"));
    std::filesystem::create_directories(path("first/upcoming-360x720-light.png"));
    draw("first", {"--language", language}, program);
    return bytes("first/today-360x720-light.png");
  }
  std::string path(const std::string& name) const { return home_.filePath(QString::fromStdString(name)).toStdString(); }
  QByteArray bytes(const std::string& file) const {
    QFile read(QString::fromStdString(path(file)));
    return read.open(QIODevice::ReadOnly) ? read.readAll() : QByteArray();
  }

  const QTemporaryDir home_;
};

TEST_F(Program, showsEveryScreenOfTheDemoWithoutAWarning) {
  const auto result = draw("screens", {"--demo"});
  EXPECT_EQ(result.status, 0);
  std::istringstream lines(result.err);
  for (std::string line; std::getline(lines, line);) {
    for (const char* sign : {".qml", "QML", "Warning"}) {
      EXPECT_EQ(line.find(sign), std::string::npos) << line;
    }
  }
  for (const Scene& scene : allScenes()) {
    for (const char* look : {"-360x720-light", "-1000x700-dark"}) {
      const QFileInfo picture(home_.filePath(QStringLiteral("screens/")) + scene.name + look + ".png");
      EXPECT_GT(picture.size(), 1000) << picture.fileName().toStdString();
    }
  }
  std::set<QByteArray> schedules;
  for (const char* kind : {"medicine", "hourly", "weekly", "monthly", "custom"}) {
    schedules.insert(bytes(std::string("screens/add-") + kind + "-360x2000-long.png"));
  }
  EXPECT_EQ(schedules.size(), 5u) << "each kind of schedule has its own form";
  EXPECT_FALSE(QFileInfo::exists(home_.filePath(QStringLiteral(".local")))) << "nothing is kept of a demo";
}

TEST_F(Program, saysWhyItCannotDraw) {
  std::ofstream(path("file")) << "not a folder";
  const auto result = draw("file/screens");
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.err.find("pillora: the folder '" + path("file/screens") + "' cannot be made: Not a directory\n"),
            std::string::npos)
      << result.err;
  std::filesystem::create_directories(path("screens/today-360x720-light.png"));
  const auto taken = draw("screens");
  EXPECT_EQ(taken.status, 1);
  EXPECT_NE(taken.err.find("pillora: " + path("screens/today-360x720-light.png") + " cannot be written: "),
            std::string::npos)
      << taken.err;
}

TEST_F(Program, mirrorsNoEnglishThatStandsForALanguageReadFromTheRight) {
  std::filesystem::create_directory(path("alone"));
  std::filesystem::copy_file(PILLORA_PROGRAM, path("alone/pillora"));
  const QByteArray english = today("en");
  ASSERT_FALSE(english.isEmpty());
  EXPECT_EQ(today("ar", path("alone/pillora")), english) << "there is no catalogue near this one";
  EXPECT_NE(today("ar"), english);
}

}  // namespace
}  // namespace pillora
