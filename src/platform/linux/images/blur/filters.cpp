#include "platform/linux/images/blur/filters.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

namespace platform::backend::blur {
namespace {

// A row of zeros with room before and after it.
class PaddedRow {
 public:
  PaddedRow(std::size_t values, int pixelsAround)
      : around_(static_cast<std::size_t>(pixelsAround) * channels),
        values_(wholeBlocks(values) + 2 * around_ + block) {}

  Value* data() { return &values_[around_]; }
  void clearFrom(std::size_t first, std::size_t end) {
    std::fill(data() + first, data() + end, Value{0});
  }

 private:
  std::size_t around_;
  std::vector<Value> values_;
};

// Returns the width of a row in pixels, with both margins.
std::size_t usedWidth(const Plane& plane) {
  const int width = plane.width() + 2 * Plane::margin;
  return static_cast<std::size_t>(width);
}

Band rowsWithMargins(const Plane& plane) {
  return {-Plane::margin, plane.height() + Plane::margin};
}

RowSource<Value> rowsOf(const Plane& plane) {
  return {[&plane](int y) { return plane.row(y); }, plane.stride(), plane.stride(), Plane::margin};
}

}  // namespace

template <typename Element>
void blurRows(const Kernel& kernel, Band band, const RowSource<Element>& source,
              const RowSink& sink) {
  PaddedRow vertical(source.stride, kernel.reach);
  std::vector<Value> result(source.stride);
  std::vector<const Element*> rows(static_cast<std::size_t>(kernel.reach) * 2 + 1);
  // The same row, shifted by each distance of the kernel.
  std::vector<const Value*> shifted(rows.size());
  for (std::size_t at = 0; at < shifted.size(); ++at) {
    shifted[at] = vertical.data() + (static_cast<std::ptrdiff_t>(at) - kernel.reach) * channels;
  }
  for (int y = band.first; y < band.end; ++y) {
    for (int at = 0; at < static_cast<int>(rows.size()); ++at) {
      rows[static_cast<std::size_t>(at)] = source.at(y - kernel.reach + at);
    }
    convolve(rows.data(), kernel, vertical.data(), source.stride);
    vertical.clearFrom(source.used, source.stride);
    convolve(shifted.data(), kernel, result.data(), source.stride);
    sink(y, result.data());
  }
}

template void blurRows(const Kernel&, Band, const RowSource<std::uint8_t>&, const RowSink&);
template void blurRows(const Kernel&, Band, const RowSource<Value>&, const RowSink&);

template <typename Element>
void downsampleRows(Plane& target, Band band, const RowSource<Element>& source) {
  constexpr int reach = 2;
  // The pixels of the margin need twice as many source pixels, and their neighbors.
  PaddedRow vertical(source.stride, 2 * Plane::margin + reach + 2);
  const Value* const first =
      vertical.data() - std::ptrdiff_t{2 * Plane::margin - source.margin} * channels;
  std::array<const Element*, 2 * reach + 1> rows;
  for (int y = band.first; y < band.end; ++y) {
    for (int at = 0; at < static_cast<int>(rows.size()); ++at) {
      rows[static_cast<std::size_t>(at)] = source.at(2 * y - reach + at);
    }
    downsampleVertically(rows.data(), vertical.data(), source.stride);
    vertical.clearFrom(source.used, source.stride);
    downsampleHorizontally(first, target.row(y), usedWidth(target));
  }
}

template void downsampleRows(Plane&, Band, const RowSource<std::uint8_t>&);
template void downsampleRows(Plane&, Band, const RowSource<Value>&);

void upsampleRows(const Plane& source, Band band, const RowSink& sink) {
  const auto pixels = static_cast<std::size_t>(source.width() + 2 * Plane::margin - 2);
  const std::size_t values = 2 * pixels * channels;
  // The last three rows at twice the width.
  std::array<std::vector<Value>, 3> wide;
  for (auto& row : wide) row.resize(wholeBlocks(values));
  auto wideRow = [&wide](int y) { return wide[placeInTurn(y, 3)].data(); };
  auto widen = [&](int y) { upsampleHorizontally(source.row(y) + channels, wideRow(y), pixels); };
  std::vector<Value> even(wide[0].size());
  std::vector<Value> odd(wide[0].size());
  widen(band.first - 1);
  widen(band.first);
  for (int y = band.first; y < band.end; ++y) {
    widen(y + 1);
    upsampleVertically(wideRow(y - 1), wideRow(y), wideRow(y + 1), even.data(), odd.data(), values);
    sink(2 * y, even.data());
    sink(2 * y + 1, odd.data());
  }
}

Plane blurred(const Plane& source, const Kernel& kernel) {
  Plane plane(source.width(), source.height());
  inBands(rowsWithMargins(plane), [&](Band band) {
    blurRows(kernel, band, rowsOf(source), [&plane](int y, const Value* row) {
      std::copy_n(row, usedWidth(plane) * channels, plane.row(y));
    });
  });
  return plane;
}

Plane downsampled(const Plane& source) {
  Plane plane((source.width() + 1) / 2, (source.height() + 1) / 2);
  inBands(rowsWithMargins(plane), [&](Band band) { downsampleRows(plane, band, rowsOf(source)); });
  return plane;
}

Plane upsampled(const Plane& source, int width, int height) {
  Plane plane(width, height);
  const Band kept = rowsWithMargins(plane);
  inBands({-1, source.height() + 1}, [&](Band band) {
    upsampleRows(source, band, [&plane, kept](int y, const Value* row) {
      if (y < kept.first || y >= kept.end) return;
      std::copy_n(row + offsetOfUpsampled(-Plane::margin), usedWidth(plane) * channels,
                  plane.row(y));
    });
  });
  return plane;
}

}  // namespace platform::backend::blur
