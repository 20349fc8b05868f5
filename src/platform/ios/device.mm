#include "platform/device.h"

#import <UIKit/UIKit.h>

namespace platform {

std::optional<CGRect> mainScreenBounds() {
  UIScreen* screen = [UIScreen mainScreen];
  if (screen == nullptr) return std::nullopt;
  const ::CGRect bounds = [[screen fixedCoordinateSpace] bounds];
  return CGRect{bounds.origin.x, bounds.origin.y, bounds.size.width, bounds.size.height};
}

UIInterfaceOrientation statusBarOrientation() {
  return static_cast<UIInterfaceOrientation>(
      [[UIApplication sharedApplication] statusBarOrientation]);
}

std::optional<UIUserInterfaceIdiom> userInterfaceIdiom() {
  UIDevice* device = [UIDevice currentDevice];
  if (![device respondsToSelector:@selector(userInterfaceIdiom)]) return std::nullopt;
  return static_cast<UIUserInterfaceIdiom>([device userInterfaceIdiom]);
}

}  // namespace platform
