#include "tests/stage.h"

#include <cstdlib>
#include <fstream>
#include <map>
#include <stdexcept>
#include <utility>

#include <poll.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include "gifview/notification_names.h"
#include "hooks/hook_table.h"
#include "host/control/screenshot.h"
#include "host/control/settling.h"
#include "placement/host_wallpaper.h"
#include "platform/file_manager.h"
#include "platform/linux/bus/bus.h"
#include "platform/linux/files/device_root.h"
#include "platform/linux/files/file_contents.h"
#include "platform/linux/images/png/reader.h"
#include "platform/linux/main_loop/display_clock.h"
#include "platform/linux/main_loop/run_loop.h"
#include "platform/linux/views/main_thread_check.h"
#include "platform/messaging_center.h"
#include "platform/operation_queue.h"
#include "settings/device_paths.h"
#include "settings/settings_store.h"
#include "tool/device/stored_settings.h"

namespace testing_stage {
namespace {

namespace fs = std::filesystem;
using platform::DisplayClock;
using platform::RunLoop;

constexpr auto incomingDirectory = "/var/mobile/Media/Downloads/";
constexpr std::chrono::seconds settleLimit{60};

constexpr const char* viewPosts[] = {lumora::frameFoundNotification,
                                     lumora::didStartAnimatingNotification,
                                     lumora::blurDidFinishNotification};

host::HostOptions hostOptions(const StageOptions& options) {
  host::HostOptions result;
  result.display = "headless";
  result.width = options.width > 0 ? options.width : options.isPad ? 820 : 390;
  result.height = options.height > 0 ? options.height : options.isPad ? 1180 : 844;
  result.refreshRate = options.refreshRate;
  result.isPad = options.isPad;
  result.startsLocked = options.startsLocked;
  result.hasManualClock = true;
  return result;
}

class Description : public platform::ViewDescription {
 public:
  void addText(std::string_view, std::string_view) override {}
  void addNumber(std::string_view name, double value) override {
    values[std::string(name)] = value;
  }
  void addInteger(std::string_view name, long long value) override {
    addNumber(name, static_cast<double>(value));
  }
  void addFlag(std::string_view name, bool value) override { addNumber(name, value); }

