#include "fuzz/home_screen.h"

#include <cstdlib>
#include <iterator>

#include "fuzz/device.h"
#include "hooks/hook_table.h"
#include "host/control/control_service.h"
#include "host/control/settling.h"
#include "platform/linux/bus/bus.h"
#include "platform/linux/main_loop/display_clock.h"
#include "platform/linux/main_loop/run_loop.h"
#include "platform/notify_center.h"
#include "settings/notification_names.h"
#include "tool/device/bus_daemon.h"

namespace fuzz {
namespace {

using host::SpringBoard;
using platform::UIInterfaceOrientation;
using platform::backend::RunLoop;

constexpr const char* notifications[] = {
    lumora::control::removeGIFFromAllWallpapers,
    lumora::control::wallpaperNeedsUpdating,
    lumora::control::updateWallpaper,
    lumora::control::updateAnimating,
    lumora::control::removeSharedGIFView,
    lumora::control::removeLockscreenGIFView,
    lumora::control::removeHomescreenGIFView,
    lumora::speedNeedsUpdatingNotification,
    lumora::alphaNeedsUpdatingNotification,
    lumora::blurNeedsUpdatingNotification,
    lumora::removeUnneededViewNotification,
};

constexpr void (*hands[])(SpringBoard&) = {
    [](SpringBoard& device) { device.lock(); },
    [](SpringBoard& device) { device.goHome(); },
    [](SpringBoard& device) { device.openApp(); },
    [](SpringBoard& device) { device.closeApp(); },
    [](SpringBoard& device) { device.turnDisplay(true); },
    [](SpringBoard& device) { device.turnDisplay(false); },
    [](SpringBoard& device) { device.rotate(UIInterfaceOrientation::Portrait); },
    [](SpringBoard& device) { device.rotate(UIInterfaceOrientation::LandscapeLeft); },
    [](SpringBoard& /*device*/) {
      platform::backend::DisplayClock::main().advance(std::chrono::milliseconds(100), [] {
        RunLoop::main().runMainQueue();
        return true;
      });
    },
};

class HomeScreen {
 public:
  HomeScreen() {
    clearDevice();
    platform::backend::Bus::open(bus_.address(), [] { std::abort(); });
    host::HostOptions options;
    options.display = host::DisplayKind::Headless;
    options.width = 20;
    options.height = 40;
    options.hasManualClock = true;
    // They live until the process ends, as in the home screen's own program.
    springBoard_ = new SpringBoard(options);
    control_ = new host::ControlService(*springBoard_, [] { return -1; });
    lumora::installHooks();
    springBoard_->launch();
    control_->announce();
    settle();
  }

  void settle() {
    constexpr std::chrono::minutes limit{1};
    control_->runJobs();
    if (!host::settle(RunLoop::Clock::now() + limit)) std::abort();
  }

  SpringBoard& springBoard() { return *springBoard_; }
  const std::string& busAddress() const { return bus_.address(); }

 private:
  tool::BusDaemon bus_{-1};
  SpringBoard* springBoard_ = nullptr;
  host::ControlService* control_ = nullptr;
};

HomeScreen& homeScreen() {
  static HomeScreen homeScreen;
  return homeScreen;
}

}  // namespace

SpringBoard& springBoard() {
  return homeScreen().springBoard();
}

const std::string& busAddress() {
  return homeScreen().busAddress();
}

void settle() {
  homeScreen().settle();
}

void perform(std::uint8_t action) {
  const std::size_t index = action % (std::size(notifications) + std::size(hands));
  if (index < std::size(notifications)) {
    platform::DarwinNotifyCenter::post(notifications[index]);
  } else {
    hands[index - std::size(notifications)](springBoard());
  }
}

}  // namespace fuzz
