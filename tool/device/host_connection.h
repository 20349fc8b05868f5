// A connection to the running home screen of a device, over the device's bus.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <sdbus-c++/sdbus-c++.h>

#include "host/options/host_options.h"
#include "tool/device/device_folder.h"
#include "tool/support/screen_pixels.h"
#include "tool/support/time_limit.h"

namespace tool {

class HostConnection {
 public:
  // Returns nullptr if no home screen of this device is running, or if it has not finished
  // launching. Throws Failure if the device's bus does not answer.
  static std::unique_ptr<HostConnection> find(const DeviceFolder& device,
                                              Seconds timeout = usualTimeout);
  // The same, but throws Failure with ExitCode::NoHost instead of returning nullptr.
  static std::unique_ptr<HostConnection> require(const DeviceFolder& device,
                                                 Seconds timeout = usualTimeout);

  // These call the methods of host/control/control_names.h and wait for the answer. They throw
  // Failure if the home screen does not answer before the timeout or refuses.
  void call(const std::string& method, Seconds timeout = usualTimeout);
  void rotate(const std::string& orientation);
  void setWallpaperName(const std::string& name);
  void setExceptedOutputs(const std::vector<std::string>& names);
  void setBackdrop(const host::BackdropOptions& backdrop);
  void advance(std::chrono::nanoseconds span, Seconds timeout);
  std::string status(Seconds timeout = usualTimeout);
  std::string trace();
  // Throws Failure if the home screen is on a desktop, which has one wallpaper and no dock.
  void requirePhone();
  // Returns a PNG file without a name, which the caller owns.
  platform::backend::FileDescriptor screenshot();
  // Returns the pixels of such a picture.
  ScreenPixels pixels();

  // Returns true if a process owns this name on the bus, for example that of a messaging center.
  // Throws sdbus::Error if the bus does not answer.
  bool serves(const std::string& name, Seconds timeout = usualTimeout);

  // Posts a Darwin notification. Returns once the bus has it. Throws Failure if the bus does not
  // answer.
  void post(const std::string& name, Seconds timeout = usualTimeout);
  // Waits until the home screen has finished its work, for two seconds at most. Returns true if it
  // has; false if it is still busy or does not answer before the timeout. Throws Failure if the
  // home screen has ended.
  bool settle(Seconds timeout = usualTimeout);

  // Makes pump call the handler with the name of every Darwin notification posted from now on.
  void watch(std::function<void(const std::string&)> handler);
  // Makes pump call the handler with the JSON text of every event of the trace from now on.
  void watchTrace(std::function<void(const std::string&)> handler);
  // Waits until a message arrives, the descriptor (unless negative) can be read, or the limit
  // passes, and handles all messages that have arrived. Returns false if the bus has ended.
  bool pump(std::chrono::steady_clock::time_point limit, int descriptor = -1);

 private:
  explicit HostConnection(std::unique_ptr<sdbus::IConnection> connection);
  // Calls a method; use adds arguments and takes results. Returns false if there is no answer
  // before the timeout. ask throws Failure instead.
  template <typename Use>
  bool isAnswered(Seconds timeout, const std::string& method, Use use);
  // Makes pump call the handler with the text of every signal that the rule matches.
  void watchSignals(const std::string& rule, std::function<void(const std::string&)> handler);
  template <typename Use>
  void ask(Seconds timeout, const std::string& method, Use use);

  std::unique_ptr<sdbus::IConnection> connection_;
  std::unique_ptr<sdbus::IProxy> proxy_;
  std::unique_ptr<sdbus::IObject> notifier_;
  std::vector<sdbus::Slot> watching_;
};

}  // namespace tool
