#include "host/displays/power_watch.h"

#include <cstdlib>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "platform/linux/main_loop/run_loop.h"
#include "tool/device/bus_daemon.h"

namespace {

using namespace std::chrono_literals;
using platform::backend::RunLoop;

// A service on a bus that has one property, which tests change.
template <typename Value>
class Service {
 public:
  Service(const std::string& address, const std::string& name, const std::string& path,
          const std::string& property, Value value)
      : name_(name), value_(std::move(value)) {
    connection_ = sdbus::createSessionBusConnectionWithAddress(address);
    object_ = sdbus::createObject(*connection_, path);
    object_->registerProperty(property).onInterface(name).withGetter([this] { return value_; });
    object_->finishRegistration();
    connection_->requestName(name);
    connection_->enterEventLoopAsync();
  }
  ~Service() { connection_->leaveEventLoop(); }
  Service(const Service&) = delete;
  Service& operator=(const Service&) = delete;

  void change(Value value) {
    connection_->leaveEventLoop();
    value_ = std::move(value);
    connection_->enterEventLoopAsync();
    object_->emitPropertiesChangedSignal(name_);
  }

 private:
  const std::string name_;
  Value value_;
  std::unique_ptr<sdbus::IConnection> connection_;
  std::unique_ptr<sdbus::IObject> object_;
};

bool becomes(const host::PowerWatch& watch, bool isSaving) {
  const auto limit = RunLoop::Clock::now() + 10s;
  while (watch.isSaving() != isSaving && RunLoop::Clock::now() < limit) RunLoop::main().turn(limit);
  return watch.isSaving() == isSaving;
}

TEST(PowerWatch, FollowsServicesThatComeChangeAndGo) {
  const tool::BusDaemon bus(-1);
  setenv("DBUS_SYSTEM_BUS_ADDRESS", bus.address().c_str(), 1);
  int changes = 0;
  const host::PowerWatch watch([&changes] { ++changes; });
  EXPECT_FALSE(watch.isSaving());
  {
    Service<bool> power(bus.address(), "org.freedesktop.UPower", "/org/freedesktop/UPower",
                        "OnBattery", true);
    EXPECT_TRUE(becomes(watch, true));
    power.change(false);
    EXPECT_TRUE(becomes(watch, false));
    power.change(true);
    EXPECT_TRUE(becomes(watch, true));
  }
  EXPECT_TRUE(becomes(watch, false));
  for (const auto& [name, path] :
       {std::pair("org.freedesktop.UPower.PowerProfiles", "/org/freedesktop/UPower/PowerProfiles"),
        std::pair("net.hadess.PowerProfiles", "/net/hadess/PowerProfiles")}) {
    Service<std::string> profiles(bus.address(), name, path, "ActiveProfile", "power-saver");
    EXPECT_TRUE(becomes(watch, true)) << name;
    profiles.change("balanced");
    EXPECT_TRUE(becomes(watch, false)) << name;
  }
  EXPECT_EQ(changes, 8);
}

TEST(PowerWatch, SavesNothingWithoutABus) {
  setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere/system", 1);
  const host::PowerWatch watch([] {});
  EXPECT_FALSE(watch.isSaving());
}

}  // namespace
