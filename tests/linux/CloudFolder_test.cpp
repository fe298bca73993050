// SPDX-License-Identifier: MIT
#include "linux/CloudFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sys/stat.h>

#include "doubles/ScopedVariable.h"
#include "doubles/TemporaryFolder.h"

namespace pillora {
namespace {

namespace fs = std::filesystem;

const std::string kNextcloud = ".config/Nextcloud/nextcloud.cfg";
const std::string kOwnCloud = ".config/ownCloud/owncloud.cfg";
const std::string kFlatpak = ".var/app/com.nextcloud.desktopclient.nextcloud/config/Nextcloud/nextcloud.cfg";

class CloudFolder : public testing::Test {
 protected:
  /// A client's configuration file; "~" stands for the home folder.
  void configure(const std::string& file, std::string lines) const {
    for (size_t at = lines.find('~'); at != std::string::npos; at = lines.find('~')) lines.replace(at, 1, home());
    fs::create_directories(fs::path(home()) / fs::path(file).parent_path());
    std::ofstream(home() + '/' + file) << lines;
  }
  void makeFolder(const std::string& name) const { fs::create_directories(home() + '/' + name); }
  const std::string& home() const { return folder_.path(); }

  TemporaryFolder folder_;
  ScopedVariable home_{"HOME", folder_.path()};
  ScopedVariable configuration_{"XDG_CONFIG_HOME", std::nullopt};
};

TEST_F(CloudFolder, thereIsNoneWithoutAClient) { EXPECT_EQ(cloudFolder(), std::nullopt); }

TEST_F(CloudFolder, isTheFolderThatTheClientKeepsInSync) {
  makeFolder("Nextcloud");
  configure(kNextcloud,
            "[General]\nclientVersion=3.7.3\n0\\Folders\\1\\localPath=~/elsewhere\n\n[Accounts]\n"
            "0\\Folders\\1\\ignoreHiddenFiles=false\n0\\Folders\\1\\journalPath=.sync_1.db\n"
            "0\\Folders\\1\\localPath=~/Nextcloud/\n0\\Folders\\1\\paused=false\n0\\Folders\\1\\targetPath=/\n"
            "0\\Folders\\1\\version=2\n0\\url=https://cloud.example.com\nversion=2\n\n[Settings]\nx=1\n");
  EXPECT_EQ(cloudFolder(), home() + "/Nextcloud/");
}

TEST_F(CloudFolder, isReadAnewEveryTime) {
  configure(kNextcloud, "[Accounts]\n0\\Folders\\1\\localPath=~/Nextcloud\n");
  EXPECT_EQ(cloudFolder(), std::nullopt) << "the folder is not there";
  makeFolder("Nextcloud");
  EXPECT_EQ(cloudFolder(), home() + "/Nextcloud");
  fs::remove(home() + '/' + kNextcloud);
  EXPECT_EQ(cloudFolder(), std::nullopt) << "the client is gone";
}

TEST_F(CloudFolder, theWholeAccountGoesBeforeAPartOfIt) {
  for (const std::string name : {"Photos", "Cloud", "Second"}) makeFolder(name);
  const std::string photos = "0\\Folders\\1\\localPath=~/Photos/\n0\\Folders\\1\\targetPath=/Photos\n";
  configure(kNextcloud, "[Accounts]\n" + photos);
  EXPECT_EQ(cloudFolder(), home() + "/Photos/");
  configure(kNextcloud, "[Accounts]\n" + photos + "0\\Folders\\2\\localPath=~/Cloud/\n0\\Folders\\2\\targetPath=/\n" +
                            "1\\Folders\\1\\localPath=~/Second/\n1\\Folders\\1\\targetPath=/\n");
  EXPECT_EQ(cloudFolder(), home() + "/Cloud/");
}

TEST_F(CloudFolder, everyGroupOfFoldersCounts) {
  makeFolder("Cloud");
  for (const std::string group : {"Folders", "Multifolders", "FoldersWithPlaceholders"}) {
    configure(kOwnCloud, "[Accounts]\n0\\" + group + "\\a1b2\\localPath=~/Cloud\n");
    EXPECT_EQ(cloudFolder(), home() + "/Cloud") << group;
  }
  for (const std::string key : {"0\\Blacklists\\1\\localPath", "localPath", "0\\localPath", "0\\Folders\\localPath",
                                "0\\Folders\\1\\LOCALPATH", "0\\Folders\\1\\otherPath"}) {
    configure(kOwnCloud, "[Accounts]\n" + key + "=~/Cloud\n");
    EXPECT_EQ(cloudFolder(), std::nullopt) << key;
  }
}

TEST_F(CloudFolder, namesAreReadAsTheClientWritesThem) {
  const struct {
    const char* written;
    const char* folder;
  } kCases[] = {
      {"~/Meine Wolke", "Meine Wolke"},   {"\"~/a, b; c=d\"", "a, b; c=d"}, {"~/J\\xf6rg", "Jörg"},
      {"~/\\x20ac\\x41", "€A"},           {"~/\\xd83d\\xdc8a", "💊"},        {"~/Jörg 💊", "Jörg 💊"},
      {"~/back\\\\slash", "back\\slash"}, {"  ~/blanks\t\r", "blanks"},
  };
  for (const auto& [written, folder] : kCases) {
    makeFolder(folder);
    configure(kNextcloud, std::string("[Accounts]\n0\\Folders\\1\\localPath=") + written + "\n");
    EXPECT_EQ(cloudFolder(), home() + '/' + folder) << written;
  }
}

TEST_F(CloudFolder, whatIsNoFolderIsPassedOver) {
  makeFolder("Cloud");
  std::ofstream(home() + "/file") << "x";
  for (const std::string path : {"", "Cloud", "~/missing", "~/file", "~\\x0/Cloud", "~\\x", "~\\xffffffffffff", "\\"}) {
    configure(kNextcloud, "[Accounts]\n0\\Folders\\1\\localPath=" + path + "\n");
    EXPECT_EQ(cloudFolder(), std::nullopt) << path;
  }
  configure(kNextcloud,
            "[Accounts]\n0\\Folders\\1\\localPath=~/missing\n0\\Folders\\1\\targetPath=/\n"
            "0\\Folders\\2\\localPath=~/Cloud\n");
  EXPECT_EQ(cloudFolder(), home() + "/Cloud");
}

TEST_F(CloudFolder, aConfigurationThatIsNoFileIsPassedOver) {
  fs::create_directories(home() + "/.config/Nextcloud");
  ASSERT_EQ(mkfifo((home() + '/' + kNextcloud).c_str(), 0600), 0);
  EXPECT_EQ(cloudFolder(), std::nullopt);
}

TEST_F(CloudFolder, nextcloudGoesBeforeOwnCloudAndBeforeAFlatpak) {
  for (const std::string name : {"N", "O", "F"}) makeFolder(name);
  configure(kFlatpak, "[Accounts]\n0\\Folders\\1\\localPath=~/F\n");
  EXPECT_EQ(cloudFolder(), home() + "/F");
  configure(kOwnCloud, "[Accounts]\n0\\Folders\\1\\localPath=~/O\n");
  EXPECT_EQ(cloudFolder(), home() + "/O");
  configure(kNextcloud, "[Accounts]\n0\\Folders\\1\\localPath=~/N\n");
  EXPECT_EQ(cloudFolder(), home() + "/N");
}

TEST_F(CloudFolder, theConfigurationFolderInUseIsLookedInto) {
  makeFolder("Cloud");
  configure("elsewhere/Nextcloud/nextcloud.cfg", "[Accounts]\n0\\Folders\\1\\localPath=~/Cloud\n");
  EXPECT_EQ(cloudFolder(), std::nullopt);
  const ScopedVariable configuration("XDG_CONFIG_HOME", home() + "/elsewhere");
  EXPECT_EQ(cloudFolder(), home() + "/Cloud");
}

}  // namespace
}  // namespace pillora
