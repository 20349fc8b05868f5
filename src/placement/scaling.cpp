#include "placement/scaling.h"

#include "settings/settings_store.h"
#include "threads/queues.h"

namespace lumora {
namespace {

using Getter = std::string (*)();
using platform::UIViewContentMode;

Getter scalingGetter(const std::string& identifier) {
  switch (locationOfIdentifier(identifier)) {
    case ScreenLocation::Shared:
      return getSharedScalingMode;
    case ScreenLocation::LockScreen:
      return getLockscreenScalingMode;
    case ScreenLocation::HomeScreen:
      return getHomescreenScalingMode;
    case ScreenLocation::Unknown:
      break;
  }
  return nullptr;
}

UIViewContentMode contentMode(Getter scalingMode) {
  if (scalingMode() == "FIT") return UIViewContentMode::ScaleAspectFit;
  return scalingMode() == "FILL" ? UIViewContentMode::ScaleAspectFill
                                 : UIViewContentMode::ScaleToFill;
}

}  // namespace

void updateScalingModeOfWallpaper(const std::shared_ptr<LWGIFView>& view,
                                  const std::string& identifier) {
  addToMainQueue([view, identifier] {
    const Getter getter = scalingGetter(identifier);
    if (getter != nullptr) view->setContentMode(contentMode(getter));
  });
}

}  // namespace lumora
