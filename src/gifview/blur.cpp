#include "gifview/blur.h"

#include <algorithm>

#include "platform/image_filter.h"

namespace lumora {

platform::ImageRef blurImageWithRadius(const platform::ImageRef& image, std::int32_t radius) {
  const auto blurred = platform::CIImage::gaussianBlur(image, radius);
  // The blur adds a border on every side, so the image is in the middle of the output.
  const platform::CGRect extent = blurred.extent();
  platform::CGRect crop;
  crop.width = static_cast<platform::CGFloat>(image->width());
  crop.height = static_cast<platform::CGFloat>(image->height());
  crop.x = extent.x + (extent.width - crop.width) * platform::CGFloat{0.5};
  crop.y = extent.y + (extent.height - crop.height) * platform::CGFloat{0.5};
  return blurred.render(crop);
}

std::int32_t blurRadius(float setting) {
  // The largest float below 2^31, so that the conversion is defined.
  constexpr float maxRadius = 2147483520.0F;
  return static_cast<std::int32_t>(std::clamp(setting, -maxRadius, maxRadius));
}

}  // namespace lumora
