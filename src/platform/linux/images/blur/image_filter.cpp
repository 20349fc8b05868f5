// A Gaussian blur costs as much as its radius is large, unless the picture is small: so it is
// halved as often as the blur allows, blurred there by what is left to do, and doubled as often.
// Halving and doubling are blurs themselves, and their share is known: see halvingsFor.

#include "platform/image_filter.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "platform/linux/images/blur/plane.h"
#include "platform/linux/images/picture/picture.h"
#include "platform/linux/out_of_memory.h"

namespace platform {
using namespace backend;

namespace {

using namespace blur;

// Beyond four standard deviations the weights are below a thousandth of the last bit.
constexpr int deviationsReached = 4;

// A blur past any picture's size only fades it; this bound keeps absurd settings computable.
constexpr int maxRadius = 4096;

struct Rectangle {
  int left;
  int top;
  int width;
  int height;
};

// The deviation that is left to do after some halvings. The weights 1, 4, 6, 4, 1 have variance 1,
// in pixels of the size where they are used, and are used both ways: 2 * (1 + 4 + 16 + ...).
double deviationLeft(int radius, int halvings) {
  const double scale = std::pow(4.0, halvings);
  const double variance = (double{1} * radius * radius - 2 * (scale - 1) / 3) / scale;
  return variance > 0 ? std::sqrt(variance) : 0;
}

// As many as leave a blur that is smooth to begin with.
int halvingsFor(int radius) {
  constexpr double leastDeviation = 1.2;
  int halvings = 0;
  while (deviationLeft(radius, halvings + 1) >= leastDeviation) ++halvings;
  return halvings;
}

// A row with room in front and behind, where there is nothing.
class PaddedRow {
 public:
  PaddedRow(std::size_t values, int pixelsAround)
      : around_(static_cast<std::size_t>(pixelsAround) * channels),
        values_(wholeBlocks(values) + 2 * around_ + block) {}

  Value* data() { return &values_[around_]; }

 private:
  std::size_t around_;
  std::vector<Value> values_;
};

// Blurs rows [first, end): rowAt(y) gives one of `stride` values, done(y, row) takes the result.
// Behind the last pixel of a row, up to the stride, there must be zeros.
template <typename Element, typename RowAt, typename Done>
void blurRows(const Kernel& kernel, std::size_t stride, int first, int end, RowAt rowAt,
              Done done) {
  PaddedRow between(stride, kernel.reach);
  std::vector<Value> result(stride);
  std::vector<const Element*> rows(static_cast<std::size_t>(kernel.reach) * 2 + 1);
  std::vector<const Value*> shifted(rows.size());
  for (std::size_t at = 0; at < shifted.size(); ++at) {
    shifted[at] = between.data() + (static_cast<std::ptrdiff_t>(at) - kernel.reach) * channels;
  }
  for (int y = first; y < end; ++y) {
    for (int at = 0; at < static_cast<int>(rows.size()); ++at) {
      rows[static_cast<std::size_t>(at)] = rowAt(y - kernel.reach + at);
    }
    weigh(rows.data(), kernel, between.data(), stride);
    weigh(shifted.data(), kernel, result.data(), stride);
    done(y, result.data());
  }
}

// The part of a picture that is wanted, and all of the picture besides.
class Blur {
 public:
  Blur(const UIImage::Impl& picture, const Rectangle& wanted) : picture_(picture), wanted_(wanted) {
    const int left = std::min(0, wanted.left);
    const int top = std::min(0, wanted.top);
    whole_ = {left, top, std::max(picture.shape.width, wanted.left + wanted.width) - left,
              std::max(picture.shape.height, wanted.top + wanted.height) - top};
    shape_ = {wanted.width, wanted.height, PixelFormat::RGBA};
    for (int index = 0; index < shape_.stripCount(); ++index) {
      strips_.push_back(shape_.makeStrip(index));
    }
  }

