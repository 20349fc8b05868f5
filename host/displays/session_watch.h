// Finds out if the user has left the desktop session: it is locked, another session is active, or
// the desktop's screen saver is on. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <sdbus-c++/sdbus-c++.h>

namespace host {

class SessionWatch {
 public:
  // Listens to the session manager on the system bus and to screen savers on the session bus.
  // Without them isAway stays false. Calls changed when isAway may have changed.
  explicit SessionWatch(std::function<void()> changed);
  ~SessionWatch();
  SessionWatch(const SessionWatch&) = delete;
  SessionWatch& operator=(const SessionWatch&) = delete;

  bool isAway() const { return isLocked_ || !isActive_ || isSaverOn_; }

 private:
  // A bus whose messages the run loop handles.
  struct Connection {
    std::unique_ptr<sdbus::IConnection> bus;
    std::vector<std::unique_ptr<sdbus::IProxy>> proxies;
    int descriptor = -1;
  };

  void watchSession();
  void watchSavers();
  void listen(Connection& connection);
  void readSession(sdbus::IProxy& session);

  const std::function<void()> changed_;
  Connection system_;
  Connection user_;
  bool isLocked_ = false;
  bool isActive_ = true;
  bool isSaverOn_ = false;
};

}  // namespace host
