#include "placement/scaling.h"

#include <algorithm>

#include "settings/locations.h"
#include "settings/scaling.h"
#include "threads/queues.h"

namespace lumora {
namespace {

// Reads the setting again for each name that it is compared with: for all but the last, which is
// the only one left then.
platform::UIViewContentMode contentMode(const Location& location) {
  const auto isStored = [&location](const Scaling& scaling) {
    return location.getScalingMode() == scaling.name;
  };
  return std::find_if(scalings.begin(), scalings.end() - 1, isStored)->contentMode;
}

}  // namespace

void updateScalingModeOfWallpaper(const std::shared_ptr<LWGIFView>& view,
                                  const std::string& identifier) {
  addToMainQueue([view, identifier] {
    const Location* location = locationWithIdentifier(identifier);
    if (location != nullptr) view->setContentMode(contentMode(*location));
  });
}

}  // namespace lumora