  ImageRef render(int radius) {
    const int halvings = halvingsFor(radius);
    const Kernel kernel = gaussianKernel(deviationLeft(radius, halvings));
    if (halvings == 0) {
      blurPicture(kernel);
    } else {
      Plane plane = halvedPicture();
      std::vector<std::pair<int, int>> sizes;
      for (int halving = 1; halving < halvings; ++halving) {
        sizes.emplace_back(plane.width(), plane.height());
        plane = halved(plane);
      }
      plane = blurred(plane, kernel);
      for (; !sizes.empty(); sizes.pop_back()) {
        plane = doubled(plane, sizes.back().first, sizes.back().second);
      }
      doubleIntoResult(plane);
    }
    return makeImage(shape_, nullptr, Strips(strips_.begin(), strips_.end()));
  }

 private:
  InputRows input(int kept) const {
    return InputRows(picture_, whole_.left, whole_.top, whole_.width, kept);
  }

  // Row y of the whole, its first pixel first.
  void finishRow(int y, const Value* row) {
    y -= wanted_.top - whole_.top;
    if (y < 0 || y >= wanted_.height) return;
    const int rows = shape_.rowsPerStrip();
    const auto skipped = static_cast<std::size_t>(wanted_.left - whole_.left) * channels;
    finish(row + skipped, strips_[static_cast<std::size_t>(y / rows)]->row(y % rows),
           static_cast<std::size_t>(wanted_.width));
  }

  void blurPicture(const Kernel& kernel) {
    inBands(0, whole_.height, [&](int first, int end) {
      InputRows rows = input(2 * kernel.reach + 1);
      blurRows<std::uint8_t>(
          kernel, rows.stride(), first, end, [&rows](int y) { return rows.row(y); },
          [this](int y, const Value* row) { finishRow(y, row); });
    });
  }

  Plane halvedPicture() const {
    Plane plane((whole_.width + 1) / 2, (whole_.height + 1) / 2);
    inBands(-Plane::margin, plane.height() + Plane::margin, [&](int first, int end) {
      InputRows rows = input(5);
      halveBand<std::uint8_t>(plane, rows.stride(), 0, first, end,
                              [&rows](int y) { return rows.row(y); });
    });
    return plane;
  }

  static Plane halved(const Plane& source) {
    Plane plane((source.width() + 1) / 2, (source.height() + 1) / 2);
    const Plane& larger = source;
    inBands(-Plane::margin, plane.height() + Plane::margin, [&](int first, int end) {
      halveBand<Value>(plane, larger.stride(), Plane::margin, first, end,
                       [&larger](int y) { return larger.row(y); });
    });
    return plane;
  }

  // marginOfRows: how many pixels of rowAt's rows lie in front of the first one.
  template <typename Element, typename RowAt>
  static void halveBand(Plane& plane, std::size_t stride, int marginOfRows, int first, int end,
                        RowAt rowAt) {
    constexpr int reach = 2;
    // The margin's pixels stand for twice as many, and look at two more.
    PaddedRow between(stride, 2 * Plane::margin + reach + 2);
    const Element* rows[2 * reach + 1];
    for (int y = first; y < end; ++y) {
      for (int at = 0; at < 2 * reach + 1; ++at) rows[at] = rowAt(2 * y - reach + at);
      halveRows(rows, between.data(), stride);
      const std::ptrdiff_t back = std::ptrdiff_t{2 * Plane::margin - marginOfRows} * channels;
      halveAlong(between.data() - back, plane.row(y), usedWidth(plane));
    }
  }

  // Of a row, with both margins.
  static std::size_t usedWidth(const Plane& plane) {
    const int used = plane.width() + 2 * Plane::margin;
    return static_cast<std::size_t>(used);
  }

  static Plane blurred(const Plane& source, const Kernel& kernel) {
    Plane plane(source.width(), source.height());
    inBands(-Plane::margin, plane.height() + Plane::margin, [&](int first, int end) {
      blurRows<Value>(
          kernel, plane.stride(), first, end, [&source](int y) { return source.row(y); },
          [&plane](int y, const Value* row) {
            std::copy_n(row, usedWidth(plane) * channels, plane.row(y));
          });
    });
    return plane;
  }

