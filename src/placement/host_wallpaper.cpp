#include "placement/host_wallpaper.h"

namespace lumora {

platform::id sharedWallpaperController() {
  static const platform::Class controllerClass = platform::objc_getClass("SBWallpaperController");
  return platform::objc_msgSend<platform::id>(platform::classObject(controllerClass),
                                              "sharedInstance");
}

std::shared_ptr<platform::UIView> hostWallpaperView(platform::id controller, const ViewSlot& slot) {
  const auto variable = platform::class_getInstanceVariable(platform::object_getClass(controller),
                                                            slot.hostViewVariable);
  return platform::viewAtOffset(controller, platform::ivar_getOffset(variable));
}

}  // namespace lumora
