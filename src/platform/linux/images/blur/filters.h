// Blurring and resampling by rows, and of whole planes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include "platform/linux/images/blur/bands.h"
#include "platform/linux/images/blur/plane.h"
#include "platform/linux/images/blur/rows.h"

namespace platform::backend::blur {

// Where rows come from: at(y) returns one of `stride` values, for any y. Its first `margin` pixels
// are before pixel 0; after its last pixel, up to the stride, there must be zeros.
template <typename Element>
struct RowSource {
  std::function<const Element*(int y)> at;
  std::size_t stride;
  int margin;
};
// Where rows go. A row is valid during the call.
using RowSink = std::function<void(int y, const Value* row)>;

// Blurs the rows of the band. Defined for bytes and for values.
template <typename Element>
void blurRows(const Kernel& kernel, Band band, const RowSource<Element>& source,
              const RowSink& sink);
// Makes the rows of the target's band from a source of twice the size. Defined for bytes and for
// values.
template <typename Element>
void downsampleRows(Plane& target, Band band, const RowSource<Element>& source);
// Makes two rows of twice the width of each row of the source's band. Pixel x of a row that the
// sink gets is at row + offsetOfUpsampled(x).
void upsampleRows(const Plane& source, Band band, const RowSink& sink);
constexpr std::ptrdiff_t offsetOfUpsampled(int x) {
  return std::ptrdiff_t{x + 2 * (Plane::margin - 1)} * channels;
}

Plane blurred(const Plane& source, const Kernel& kernel);
Plane downsampled(const Plane& source);
// width, height: of the plane that the source was downsampled from.
Plane upsampled(const Plane& source, int width, int height);

}  // namespace platform::backend::blur
