// Blurs and resamples rows and whole planes. Any thread. Functions throw std::bad_alloc.
#pragma once

#include <cstddef>
#include <functional>

#include "platform/linux/images/blur/bands.h"
#include "platform/linux/images/blur/plane.h"
#include "platform/linux/images/blur/rows.h"

namespace platform::backend::blur {

// The source of rows. at(y) returns row y, for any y: margin pixels before pixel 0, then the
// pixels, used values in all, and others up to stride, which do not count. As many rows must stay
// valid as are read together: 2 * reach + 1 by blurRows, 5 by downsampleRows.
template <typename Element>
struct RowSource {
  std::function<const Element*(int y)> at;
  std::size_t stride;
  std::size_t used;
  int margin;
};
// Receives rows. A row is valid during the call.
using RowSink = std::function<void(int y, const Value* row)>;

// Blurs the rows of the band and passes them to sink, in order. Defined for bytes and for values.
template <typename Element>
void blurRows(const Kernel& kernel, Band band, const RowSource<Element>& source,
              const RowSink& sink);
// Computes the rows of the target's band from a source of twice the size. Defined for bytes and for
// values.
template <typename Element>
void downsampleRows(Plane& target, Band band, const RowSource<Element>& source);
// Passes two rows of twice the width to sink for each row of the source's band. Pixel x of such a
// row is at row + offsetOfUpsampled(x).
void upsampleRows(const Plane& source, Band band, const RowSink& sink);
constexpr std::ptrdiff_t offsetOfUpsampled(int x) {
  return std::ptrdiff_t{x + 2 * (Plane::margin - 1)} * channels;
}

Plane blurred(const Plane& source, const Kernel& kernel);
Plane downsampled(const Plane& source);
// Requires the width and height of the plane from which the source was downsampled.
Plane upsampled(const Plane& source, int width, int height);

}  // namespace platform::backend::blur
