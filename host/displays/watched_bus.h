// A connection to a message bus of the user's desktop, whose messages the run loop handles. Main
// thread.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <sdbus-c++/sdbus-c++.h>

namespace host {

class WatchedBus {
 public:
  explicit WatchedBus(std::unique_ptr<sdbus::IConnection> bus);
  ~WatchedBus();
  WatchedBus(const WatchedBus&) = delete;
  WatchedBus& operator=(const WatchedBus&) = delete;

  // Makes a proxy that lives as long as this object. Calls without a timeout of their own wait for
  // half a second.
  sdbus::IProxy& addProxy(const std::string& service, const std::string& path);

  // Calls the function when the service has started, with true, or has ended. Throws sdbus::Error.
  void follow(const std::string& service, std::function<void(bool isRunning)> changed);

 private:
  bool handleMessages();

  const std::unique_ptr<sdbus::IConnection> bus_;
  std::vector<std::unique_ptr<sdbus::IProxy>> proxies_;
  std::vector<sdbus::Slot> matches_;
  int descriptor_ = -1;
};

}  // namespace host
