#include "gifview/view_settings.h"

namespace lumora {

float speedOf(const Location* location) {
  return location == nullptr ? 1.0F : location->getGIFSpeed();
}

float alphaOf(const Location* location) {
  return location == nullptr ? 1.0F : location->getGIFAlpha();
}

float blurOf(const Location* location) {
  return location == nullptr ? 0.0F : location->getGIFBlur();
}

}  // namespace lumora