  // Calls done(y, row) with the two rows for each of rows [first, end), margins included: from the
  // pixel that the first one in `source` stands for.
  template <typename Done>
  static void doubleBand(const Plane& source, int first, int end, Done done) {
    const auto pixels = static_cast<std::size_t>(source.width() + 2 * Plane::margin - 2);
    const std::size_t values = 2 * pixels * channels;
    std::vector<Value> wide[3];
    for (auto& row : wide) row.resize(wholeBlocks(values));
    std::vector<Value> even(wide[0].size());
    std::vector<Value> odd(wide[0].size());
    auto widen = [&](int y) -> Value* {
      Value* row = wide[(y + 3) % 3].data();
      doubleAlong(source.row(y) + channels, row, pixels);
      return row;
    };
    auto held = [&wide](int y) { return wide[(y + 3) % 3].data(); };
    widen(first - 1);
    widen(first);
    for (int y = first; y < end; ++y) {
      widen(y + 1);
      doubleRows(held(y - 1), held(y), held(y + 1), even.data(), odd.data(), values);
      done(2 * y, even.data());
      done(2 * y + 1, odd.data());
    }
  }

  // Where pixel x of a plane lies in the rows that doubleBand makes of a smaller one.
  static constexpr std::ptrdiff_t placeOfPixel(int x) {
    return std::ptrdiff_t{x + 2 * (Plane::margin - 1)} * channels;
  }

  static Plane doubled(const Plane& source, int width, int height) {
    Plane plane(width, height);
    inBands(-1, source.height() + 1, [&](int first, int end) {
      doubleBand(source, first, end, [&plane](int y, const Value* row) {
        if (y < -Plane::margin || y >= plane.height() + Plane::margin) return;
        std::copy_n(row + placeOfPixel(-Plane::margin), usedWidth(plane) * channels, plane.row(y));
      });
    });
    return plane;
  }

  void doubleIntoResult(const Plane& source) {
    inBands(0, (whole_.height + 1) / 2, [&](int first, int end) {
      doubleBand(source, first, end, [this](int y, const Value* row) {
        if (y < whole_.height) finishRow(y, row + placeOfPixel(0));
      });
    });
  }

  const UIImage::Impl& picture_;
  // What is asked for, and with it the picture: both in the picture's coordinates.
  const Rectangle wanted_;
  Rectangle whole_{};
  PictureShape shape_;
  std::vector<std::shared_ptr<Strip>> strips_;
};

}  // namespace

CIImage::CIImage(ImageRef input, int radius) : input_(std::move(input)), radius_(radius) {}

CIImage CIImage::gaussianBlur(const ImageRef& input, int radius) {
  return CIImage(input, std::clamp(radius, 0, maxRadius));
}

CGRect CIImage::extent() const {
  const int reach = deviationsReached * radius_;
  return {static_cast<CGFloat>(-reach), static_cast<CGFloat>(-reach),
          static_cast<CGFloat>(input_->width() + 2 * reach),
          static_cast<CGFloat>(input_->height() + 2 * reach)};
}

ImageRef CIImage::render(CGRect rectangle) const {
  const Rectangle wanted{static_cast<int>(std::lround(rectangle.x)),
                         static_cast<int>(std::lround(rectangle.y)),
                         static_cast<int>(std::lround(rectangle.width)),
                         static_cast<int>(std::lround(rectangle.height))};
  const bool isWhole = wanted.left == 0 && wanted.top == 0 && wanted.width == input_->width() &&
                       wanted.height == input_->height();
  if (radius_ == 0 && isWhole) return input_;
  return unlessOutOfMemory([&] { return Blur(input_->impl(), wanted).render(radius_); });
}

}  // namespace platform
