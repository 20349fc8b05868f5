// A connection to the running home screen of a device, over the device's bus.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include <sdbus-c++/sdbus-c++.h>

#include "tool/device/device_folder.h"
#include "tool/support/time_limit.h"

namespace tool {

class HostConnection {
 public:
  // nullptr if no home screen of this device is running and has finished launching. Throws Failure
  // if its bus does not answer.
  static std::unique_ptr<HostConnection> find(const DeviceFolder& device,
                                              Seconds timeout = usualTimeout);
  // The same, but throws Failure with exit code 3.
  static std::unique_ptr<HostConnection> require(const DeviceFolder& device,
                                                 Seconds timeout = usualTimeout);

  // These throw Failure if the home screen does not answer within the timeout or says no.
  void call(const std::string& method, Seconds timeout = usualTimeout);
  void rotate(const std::string& orientation);
  void advance(std::chrono::nanoseconds span, Seconds timeout);
  std::string status(Seconds timeout = usualTimeout);
  // A PNG file, without a name.
  platform::backend::FileDescriptor screenshot();

  // Whether someone on the device serves this name on the bus, for example a messaging center.
  bool serves(const std::string& name, Seconds timeout = usualTimeout);

  // Posts a Darwin notification.
  void post(const std::string& name, Seconds timeout = usualTimeout);
  // Gives the home screen some time to do what notifications have asked for. Returns whether it has
  // come to rest; not if it has no time to answer.
  bool settle(Seconds timeout = usualTimeout);

  // From now on pump hands over the name of every Darwin notification.
  void watch(std::function<void(const std::string&)> handler);
  // Handles what arrives until the moment given at the latest, or until something did; also returns
  // when the descriptor (unless negative) can be read. False once the bus has gone.
  bool pump(std::chrono::steady_clock::time_point limit, int descriptor = -1);

 private:
  explicit HostConnection(std::unique_ptr<sdbus::IConnection> connection);
  // Returns false if there is no answer within the timeout.
  template <typename Use>
  bool isAnswered(Seconds timeout, const std::string& method, Use use);
  template <typename Use>
  void ask(Seconds timeout, const std::string& method, Use use);

  std::unique_ptr<sdbus::IConnection> connection_;
  std::unique_ptr<sdbus::IProxy> proxy_;
  std::unique_ptr<sdbus::IObject> notifier_;
  std::unique_ptr<sdbus::Slot> watching_;
};

}  // namespace tool
