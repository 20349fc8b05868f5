// Whether the person is away from the desktop session: it is locked, another session is in front,
// or the desktop's own screen saver is on. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <sdbus-c++/sdbus-c++.h>

namespace host {

class SessionWatch {
 public:
  // Listens to the session manager on the system's bus and to screen savers on the user's. Where
  // there is none of them, nobody ever counts as away. changed is called when isAway may give
  // something else than before.
  explicit SessionWatch(std::function<void()> changed);
  ~SessionWatch();
  SessionWatch(const SessionWatch&) = delete;
  SessionWatch& operator=(const SessionWatch&) = delete;

  bool isAway() const { return isLocked_ || !isActive_ || isSaverOn_; }

 private:
  // A bus whose messages the run loop waits for.
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
