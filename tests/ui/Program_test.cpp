// SPDX-License-Identifier: MIT
// The program itself, as it is built: it shows every screen and ends, and QML has nothing to complain of.
#include <gtest/gtest.h>

#include <QFileInfo>
#include <QTemporaryDir>
#include <sstream>
#include <sys/stat.h>

#include "doubles/ChildProcess.h"
#include "ui/ScreenPictures.h"

namespace pillora {
namespace {

TEST(Program, showsEveryScreenOfTheDemoWithoutAWarning) {
  const QTemporaryDir home;
  const std::string folder = home.path().toStdString();
  ChildProcess pillora(
      {"/usr/bin/dbus-run-session", "--", PILLORA_PROGRAM, "--demo", "--pictures=" + folder + "/screens"},
      {"HOME=" + folder, "XDG_RUNTIME_DIR=" + folder, "PATH=/usr/bin:/bin", "LANG=en_US.UTF-8", "TZ=America/New_York"});
  const auto result = pillora.finish();
  EXPECT_EQ(result.status, 0);
  std::istringstream lines(result.err);
  for (std::string line; std::getline(lines, line);) {
    for (const char* sign : {".qml", "QML", "Warning"}) {
      EXPECT_EQ(line.find(sign), std::string::npos) << line;
    }
  }
  for (const Scene& scene : allScenes()) {
    for (const char* look : {"-360x720-light", "-1000x700-dark"}) {
      const QFileInfo picture(home.path() + "/screens/" + scene.name + look + ".png");
      EXPECT_GT(picture.size(), 1000) << picture.fileName().toStdString();
    }
  }
  EXPECT_FALSE(QFileInfo::exists(home.path() + "/.local")) << "nothing is kept of a demo";
}

}  // namespace
}  // namespace pillora
