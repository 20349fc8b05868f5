#include "placement/frame_layout.h"

#include <utility>

#include "placement/host_dock.h"
#include "platform/device.h"
#include "platform/string_value.h"
#include "settings/settings_store.h"

namespace lumora {
namespace {

using platform::CGFloat;
using platform::CGRect;
using platform::UIInterfaceOrientation;

bool isLandscape(UIInterfaceOrientation orientation) {
  return orientation == UIInterfaceOrientation::LandscapeLeft ||
         orientation == UIInterfaceOrientation::LandscapeRight;
}

CGFloat dockHeight() {
  if (!getDockEnabled()) return 0;
  const CGFloat height = defaultDockHeight();
  const CGFloat screenHeight = platform::mainScreenBounds().value_or(CGRect()).height;
  if (height > 0 && height < screenHeight) return height;
  // The stored height is deliberately rounded to six decimals.
  return static_cast<CGFloat>(platform::doubleValue(platform::decimalText(getDockHeight())));
}

bool isPhone() {
  const auto idiom = platform::userInterfaceIdiom();
  return !idiom || *idiom == platform::UIUserInterfaceIdiom::Phone;
}

}  // namespace

CGRect screenRectangle() {
  CGRect screen = platform::mainScreenBounds().value_or(CGRect());
  if (isLandscape(platform::statusBarOrientation())) std::swap(screen.width, screen.height);
  return screen;
}

CGRect rectangleBesideDock(const CGRect& screen) {
  const UIInterfaceOrientation orientation = platform::statusBarOrientation();
  const CGFloat dock = dockHeight();
  if (isPhone() && isLandscape(orientation)) return {0, 0, screen.width - dock, screen.height};
  return {0, 0, screen.width, screen.height - dock};
}

}  // namespace lumora
