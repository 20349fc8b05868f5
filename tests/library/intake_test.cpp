#include <string>

#include <gtest/gtest.h>

#include "platform/file_manager.h"
#include "platform/linux/files/file_contents.h"
#include "settings/wallpaper_intake.h"
#include "tests/fixture/stage.h"

namespace {

namespace fs = std::filesystem;
using testing_stage::Bytes;
using testing_stage::DeviceRoot;
using testing_stage::SettingsWatch;
using testing_stage::Stage;

const std::string library = "/var/mobile/Library/Lumora/";
const std::string downloads = "/var/mobile/Media/Downloads/";

// A library with a GIF and a frame cache for every location.
struct FullLibrary {
  FullLibrary() {
    for (const char* name : {"Wallpaper_both", "Wallpaper_lockscreen", "Wallpaper_homescreen"}) {
      root.write(library + name + ".gif", std::string("old"));
      root.write(library + name + "/" + name + "_0.png", std::string("frame"));
    }
  }

  void takeIn(const std::string& path) const {
    Stage::put("SAFARI_DIRECTORY", path);
    lumora::takeInWallpaperFile();
  }

  std::string contents(const std::string& name) const {
    const auto bytes = platform::backend::contentsOfFile(library + name);
    return bytes ? std::string(bytes->begin(), bytes->end()) : "nothing";
  }

  DeviceRoot root;
};

struct Incoming {
  const char* name;
  const char* mode;
  std::string destination;
};

const Incoming incoming[] = {
    {"SHARED_LUMORA_WALLPAPER.gif", "1", "Wallpaper_both"},
    {"LOCKSCREEN_LUMORA_WALLPAPER.gif", "0", "Wallpaper_lockscreen"},
    {"HOMESCREEN_LUMORA_WALLPAPER.gif", "0", "Wallpaper_homescreen"},
};

TEST(Intake, MovesEachKnownNameToItsLocation) {
  for (const Incoming& file : incoming) {
    SCOPED_TRACE(file.name);
    const FullLibrary device;
    Stage::put("MODE_INDEX", *file.mode == '1' ? "0" : "1");
    device.root.write(downloads + file.name, std::string("new"));
    device.takeIn(downloads + file.name);
    EXPECT_EQ(Stage::stored("MODE_INDEX"), file.mode);
    EXPECT_FALSE(device.root.has(downloads + file.name));
    for (const Incoming& other : incoming) {
      const bool isThis = other.destination == file.destination;
      EXPECT_EQ(device.contents(other.destination + ".gif"), isThis ? "new" : "old");
      EXPECT_EQ(device.root.has(library + other.destination), !isThis);
    }
    EXPECT_EQ(Stage::stored("SAFARI_DIRECTORY"), downloads + file.name);
    EXPECT_EQ(Stage::stored("WALLPAPER_SET"), std::nullopt);
  }
}

TEST(Intake, ClearsTheLocationOfAMissingFile) {
  const FullLibrary device;
  device.takeIn(downloads + incoming[0].name);
  EXPECT_EQ(Stage::stored("MODE_INDEX"), "1");
  EXPECT_EQ(device.contents("Wallpaper_both.gif"), "nothing");
  EXPECT_FALSE(device.root.has(library + "Wallpaper_both"));
}

TEST(Intake, OnlyDeletesFilesWithUnknownNames) {
  for (const char* name : {"shared_lumora_wallpaper.gif", "cat.gif", "SHARED_LUMORA_WALLPAPER"}) {
    SCOPED_TRACE(name);
    const FullLibrary device;
    device.root.write(downloads + name, std::string("new"));
    device.takeIn(downloads + name);
    EXPECT_FALSE(device.root.has(downloads + name));
    EXPECT_EQ(Stage::stored("MODE_INDEX"), std::nullopt);
    for (const Incoming& file : incoming)
      EXPECT_EQ(device.contents(file.destination + ".gif"), "old");
  }
}

TEST(Intake, ChangesNothingWithoutAPath) {
  const FullLibrary device;
  SettingsWatch watch(device.root);
  lumora::takeInWallpaperFile();
  device.takeIn("");
  device.takeIn("/");
  device.takeIn("/../..");
  for (const Incoming& file : incoming) {
    EXPECT_EQ(device.contents(file.destination + ".gif"), "old");
    EXPECT_TRUE(device.root.has(library + file.destination));
  }
  EXPECT_EQ(Stage::stored("MODE_INDEX"), std::nullopt);
}

TEST(Intake, IgnoresDirectories) {
  const FullLibrary device;
  for (const std::string& name : {std::string("Documents"), std::string(incoming[0].name)}) {
    device.root.write(downloads + name + "/letter", std::string("mine"));
    device.takeIn(downloads + name);
    EXPECT_TRUE(device.root.has(downloads + name + "/letter")) << name;
  }
}

TEST(Intake, DeletesAFileThatCannotBeMoved) {
  const FullLibrary device;
  // Without its directory the destination cannot be written.
  fs::remove_all(device.root(library));
  device.root.write(downloads + incoming[0].name, std::string("new"));
  device.takeIn(downloads + incoming[0].name);
  EXPECT_FALSE(device.root.has(downloads + incoming[0].name));
  EXPECT_FALSE(device.root.has(library));
}

TEST(Intake, TouchesNothingOutsideTheDevice) {
  const DeviceRoot world;
  const FullLibrary device;
  const std::string name = "SHARED_LUMORA_WALLPAPER.gif";
  world.write("/precious/" + name, std::string("mine"));
  fs::create_directory_symlink(world("/precious"), device.root("/link"));
  fs::create_directories(device.root("/var/mobile/Media"));
  fs::create_symlink(world("/precious/" + name), device.root("/var/mobile/Media/" + name));
  const std::string up = "/../../../../../../..";
  const std::string precious = "/precious/" + name;
  for (const std::string& path :
       {up + world(precious).string(), "/link/" + name, "/var/../link/" + name,
        std::string("/link"), "/var/mobile/Media/" + name}) {
    SCOPED_TRACE(path);
    device.takeIn(path);
    EXPECT_TRUE(world.has(precious));
    // A link may be moved, but is not followed.
    EXPECT_NE(device.contents("Wallpaper_both.gif"), "mine");
  }
}

}  // namespace
