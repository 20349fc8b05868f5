// The cost of a Gaussian blur grows with its radius. Therefore the image is downsampled as often as
// the radius allows, blurred at that size, and upsampled again. As resampling blurs, too, the blur
// in the middle is by the deviation that remains (deviationLeft).

#include "platform/image_filter.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "platform/linux/images/blur/filters.h"
#include "platform/linux/images/blur/input_rows.h"
#include "platform/linux/images/picture/picture.h"
#include "platform/linux/out_of_memory.h"

namespace platform {
using namespace backend;

namespace {

using namespace blur;

// How far the output reaches beyond the image, in standard deviations. Farther away, a pixel gets
// at most 0.00004 of the nearest one.
constexpr int extentDeviations = 4;

// A radius larger than the image only makes it fainter. This limit keeps the cost of absurd
// settings acceptable.
constexpr int maxRadius = 4096;

struct Rectangle {
  int left;
  int top;
  int width;
  int height;
};

// Returns the deviation that remains for the blur between downsampling and upsampling this many
// times, in pixels of the smallest size. The weights 1, 4, 6, 4, 1 have variance 1, in pixels of
// the size where they are used, and are used in both directions: 2 * (1 + 4 + 16 + ...).
double deviationLeft(int radius, int levels) {
  const double scale = std::pow(4.0, levels);
  const double variance = (double{1} * radius * radius - 2 * (scale - 1) / 3) / scale;
  return variance > 0 ? std::sqrt(variance) : 0;
}

// Returns how often to downsample: as often as the remaining kernel is still smooth.
int levelsFor(int radius) {
  constexpr double minDeviation = 1.2;
  int levels = 0;
  while (deviationLeft(radius, levels + 1) >= minDeviation) ++levels;
  return levels;
}

// Blurs an image and crops it.
class Blur {
 public:
  Blur(const UIImage::Impl& picture, const Rectangle& crop) : picture_(picture), crop_(crop) {
    const int left = std::min(0, crop.left);
    const int top = std::min(0, crop.top);
    extent_ = {left, top, std::max(picture.shape.width, crop.left + crop.width) - left,
               std::max(picture.shape.height, crop.top + crop.height) - top};
    shape_ = {crop.width, crop.height, PixelFormat::RGBA};
    for (int index = 0; index < shape_.stripCount(); ++index) {
      strips_.push_back(shape_.makeStrip(index));
    }
  }

  ImageRef render(int radius) {
    const int levels = levelsFor(radius);
    const Kernel kernel = gaussianKernel(deviationLeft(radius, levels));
    if (levels == 0) {
      blurPicture(kernel);
    } else {
      Plane plane = downsampledPicture();
      std::vector<std::pair<int, int>> sizes;
      for (int level = 1; level < levels; ++level) {
        sizes.emplace_back(plane.width(), plane.height());
        plane = downsampled(plane);
      }
      plane = blurred(plane, kernel);
      for (; !sizes.empty(); sizes.pop_back()) {
        plane = upsampled(plane, sizes.back().first, sizes.back().second);
      }
      upsampleIntoResult(plane);
    }
    return makeImage(shape_, nullptr, Strips(strips_.begin(), strips_.end()));
  }

 private:
  // Returns the rows of the extent. kept is the number of rows that stay valid.
  InputRows input(int kept) const {
    return InputRows(picture_, extent_.left, extent_.top, extent_.width, kept);
  }

  // Stores row y of the extent in the result, if it is within the crop.
  void storeRow(int y, const Value* row) {
    const int target = y - (crop_.top - extent_.top);
    if (target < 0 || target >= crop_.height) return;
    const int rows = shape_.rowsPerStrip();
    const auto skipped = static_cast<std::size_t>(crop_.left - extent_.left) * channels;
    unpremultiply(row + skipped,
                  strips_[static_cast<std::size_t>(target / rows)]->row(target % rows),
                  static_cast<std::size_t>(crop_.width));
  }

  void blurPicture(const Kernel& kernel) {
    inBands({0, extent_.height}, [&](Band band) {
      InputRows rows = input(2 * kernel.reach + 1);
      blurRows<std::uint8_t>(
          kernel, band, {[&rows](int y) { return rows.row(y); }, rows.stride(), rows.used(), 0},
          [this](int y, const Value* row) { storeRow(y, row); });
    });
  }

  Plane downsampledPicture() const {
    Plane plane((extent_.width + 1) / 2, (extent_.height + 1) / 2);
    inBands({-Plane::margin, plane.height() + Plane::margin}, [&](Band band) {
      constexpr int rowsRead = 5;
      InputRows rows = input(rowsRead);
      downsampleRows<std::uint8_t>(
          plane, band, {[&rows](int y) { return rows.row(y); }, rows.stride(), rows.used(), 0});
    });
    return plane;
  }

  void upsampleIntoResult(const Plane& source) {
    inBands({0, (extent_.height + 1) / 2}, [&](Band band) {
      upsampleRows(source, band, [this](int y, const Value* row) {
        if (y < extent_.height) storeRow(y, row + offsetOfUpsampled(0));
      });
    });
  }

  const UIImage::Impl& picture_;
  // In the image's coordinates. The extent contains the crop and the image.
  const Rectangle crop_;
  Rectangle extent_{};
  PictureShape shape_;
  std::vector<std::shared_ptr<Strip>> strips_;
};

}  // namespace

CIImage::CIImage(ImageRef input, int radius) : input_(std::move(input)), radius_(radius) {}

CIImage CIImage::gaussianBlur(const ImageRef& input, int radius) {
  return CIImage(input, std::clamp(radius, 0, maxRadius));
}

CGRect CIImage::extent() const {
  const int reach = extentDeviations * radius_;
  return {static_cast<CGFloat>(-reach), static_cast<CGFloat>(-reach),
          static_cast<CGFloat>(input_->width() + 2 * reach),
          static_cast<CGFloat>(input_->height() + 2 * reach)};
}

ImageRef CIImage::render(CGRect rectangle) const {
  const Rectangle crop{static_cast<int>(std::lround(rectangle.x)),
                       static_cast<int>(std::lround(rectangle.y)),
                       static_cast<int>(std::lround(rectangle.width)),
                       static_cast<int>(std::lround(rectangle.height))};
  const bool isWhole = crop.left == 0 && crop.top == 0 && crop.width == input_->width() &&
                       crop.height == input_->height();
  if (radius_ == 0 && isWhole) return input_;
  return unlessOutOfMemory([&] { return Blur(pictureOf(*input_), crop).render(radius_); });
}

}  // namespace platform
