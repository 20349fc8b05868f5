#include "placement/scaling.h"

#include "settings/locations.h"
#include "threads/queues.h"

namespace lumora {
namespace {

using platform::UIViewContentMode;

// Reads the setting again for each value that it is compared with.
UIViewContentMode contentMode(const Location& location) {
  if (location.getScalingMode() == "FIT") return UIViewContentMode::ScaleAspectFit;
  return location.getScalingMode() == "FILL" ? UIViewContentMode::ScaleAspectFill
                                             : UIViewContentMode::ScaleToFill;
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
