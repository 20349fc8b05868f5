#include "placement/host_dock.h"

#include "platform/objc_runtime.h"

namespace lumora {

platform::CGFloat defaultDockHeight() {
  static const platform::Class dockClass = platform::objc_getClass("SBDockView");
  return platform::objc_msgSend<platform::CGFloat>(platform::classObject(dockClass),
                                                   "defaultHeight");
}

}  // namespace lumora
