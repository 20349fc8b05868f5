// The display link of a view while the view plays.
#pragma once

#include <memory>

#include "platform/display_link.h"
#include "threads/guarded.h"

namespace lumora {

class DisplayLinkHolder {
 public:
  // Makes a link that calls target at every refresh. A link from before that nobody stopped goes on
  // firing. Main thread.
  void start(platform::CADisplayLink::Target target);
  // Invalidates the link made last, if there is one. Any thread.
  void stop();
  // Any thread.
  bool isRunning() const { return link_.load() != nullptr; }

 private:
  Guarded<std::shared_ptr<platform::CADisplayLink>> link_;
};

}  // namespace lumora
