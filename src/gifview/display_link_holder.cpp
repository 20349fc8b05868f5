#include "gifview/display_link_holder.h"

#include <utility>

namespace lumora {

void DisplayLinkHolder::start(platform::CADisplayLink::Target target) {
  auto link = platform::CADisplayLink::displayLinkWithTarget(std::move(target));
  link_.store(link);
  link->setFrameInterval(1);
  link->addToMainRunLoop();
}

void DisplayLinkHolder::stop() {
  if (auto link = link_.exchange(nullptr)) link->invalidate();
}

}  // namespace lumora