  std::map<std::string, double> values;
};

}  // namespace

DeviceRoot::DeviceRoot() {
  std::string name = (fs::temp_directory_path() / "lumora-test-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no folder for the test");
  folder_ = name;
  fs::create_directories((*this)(lumora::settingsPath).parent_path());
  platform::setDeviceRoot(folder_);
}

DeviceRoot::~DeviceRoot() {
  std::error_code error;
  fs::remove_all(folder_, error);
}

fs::path DeviceRoot::operator()(const std::string& devicePath) const {
  return folder_.string() + devicePath;
}

void DeviceRoot::write(const std::string& devicePath, const Bytes& contents) const {
  fs::create_directories((*this)(devicePath).parent_path());
  std::ofstream file((*this)(devicePath), std::ios::binary);
  file.write(reinterpret_cast<const char*>(contents.data()),
             static_cast<std::streamsize>(contents.size()));
}

void DeviceRoot::write(const std::string& devicePath, const std::string& text) const {
  write(devicePath, Bytes(text.begin(), text.end()));
}

bool DeviceRoot::has(const std::string& devicePath) const {
  return fs::exists((*this)(devicePath));
}

SettingsWatch::SettingsWatch(const DeviceRoot& root) : descriptor_(inotify_init1(IN_NONBLOCK)) {
  // The end of a read is watched, too, since equal events in a row are reported as one.
  inotify_add_watch(descriptor_, root(lumora::settingsPath).parent_path().c_str(),
                    IN_OPEN | IN_CLOSE_NOWRITE | IN_MOVED_TO);
}

SettingsWatch::~SettingsWatch() {
  close(descriptor_);
}

SettingsWatch::Counts SettingsWatch::take() {
  Counts counts;
  alignas(inotify_event) char buffer[65536];
  for (ssize_t size = 0; (size = read(descriptor_, buffer, sizeof buffer)) > 0;) {
    for (ssize_t at = 0; at < size;) {
      const auto* event = reinterpret_cast<const inotify_event*>(buffer + at);
      const bool isSettings =
          event->len > 0 && platform::lastPathComponent(lumora::settingsPath) == event->name;
      if (isSettings && event->mask & IN_OPEN) ++counts.reads;
      if (isSettings && event->mask & IN_MOVED_TO) ++counts.writes;
      at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
    }
  }
  return counts;
}

Stage::Stage(StageOptions options) {
  static bool isUsed = false;
  if (std::exchange(isUsed, true)) {
    throw std::runtime_error("one stage per process: run the tests through ctest");
  }
  bus_ = std::make_unique<tool::BusDaemon>(-1);
  platform::Bus::open(bus_->address(), [] {});
  springBoard_ = std::make_unique<host::SpringBoard>(hostOptions(options));
  lumora::installHooks();
  for (const char* name : viewPosts) {
    notifications_.addObserver(this, name,
                               [this](const std::string& posted) { posted_.push_back(posted); });
  }
}

Stage::~Stage() {
  host::settle(RunLoop::Clock::now() + settleLimit);
  EXPECT_EQ(platform::timesOffMainThread(), 0);
}

void Stage::launch() {
  springBoard_->launch();
  settle();
}

void Stage::settle() {
  if (!host::settle(RunLoop::Clock::now() + settleLimit)) {
    throw std::runtime_error("the device does not come to rest");
  }
}

void Stage::advance(std::chrono::duration<double> span) {
  DisplayClock::main().advance(std::chrono::round<std::chrono::nanoseconds>(span), [] {
    RunLoop::main().runMainQueue();
    return true;
  });
  settle();
}

void Stage::refresh(int count) {
  const std::chrono::nanoseconds second = std::chrono::seconds(1);
  const int rate = DisplayClock::main().refreshRate();
  for (int each = 0; each < count; ++each)
    advance((second + std::chrono::nanoseconds(rate - 1)) / rate);
}

void Stage::put(const std::string& key, const std::string& value) {
  lumora::setPreferencesObjectKey(value, key);
}

std::optional<std::string> Stage::stored(const std::string& key) {
  return tool::storedSetting(key);
}

void Stage::post(const std::string& name) {
  platform::DarwinNotifyCenter::post(name);
  settle();
}

void Stage::refreshBeforeMessage(const std::string& message) {
  platform::CPDistributedMessagingCenter::centerNamed("com.brightfen.lumora.gifview.SHARED")
      ->sendMessageName(message);
  pollfd listener{platform::Bus::current()->listener().getEventLoopPollData().fd, POLLIN, 0};
  ASSERT_EQ(poll(&listener, 1, 10000), 1);
  auto& clock = DisplayClock::main();
  const std::chrono::nanoseconds second = std::chrono::seconds(1);
  clock.advance((second + std::chrono::nanoseconds(clock.refreshRate() - 1)) / clock.refreshRate(),
                [] { return true; });
  RunLoop::main().turn(RunLoop::Clock::now());
  settle();
}

void Stage::leaveIncomingFile(const std::string& identifier, const Bytes& gif) {
  const std::string path = incomingDirectory + identifier + "_LUMORA_WALLPAPER.gif";
  root.write(path, gif);
  if (identifier == "LOCKSCREEN") put("LOCATION_INDEX", "0");
  if (identifier == "HOMESCREEN") put("LOCATION_INDEX", "1");
  put("SAFARI_DIRECTORY", path);
}

void Stage::choose(const std::string& identifier, const Bytes& gif) {
  leaveIncomingFile(identifier, gif);
  post("com.brightfen.lumora.wallpaperNeedsUpdating");
  post("com.brightfen.lumora.updateAnimating");
}

void Stage::hideWallpaper() {
  springBoard_->openApp();
  settle();
}

void Stage::showWallpaper() {
  springBoard_->goHome();
  settle();
}

void Stage::rotate(platform::UIInterfaceOrientation orientation) {
  springBoard_->rotate(orientation);
  settle();
}

std::vector<std::string> Stage::takePosted() {
  return std::exchange(posted_, {});
}

std::shared_ptr<lumora::LWGIFView> Stage::view(const std::string& identifier) {
  return lumora::entryOf(lumora::locationOfIdentifier(identifier))->view.load();
}

std::shared_ptr<lumora::LWGIFView> Stage::makeView(const std::string& identifier) {
  std::shared_ptr<lumora::LWGIFView> view;
  platform::NSOperationQueue().addOperationWithBlock(
      [&] { view = lumora::LWGIFView::initWithIdentifier(identifier); });
  settle();
  return view;
}

double Stage::described(const lumora::LWGIFView& view, const std::string& name) {
  Description description;
  view.describe(description);
  return description.values.at(name);
}

double Stage::described(const std::string& identifier, const std::string& name) {
  return described(*view(identifier), name);
}

bool Stage::isPlaying(const std::string& identifier) {
  return described(identifier, "playing") != 0;
}

int Stage::shownFrame(const std::string& identifier) {
  return static_cast<int>(described(identifier, "frame_shown"));
}

std::shared_ptr<platform::UIView> Stage::hostView(const lumora::LocationEntry& entry) {
  return lumora::hostWallpaperView(lumora::sharedWallpaperController(), entry);
}

Color Stage::colorAt(int x, int y) {
  platform::FileDescriptor png(host::takeScreenshot(springBoard_->screen(), 1));
  struct stat status {};
  EXPECT_EQ(fstat(png.get(), &status), 0);
  const auto picture = platform::decodePng(
      *platform::dataOfFile({std::move(png), static_cast<std::size_t>(status.st_size)}));
  const auto pixel = pixelAt(*picture, x, y);
  return {pixel[0], pixel[1], pixel[2]};
}

platform::RGBAColor pixelAt(const platform::UIImage& image, int x, int y) {
  const Bytes pixels = platform::pixelsOf(image);
  platform::RGBAColor color;
  std::copy_n(&pixels[static_cast<std::size_t>(y * image.width() + x) * color.size()], color.size(),
              color.begin());
  return color;
}

}  // namespace testing_stage
