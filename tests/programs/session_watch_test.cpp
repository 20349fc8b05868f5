#include "host/displays/session_watch.h"

#include <atomic>
#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "platform/linux/main_loop/run_loop.h"
#include "tests/fixture/stage.h"
#include "tool/device/bus_daemon.h"

namespace {

using namespace std::chrono_literals;
using platform::backend::RunLoop;

constexpr auto sessionInterface = "org.freedesktop.login1.Session";
constexpr auto sessionPath = "/org/freedesktop/login1/session/one";

// A session manager and a screen saver on one bus, which is both system bus and session bus.
class Desktop {
 public:
  Desktop() : bus_(-1) {
    setenv("DBUS_SYSTEM_BUS_ADDRESS", bus_.address().c_str(), 1);
    setenv("DBUS_SESSION_BUS_ADDRESS", bus_.address().c_str(), 1);
    connection_ = sdbus::createSessionBusConnectionWithAddress(bus_.address());
    connection_->requestName("org.freedesktop.login1");
    connection_->requestName("org.freedesktop.ScreenSaver");
    manager_ = sdbus::createObject(*connection_, "/org/freedesktop/login1");
    manager_->registerMethod("GetSession")
        .onInterface("org.freedesktop.login1.Manager")
        .implementedAs([](const std::string&) { return sdbus::ObjectPath(sessionPath); });
    manager_->finishRegistration();
    session_ = sdbus::createObject(*connection_, sessionPath);
    session_->registerProperty("LockedHint").onInterface(sessionInterface).withGetter([this] {
      return isLocked_.load();
    });
    session_->registerProperty("Active").onInterface(sessionInterface).withGetter([this] {
      return isActive_.load();
    });
    session_->finishRegistration();
    saver_ = sdbus::createObject(*connection_, "/org/freedesktop/ScreenSaver");
    saver_->registerSignal("ActiveChanged")
        .onInterface("org.freedesktop.ScreenSaver")
        .withParameters<bool>();
    saver_->finishRegistration();
    connection_->enterEventLoopAsync();
  }
  ~Desktop() { connection_->leaveEventLoop(); }
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;

  void change(bool isLocked, bool isActive) {
    isLocked_ = isLocked;
    isActive_ = isActive;
    session_->emitPropertiesChangedSignal(sessionInterface);
  }
  // Stops answering calls.
  void fallSilent() { connection_->leaveEventLoop(); }
  void save(bool isOn) {
    saver_->emitSignal("ActiveChanged")
        .onInterface("org.freedesktop.ScreenSaver")
        .withArguments(isOn);
  }

 private:
  const tool::BusDaemon bus_;
  std::atomic<bool> isLocked_ = false;
  std::atomic<bool> isActive_ = true;
  std::unique_ptr<sdbus::IConnection> connection_;
  std::unique_ptr<sdbus::IObject> manager_;
  std::unique_ptr<sdbus::IObject> session_;
  std::unique_ptr<sdbus::IObject> saver_;
};

bool becomes(const host::SessionWatch& watch, bool isAway) {
  const auto limit = RunLoop::Clock::now() + 10s;
  while (watch.isAway() != isAway && RunLoop::Clock::now() < limit) RunLoop::main().turn(limit);
  return watch.isAway() == isAway;
}

TEST(SessionWatch, DetectsLockedInactiveAndScreenSaverStates) {
  Desktop desktop;
  int changes = 0;
  const host::SessionWatch watch([&changes] { ++changes; });
  EXPECT_FALSE(watch.isAway());
  EXPECT_EQ(changes, 0);
  desktop.change(true, true);
  EXPECT_TRUE(becomes(watch, true));
  desktop.change(false, true);
  EXPECT_TRUE(becomes(watch, false));
  desktop.change(false, false);
  EXPECT_TRUE(becomes(watch, true));
  desktop.change(false, true);
  EXPECT_TRUE(becomes(watch, false));
  desktop.save(true);
  EXPECT_TRUE(becomes(watch, true));
  desktop.save(false);
  EXPECT_TRUE(becomes(watch, false));
  EXPECT_GE(changes, 6);
}

TEST(SessionWatch, DoesNotWaitForASilentBus) {
  Desktop desktop;
  desktop.fallSilent();
  const auto begin = RunLoop::Clock::now();
  const host::SessionWatch watch([] {});
  EXPECT_FALSE(watch.isAway());
  // The bus library's own timeout is 25 seconds.
  EXPECT_LT(RunLoop::Clock::now() - begin, 10s);
}

TEST(SessionWatch, ReportsTheUserPresentWithoutABus) {
  setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere/system", 1);
  setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere/user", 1);
  const host::SessionWatch watch([] {});
  EXPECT_FALSE(watch.isAway());
}

}  // namespace
