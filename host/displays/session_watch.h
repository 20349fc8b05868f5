// Finds out if the user has left the desktop session: it is locked, another session is active, or
// the desktop's screen saver is on. Main thread.
#pragma once

#include <functional>
#include <optional>

#include "host/displays/watched_bus.h"

namespace host {

class SessionWatch {
 public:
  // Listens to the session manager on the system bus and to screen savers on the session bus.
  // Without them isAway stays false. Calls changed when isAway may have changed.
  explicit SessionWatch(std::function<void()> changed);
  SessionWatch(const SessionWatch&) = delete;
  SessionWatch& operator=(const SessionWatch&) = delete;

  bool isAway() const { return isLocked_ || !isActive_ || isSaverOn_; }

 private:
  void watchSession();
  void watchSavers();
  void readSession(sdbus::IProxy& session);

  const std::function<void()> changed_;
  bool isLocked_ = false;
  bool isActive_ = true;
  bool isSaverOn_ = false;
  std::optional<WatchedBus> system_;
  std::optional<WatchedBus> user_;
};

}  // namespace host
