// A whole device for a test: files in a folder of their own, a real bus, and the real home screen,
// headless, with the library's hooks in place and a clock that only the test moves. One per
// process.
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "gifview/gif_view.h"
#include "host/home_screen/spring_board.h"
#include "placement/location_table.h"
#include "platform/linux/images/picture.h"
#include "platform/notify_center.h"
#include "tests/gif_maker.h"
#include "tool/device/bus_daemon.h"

namespace testing_stage {

using platform::Bytes;

struct StageOptions {
  int refreshRate = 60;
  // In points; 0 takes the kind of device's usual size.
  int width = 0;
  int height = 0;
  bool isPad = false;
  bool startsLocked = false;
};

// A folder that is gone with the object, and the root of all device paths meanwhile.
class DeviceRoot {
 public:
  DeviceRoot();
  ~DeviceRoot();
  DeviceRoot(const DeviceRoot&) = delete;
  DeviceRoot& operator=(const DeviceRoot&) = delete;

  // Where a device path lies on this machine.
  std::filesystem::path operator()(const std::string& devicePath) const;
  // Stores a file with its directories.
  void write(const std::string& devicePath, const Bytes& contents) const;
  void write(const std::string& devicePath, const std::string& text) const;
  bool has(const std::string& devicePath) const;

 private:
  std::filesystem::path folder_;
};

// Counts what happens to the settings file.
class SettingsWatch {
 public:
  explicit SettingsWatch(const DeviceRoot& root);
  ~SettingsWatch();
  SettingsWatch(const SettingsWatch&) = delete;
  SettingsWatch& operator=(const SettingsWatch&) = delete;

  struct Counts {
    int reads = 0;
    int writes = 0;
    friend bool operator==(const Counts&, const Counts&) = default;
  };
  // Since the last call.
  Counts take();

 private:
  int descriptor_;
};

platform::RGBAColor pixelAt(const platform::UIImage& image, int x, int y);

class Stage {
 public:
  explicit Stage(StageOptions options = {});
  ~Stage();
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  // Has the home screen finish launching and come to rest.
  void launch();
  // Until all queues and the bus are empty.
  void settle();
  void advance(std::chrono::duration<double> span);
  void refresh(int count = 1);

  // What the settings program does.
  static void put(const std::string& key, const std::string& value);
  static std::optional<std::string> stored(const std::string& key);
  void post(const std::string& name);
  // Has a message to the shared view's messaging centre arrive, and then a refresh happen, before
  // the main queue runs again.
  void refreshBeforeMessage(const std::string& message);
  // Chooses a GIF for "SHARED", "LOCKSCREEN" or "HOMESCREEN", and has it play.
  void choose(const std::string& identifier, const Bytes& gif);
  void leaveIncomingFile(const std::string& identifier, const Bytes& gif);

  // What the person with the device does.
  void hideWallpaper();
  void showWallpaper();
  void rotate(platform::UIInterfaceOrientation orientation);

  // Names posted since the last call, the control notifications left out.
  std::vector<std::string> takePosted();

  static std::shared_ptr<lumora::LWGIFView> view(const std::string& identifier);
  // Made as an installation does it: not on the main thread.
  std::shared_ptr<lumora::LWGIFView> makeView(const std::string& identifier);
  // What a debugger would be told of the view.
  static double described(const lumora::LWGIFView& view, const std::string& name);
  static double described(const std::string& identifier, const std::string& name);
  static bool isPlaying(const std::string& identifier);
  static int shownFrame(const std::string& identifier);
  static std::shared_ptr<platform::UIView> hostView(const lumora::LocationEntry& entry);
  // The colour of the screen at a point.
  Color colorAt(int x, int y);

  DeviceRoot root;
  host::SpringBoard& springBoard() { return *springBoard_; }

 private:
  std::unique_ptr<tool::BusDaemon> bus_;
  std::unique_ptr<host::SpringBoard> springBoard_;
  platform::DarwinNotifyCenter notifications_;
  std::vector<std::string> posted_;
};

}  // namespace testing_stage
