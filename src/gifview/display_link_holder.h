// Holds the display link of a view while it plays.
#pragma once

#include <memory>

#include "platform/display_link.h"
#include "threads/guarded.h"

namespace lumora {

class DisplayLinkHolder {
 public:
  // Creates a link that calls target at every refresh. An earlier link that has not been stopped
  // continues to fire and can no longer be stopped. Main thread.
  void start(platform::CADisplayLink::Target target);
  // Invalidates the newest link, if there is one. Any thread.
  void stop();
  // Returns true if there is a link to stop. Any thread.
  bool isRunning() const { return link_.load() != nullptr; }

 private:
  Guarded<std::shared_ptr<platform::CADisplayLink>> link_;
};

}  // namespace lumora
